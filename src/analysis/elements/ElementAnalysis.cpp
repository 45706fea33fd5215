#include "analysis/elements/ElementAnalysis.h"

#include <algorithm>
#include <cmath>

int firstMiddleAbove(const Spectrum& s, double E)
{
    const int last = s.size() - 1;
    for (int i = 0; i < last; ++i) {
        if ((s.points.at(i).x() + s.points.at(i + 1).x()) / 2 > E)
            return i;
    }
    return std::max(last, 0);
}

namespace {

/// Mean shift of the points from `first` on, before `end`, at which the curve rises through a
/// level: a noisy edge has several.
double meanCrossing(const Spectrum& s, int first, int end, double level, double energy)
{
    const QPointF* const p = s.points.constData();
    const double shift = s.shift();
    double sum = 0.0;
    double count = 0.0;
    for (int k = first; k < end; ++k) {
        if (p[k].y() < level && level <= p[k + 1].y()) {
            sum += (p[k].x() + p[k + 1].x()) / 2 - shift;
            count += 1.0;
        }
    }
    return count > 0.0 ? sum / count - energy : 0.0;
}

double meanOver(const Spectrum& s, int first, int end, double base)
{
    if (first >= end)
        return 0.0;
    double sum = 0.0;
    for (int k = first; k < end; ++k)
        sum += s.points.at(k).y() - base;
    return sum / double(end - first);
}

ElementValues valuesOf(const ElementRow& row, const ElementReading& reading,
                       const ElementConditions& c)
{
    ElementValues v{c.bgJump, 0.0, c.bgJump, c.bgJump, c.bgDE, c.bgRoi, c.bgRoi, reading.jump()};
    if (!(v.rawJump > row.threshold))
        return v;
    v.jump = v.rawJump;
    v.above = reading.above;
    v.below = reading.below;
    v.shift = reading.shift;
    if (row.noNeg && reading.roi < 0.0)
        return v;
    v.roi = reading.roi;
    v.roiRatio = reading.roi / v.jump;
    return v;
}

} // namespace

ElementReading readElement(const Spectrum& s, const ElementRow& row)
{
    const double shift = s.shift();
    const double top = row.energy + row.dE + shift;
    const double bottom = row.energy - row.dE + shift;
    ElementReading reading{s.yAt(top), s.yAt(bottom), 0.0, 0.0};
    const double half = (reading.above + reading.below) / 2;
    reading.shift =
        meanCrossing(s, firstMiddleAbove(s, bottom), firstMiddleAbove(s, top), half, row.energy);
    reading.roi = meanOver(s, firstMiddleAbove(s, row.roiFrom + shift),
                           firstMiddleAbove(s, row.roiTo + shift), reading.below);
    return reading;
}

QVector<ElementValues> judgeElements(const ElementConditions& conditions,
                                     const QVector<ElementReading>& readings)
{
    QVector<ElementValues> values;
    values.reserve(readings.size());
    for (int i = 0; i < readings.size(); ++i)
        values.append(valuesOf(conditions.rows.at(i), readings.at(i), conditions));
    double target = values.value(conditions.target).jump;
    if (target == 0.0)
        target = 1.0;
    for (ElementValues& v : values)
        v.jumpRatio = v.jump / target;
    return values;
}

QVector<ElementValues> analyzeElements(const Spectrum& s, const ElementConditions& conditions)
{
    QVector<ElementReading> readings;
    readings.reserve(conditions.rows.size());
    for (const ElementRow& row : conditions.rows)
        readings.append(readElement(s, row));
    return judgeElements(conditions, readings);
}

std::optional<double> PatternSums::correlation() const
{
    if (!(ratios_ > 0.0 && standards_ > 0.0))
        return std::nullopt;
    return products_ / std::sqrt(ratios_ * standards_);
}

std::optional<double> correlation(const QVector<ElementRow>& rows,
                                  const QVector<ElementValues>& values)
{
    PatternSums sums;
    for (int i = 0; i < values.size(); ++i) {
        if (rows.at(i).use)
            sums.add(values.at(i).jumpRatio, rows.at(i).stdRatio);
    }
    return sums.correlation();
}
