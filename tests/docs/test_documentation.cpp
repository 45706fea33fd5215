#include "BatchText.h"
#include "batch/CmdLine.h"
#include "batch/CommandTable.h"

#include <QFile>
#include <QTest>

namespace {
QString pathOf(const QString& name)
{
    return QStringLiteral(SOURCE_FOLDER "/") + name;
}

QString textOf(const QString& name)
{
    QFile file(pathOf(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The contents of all blocks fenced by ```batch and ```, in one list of lines.
QStringList batchExamples(const QString& text)
{
    QStringList lines;
    bool inExample = false;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("```"))) {
            inExample = line == QLatin1String("```batch");
        } else if (inExample) {
            lines.append(line);
        }
    }
    return lines;
}

/// Fewest arguments that a command needs: those that are neither optional nor repeated again.
int leastArguments(const QString& arguments)
{
    return arguments.count(QLatin1Char('<')) - arguments.count(QLatin1String("[<"));
}

QString fault(const CmdLine& line)
{
    if (!line.valid || isKeyword(line)) {
        return {};
    }
    if (!isExCmd(line)) {
        return QStringLiteral("no command: ") + line.line;
    }
    const int row = static_cast<int>(exCmdId(line));
    for (const ExCmdRow& command : exCmdTable() + extensionTable()) {
        if (command.id == row && line.args.size() < leastArguments(command.arguments)) {
            return QStringLiteral("too few arguments: ") + line.line;
        }
    }
    return {};
}

/// The command list as the documentation holds it: a line for each command.
QString commandList()
{
    QString list;
    for (const ExCmdRow& command : exCmdTable() + extensionTable()) {
        if (command.id == ExCmdNone) {
            continue;
        }
        const QString arguments =
            command.arguments.isEmpty() ? QString() : QLatin1Char(' ') + command.arguments;
        list += QStringLiteral("    ") + command.word + arguments + QLatin1Char('\n');
    }
    return list;
}
} // namespace

class TestDocumentation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyBatchExampleIsUnderstood_data();
    void everyBatchExampleIsUnderstood();
    void theDemonstrationsBatchIsUnderstood();
    void theCommandListIsThatOfTheProgram();
};

void TestDocumentation::everyBatchExampleIsUnderstood_data()
{
    QTest::addColumn<QString>("file");
    for (const char* name : {"README.md", "docs/file-formats.md", "docs/user-guide.md"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestDocumentation::everyBatchExampleIsUnderstood()
{
    QFETCH(QString, file);
    const QStringList lines = batchExamples(textOf(file));
    QVERIFY(lines.size() > 3);
    for (const QString& line : lines) {
        QCOMPARE(fault(CmdLine(line)), QString());
    }
}

void TestDocumentation::theDemonstrationsBatchIsUnderstood()
{
    for (const Difficulty difficulty : {Difficulty::Easy, Difficulty::Hard}) {
        const Phantom phantom = makePhantom(usualConditions(difficulty));
        const QString folder = QStringLiteral("/a folder");
        const QStringList lines = batchText(folder, phantom, ImageFormat::Tiff)
                                      .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& line : lines) {
            QCOMPARE(fault(CmdLine(line)), QString());
        }
        QCOMPARE(lines.last(), QStringLiteral("quit"));
    }
}

void TestDocumentation::theCommandListIsThatOfTheProgram()
{
    const QString name = QStringLiteral("docs/file-formats.md");
    const QString start = QStringLiteral("<!-- commands -->\n\n");
    const QString end = QStringLiteral("\n<!-- end of commands -->");
    QString text = textOf(name);
    const int from = text.indexOf(start) + start.size();
    const int to = text.indexOf(end);
    QVERIFY(from >= start.size() && to >= from);
    if (qEnvironmentVariableIsSet("MORVENKITE_UPDATE_DOCS")) {
        text.replace(from, to - from, commandList());
        QFile file(pathOf(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        return;
    }
    QVERIFY2(text.mid(from, to - from) == commandList(),
             "run test_documentation with MORVENKITE_UPDATE_DOCS=1 to renew the list");
}

QTEST_GUILESS_MAIN(TestDocumentation)
#include "test_documentation.moc"
