#include "calibration/CalibBlock.h"

#include "maps/Analyzed2DRes.h"

#include <QDebug>

#include <algorithm>
#include <cmath>
#include <limits>

double blockShift(const Spectrum& raw, const XafsSpectrum& standard,
                  const CalibConditions& conditions)
{
    if (raw.isEmpty())
        return std::numeric_limits<double>::quiet_NaN();
    XafsSpectrum block = XafsSpectrum::unnormalized(
        raw, QStringLiteral("Body-Calib"), conditions.backgroundMode, 0.0, conditions.sElm);
    // The comparison reads this one curve.
    block.normalizeIfData(conditions.backgroundMode, XafsSpectrum::FittedCurve);
    if (conditions.method == CalibMethod::MidPoint)
        return block.midx - standard.midx;
    return block.findBestShift(standard, conditions.range, conditions.step, conditions.minStep);
}

double CalibStatistics::take(const QPoint& position, double shift)
{
    if (!std::isfinite(shift)) {
        notFinite_.push_back(position);
        return 0.0;
    }
    ++count;
    sum_ += shift;
    mean = sum_ / count;
    if (shift < min)
        min = shift;
    if (shift > max)
        max = shift;
    return shift;
}

bool CalibStatistics::wasNotFinite(const QPoint& position) const
{
    return std::binary_search(notFinite_.begin(), notFinite_.end(), position,
                              [](const QPoint& a, const QPoint& b) {
                                  return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x();
                              });
}

void CalibStatistics::close(const AnalyzeCond& walk, const Analyzed2DRes& map)
{
    if (!notFinite_.empty())
        qDebug() << "Calibration:" << notFiniteCount() << "shifts are not finite and count as 0";
    if (count == 0) {
        min = max = mean = sigma = std::numeric_limits<double>::quiet_NaN();
        return;
    }
    double squares = 0.0;
    AnalyzeCond at = walk;
    at.start();
    do {
        if (wasNotFinite({at.cx, at.cy}))
            continue;
        const double deviation = map.valueAt(at.cx, at.cy) - mean;
        squares += deviation * deviation;
    } while (at.next());
    sigma = std::sqrt(squares / count);
}
