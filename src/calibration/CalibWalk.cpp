#include "calibration/CalibWalk.h"

#include "maps/Analyzed2DRes.h"

CalibKernel::CalibKernel(const XafsSpectrum& standard, const CalibConditions& conditions)
    : standard_(standard)
    , conditions_(conditions)
    , comparison_(standard_)
{
}

std::unique_ptr<WalkKernel> CalibKernel::forWorker() const
{
    return std::make_unique<CalibKernel>(standard_, conditions_);
}

namespace {

void record(const BlockShift& found, int lane, TileResult& out)
{
    out.outcomes[std::size_t(lane)] = found.outcome;
    out.gapHeld[std::size_t(lane)] = found.gapHeld ? 1 : 0;
    out.set(0, lane, found.shift);
}

} // namespace

void CalibKernel::plain(const PlainPosition& at, int lane, TileResult& out)
{
    record(shiftOfNormalized(at.spectrum, standard_, conditions_), lane, out);
}

Lanes CalibKernel::lanes(const Tile& tile, TileResult& out)
{
    if (conditions_.method == CalibMethod::InnerProduct)
        comparison_.take(tile.plan, tile.edges, tile.mu, tile.count, conditions_.holdGap);
    Lanes done;
    for (int lane = 0; lane < tile.count; ++lane) {
        if (tile.edges.odd[lane] != 0)
            continue;
        record(shiftOf(tile, lane), lane, out);
        done.set(std::size_t(lane));
    }
    return done;
}

BlockShift CalibKernel::shiftOf(const Tile& tile, int lane) const
{
    BlockShift found;
    found.outcome = Outcome(tile.edges.outcome[lane]);
    if (!found.fitted())
        return found;
    if (conditions_.method == CalibMethod::MidPoint) {
        found.shift = tile.edges.midx[lane] - standard_.midx;
        return found;
    }
    if (comparison_.isUnsound(lane)) {
        found.outcome = Outcome::GapUnsound;
        return found;
    }
    found.gapHeld = comparison_.isHeld(lane);
    found.shift =
        comparison_.findBestShift(lane, conditions_.range, conditions_.step, conditions_.minStep);
    return found;
}

CalibSink::CalibSink(ShiftMap& shiftMap, Analyzed2DRes& picture, CalibStatistics& statistics)
    : shiftMap_(shiftMap)
    , picture_(picture)
    , statistics_(statistics)
{
}

void CalibSink::take(const WalkRun& run, const TileResult& result)
{
    AnalyzeCond at = run.first;
    for (int lane = 0; lane < run.count; ++lane, at.next()) {
        const BlockShift found{result.value(0, lane), result.outcomes[std::size_t(lane)],
                               result.gapHeld[std::size_t(lane)] != 0};
        if (statistics_.take({at.cx, at.cy}, found)) {
            shiftMap_.set(at, found.shift);
            picture_.setData(at.cx, at.cy, at.halfX, at.halfY, found.shift);
        } else {
            shiftMap_.leaveOut(at);
            picture_.leaveOut(at.cx, at.cy, at.halfX, at.halfY);
        }
    }
}
