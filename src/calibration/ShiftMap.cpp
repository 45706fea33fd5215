#include "calibration/ShiftMap.h"

#include "calibration/ShiftMapFile.h"
#include "maps/Analyzed2DRes.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// Of values, which there must be; it moves them about.
double medianOf(std::vector<double>& values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 == 1)
        return *middle;
    return 0.5 * (*std::max_element(values.begin(), middle) + *middle);
}

/// Standard deviation of a normal distribution over its median absolute deviation.
constexpr double sigmaOverMad = 1.4826;

} // namespace

std::optional<ShiftMap::MedianAndSpread> ShiftMap::medianAndSpread() const
{
    if (isEmpty() || interrupted)
        return std::nullopt;
    std::vector<double> values;
    AnalyzeCond at = walk;
    at.start();
    do {
        const bool inside = at.cx >= 0 && at.cx < walk.width && at.cy >= 0 && at.cy < walk.height;
        const double shift = inside ? shifts.at(at.cy * walk.width + at.cx) : qQNaN();
        if (std::isfinite(shift))
            values.push_back(shift);
    } while (at.next());
    if (values.empty())
        return std::nullopt;
    const double median = medianOf(values);
    for (double& value : values)
        value = std::abs(value - median);
    return MedianAndSpread{median, sigmaOverMad * medianOf(values)};
}

void ShiftMap::prepare(const AnalyzeCond& newWalk)
{
    walk = newWalk;
    shifts.fill(0.0, std::max(0, walk.width * walk.height));
    min = runningMinStart;
    max = runningMaxStart;
}

void ShiftMap::set(const AnalyzeCond& at, double shift)
{
    min = std::min(min, shift);
    max = std::max(max, shift);
    at.fillBlock(shifts.data(), shift);
}

void ShiftMap::leaveOut(const AnalyzeCond& at)
{
    at.fillBlock(shifts.data(), qQNaN());
}

ShiftField ShiftMap::field(const QPoint& imageOrigin) const
{
    const QSize size = isEmpty() ? QSize() : QSize(walk.width, walk.height);
    return {shifts, size, origin, imageOrigin};
}

void ShiftMap::showIn(Analyzed2DRes& map) const
{
    if (isEmpty()) {
        map.clear();
        return;
    }
    map.prepare(walk);
    const double* shift = shifts.constData();
    for (int y = 0; y < walk.height; ++y) {
        for (int x = 0; x < walk.width; ++x, ++shift) {
            if (std::isnan(*shift))
                map.leaveOut(x, y, 0, 0);
            else
                map.setData(x, y, 0, 0, *shift);
        }
    }
    // Of positions that others hid by their blocks too.
    map.min = min;
    map.max = max;
    map.genImg();
}

void ShiftMap::takeFrom(const Analyzed2DRes& map)
{
    double* shift = shifts.data();
    for (int y = 0; y < walk.height; ++y) {
        for (int x = 0; x < walk.width; ++x)
            *shift++ = map.isLeftOut(x, y) ? qQNaN() : map.valueAt(x, y);
    }
    min = map.min;
    max = map.max;
}

ShiftMap readShiftMap(QTextStream& in, const EMPHeader& header, double edgeE)
{
    ShiftMap map;
    map.walk = mapWalk(header);
    map.origin = {header.xOffset, header.yOffset};
    map.edgeE = edgeE;
    map.shifts = readMapShifts(in, header, edgeE);
    for (const double shift : qAsConst(map.shifts)) {
        map.min = std::min(map.min, shift);
        map.max = std::max(map.max, shift);
    }
    return map;
}
