#include "batch/BatchFile.h"

#include "common/TextFile.h"
#include "common/TextItems.h"

namespace {

constexpr qint64 longestFile = 16 * 1024 * 1024;

bool hasLongLine(const QString& text)
{
    int lineStart = 0;
    while (lineStart <= text.size()) {
        const int found = text.indexOf(QLatin1Char('\n'), lineStart);
        const int end = found < 0 ? text.size() : found;
        if (end - lineStart > longestTextLine)
            return true;
        lineStart = end + 1;
    }
    return false;
}

} // namespace

QString readBatchFile(const QString& fname, QString& text)
{
    QString read;
    const TextFileResult result = readTextFile(fname, longestFile, read);
    if (result == TextFileResult::CantOpen)
        return QStringLiteral("Can't open batch file ") + quoted(fname);
    QString why;
    if (result == TextFileResult::TooLong)
        why = QStringLiteral("is too long");
    else if (hasLongLine(read))
        why = QStringLiteral("has a line that is too long");
    if (!why.isEmpty())
        return QStringLiteral("Batch file %1 %2 and is not loaded").arg(quoted(fname), why);
    text = read;
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    return {};
}
