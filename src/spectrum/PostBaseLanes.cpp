#include "spectrum/PostBaseLanes.h"

#include "common/LaneVector.h"
#include "spectrum/HeldLanes.h"

namespace {

template<LineMode mode>
void form(const EdgeGroup& g, double* values)
{
    const LineValues<mode> lines = g.template values<mode>();
    for (int i = 0; i < g.task.n; ++i) {
        const V post = lines.post(i);
        store(values + i * laneStride, (g.muAt(i) - post) / (post - lines.pre(i)));
    }
}

} // namespace

namespace lanes::LANE_SET {

void postBaseLanes(const EdgeTask& task, const EdgeLanes& edges, const double* mu, int count,
                   double* values)
{
    for (int lane = 0; lane < count; lane += width) {
        const EdgeGroup g(task, edges, mu, lane);
        switch (g.mode()) {
        case LineMode::Victoreen:
            form<LineMode::Victoreen>(g, values + lane);
            break;
        case LineMode::Bent:
            form<LineMode::Bent>(g, values + lane);
            break;
        case LineMode::Straight:
            form<LineMode::Straight>(g, values + lane);
            break;
        }
    }
}

} // namespace lanes::LANE_SET
