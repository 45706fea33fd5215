#include "batch/BatchFile.h"

#include "common/TextFile.h"
#include "common/TextItems.h"

namespace {

constexpr qint64 longestFile = 16 * 1024 * 1024;
/// An editor keeps a record for each line.
constexpr int mostLines = 1000000;

/// What speaks against showing the text; empty when nothing does.
QString faultOf(const QString& text)
{
    int lines = 1;
    int lineStart = 0;
    for (int i = 0; i <= text.size(); ++i) {
        if (i < text.size() && text[i] != QLatin1Char('\n'))
            continue;
        if (i - lineStart > longestTextLine)
            return QStringLiteral("has a line that is too long");
        lineStart = i + 1;
        if (++lines > mostLines)
            return QStringLiteral("has too many lines");
    }
    return {};
}

} // namespace

QString readBatchFile(const QString& fname, QString& text)
{
    QString read;
    const TextFileResult result = readTextFile(fname, longestFile, read);
    if (result == TextFileResult::CantOpen)
        return QStringLiteral("Can't open batch file ") + quoted(fname);
    const QString why =
        result == TextFileResult::TooLong ? QStringLiteral("is too long") : faultOf(read);
    if (!why.isEmpty())
        return QStringLiteral("Batch file %1 %2 and is not loaded").arg(quoted(fname), why);
    text = read;
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    return {};
}
