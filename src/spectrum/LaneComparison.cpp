#include "spectrum/LaneComparison.h"

#include "common/LaneForms.h"
#include "spectrum/ShiftSearch.h"

LaneComparison::LaneComparison(const XafsSpectrum& ref)
    : ref_(ref)
{
}

void LaneComparison::take(const EdgePlan& plan, const EdgeLanes& edges, const double* mu, int count,
                          bool holdGap)
{
    plan_ = &plan;
    edges_ = &edges;
    compared_.resize(std::size_t(plan.task().n) * laneStride);
    lanes_.values = compared_.data();
    LANE_FORM(compareLanes)(plan.task(), edges, mu, count, holdGap, lanes_);
}

double LaneComparison::findBestShift(int lane, double range, double step, double minStep) const
{
    const std::vector<double>& energies = plan_->energies();
    QVarLengthArray<double, 512> values(int(energies.size()));
    for (int i = 0; i < values.size(); ++i)
        values[i] = compared_[std::size_t(i) * laneStride + std::size_t(lane)];
    const double midx = edges_->midx[lane];
    ShiftSearch search(energies.data(), values.constData(), values.size(), midx, ref_);
    return search.find(midx - ref_.midx, range, step, minStep);
}
