#pragma once

#include "image/BlockSpectrum.h"
#include "maps/WalkRuns.h"
#include "spectrum/EdgePlan.h"
#include "walk/WalkSource.h"

#include <array>
#include <bitset>
#include <memory>

/// Positions that a worker works on together: long against what handing them over costs, short
/// against a user's patience.
constexpr int tileLanes = mostLanes;

/// A mark of each position of a run.
using Lanes = std::bitset<tileLanes>;

/// A run of positions as arrays [energy][laneStride] and [lane]: a lane is a position's place in
/// the run. What stands behind the run's lanes has no meaning.
struct Tile
{
    const WalkSource& source;
    const WalkRun& run;
    const EdgePlan& plan;
    const double* mu;       ///< [energy][laneStride]; null in a walk over counts
    const EdgeLanes& edges; ///< of the lanes that `edges.odd` does not mark, once they were found
    const double* offsets;  ///< energy shift of the position, XafsSpectrum::eOffset [eV]
    bool isShifted;         ///< some offset is not 0
    int count;              ///< lanes of the run
};

/// Forms the tiles of one worker in memory that it takes once.
class TileMaker
{
public:
    TileMaker(const SharedSource& source, const std::shared_ptr<const EdgePlan>& plan);

    /// The tile of a run whose kernels read the images themselves, until the next run.
    Tile ofCounts(const WalkRun& run);
    /// Takes counts and mu of a run; false, and nothing else is of use, where positions lie outside
    /// the image.
    bool formMu(const WalkRun& run);
    /// There are lane forms for the energies.
    bool hasEdges() const { return plan_->isUsable(); }
    /// The tile without edges, until the next run.
    Tile ofMu();
    /// Finds the edges; then the tile is whole until the next run.
    Tile findEdges();
    /// The spectrum of a lane, up to Stage::Mu.
    XafsSpectrum spectrum(int lane) const;

private:
    Tile tileWith(const double* mu) const;
    void takeOffsets();

    const SharedSource source_;
    const std::shared_ptr<const EdgePlan> plan_;
    BlockSpectra blocks_;
    decltype(&lanes::sse2::findEdges) findEdges_;
    WalkRun run_;
    bool isShifted_ = false;
    std::vector<double> mu_;
    std::vector<double> bend_; ///< [energy][laneStride] of lanes with a bent line
    std::vector<double> scratch_;
    std::array<double, laneStride> offsets_{};
    EdgeLanes edges_{};
};
