#pragma once

#include "calibration/ShiftMap.h"
#include "spectrum/LaneComparison.h"
#include "walk/WalkKernel.h"

class Analyzed2DRes;

/// The energy shift of a walk's positions against the standard, one value each. The walk's source
/// normalises by the conditions' background and suggested edge.
class CalibKernel : public WalkKernel
{
public:
    /// The standard is as comparedStandard() gives it.
    CalibKernel(const XafsSpectrum& standard, const CalibConditions& conditions);

    Stage stage() const override { return Stage::Curve; }
    int values() const override { return 1; }
    QStringList valueNames() const override { return {QStringLiteral("shift [eV]")}; }
    std::unique_ptr<WalkKernel> forWorker() const override;
    void plain(const PlainPosition& at, int lane, TileResult& out) override;
    Lanes lanes(const Tile& tile, TileResult& out) override;

private:
    BlockShift shiftOf(const Tile& tile, int lane) const;

    const XafsSpectrum standard_;
    const CalibConditions conditions_;
    LaneComparison comparison_;
};

/// Fills a shift map and its picture, and takes the statistics, in walking order.
class CalibSink : public WalkSink
{
public:
    /// All that it fills outlives it.
    CalibSink(ShiftMap& shiftMap, Analyzed2DRes& picture, CalibStatistics& statistics);

    void take(const WalkRun& run, const TileResult& result) override;

private:
    ShiftMap& shiftMap_;
    Analyzed2DRes& picture_;
    CalibStatistics& statistics_;
};
