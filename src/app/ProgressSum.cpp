#include "app/ProgressSum.h"

#include <algorithm>

ProgressSum::ProgressSum(QWidget* parent)
    : QProgressBar(parent)
{
    hide();
}

void ProgressSum::setPart(int part, int done, int total)
{
    if (parts_.isEmpty())
        left_.start();
    if (total > 0)
        parts_.insert(part, {done, total, false});
    else if (parts_.contains(part))
        parts_[part] = {parts_[part].total, parts_[part].total, true};
    if (std::all_of(parts_.cbegin(), parts_.cend(), [](const Part& p) { return p.ended; }))
        parts_.clear();
    setVisible(!parts_.isEmpty());
    Part sum;
    for (const Part& p : qAsConst(parts_)) {
        sum.done += p.done;
        sum.total += p.total;
    }
    // A maximum of 0 would mean that the end is not known.
    setMaximum(qMax(1, sum.total));
    setValue(sum.done);
    showTimeLeft(double(sum.done) / maximum());
    Q_EMIT partTold(part, done, total);
}

/// At the pace so far.
void ProgressSum::showTimeLeft(double share)
{
    const std::optional<int> left = left_.secondsAt(share);
    setFormat(left ? QStringLiteral("%p%, ") + TimeLeft::text(*left) : QStringLiteral("%p%"));
}
