#include "calibration/CalibBlock.h"

#include "maps/Analyzed2DRes.h"
#include "spectrum/HeldGap.h"

#include <QDebug>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// Puts the continued values in the curve's place; false for one that can not be compared.
bool holdCurve(XafsSpectrum& s, const HeldGap& gap)
{
    if (gap.state() == HeldGap::Held)
        s.doubleNormalizedPreBase = gap.curve();
    return gap.state() != HeldGap::Unsound;
}

/// The middle value, or the mean of both. Puts the values, of which there must be some, in another
/// order.
double medianOf(std::vector<double>& values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 != 0)
        return *middle;
    return (*std::max_element(values.begin(), middle) + *middle) / 2;
}

} // namespace

BlockShift blockShift(const Spectrum& raw, const XafsSpectrum& standard,
                      const CalibConditions& conditions)
{
    XafsSpectrum block = XafsSpectrum::unnormalized(
        raw, QStringLiteral("Body-Calib"), conditions.backgroundMode, 0.0, conditions.sElm);
    // The comparison reads this one curve.
    block.normalizeIfData(conditions.backgroundMode, XafsSpectrum::FittedCurve);
    return shiftOfNormalized(std::move(block), standard, conditions);
}

BlockShift shiftOfNormalized(XafsSpectrum block, const XafsSpectrum& standard,
                             const CalibConditions& conditions)
{
    BlockShift found;
    found.outcome = block.outcome;
    if (!found.fitted())
        return found;
    if (conditions.method == CalibMethod::MidPoint) {
        found.shift = block.midx - standard.midx;
        return found;
    }
    if (conditions.holdGap && block.linesClose) {
        const HeldGap gap(block, {});
        found.gapHeld = gap.state() == HeldGap::Held;
        if (!holdCurve(block, gap)) {
            found.outcome = Outcome::GapUnsound;
            return found;
        }
    }
    found.shift =
        block.findBestShift(standard, conditions.range, conditions.step, conditions.minStep);
    return found;
}

XafsSpectrum comparedStandard(const XafsSpectrum& standard, const CalibConditions& conditions)
{
    XafsSpectrum compared = standard;
    if (conditions.method == CalibMethod::MidPoint || !conditions.holdGap)
        return compared;
    const HeldGap gap(standard, {});
    holdCurve(compared, gap);
    if (gap.state() != HeldGap::Sound)
        qDebug().noquote() << "Calibration: standard:" << gap.logText();
    return compared;
}

bool CalibStatistics::take(const QPoint& position, const BlockShift& found)
{
    outcomes.add(found.outcome, found.gapHeld);
    const bool finite = std::isfinite(found.shift);
    if (found.fitted() && !finite)
        ++notFinite_;
    if (!found.fitted() || !finite) {
        leftOut_.push_back(position);
        return false;
    }
    ++count;
    sum_ += found.shift;
    mean = sum_ / count;
    min = std::min(min, found.shift);
    max = std::max(max, found.shift);
    taken_.push_back(found.shift);
    return true;
}

bool CalibStatistics::wasLeftOut(const QPoint& position) const
{
    return std::binary_search(leftOut_.begin(), leftOut_.end(), position,
                              [](const QPoint& a, const QPoint& b) {
                                  return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x();
                              });
}

void CalibStatistics::close(const AnalyzeCond& walk, const Analyzed2DRes& map)
{
    if (notFinite_ > 0)
        qDebug() << "Calibration:" << notFinite_ << "shifts are not finite and count as 0";
    if (count == 0) {
        min = max = mean = sigma = median = mad = std::numeric_limits<double>::quiet_NaN();
        return;
    }
    double squares = 0.0;
    AnalyzeCond at = walk;
    at.start();
    do {
        if (wasLeftOut({at.cx, at.cy}))
            continue;
        const double deviation = map.valueAt(at.cx, at.cy) - mean;
        squares += deviation * deviation;
    } while (at.next());
    sigma = std::sqrt(squares / count);
    median = medianOf(taken_);
    for (double& shift : taken_)
        shift = std::abs(shift - median);
    mad = medianOf(taken_);
    // The numbers go on with the map, also one that only waits to be brought back.
    taken_ = {};
    leftOut_ = {};
}
