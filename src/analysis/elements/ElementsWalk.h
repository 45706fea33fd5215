#pragma once

#include "analysis/elements/ElementAnalysis.h"
#include "analysis/elements/ElementLanes.h"
#include "walk/WalkKernel.h"

class Analyzed2DRes;

/// Maps of a row, in the order of their kinds: jump, ratio to the target, absorption above and
/// below, shift of the edge, region of interest and its ratio to the jump.
constexpr int elementMaps = 7;

/// Where a kernel's values stand: those of the maps row by row, the correlation, and the jump of
/// each row as it was measured.
struct ElementPlaces
{
    int rows;

    int value(int row, int map) const { return row * elementMaps + map; }
    int correlation() const { return rows * elementMaps; }
    int rawJump(int row) const { return correlation() + 1 + row; }
    int count() const { return rows * (elementMaps + 1) + 1; }
};

/// In place of a correlation where there is none; correlations lie between -1 and 1.
constexpr double noCorrelation = -2.0;

/// The element analysis of a walk's positions, which needs no lines.
class ElementsKernel : public WalkKernel
{
public:
    explicit ElementsKernel(const ElementConditions& conditions);

    Stage stage() const override { return Stage::Mu; }
    int values() const override { return ElementPlaces{conditions_.rows.size()}.count(); }
    std::unique_ptr<WalkKernel> forWorker() const override;
    void plain(const PlainPosition& at, int lane, TileResult& out) override;
    Lanes lanes(const Tile& tile, TileResult& out) override;
    QStringList valueNames() const override;

private:
    void prepare(const std::vector<double>& energies);
    void record(const QVector<ElementValues>& values, int lane, TileResult& out) const;

    const ElementConditions conditions_;
    std::vector<double> middles_; ///< of the scan's energies, once there is a tile
    std::vector<ElementLaneRow> laneRows_;
    std::vector<ElementLaneReadings> laneReadings_; ///< one a row
};

/// Records the element analysis of a walk in maps, in walking order.
class ElementsSink : public WalkSink
{
public:
    /// What it fills; all outlives it.
    struct Maps
    {
        QVector<Analyzed2DRes*> elements; ///< by kind, and of each kind by row
        Analyzed2DRes* correlation;
        Analyzed2DRes* threshold; ///< the correlation where it reaches its threshold
    };
    /// `correlation` is the one before the first position: a position without one has that of the
    /// position before.
    ElementsSink(const ElementConditions& conditions, const Maps& maps, double correlation);

    void take(const WalkRun& run, const TileResult& result) override;

private:
    void recordElemsResForAPoint(const AnalyzeCond& at, int lane, const TileResult& result);

    const ElementConditions conditions_;
    const Maps maps_;
    double correlation_;
};

/// The correlation as the map of what reaches the threshold has it: 0 below.
double overThreshold(double correlation, const ElementConditions& conditions);

/// Makes both correlation maps anew from the ratios that a walk left, with other rows in use,
/// standard ratios or threshold. The maps stay over the same walk. `ratios` is one map a row; a
/// position without a correlation gets 0.
void correlateMaps(const ElementConditions& conditions, const QVector<const Analyzed2DRes*>& ratios,
                   Analyzed2DRes& correlation, Analyzed2DRes& threshold);
