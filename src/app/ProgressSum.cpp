#include "app/ProgressSum.h"

#include <algorithm>

namespace {

/// Before that the time left would be a guess.
constexpr int leastMs = 700;
constexpr double leastShare = 0.03;

constexpr int longTime = 100; ///< told in minutes from here on [s]

} // namespace

ProgressSum::ProgressSum(QWidget* parent)
    : QProgressBar(parent)
{
    hide();
}

void ProgressSum::setPart(int part, int done, int total)
{
    if (parts_.isEmpty())
        begun_.start();
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
}

/// At the pace so far.
void ProgressSum::showTimeLeft(double share)
{
    const qint64 passed = begun_.elapsed();
    if (passed < leastMs || share < leastShare) {
        setFormat(QStringLiteral("%p%"));
        return;
    }
    const int left = qRound(double(passed) * (1.0 - share) / share / 1000.0);
    const QString text =
        left < longTime
            ? tr("%1 s left").arg(left)
            : tr("%1 min %2 s left").arg(left / 60).arg(left % 60, 2, 10, QLatin1Char('0'));
    setFormat(QStringLiteral("%p%, ") + text);
}
