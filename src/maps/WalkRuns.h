#pragma once

#include "maps/AnalyzeCond.h"

/// Consecutive positions of one row of a walk: those of `first`, first.next(), ... `count` of them.
struct WalkRun
{
    AnalyzeCond first;
    int count = 0;

    /// The walk at the last position, and at the one behind it; of the walk's last run that lies
    /// below its area.
    AnalyzeCond last() const;
    AnalyzeCond behind() const;
};

/// Cuts a walk into runs, so that the positions of a run can be worked on together while the order
/// stays that of the walk.
class WalkRuns
{
public:
    WalkRuns() = default;
    explicit WalkRuns(const AnalyzeCond& walk);

    bool atEnd() const { return atEnd_; }

    /// The next positions, at most maxCount (taken as 1 when below) and none of another row. Not to
    /// be called at the end.
    WalkRun take(int maxCount);

private:
    AnalyzeCond walk_;
    bool atEnd_ = true;
};
