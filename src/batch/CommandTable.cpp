#include "batch/CommandTable.h"

#include "batch/CmdLine.h"
#include "batch/CommandTexts.h"

#include <QHash>

namespace {

/// Row of each word, by the word in capitals; of equal words the first counts.
template<typename Row>
QHash<QString, int> indexOf(const QVector<Row>& table)
{
    QHash<QString, int> rows;
    for (int i = 0; i < table.size(); ++i) {
        const QString word = table[i].word.toUpper();
        if (!rows.contains(word))
            rows.insert(word, i);
    }
    return rows;
}

QString joined(const QString& word, const QString& arguments)
{
    return arguments.isEmpty() ? word : word + QLatin1Char(' ') + arguments;
}

} // namespace

QString KeywordRow::usage() const
{
    return joined(word, arguments);
}

QString ExCmdRow::usage() const
{
    return joined(word, arguments);
}

QString ExCmdRow::exampleLine() const
{
    return joined(word, example);
}

const QVector<KeywordRow>& keywordTable()
{
    static const QVector<KeywordRow> table = {
        {KeywordFor, QStringLiteral(":for"), QStringLiteral("<name> <text> <int> <int> [<int>]"),
         QStringLiteral("Runs the lines up to :next for each whole number from first to last, by "
                        "step, and puts it in place of the text in their arguments")},
        {KeywordNext, QStringLiteral(":next"), QStringLiteral("<name>"),
         QStringLiteral("Ends the loop of that name")},
        {KeywordEcho, QStringLiteral(":echo"), QStringLiteral("<text>"),
         QStringLiteral("Writes a text into the log")},
        {KeywordRemStart, QStringLiteral(":rem_start"), QString(),
         QStringLiteral("The commands up to :rem_end are not executed")},
        {KeywordRemEnd, QStringLiteral(":rem_end"), QString(),
         QStringLiteral("Ends what :rem_start began")},
        {KeywordEnd, QStringLiteral(":end"), QString(), QStringLiteral("Ends the run")},
        {KeywordLet, QStringLiteral(":let"), QStringLiteral("<name> <text>"),
         QStringLiteral("Puts the text in place of $name$ from here on")},
    };
    return table;
}

const QVector<ExCmdRow>& exCmdTable()
{
    static const QVector<ExCmdRow> table = toldCommands();
    return table;
}

const QVector<ExCmdRow>& extensionTable()
{
    static const QVector<ExCmdRow> table = extensionCommands();
    return table;
}

BatchKeyword keywordId(const CmdLine& line)
{
    static const QHash<QString, int> rows = indexOf(keywordTable());
    const int row = rows.value(line.word.toUpper(), -1);
    return row < 0 ? KeywordNone : keywordTable()[row].id;
}

EX_CMD_ID exCmdId(const CmdLine& line)
{
    // The extensions stand last: a word of the old table keeps its meaning.
    static const QVector<ExCmdRow> all = exCmdTable() + extensionTable();
    static const QHash<QString, int> rows = indexOf(all);
    const int row = rows.value(line.word.toUpper(), -1);
    return row < 0 ? ExCmdNone : all[row].id;
}

bool isKeyword(const CmdLine& line)
{
    return keywordId(line) != KeywordNone;
}

bool isExCmd(const CmdLine& line)
{
    return exCmdId(line) != ExCmdNone;
}

const ExCmdRow* exCmdRow(int id)
{
    for (const QVector<ExCmdRow>* table : {&exCmdTable(), &extensionTable()}) {
        for (const ExCmdRow& row : *table) {
            if (row.id == id)
                return &row;
        }
    }
    return nullptr;
}

QString exCmdName(int id)
{
    const ExCmdRow* const row = exCmdRow(id);
    return row ? row->word : QStringLiteral("UnKnow ExCMD id");
}
