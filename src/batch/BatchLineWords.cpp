#include "batch/BatchLineWords.h"

#include "batch/CmdLine.h"
#include "batch/CommandTable.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

BatchRole roleOfWord(const QString& word)
{
    CmdLine line;
    line.word = word;
    if (isKeyword(line))
        return BatchRole::Keyword;
    return isExCmd(line) ? BatchRole::Command : BatchRole::Unknown;
}

void addVariables(const QString& line, int from, QVector<BatchStretch>& stretches)
{
    static const QRegularExpression variable(QStringLiteral("\\$[^$\\s]+\\$"));
    auto matches = variable.globalMatch(line, from);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        stretches.append({match.capturedStart(), match.capturedLength(), BatchRole::Variable});
    }
}

template<typename Row>
bool anyBegins(const QVector<Row>& table, const QString& text)
{
    return std::any_of(table.begin(), table.end(), [&text](const Row& row) {
        return row.word.startsWith(text, Qt::CaseInsensitive);
    });
}

} // namespace

QVector<BatchStretch> batchStretches(const QString& line, bool continues)
{
    static const QRegularExpression item(QStringLiteral("\"[^\"]*\"?|[^\\s\"]\\S*"));
    QVector<BatchStretch> stretches;
    auto matches = item.globalMatch(line);
    int behindWord = 0;
    bool isWord = !continues;
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString text = match.captured();
        const bool quoted = text.startsWith(QLatin1Char('"'));
        const int start = match.capturedStart();
        if (isWord && text.startsWith(QLatin1Char('#')))
            return {{start, line.size() - start, BatchRole::Comment}};
        if (isWord && text != QLatin1String("\\")) {
            const QString word =
                quoted ? text.mid(1).chopped(text.endsWith(QLatin1Char('"'))) : text;
            stretches.append({start, text.size(), roleOfWord(word)});
            behindWord = match.capturedEnd();
        } else if (quoted) {
            stretches.append({start, text.size(), BatchRole::Quoted});
        }
        isWord = false;
    }
    addVariables(line, behindWord, stretches);
    return stretches;
}

bool isContinued(const QString& line)
{
    for (int i = line.size() - 1; i >= 0; --i) {
        if (!line.at(i).isSpace())
            return line.at(i) == QLatin1Char('\\');
    }
    return false;
}

bool beginsAWord(const QString& text)
{
    return anyBegins(keywordTable(), text) || anyBegins(exCmdTable(), text) ||
           anyBegins(extensionTable(), text);
}
