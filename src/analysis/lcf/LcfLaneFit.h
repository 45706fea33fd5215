#pragma once

#include "analysis/lcf/LcfFit.h"
#include "analysis/lcf/LcfLanes.h"
#include "walk/Tile.h"

#include <memory>

/// The lane form of a plan's fits over the energies of one walk. A worker's own; the plan outlives
/// it and may fit others meanwhile.
class LcfLaneFit
{
public:
    LcfLaneFit(LcfPlan& plan, const EdgePlan& edges);

    /// There is a lane form: not for too many references, nor for curves that don't ascend.
    bool isUsable() const { return usable_; }

    /// Fits the lanes of a tile; valid until the next. Lanes whose lines are not fitted mean
    /// nothing.
    const LcfLaneFits& fit(const Tile& tile);

private:
    Q_DISABLE_COPY(LcfLaneFit)

    void takeCurves(const LcfPlan& plan);
    void takeColumns(const LcfPlan& plan);
    void takePoints(const LcfPlan& plan);
    void takeFactors(const LcfPlan& plan);

    LcfLaneTask task_{};
    decltype(&lanes::sse2::fitLcfLanes) fit_;
    bool usable_ = false;
    std::vector<LcfLaneCurve> curves_;
    std::vector<double> rowWeights_;
    std::vector<double> rows_;
    std::vector<double> columns_;
    std::vector<unsigned char> isFitted_;
    std::vector<unsigned char> isResidual_;
    std::vector<double> fitValues_;
    std::vector<double> lower_;
    std::vector<double> upper_;
    std::vector<int> pivots_;
    std::vector<double> scratch_;
    std::unique_ptr<LcfLaneFits> fits_;
};
