#include "spectrum/ComparedLanes.h"

#include "common/LaneVector.h"
#include "spectrum/HeldLanes.h"

namespace {

template<LineMode mode>
void compare(const EdgeGroup& g, bool hold, int lane, ComparedLanes& out)
{
    HeldLanes held;
    if (hold && any(g.close))
        held = holdGap<mode>(g, {-1e300, 1e300, V{}});
    for (int i = 0; i < g.task.n; ++i)
        store(out.values + i * laneStride + lane, comparedAt<mode, true>(g, held, i));
    storeMarks(held.held, out.held + lane);
    storeMarks(held.unsound, out.unsound + lane);
}

} // namespace

namespace lanes::LANE_SET {

void compareLanes(const EdgeTask& task, const EdgeLanes& edges, const double* mu, int count,
                  bool holdGap, ComparedLanes& out)
{
    for (int lane = 0; lane < count; lane += width) {
        const EdgeGroup g(task, edges, mu, lane);
        switch (g.mode()) {
        case LineMode::Victoreen:
            compare<LineMode::Victoreen>(g, holdGap, lane, out);
            break;
        case LineMode::Bent:
            compare<LineMode::Bent>(g, holdGap, lane, out);
            break;
        case LineMode::Straight:
            compare<LineMode::Straight>(g, holdGap, lane, out);
            break;
        }
    }
}

} // namespace lanes::LANE_SET
