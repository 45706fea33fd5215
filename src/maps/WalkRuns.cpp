#include "maps/WalkRuns.h"

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
