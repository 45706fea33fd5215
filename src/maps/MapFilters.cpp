// The two filters of a map against single positions that stand out.
#include "maps/Analyzed2DRes.h"

#include "common/Constants.h"

#include <QDebug>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double noValue = std::numeric_limits<double>::quiet_NaN();

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
    if (data_.empty())
        return false;
    const bool walkable = qint64(stepper.columns()) * stepper.rows() <= maxPositions;
    if (!walkable)
        qDebug() << "Too many positions to filter in map" << name;
    return walkable;
}

void Analyzed2DRes::startProcessed()
{
    procData_.reset(data_.size(), 0, procData_.size());
    procMin = runningMinStart;
    procMax = runningMaxStart;
}

/// The value that filters see: none of a position that failed.
double Analyzed2DRes::measuredAt(int x, int y) const
{
    return isLeftOut(x, y) ? noValue : valueAt(x, y);
}

/// A failed position stays 0 in the processed field, out of its extremes; false for others.
bool Analyzed2DRes::keepLeftOut(const AnalyzeCond& at)
{
    if (!isLeftOut(at.cx, at.cy))
        return false;
    at.fillBlock(procData_.data(), 0.0);
    return true;
}

void Analyzed2DRes::setDeglitchConds(double f, double r)
{
    deglitchFactor = f;
    deglitchRange = r;
}

/// How far a position lies off the line through two neighbours; nan unless all three are finite
/// values of the map.
double Analyzed2DRes::bendBetween(const AnalyzeCond& at, int dx, int dy) const
{
    if (!contains(at.cx - dx, at.cy - dy) || !contains(at.cx + dx, at.cy + dy))
        return noValue;
    const double bend =
        std::fabs(2 * measuredAt(at.cx, at.cy) - measuredAt(at.cx - dx, at.cy - dy) -
                  measuredAt(at.cx + dx, at.cy + dy));
    return std::isfinite(bend) ? bend : noValue;
}

/// Mean of the bends in row and column that there are, 0.0 without any.
double Analyzed2DRes::neighbourRoughness(const AnalyzeCond& at) const
{
    const double dH = bendBetween(at, at.stepX, 0);
    const double dV = bendBetween(at, 0, at.stepY);
    if (std::isnan(dH))
        return std::isnan(dV) ? 0.0 : dV;
    return std::isnan(dV) ? dH : (dH + dV) / 2;
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
        if (contains(n[0], n[1]) && std::isfinite(measuredAt(n[0], n[1]))) {
            sum += measuredAt(n[0], n[1]);
            ++count;
        }
    }
    return count > 0 ? sum / count : measuredAt(at.cx, at.cy);
}

void Analyzed2DRes::storeProcessed(const AnalyzeCond& at, double v)
{
    if (std::isfinite(v)) {
        procMax = std::max(procMax, v);
        procMin = std::min(procMin, v);
    }
    at.fillBlock(procData_.data(), v);
}

/// A sum of large values may overflow: no reason to lose a finite one.
void Analyzed2DRes::replaceProcessed(const AnalyzeCond& at, double v)
{
    const double measured = measuredAt(at.cx, at.cy);
    storeProcessed(at, std::isfinite(v) ? v : measured);
}

void Analyzed2DRes::deglitch()
{
    if (!canFilter())
        return;
    startProcessed();
    double sum = 0.0;
    qint64 count = 0;
    forEachPosition(stepper, "deglitch", [&](const AnalyzeCond& at) {
        const double d = neighbourRoughness(at);
        at.fillBlock(procData_.data(), d);
        if (std::isfinite(measuredAt(at.cx, at.cy))) {
            sum += d;
            ++count;
        }
    });
    const double threshold = deglitchFactor * (sum / static_cast<double>(count));
    const double range = (max - min) * deglitchRange;
    forEachPosition(stepper, "deglitch 2", [&](const AnalyzeCond& at) {
        if (keepLeftOut(at))
            return;
        const double v = measuredAt(at.cx, at.cy);
        const bool rough = sample(procData_, at.cx, at.cy) > threshold;
        const bool glitch = rough && (v < min + range || v > max - range);
        if (glitch || !std::isfinite(v))
            replaceProcessed(at, stepNeighbourMean(at));
        else
            storeProcessed(at, v);
    });
    if (useProc_)
        genImg();
}

double Analyzed2DRes::commonLevel(double limit) const
{
    double sum = 0.0;
    qint64 count = 0;
    forEachPosition(stepper, "deglitch2", [&](const AnalyzeCond& at) {
        const double v = measuredAt(at.cx, at.cy);
        if (std::isfinite(v) && std::fabs(v) < limit) {
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
        if (contains(x, y) && std::fabs(measuredAt(x, y) - mean) < limit) {
            sum += measuredAt(x, y);
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
    startProcessed();
    forEachPosition(stepper, "deglitch 2", [&](const AnalyzeCond& at) {
        if (keepLeftOut(at))
            return;
        const double v = measuredAt(at.cx, at.cy);
        if (std::fabs(v - mean) > limit || !std::isfinite(v))
            replaceProcessed(at, levelNeighbourMean(at, mean, limit));
        else
            storeProcessed(at, v);
    });
    if (useProc_)
        genImg();
}
