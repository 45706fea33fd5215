// The two filters of a map against single positions that stand out.
#include "maps/Analyzed2DRes.h"

#include "common/Constants.h"

#include <QDebug>

#include <cmath>

namespace {

/// Visits every position of the walk, logging the start of each row.
template<typename Visit>
void forEachPosition(AnalyzeCond walk, const char* label, Visit visit)
{
    walk.start();
    do {
        if (walk.newLine)
            qDebug() << label << walk.cy;
        visit(walk);
    } while (walk.next());
}

} // namespace

bool Analyzed2DRes::canFilter() const
{
    if (data_.empty() || procData_.empty())
        return false;
    const bool walkable = qint64(stepper.columns()) * stepper.rows() <= maxPositions;
    if (!walkable)
        qDebug() << "Too many positions to filter in map" << name;
    return walkable;
}

void Analyzed2DRes::setDeglitchConds(double f, double r)
{
    deglitchFactor = f;
    deglitchRange = r;
}

double Analyzed2DRes::neighbourRoughness(const AnalyzeCond& at) const
{
    const double v2 = 2 * valueAt(at.cx, at.cy);
    const int left = at.cx - at.stepX;
    const int right = at.cx + at.stepX;
    const int up = at.cy - at.stepY;
    const int down = at.cy + at.stepY;
    const bool hasH = left >= 0 && left < at.width && right >= 0 && right < at.width;
    const bool hasV = up >= 0 && up < at.height && down >= 0 && down < at.height;
    const double dH = hasH ? std::fabs(v2 - valueAt(left, at.cy) - valueAt(right, at.cy)) : 0.0;
    const double dV = hasV ? std::fabs(v2 - valueAt(at.cx, up) - valueAt(at.cx, down)) : 0.0;
    return hasH && hasV ? (dH + dV) / 2 : dH + dV;
}

double Analyzed2DRes::stepNeighbourMean(const AnalyzeCond& at) const
{
    const int neighbours[4][2] = {{at.cx - at.stepX, at.cy},
                                  {at.cx + at.stepX, at.cy},
                                  {at.cx, at.cy - at.stepY},
                                  {at.cx, at.cy + at.stepY}};
    double sum = 0.0;
    int count = 0;
    for (const auto& n : neighbours) {
        if (contains(n[0], n[1])) {
            sum += valueAt(n[0], n[1]);
            ++count;
        }
    }
    return count > 0 ? sum / count : valueAt(at.cx, at.cy);
}

void Analyzed2DRes::storeProcessed(const AnalyzeCond& at, double v)
{
    if (v > procMax)
        procMax = v;
    if (procMin > v)
        procMin = v;
    at.fillBlock(procData_.data(), v);
}

void Analyzed2DRes::deglitch()
{
    if (!canFilter())
        return;
    double sum = 0.0;
    qint64 count = 0;
    forEachPosition(stepper, "deglitch", [&](const AnalyzeCond& at) {
        const double d = neighbourRoughness(at);
        at.fillBlock(procData_.data(), d);
        sum += d;
        ++count;
    });
    const double threshold = deglitchFactor * (sum / static_cast<double>(count));
    const double range = (max - min) * deglitchRange;
    procMin = runningMinStart;
    procMax = runningMaxStart;
    forEachPosition(stepper, "deglitch 2", [&](const AnalyzeCond& at) {
        const double v = valueAt(at.cx, at.cy);
        const bool rough = sample(procData_, at.cx, at.cy) > threshold;
        const bool replace = rough && (v < min + range || v > max - range);
        storeProcessed(at, replace ? stepNeighbourMean(at) : v);
    });
    if (useProc)
        genImg();
}

double Analyzed2DRes::commonLevel(double limit) const
{
    double sum = 0.0;
    qint64 count = 0;
    forEachPosition(stepper, "deglitch2", [&](const AnalyzeCond& at) {
        const double v = valueAt(at.cx, at.cy);
        if (std::fabs(v) < limit) {
            sum += v;
            ++count;
        }
    });
    return count > 0 ? sum / static_cast<double>(count) : 0.0;
}

double Analyzed2DRes::levelNeighbourMean(const AnalyzeCond& at, double mean, double limit) const
{
    static constexpr int around[8][2] = {{-1, -1}, {-1, 0}, {-1, 1}, {0, -1},
                                         {0, 1},   {1, -1}, {1, 0},  {1, 1}};
    double sum = 0.0;
    int count = 0;
    for (const auto& d : around) {
        const int x = at.cx + d[0] * at.stepX;
        const int y = at.cy + d[1] * at.stepY;
        if (contains(x, y) && std::fabs(valueAt(x, y) - mean) < limit) {
            sum += valueAt(x, y);
            ++count;
        }
    }
    return count > 0 ? sum / count : 0.0;
}

void Analyzed2DRes::deglitch2(double limit)
{
    if (!canFilter())
        return;
    const double mean = commonLevel(limit);
    procMin = runningMinStart;
    procMax = runningMaxStart;
    forEachPosition(stepper, "deglitch 2", [&](const AnalyzeCond& at) {
        const double v = valueAt(at.cx, at.cy);
        const bool off = std::fabs(v - mean) > limit;
        storeProcessed(at, off ? levelNeighbourMean(at, mean, limit) : v);
    });
    if (useProc)
        genImg();
}
