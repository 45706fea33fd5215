#pragma once

#include "walk/WalkKernel.h"

class Analyzed2DRes;

/// How much of the absorption at an energy the jump does not explain: of each position of a walk
/// the gap between both lines there, and the rest, which is the pre-edge line less `factor` gaps.
/// The lines with their bends; the measured points take no part. Given for every spectrum with
/// points, whatever its edge.
class ResidualKernel : public WalkKernel
{
public:
    /// Energy [eV], factor of the gap.
    ResidualKernel(double energy, double factor);

    Stage stage() const override { return Stage::Lines; }
    int values() const override { return 2; }
    std::unique_ptr<WalkKernel> forWorker() const override;
    void plain(const PlainPosition& at, int lane, TileResult& out) override;
    Lanes lanes(const Tile& tile, TileResult& out) override;
    QStringList valueNames() const override;

private:
    void set(double pre, double post, int lane, TileResult& out) const;
    void takeLines(const Tile& tile, int lane);

    const double energy_;
    const double factor_;
    VictLine pre_; ///< of the lane at hand
    VictLine post_;
};

/// Fills the maps of the gap and of the rest, in walking order.
class ResidualSink : public WalkSink
{
public:
    /// The maps outlive it.
    ResidualSink(Analyzed2DRes& jump, Analyzed2DRes& rest);

    void take(const WalkRun& run, const TileResult& result) override;

private:
    Analyzed2DRes& jump_;
    Analyzed2DRes& rest_;
};

/// Fills `ratio`, which is prepared, pixel by pixel: the rest counts from its least value in the
/// whole map, and is set over the sum of it and the gap. Pixels that no walk has reached count with
/// their 0, so there and elsewhere 0 over 0 makes nan, which is no extreme.
void fillResidualRatio(const Analyzed2DRes& jump, const Analyzed2DRes& rest, Analyzed2DRes& ratio);
