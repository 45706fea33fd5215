#include "analysis/elements/ElementLanes.h"

#include "common/LaneVector.h"

namespace {

/// The lanes of a vector.
struct Group
{
    const ElementLaneTask& task;
    const double* mu; ///< of the first lane

    V muAt(int i) const { return load(mu + i * laneStride); }
    V valueAt(int segment, double E) const
    {
        const double x0 = task.E[segment];
        const V y0 = muAt(segment);
        return (muAt(segment + 1) - y0) / (task.E[segment + 1] - x0) * (E - x0) + y0;
    }
};

V meanCrossing(const Group& g, const ElementLaneRow& row, V level)
{
    V sum{};
    V count{};
    V next = g.muAt(row.crossFrom);
    for (int k = row.crossFrom; k < row.crossTo; ++k) {
        const V y = next;
        next = g.muAt(k + 1);
        const M rises = (y < level) & (level <= next);
        sum += only(rises, all(g.task.middles[k]));
        count += only(rises, all(1.0));
    }
    return only(count > 0.0, sum / count - row.energy);
}

V meanOver(const Group& g, const ElementLaneRow& row, V base)
{
    if (row.roiFrom >= row.roiTo)
        return V{};
    V sum{};
    for (int k = row.roiFrom; k < row.roiTo; ++k)
        sum += g.muAt(k) - base;
    return sum / double(row.roiTo - row.roiFrom);
}

} // namespace

namespace lanes::LANE_SET {

void readElements(const ElementLaneTask& task, const double* mu, int count,
                  ElementLaneReadings* out)
{
    for (int lane = 0; lane < count; lane += width) {
        const Group g{task, mu + lane};
        for (int i = 0; i < task.rows; ++i) {
            const ElementLaneRow& row = task.row[i];
            const V above = g.valueAt(row.top, row.topE);
            const V below = g.valueAt(row.bottom, row.bottomE);
            store(out[i].above + lane, above);
            store(out[i].below + lane, below);
            store(out[i].shift + lane, meanCrossing(g, row, (above + below) / 2.0));
            store(out[i].roi + lane, meanOver(g, row, below));
        }
    }
}

} // namespace lanes::LANE_SET
