#include "common/TextItems.h"

#include <QDebug>

namespace {

constexpr QChar doubleQuote = QLatin1Char('"');
constexpr int blankTableSize = 256;
constexpr int longestLoggedLine = 1000;

bool isWhite(QChar c)
{
    return c == QLatin1Char(' ') || (c >= QLatin1Char('\t') && c <= QLatin1Char('\r'));
}

int skipWhite(const QString& line, int from)
{
    while (from < line.size() && isWhite(line[from]))
        ++from;
    return from;
}

int skipText(const QString& line, int from)
{
    while (from < line.size() && !isWhite(line[from]))
        ++from;
    return from;
}

void logQuoteFault(const QString& line, int from, const char* fault)
{
    qDebug().noquote() << QStringLiteral("In a line [%1] item is started from %2")
                              .arg(line.mid(from, longestLoggedLine), QLatin1String(fault));
}

/// The item rule on positions, so that taking a long line apart costs one pass. Returns the
/// position behind the item that begins at or after `from`.
int takeItem(const QString& line, int from, QString& item)
{
    const int start = skipWhite(line, from);
    if (start == line.size()) {
        item.clear();
        return start;
    }
    if (line[start] == doubleQuote) {
        const int close = line.indexOf(doubleQuote, start + 1);
        if (close >= 0) {
            item = line.mid(start + 1, close - start - 1);
            return close + 1;
        }
        logQuoteFault(line, from, "quote but not ended by quote");
        item = line.mid(start + 1);
        return line.size();
    }
    const int end = skipText(line, start);
    // Only an item that ends the line is tested for a stray quote: in the middle of a line it
    // passes as text.
    if (end == line.size() && line.endsWith(doubleQuote))
        logQuoteFault(line, from, "not quote but ended by quote");
    item = line.mid(start, end - start);
    return end;
}

} // namespace

QString stripComment(const QString& line, QString& comment)
{
    bool inQuotes = false;
    for (int i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (c == doubleQuote || c == QLatin1Char('\'')) {
            inQuotes = !inQuotes;
        } else if (c == QLatin1Char('#') && !inQuotes) {
            comment = line.mid(i + 1);
            return line.left(i);
        }
    }
    comment.clear();
    return line;
}

QString stripComment(const QString& line)
{
    QString comment;
    return stripComment(line, comment);
}

bool isBlank(const QString& line)
{
    return stripComment(line).trimmed().isEmpty();
}

QString nextItem(const QString& line, QString& item)
{
    return line.mid(takeItem(line, 0, item));
}

QStringList splitItems(const QString& line)
{
    QStringList items;
    QString item;
    for (int at = 0; at < line.size();) {
        at = takeItem(line, at, item);
        if (!item.isEmpty())
            items.append(item);
    }
    return items;
}

QStringList itemsAfter(const QString& line, const QString& prefix)
{
    return line.startsWith(prefix) ? splitItems(line.mid(prefix.size())) : QStringList();
}

bool startsWithItems(const QString& line, QStringList& list, int minCount, const QString& prefix)
{
    list = itemsAfter(line, prefix);
    return line.startsWith(prefix) && list.size() >= minCount;
}

QString quoted(const QString& text)
{
    QString escaped = text;
    escaped.replace(doubleQuote, QLatin1String("\\\""));
    return doubleQuote + escaped + doubleQuote;
}

QString commaQuoted(const QString& text)
{
    return QLatin1Char(',') + quoted(text);
}

QString quoteList(const QStringList& list)
{
    QString line;
    for (const QString& item : list)
        line += doubleQuote + item + QLatin1String("\" ");
    return line.simplified();
}

QString csvField(const QString& line, QString& field)
{
    const QChar comma = QLatin1Char(',');
    if (!line.startsWith(doubleQuote)) {
        const int end = line.indexOf(comma);
        field = line.left(end);
        return end < 0 ? QString() : line.mid(end + 1);
    }
    field.clear();
    int i = 1;
    for (; i < line.size(); ++i) {
        if (line[i] == doubleQuote) {
            ++i;
            if (i == line.size() || line[i] != doubleQuote)
                break;
        }
        field += line[i];
    }
    const int end = line.indexOf(comma, i);
    return end < 0 ? QString() : line.mid(end + 1);
}

QString csvQuoted(const QString& text)
{
    QString field = text;
    field.replace(doubleQuote, QLatin1String("\"\""));
    if (field.size() > text.size() || text.contains(QLatin1Char(',')))
        return doubleQuote + field + doubleQuote;
    return text;
}

QString groupThousands(const QString& digits)
{
    QString grouped = digits;
    const int point = digits.indexOf(QLatin1Char('.'));
    for (int at = (point < 0 ? digits.size() : point) - 3; at > 0; at -= 3) {
        if (digits[at - 1].isDigit() && digits[at].isDigit())
            grouped.insert(at, QLatin1Char(','));
    }
    return grouped;
}

QString spaces(int n)
{
    static const QString table(blankTableSize, QLatin1Char(' '));
    return table.left(qBound(0, n, blankTableSize));
}

QString padded(const QString& text, int n)
{
    return text + spaces(n - text.size());
}
