#include "walk/Tile.h"

#include "common/LaneForms.h"

TileMaker::TileMaker(const SharedSource& source, const std::shared_ptr<const EdgePlan>& plan)
    : source_(source)
    , plan_(plan)
    , blocks_({source->i1, source->i0}, source->block)
    , findEdges_(LANE_FORM(findEdges))
{
    const auto energies = std::size_t(source->i1.size());
    mu_.assign(energies * laneStride, 1.0);
    scratch_.resize(std::size_t(edgeLaneScratch(int(energies))));
    bend_.resize(mu_.size());
    edges_.bend = bend_.data();
}

bool TileMaker::formMu(const WalkRun& run)
{
    const AnalyzeCond& at = run.first;
    const BlockSpectra::BlockRun positions{at.cx, at.stepX, run.count, at.cy};
    if (at.stepX < 1 || !blocks_.areInside(positions))
        return false;
    run_ = run;
    blocks_.formMu(positions, mu_.data());
    takeOffsets();
    return true;
}

void TileMaker::takeOffsets()
{
    isShifted_ = false;
    AnalyzeCond at = run_.first;
    for (int lane = 0; lane < run_.count; ++lane, at.next()) {
        const double offset = source_->shifts.at(at.cx, at.cy);
        offsets_[std::size_t(lane)] = offset;
        isShifted_ = isShifted_ || offset != 0.0;
    }
}

Tile TileMaker::findEdges()
{
    findEdges_(plan_->task(), mu_.data(), run_.count, scratch_.data(), edges_);
    return ofMu();
}

Tile TileMaker::ofMu()
{
    return tileWith(mu_.data());
}

Tile TileMaker::ofCounts(const WalkRun& run)
{
    run_ = run;
    return tileWith(nullptr);
}

Tile TileMaker::tileWith(const double* mu) const
{
    return {*source_, run_, *plan_, mu, edges_, offsets_.data(), isShifted_, run_.count};
}

XafsSpectrum TileMaker::spectrum(int lane) const
{
    Spectrum curve;
    curve.setPoints(blocks_.curveOf(mu_.data() + lane));
    return source_->unnormalized(curve, offsets_[std::size_t(lane)]);
}
