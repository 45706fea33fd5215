#include "analysis/dedge/DEdgeWalk.h"

#include "maps/Analyzed2DRes.h"

DEdgeKernel::DEdgeKernel(const DEdgeConditions& conditions)
    : conditions_(conditions)
    , lanes_(conditions_.comparison)
{
}

std::unique_ptr<WalkKernel> DEdgeKernel::forWorker() const
{
    return std::make_unique<DEdgeKernel>(conditions_);
}

void DEdgeKernel::plain(const PlainPosition& at, int lane, TileResult& out)
{
    const XafsSpectrum& s = at.spectrum;
    out.outcomes[std::size_t(lane)] = s.outcome;
    if (s.outcome != Outcome::Fitted)
        return;
    const DEdgeConditions& c = conditions_;
    out.set(0, lane,
            c.isMidPoint ? s.midx - s.eOffset - c.edgeE
                         : s.findBestShift(c.comparison, c.range, c.step, c.minStep) - s.eOffset);
}

Lanes DEdgeKernel::lanes(const Tile& tile, TileResult& out)
{
    if (!conditions_.isMidPoint)
        lanes_.take(tile.plan, tile.edges, tile.mu, tile.count, false);
    Lanes done;
    for (int lane = 0; lane < tile.count; ++lane) {
        if (tile.edges.odd[lane] != 0)
            continue;
        const auto outcome = Outcome(tile.edges.outcome[lane]);
        out.outcomes[std::size_t(lane)] = outcome;
        if (outcome == Outcome::Fitted)
            out.set(0, lane, shiftOf(tile, lane));
        done.set(std::size_t(lane));
    }
    return done;
}

double DEdgeKernel::shiftOf(const Tile& tile, int lane) const
{
    const DEdgeConditions& c = conditions_;
    if (c.isMidPoint)
        return tile.edges.midx[lane] - tile.offsets[lane] - c.edgeE;
    return lanes_.findBestShift(lane, c.range, c.step, c.minStep) - tile.offsets[lane];
}

DEdgeSink::DEdgeSink(Analyzed2DRes& map)
    : map_(map)
{
}

void DEdgeSink::take(const WalkRun& run, const TileResult& result)
{
    AnalyzeCond at = run.first;
    for (int lane = 0; lane < run.count; ++lane, at.next()) {
        if (result.outcomes[std::size_t(lane)] == Outcome::Fitted)
            map_.setData(at.cx, at.cy, at.halfX, at.halfY, result.value(0, lane));
        else
            map_.leaveOut(at.cx, at.cy, at.halfX, at.halfY);
    }
}
