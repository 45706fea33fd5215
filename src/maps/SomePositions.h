#pragma once

#include "maps/AnalyzeCond.h"

#include <algorithm>
#include <cmath>

/// Positions that ranges of values are found from: a map of more is sampled.
constexpr qint64 positionsEnough = qint64(1) << 17;

/// Calls visit(x, y) for the positions of a walk that lie in the image, or for some evenly spread
/// ones if there are many; always the same ones of one walk.
template<typename Visit>
void forSomePositions(const AnalyzeCond& walk, Visit visit)
{
    const qint64 positions = qint64(walk.columns()) * walk.rows();
    const int step = int(std::ceil(
        std::sqrt(double(std::max(positions, positionsEnough)) / double(positionsEnough))));
    AnalyzeCond first = walk;
    first.start();
    // In wide numbers: an area typed by hand may reach far outside the image.
    for (qint64 row = 0, shift = 0; row < walk.rows(); row += step, shift = (shift + 1) % step) {
        const qint64 y = first.cy + row * std::max(walk.stepY, 1);
        if (y >= walk.height)
            break;
        for (qint64 column = shift; column < walk.columns(); column += step) {
            const qint64 x = first.cx + column * std::max(walk.stepX, 1);
            if (x >= walk.width)
                break;
            visit(int(x), int(y));
        }
    }
}
