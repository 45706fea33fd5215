#include "display/CurveRange.h"

namespace {

/// Where a piece of a curve passes an energy.
void addCrossing(PlotRange& range, const QPointF& a, const QPointF& b, double energy)
{
    if ((a.x() < energy) != (b.x() < energy))
        range.add(a.y() + (b.y() - a.y()) * (energy - a.x()) / (b.x() - a.x()));
}

} // namespace

PlotRange valueRange(const Spectrum& s)
{
    const PlotRange bounds{s.yMin, s.yMax};
    if (std::isfinite(bounds.max - bounds.min) && bounds.min <= bounds.max)
        return bounds.widened().withAir();
    PlotRange range;
    for (const QPointF& point : s.points)
        range.add(point.y());
    return range.widened().withAir();
}

PlotRange energyRange(const Spectrum& s)
{
    PlotRange range;
    for (const QPointF& point : s.points)
        range.add(point.x() - s.shift());
    return range.widened();
}

void addSeen(PlotRange& range, const QVector<QPointF>& curve, double first, double last, double gap)
{
    for (int i = 0; i < curve.size(); ++i) {
        const QPointF& point = curve.at(i);
        if (point.x() >= first && point.x() <= last)
            range.add(point.y());
        if (i == 0 || std::abs(point.x() - curve.at(i - 1).x()) > gap)
            continue;
        addCrossing(range, curve.at(i - 1), point, first);
        addCrossing(range, curve.at(i - 1), point, last);
    }
}
