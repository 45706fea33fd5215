#include "batch/BatchLine.h"

#include "batch/CommandTable.h"

#include <algorithm>

namespace {

const QLatin1Char quote('"');

/// The item that reads back as the text; null when there is none.
QString itemOf(const QString& text)
{
    const bool hasBlank =
        std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
    const bool atEnds = text.startsWith(quote) || text.endsWith(quote);
    // A backslash at the end of a line would join it with the next.
    const bool needsQuotes = hasBlank || text.endsWith(QLatin1Char('\\'));
    const bool lineBreak = text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'));
    if (text.isEmpty() || lineBreak || (needsQuotes && text.contains(quote)) || atEnds)
        return {};
    return needsQuotes ? quote + text + quote : text;
}

} // namespace

QString batchLine(EX_CMD_ID id, const QStringList& arguments)
{
    QStringList given = arguments;
    while (!given.isEmpty() && given.last().isEmpty())
        given.removeLast();
    QString line = exCmdName(id);
    for (const QString& argument : qAsConst(given)) {
        const QString item = itemOf(argument);
        if (item.isNull())
            return QStringLiteral("# no batch can hold these arguments: %1 %2")
                .arg(line, given.join(QLatin1Char(' ')).simplified());
        line += QLatin1Char(' ') + item;
    }
    return line;
}

QString batchLine(EX_CMD_ID id, bool on)
{
    return batchLine(id, QStringList(on ? QStringLiteral("1") : QStringLiteral("0")));
}
