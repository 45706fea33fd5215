#pragma once

#include "spectrum/ComparedLanes.h"
#include "spectrum/EdgePlan.h"

/// Shifts of many spectra against one reference: the curves that are compared of all lanes at once,
/// then a search for each lane. One thread's; the reference outlives it and does not change.
class LaneComparison
{
public:
    explicit LaneComparison(const XafsSpectrum& ref);

    /// Takes the lanes below `count`. `holdGap`: curves are continued by the step where their lines
    /// come too close, else as they are. The plan outlives what is asked of these lanes.
    void take(const EdgePlan& plan, const EdgeLanes& edges, const double* mu, int count,
              bool holdGap);

    /// The lane's curve can't be compared, or is continued somewhere; with holdGap alone.
    bool isUnsound(int lane) const { return lanes_.unsound[lane] != 0; }
    bool isHeld(int lane) const { return lanes_.held[lane] != 0; }

    /// XafsSpectrum::findBestShift() of a lane with a fitted edge, to the last bit [eV].
    double findBestShift(int lane, double range, double step, double minStep) const;

private:
    const XafsSpectrum& ref_;
    const EdgePlan* plan_ = nullptr;
    const EdgeLanes* edges_ = nullptr;
    std::vector<double> compared_; ///< [energy][laneStride]
    ComparedLanes lanes_{};
};
