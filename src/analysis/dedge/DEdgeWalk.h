#pragma once

#include "spectrum/LaneComparison.h"
#include "walk/WalkKernel.h"

class Analyzed2DRes;

/// What the shift of an edge is measured against. Energies in eV.
struct DEdgeConditions
{
    bool isMidPoint = true; ///< against the expected edge, else against the comparison spectrum
    double edgeE = 0.0;     ///< expected edge
    XafsSpectrum comparison;
    double range = 20.0;  ///< search of the comparison: first half range,
    double step = 1.0;    ///< its step,
    double minStep = 0.1; ///< and the finest step
};

/// The shift of a walk's edges, less the position's own energy shift, one value each [eV]: of the
/// mid point against the expected edge, or of the whole curve against a comparison spectrum, which
/// must be normalised. 0 where there is no edge.
class DEdgeKernel : public WalkKernel
{
public:
    explicit DEdgeKernel(const DEdgeConditions& conditions);

    Stage stage() const override { return conditions_.isMidPoint ? Stage::Lines : Stage::Curve; }
    int values() const override { return 1; }
    std::unique_ptr<WalkKernel> forWorker() const override;
    void plain(const PlainPosition& at, int lane, TileResult& out) override;
    Lanes lanes(const Tile& tile, TileResult& out) override;
    QStringList valueNames() const override { return {QStringLiteral("shift of the edge [eV]")}; }

private:
    double shiftOf(const Tile& tile, int lane) const;

    const DEdgeConditions conditions_;
    LaneComparison lanes_;
};

/// Fills a map with the shifts, in walking order.
class DEdgeSink : public WalkSink
{
public:
    /// The map outlives it.
    explicit DEdgeSink(Analyzed2DRes& map);

    void take(const WalkRun& run, const TileResult& result) override;

private:
    Analyzed2DRes& map_;
};
