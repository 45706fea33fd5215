#include "display/AxisTicks.h"

#include "common/SafeInt.h"
#include "display/ChCoord.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int mostTicks = 100;

/// As many digits as tell a tick from the next; six, as fields have, where fewer would do.
int digitsFor(double greatest, double step)
{
    constexpr int fewest = 6;
    constexpr int most = 15;
    const double digits = std::floor(std::log10(greatest / step)) + 2.0;
    return digits > fewest ? std::min(truncatedInt(digits), most) : fewest;
}

} // namespace

void AxisTicks::clear()
{
    step_ = first_ = 0.0;
    ticks_.resize(0);
    widest_ = 0;
}

void AxisTicks::setRange(double min, double max, const QFontMetrics& metrics)
{
    if (!(max > min) || !std::isfinite(max - min)) {
        clear();
        return;
    }
    double step = 1.0;
    double first = 0.0;
    double last = 0.0;
    ChCoord::autoTicks(min, max, step, first, last);
    first = std::round(first / step);
    const double count = std::round(last / step) - first + 1.0;
    if (!(count >= 1.0 && count <= mostTicks)) {
        clear();
        return;
    }
    const int n = truncatedInt(count);
    if (step == step_ && first == first_ && n == ticks_.size())
        return;
    clear();
    step_ = step;
    first_ = first;
    const int digits = digitsFor(std::max(std::abs(min), std::abs(max)), step);
    for (int i = 0; i < n; ++i) {
        const double value = (first + i) * step;
        const QString label = QString::number(value, 'g', digits);
        ticks_.append({value, label, metrics.horizontalAdvance(label)});
        widest_ = std::max(widest_, ticks_.last().width);
    }
}

int AxisTicks::stride(double tickDistance, double labelSize)
{
    for (int decade = 1; decade <= mostTicks; decade *= 10) {
        for (const int multiple : {1, 2, 5}) {
            if (multiple * decade * tickDistance >= labelSize)
                return multiple * decade;
        }
    }
    return mostTicks;
}

bool AxisTicks::isLabelled(int i, int stride) const
{
    return std::fmod(first_ + i, stride) == 0.0;
}
