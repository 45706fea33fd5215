#include "Truth.h"

#include <QTextStream>

#include <algorithm>
#include <limits>

namespace {
/// A pixel with less edge step than this counts as free of sample.
constexpr double leastStep = 0.02;
constexpr int largestSize = 4096;
constexpr char easyName[] = "easy";
constexpr char hardName[] = "hard";

QString shortNumber(double value)
{
    return QString::number(value, 'g', 7);
}

/// The items of a header line "# Key item ...", empty when the key differs.
QStringList headerItems(const QString& line, const QString& key)
{
    const QStringList items = line.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (items.size() < 3 || items[0] != QLatin1String("#") || items[1] != key) {
        return {};
    }
    return items.mid(2);
}

bool readHeader(QTextStream& in, Truth* truth)
{
    const QStringList kind = headerItems(in.readLine(), QStringLiteral("Experiment"));
    const QStringList size = headerItems(in.readLine(), QStringLiteral("Size"));
    const QStringList half = headerItems(in.readLine(), QStringLiteral("HalfWidth"));
    if (kind.size() != 1 ||
        (kind[0] != QLatin1String(easyName) && kind[0] != QLatin1String(hardName))) {
        return false;
    }
    if (size.size() != 2 || size[0] != size[1] || half.size() != 1) {
        return false;
    }
    truth->difficulty = kind[0] == QLatin1String(hardName) ? Difficulty::Hard : Difficulty::Easy;
    truth->size = size[0].toInt();
    truth->halfWidth = half[0].toInt();
    return truth->size > 0 && truth->size <= largestSize && truth->halfWidth >= 0;
}

bool readPixel(const QString& line, Truth* truth)
{
    const QStringList items = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (items.size() != 5 + speciesCount) {
        return false;
    }
    truth->usable.append(items[2].toInt() == 1);
    truth->edgeStep.append(items[3].toDouble());
    for (int s = 0; s < speciesCount; ++s) {
        truth->fractions[static_cast<std::size_t>(s)].append(items[4 + s].toDouble());
    }
    truth->shift.append(items[4 + speciesCount].toDouble());
    return true;
}
} // namespace

QString truthText(const Phantom& phantom)
{
    const int size = phantom.conditions.size;
    QString text = QStringLiteral("# Experiment %1\n# Size %2 %2\n# HalfWidth %3\n")
                       .arg(QLatin1String(phantom.conditions.isHard() ? hardName : easyName))
                       .arg(size)
                       .arg(phantom.conditions.halfWidth);
    for (int i = 0; i < size * size; ++i) {
        const QPoint p(i % size, i / size);
        const bool dark = p.x() < phantom.darkCorner && p.y() < phantom.darkCorner;
        const bool usable = !dark && !phantom.hot.contains(p) && !phantom.dead.contains(p);
        text += QStringLiteral("%1 %2 %3 %4")
                    .arg(p.x())
                    .arg(p.y())
                    .arg(usable ? 1 : 0)
                    .arg(shortNumber(phantom.edgeStep[i]));
        for (const QVector<double>& fractions : phantom.fractions) {
            text += QLatin1Char(' ') + shortNumber(fractions[i]);
        }
        text += QLatin1Char(' ') + shortNumber(phantom.shift[i]) + QLatin1Char('\n');
    }
    return text;
}

bool readTruth(QTextStream& in, Truth* truth, QString* error)
{
    if (!readHeader(in, truth)) {
        *error = QStringLiteral("no kind of experiment, size and half width at its head");
        return false;
    }
    const int pixels = truth->size * truth->size;
    for (int i = 0; i < pixels; ++i) {
        if (!readPixel(in.readLine(), truth)) {
            *error = QStringLiteral("pixel %1 of %2 is missing or not whole").arg(i).arg(pixels);
            return false;
        }
    }
    return true;
}

BlockTruth blockTruth(const Truth& truth, int x, int y, int halfWidth)
{
    BlockTruth block;
    if (x < halfWidth || y < halfWidth || x + halfWidth >= truth.size ||
        y + halfWidth >= truth.size) {
        return block;
    }
    const int side = 2 * halfWidth + 1;
    const double share = 1.0 / (side * side);
    block.lit = block.usable = true;
    block.leastStep = std::numeric_limits<double>::max();
    for (int k = 0; k < side * side; ++k) {
        const int i = (y - halfWidth + k / side) * truth.size + x - halfWidth + k % side;
        block.lit = block.lit && truth.usable[i];
        block.usable = block.usable && truth.usable[i] && truth.edgeStep[i] >= leastStep;
        block.shift += truth.shift[i] * share;
        block.edgeStep += truth.edgeStep[i] * share;
        block.leastStep = std::min(block.leastStep, truth.edgeStep[i]);
        block.mostStep = std::max(block.mostStep, truth.edgeStep[i]);
        for (std::size_t s = 0; s < block.fractions.size(); ++s) {
            block.fractions[s] += truth.fractions[s][i] * truth.edgeStep[i] * share;
        }
    }
    if (block.usable) {
        for (double& fraction : block.fractions) {
            fraction /= block.edgeStep;
        }
    }
    return block;
}
