#pragma once

#include "analysis/lcf/LcfLaneFit.h"
#include "walk/WalkKernel.h"

class Analyzed2DRes;

/// The linear combination fit of a walk's positions. Of each reference row that takes part it gives
/// the jump and the weight (MLCF: the share), and last the residual; all 0 where a position is not
/// fitted. What is worked out once for all positions waits for the first of them: who makes a
/// kernel for another thread does not pay.
class LcfKernel : public WalkKernel
{
public:
    /// `rows` are the rows that the values are of, in this order.
    LcfKernel(const LcfRequest& conditions, const QVector<int>& rows);

    Stage stage() const override { return Stage::Curve; }
    int values() const override { return 2 * rows_.size() + 1; }
    std::unique_ptr<WalkKernel> forWorker() const override;
    void plain(const PlainPosition& at, int lane, TileResult& out) override;
    Lanes lanes(const Tile& tile, TileResult& out) override;
    /// Jump and weight of each fitted row, and the residual; nothing where it is not fitted.
    ShownResult shown(const XafsSpectrum& spectrum) override;
    QStringList valueNames() const override;

private:
    LcfPlan& plan();
    bool isDone(const EdgeLanes& edges, const LcfLaneFits& fits, int lane) const;
    void take(const LcfLaneFits& fits, const EdgeLanes& edges, int lane, TileResult& out) const;

    const LcfRequest conditions_;
    const QVector<int> rows_;
    QVector<int> places_; ///< by reference row, its place in rows_
    std::unique_ptr<LcfPlan> plan_;
    std::unique_ptr<LcfLaneFit> laneFit_; ///< of the walk, once it has a tile
};

/// Records the fits of a walk in maps, in walking order.
class LcfSink : public WalkSink
{
public:
    /// What it fills; all outlives it. The maps of rows are in the kernel's order.
    struct Maps
    {
        QVector<int> rows;
        QVector<Analyzed2DRes*> jumps;
        QVector<Analyzed2DRes*> weights;
        Analyzed2DRes* zansa;
        OutcomeCounts* outcomes = nullptr; ///< counted only where there are some
    };
    LcfSink(const LcfRequest& conditions, const Maps& maps);

    void take(const WalkRun& run, const TileResult& result) override;

private:
    void recordResForAPoint(const AnalyzeCond& at, int lane, const TileResult& result);
    bool isResult(Outcome outcome) const;
    double residualToRecord(int lane, const TileResult& result);

    const Maps maps_;
    std::vector<char> isFitted_; ///< row has values where a position is fitted, one of maps_.rows
    const bool fitsAll_;
    const bool ownWeights_;
    double zansa_ = 0.0; ///< residual of the last position that was fitted
};
