#include "maps/MapArithmetic.h"

#include <algorithm>
#include <cstdlib>

namespace {

/// Sum over the block round the position, of the pixels that the map has.
double blockSum(const Analyzed2DRes& map, const AnalyzeCond& at)
{
    const double* const field = map.data();
    if (!field)
        return 0.0;
    const qint64 width = map.stepper.width;
    const qint64 reachX = std::abs(qint64(at.halfX));
    const qint64 reachY = std::abs(qint64(at.halfY));
    const qint64 left = std::max<qint64>(at.cx - reachX, 0);
    const qint64 right = std::min<qint64>(at.cx + reachX, width - 1);
    const qint64 bottom = std::min<qint64>(at.cy + reachY, map.stepper.height - 1);
    double sum = 0.0;
    for (qint64 y = std::max<qint64>(at.cy - reachY, 0); y <= bottom; ++y) {
        const double* const row = field + y * width;
        for (qint64 x = left; x <= right; ++x)
            sum += row[x];
    }
    return sum;
}

double combined(MapOperation operation, double s1, double s2)
{
    switch (operation) {
    case MapOperation::Sub:
        return s1 - s2;
    case MapOperation::Div:
        return s2 == 0.0 ? 1.0 : s1 / s2;
    case MapOperation::Mask:
        return s2 > 0.0 ? s1 : 0.0;
    }
    return 0.0;
}

} // namespace

void processMaps(MapOperation operation, const Analyzed2DRes& map1, const Analyzed2DRes& map2,
                 Analyzed2DRes& out)
{
    AnalyzeCond at = out.stepper;
    at.start();
    do {
        const double v = combined(operation, blockSum(map1, at), blockSum(map2, at));
        out.setData(at.cx, at.cy, at.halfX, at.halfY, v);
    } while (at.next());
}
