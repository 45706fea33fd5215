#include "maps/AnalyzeCond.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace {

/// Bound of every coordinate and step of a walk: the sum of two of them is still an integer.
constexpr int walkLimit = std::numeric_limits<int>::max() / 2;

int saturated(qint64 v)
{
    return static_cast<int>(std::clamp<qint64>(v, -walkLimit, walkLimit));
}

/// Cut toward zero; values past the limit end there, nan at 0.
int cutToInt(double v)
{
    if (v != v)
        return 0;
    return static_cast<int>(std::clamp<double>(v, -walkLimit, walkLimit));
}

int stepFor(int argument, int half)
{
    return saturated(argument < 0 ? 2 * qint64(half) + 1 : argument);
}

int positionsAlong(int from, int to, int half, int step)
{
    const qint64 span = qint64(to) - from - half - 1;
    return saturated(std::max<qint64>(span / std::max(step, 1) + 1, 1));
}

} // namespace

AnalyzeCond::AnalyzeCond(int imageWidth, int imageHeight, int halfBlockX, int halfBlockY,
                         const QRectF& area, int stepArgX, int stepArgY)
    : width(imageWidth)
    , height(imageHeight)
    , halfX(halfBlockX)
    , halfY(halfBlockY)
    , x0(cutToInt(area.x()))
    , x1(cutToInt(area.x() + area.width()))
    , stepX(stepFor(stepArgX, halfBlockX))
    , y0(cutToInt(area.y()))
    , y1(cutToInt(area.y() + area.height()))
    , stepY(stepFor(stepArgY, halfBlockY))
{
    if (x0 > x1)
        std::swap(x0, x1);
    if (y0 > y1)
        std::swap(y0, y1);
    start();
}

bool AnalyzeCond::cutToImage()
{
    x0 = std::clamp(x0, 0, std::max(width, 0));
    x1 = std::clamp(x1, 0, std::max(width, 0));
    y0 = std::clamp(y0, 0, std::max(height, 0));
    y1 = std::clamp(y1, 0, std::max(height, 0));
    start();
    return x0 < x1 && y0 < y1;
}

void AnalyzeCond::start()
{
    cx = saturated(qint64(x0) + halfX);
    cy = saturated(qint64(y0) + halfY);
    newLine = true;
}

bool AnalyzeCond::next()
{
    newLine = false;
    // A step below one pixel, which a negative half width typed by hand brings about, would keep
    // the walk from ever ending.
    cx = saturated(qint64(cx) + std::max(stepX, 1));
    if (cx < x1)
        return true;
    newLine = true;
    cx = saturated(qint64(x0) + halfX);
    cy = saturated(qint64(cy) + std::max(stepY, 1));
    return cy < y1;
}

int AnalyzeCond::columns() const
{
    return positionsAlong(x0, x1, halfX, stepX);
}

int AnalyzeCond::rows() const
{
    return positionsAlong(y0, y1, halfY, stepY);
}

double AnalyzeCond::progress() const
{
    if (y1 == y0)
        return 0.0;
    return (double(cy) - y0) / (double(y1) - y0) * 100;
}

void AnalyzeCond::fillBlock(double* field, double v) const
{
    fillBlockAt(field, cx, cy, halfX, halfY, v);
}
