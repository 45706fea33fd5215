#include "BatchText.h"
#include "app/ProgramOptions.h"
#include "batch/BatchCheck.h"
#include "batch/CommandTable.h"

#include <QFile>
#include <QTest>

namespace {
QString pathOf(const QString& name)
{
    return SOURCE_FOLDER "/" + name;
}

QString textOf(const QString& name)
{
    QFile file(pathOf(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The contents of each block fenced by ```batch and ```.
QStringList batchExamples(const QString& text)
{
    QStringList examples;
    bool inExample = false;
    for (const QString& line : text.split('\n')) {
        if (line.startsWith("```")) {
            inExample = line == "```batch";
            if (inExample)
                examples.append(QString());
        } else if (inExample) {
            examples.last() += line + '\n';
        }
    }
    return examples;
}

/// What a check tells of a batch whose files are not here.
QString faults(const QString& batch)
{
    BatchCheckOptions options;
    options.files = false;
    const BatchReport report = checkBatch(batch, options);
    return report.count == 0 ? QString() : report.lines(QString()).join('\n');
}

QString cell(QString text)
{
    return text.replace('|', "\\|");
}

/// The keywords and commands as the documentation holds them: a row of a table for each.
QString commandList()
{
    QString list = "| Keyword | Effect |\n|---|---|\n";
    for (const KeywordRow& keyword : keywordTable())
        list += QString("| `%1` | %2 |\n").arg(cell(keyword.usage()), keyword.effect);
    list += "\n| Command | Effect | Example |\n|---|---|---|\n";
    for (const ExCmdRow& command : exCmdTable() + extensionTable()) {
        if (command.id == ExCmdNone)
            continue;
        const QString effect =
            command.effect +
            (command.later && command.id != ExCmdQuit ? "; the run waits for it" : "");
        list += QString("| `%1` | %2 | `%3` |\n")
                    .arg(cell(command.usage()), cell(effect), cell(command.exampleLine()));
    }
    return list;
}

/// How the program is called, and its options, as the documentation holds them.
QString optionList()
{
    QString list;
    for (const QString& usage : programUsages())
        list += "    build/morvenkite " + usage + '\n';
    list += "\n| Option | Meaning |\n|---|---|\n";
    for (const ProgramOption& option : programOptions())
        list += QString("| `%1` | %2 |\n")
                    .arg(QString(option.usage).replace(", ", "`, `"), cell(option.effect));
    list += "\n| In the environment | Meaning |\n|---|---|\n";
    for (const ProgramOption& variable : programVariables())
        list += QString("| `%1` | %2 |\n").arg(variable.usage, cell(variable.effect));
    return list;
}
} // namespace

/// Batch examples and the command list of the documentation.
class TestDocumentation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyBatchExampleIsUnderstood()
    {
        for (const char* name :
             {"README.md", "docs/user-guide.md", "docs/batch-commands.md", "docs/batch-tutorial.md",
              "docs/many-scans.md", "docs/registration.md"}) {
            const QStringList examples = batchExamples(textOf(name));
            QVERIFY2(!examples.isEmpty(), name);
            for (const QString& example : examples)
                QCOMPARE(name + faults(example), QString(name));
        }
    }

    /// Running it tells of unknown words, yet not of arguments that are missing.
    void theDemonstrationsBatchIsUnderstood()
    {
        for (const Difficulty difficulty : {Difficulty::Easy, Difficulty::Hard}) {
            const Phantom phantom = makePhantom(usualConditions(difficulty));
            QCOMPARE(faults(batchText("/a folder", phantom, ImageFormat::Tiff)), QString());
        }
    }

    void everyExampleFitsItsCommand()
    {
        for (const ExCmdRow& command : exCmdTable() + extensionTable())
            QVERIFY2(command.id == ExCmdNone || faults(command.exampleLine()).isEmpty(),
                     qPrintable(command.word));
    }

    void listsAreThoseOfTheProgram_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("subject");
        QTest::addColumn<QString>("list");
        QTest::newRow("commands") << "docs/batch-commands.md"
                                  << "commands" << commandList();
        QTest::newRow("options") << "README.md"
                                 << "options" << optionList();
    }

    void listsAreThoseOfTheProgram()
    {
        QFETCH(QString, page);
        QFETCH(QString, subject);
        QFETCH(QString, list);
        const QString start = QString("<!-- %1 -->\n\n").arg(subject);
        QString text = textOf(page);
        const int from = text.indexOf(start) + start.size();
        const int to = text.indexOf(QString("\n<!-- end of %1 -->").arg(subject));
        QVERIFY(from >= start.size() && to >= from);
        if (qEnvironmentVariableIsSet("MORVENKITE_UPDATE_DOCS")) {
            text.replace(from, to - from, list);
            QFile file(pathOf(page));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(text.toUtf8());
            return;
        }
        QVERIFY2(text.mid(from, to - from) == list,
                 "run test_documentation with MORVENKITE_UPDATE_DOCS=1 to renew the list");
    }
};

QTEST_GUILESS_MAIN(TestDocumentation)
#include "test_documentation.moc"
