#include "maps/WalkRuns.h"

AnalyzeCond WalkRun::last() const
{
    AnalyzeCond at = first;
    for (int k = 1; k < count; ++k)
        at.next();
    return at;
}

AnalyzeCond WalkRun::behind() const
{
    AnalyzeCond at = last();
    at.next();
    return at;
}

WalkRuns::WalkRuns(const AnalyzeCond& walk)
    : walk_(walk)
    , atEnd_(false)
{
    walk_.start();
}

WalkRun WalkRuns::take(int maxCount)
{
    WalkRun run{walk_, 0};
    do {
        ++run.count;
        atEnd_ = !walk_.next();
    } while (!atEnd_ && !walk_.newLine && run.count < maxCount);
    return run;
}
