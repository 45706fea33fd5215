#include "selection/TextKind.h"

#include "common/TextItems.h"
#include "spectrum/ReferenceFile.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextStream>

#include <algorithm>

namespace {

constexpr qint64 bytesLookedAt = 16 * 1024;
constexpr int fewestPoints = 5;
/// Least and greatest energy that a scan is made at [eV].
constexpr double leastEnergy = 100.0;
constexpr double greatestEnergy = 200000.0;

/// The first whole lines of a file.
QByteArray startOf(const QString& path)
{
    QFile file(path);
    // Opening a pipe may never return, and a device may never end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    QByteArray start = file.read(bytesLookedAt);
    if (!file.atEnd())
        start.truncate(std::max(start.lastIndexOf('\n'), start.lastIndexOf('\r')) + 1);
    return start;
}

bool isWholeNumber(const QString& text)
{
    bool ok = false;
    return text.toInt(&ok) >= 0 && ok;
}

/// Pairs of whole numbers in two columns, and either their detector's size or a name that says it.
bool isBadPixels(const QByteArray& start, const QString& name)
{
    static const QRegularExpression words(QStringLiteral("bad|dead|hot|err|defect"),
                                          QRegularExpression::CaseInsensitiveOption);
    bool told = words.match(name).hasMatch();
    int pairs = 0;
    for (const QByteArray& bytes : start.split('\n')) {
        const QString line = QString::fromUtf8(bytes);
        QStringList size;
        if (startsWithItems(line.simplified(), size, 2, QStringLiteral("# Size")))
            told = true;
        const QStringList items = splitItems(stripComment(line));
        if (items.isEmpty())
            continue;
        if (items.size() != 2 || !isWholeNumber(items[0]) || !isWholeNumber(items[1]))
            return false;
        ++pairs;
    }
    return told && pairs > 0;
}

bool isReference(const QByteArray& start)
{
    QTextStream in(start);
    const QVector<QPointF> points = readReferenceFile(in).mu.points;
    if (points.size() < fewestPoints)
        return false;
    const auto isEnergy = [](const QPointF& p) {
        return p.x() >= leastEnergy && p.x() <= greatestEnergy;
    };
    const auto byEnergy = [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); };
    const bool runsOneWay = std::is_sorted(points.begin(), points.end(), byEnergy) ||
                            std::is_sorted(points.rbegin(), points.rend(), byEnergy);
    return std::all_of(points.begin(), points.end(), isEnergy) && runsOneWay &&
           points.first().x() != points.last().x();
}

} // namespace

TextKind textKindOf(const QString& path)
{
    const QByteArray start = startOf(path);
    if (start.contains('\0'))
        return TextKind::Other;
    if (isBadPixels(start, QFileInfo(path).fileName()))
        return TextKind::BadPixels;
    return isReference(start) ? TextKind::Reference : TextKind::Other;
}
