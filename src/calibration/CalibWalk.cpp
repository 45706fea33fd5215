#include "calibration/CalibWalk.h"

#include "common/LaneForms.h"
#include "maps/Analyzed2DRes.h"
#include "spectrum/ShiftSearch.h"

CalibKernel::CalibKernel(const XafsSpectrum& standard, const CalibConditions& conditions)
    : standard_(standard)
    , conditions_(conditions)
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
    if (conditions_.method == CalibMethod::InnerProduct) {
        compared_.resize(std::size_t(tile.plan.task().n) * laneStride);
        lanes_.values = compared_.data();
        LANE_FORM(compareLanes)
        (tile.plan.task(), tile.edges, tile.mu, tile.count, conditions_.holdGap, lanes_);
    }
    Lanes done;
    for (int lane = 0; lane < tile.count; ++lane) {
        if (tile.edges.odd[lane] != 0)
            continue;
        record(shiftOf(tile, lane), lane, out);
        done.set(std::size_t(lane));
    }
    return done;
}

BlockShift CalibKernel::shiftOf(const Tile& tile, int lane)
{
    BlockShift found;
    found.outcome = Outcome(tile.edges.outcome[lane]);
    if (!found.fitted())
        return found;
    if (conditions_.method == CalibMethod::MidPoint) {
        found.shift = tile.edges.midx[lane] - standard_.midx;
        return found;
    }
    if (lanes_.unsound[lane] != 0) {
        found.outcome = Outcome::GapUnsound;
        return found;
    }
    found.gapHeld = lanes_.held[lane] != 0;
    found.shift = search(tile, lane);
    return found;
}

double CalibKernel::search(const Tile& tile, int lane)
{
    const std::vector<double>& energies = tile.plan.energies();
    QVarLengthArray<double, 512> values(int(energies.size()));
    for (int i = 0; i < values.size(); ++i)
        values[i] = compared_[std::size_t(i) * laneStride + std::size_t(lane)];
    const double midx = tile.edges.midx[lane];
    ShiftSearch search(energies.data(), values.constData(), values.size(), midx, standard_);
    return search.find(midx - standard_.midx, conditions_.range, conditions_.step,
                       conditions_.minStep);
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
