#include "analysis/diagnostics/DarkCheckFiles.h"

#include "common/FieldText.h"
#include "common/SafeFile.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace {

/// A line a bin: its number, the value where it begins, and its pixels.
QByteArray histogramText(const DarkCheckResult& result, const DarkCheckSettings& settings)
{
    QByteArray text = QStringLiteral("# min, max = (%1, %2)  bins = %3\n")
                          .arg(fieldText(0.0), fieldText(settings.histogramMax))
                          .arg(settings.bins)
                          .toUtf8();
    for (std::size_t bin = 0; bin < result.counts.size(); ++bin) {
        const double begin = double(bin) * settings.histogramMax / settings.bins;
        text += QByteArray::number(qulonglong(bin)) + '\t' + shortestText(begin).toUtf8() + '\t' +
                QByteArray::number(qulonglong(result.counts[bin])) + '\n';
    }
    return text;
}

QByteArray lengthsText(const QVector<qint64>& lengths)
{
    QByteArray text;
    for (const qint64 length : lengths) {
        if (!text.isEmpty())
            text += '\t';
        text += QByteArray::number(length);
    }
    return text + '\n';
}

/// As ErrPoints knows them.
quint64 keyOf(const QPoint& p)
{
    return quint64(quint32(p.x())) << 32 | quint32(p.y());
}

} // namespace

DarkCheckDifferences differencesOf(const DarkCheckResult& result, const ErrPoints& badPixels)
{
    DarkCheckDifferences differences;
    QSet<quint64> dark;
    dark.reserve(result.points.size());
    for (const QPoint& point : result.points) {
        dark.insert(keyOf(point));
        if (!badPixels.contains(point.x(), point.y()))
            differences.onlyDark.append(point);
    }
    for (const QPoint& point : badPixels.points()) {
        if (!dark.contains(keyOf(point)))
            differences.onlyListed.append(point);
    }
    return differences;
}

bool writeDarkCheck(const DarkCheckResult& result, const DarkCheckSettings& settings,
                    const DarkCheckDifferences& differences)
{
    const std::pair<QString, QByteArray> files[] = {
        {QStringLiteral("dark-hg-all.dat"), histogramText(result, settings)},
        {QStringLiteral("dark-allDarkPoints.dat"),
         ErrPoints::definition(result.size, result.points)},
        {QStringLiteral("dark-allDarkPointNums.dat"), lengthsText(result.lengths)},
        {QStringLiteral("dark-allDarkPoints-onlyInPs1.dat"),
         ErrPoints::definition(result.size, differences.onlyDark)},
        {QStringLiteral("dark-allDarkPoints-onlyInErrPs.dat"),
         ErrPoints::definition(result.size, differences.onlyListed)}};
    return std::all_of(std::begin(files), std::end(files), [](const auto& file) {
        if (!writeFile(file.first, file.second))
            return false;
        logWritten(file.first);
        return true;
    });
}
