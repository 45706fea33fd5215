#include "calibration/CalibWalk.h"

#include "maps/Analyzed2DRes.h"

CalibKernel::CalibKernel(const XafsSpectrum& standard, const CalibConditions& conditions)
    : standard_(standard)
    , conditions_(conditions)
{
}

std::unique_ptr<WalkKernel> CalibKernel::forWorker() const
{
    return std::make_unique<CalibKernel>(standard_, conditions_);
}

void CalibKernel::plain(const PlainPosition& at, int lane, TileResult& out)
{
    const BlockShift found = blockShift(at.spectrum, standard_, conditions_);
    out.outcomes[std::size_t(lane)] = found.outcome;
    out.gapHeld[std::size_t(lane)] = found.gapHeld ? 1 : 0;
    out.set(0, lane, found.shift);
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
