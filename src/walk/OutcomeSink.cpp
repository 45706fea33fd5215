#include "walk/OutcomeSink.h"

#include "maps/Analyzed2DRes.h"

#include <utility>

OutcomeSink::OutcomeSink(std::unique_ptr<WalkSink> sink, const CommonArea& area,
                         OutcomeCounts& counts, Analyzed2DRes* map)
    : sink_(std::move(sink))
    , area_(area)
    , counts_(counts)
    , map_(map)
{
}

Outcome OutcomeSink::outcomeAt(const AnalyzeCond& at, Outcome ofKernel) const
{
    return ofKernel != Outcome::NoPoints && area_.isLeftBy(at.cx, at.cy, at.halfX, at.halfY)
               ? Outcome::OffImage
               : ofKernel;
}

void OutcomeSink::take(const WalkRun& run, const TileResult& result)
{
    sink_->take(run, result);
    AnalyzeCond at = run.first;
    for (std::size_t lane = 0; lane < std::size_t(run.count); ++lane, at.next()) {
        const Outcome outcome = outcomeAt(at, result.outcomes[lane]);
        counts_.add(outcome, outcome == Outcome::Fitted && result.gapHeld[lane] != 0);
        if (map_)
            map_->setData(at.cx, at.cy, at.halfX, at.halfY, double(outcome));
    }
}
