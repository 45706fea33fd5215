#include "common/TimeLeft.h"

#include <QtMath>

namespace {

constexpr int leastMs = 700;
constexpr double leastShare = 0.03;

constexpr int longTime = 100; ///< told in minutes from here on [s]

} // namespace

std::optional<int> TimeLeft::secondsAt(double share) const
{
    if (!begun_.isValid())
        return {};
    const qint64 passed = begun_.elapsed();
    if (passed < leastMs || share < leastShare)
        return {};
    return qRound(double(passed) * (1.0 - share) / share / 1000.0);
}

QString TimeLeft::text(int seconds)
{
    if (seconds < longTime)
        return tr("%1 s left").arg(seconds);
    return tr("%1 min %2 s left").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}
