#include "maps/FaintPositions.h"

#include "maps/Analyzed2DRes.h"
#include "maps/SomePositions.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double faintShare = 0.1;  ///< of the jump of
constexpr double betterShare = 0.9; ///< the position that this share of all lies below

double jumpAt(const std::vector<const Analyzed2DRes*>& jumps, int x, int y)
{
    double sum = 0.0;
    for (const Analyzed2DRes* map : jumps)
        sum += map->valueAt(x, y);
    return sum;
}

/// The jump below which a position is faint; 0 for none.
double limitOf(const std::vector<const Analyzed2DRes*>& jumps)
{
    const Analyzed2DRes& first = *jumps.front();
    std::vector<double> sums;
    forSomePositions(first.stepper, [&](int x, int y) {
        const double sum = jumpAt(jumps, x, y);
        if (!first.isWithoutEdge(x, y) && std::isfinite(sum))
            sums.push_back(sum);
    });
    if (sums.empty())
        return 0.0;
    const auto better = sums.begin() + std::ptrdiff_t(betterShare * double(sums.size() - 1));
    std::nth_element(sums.begin(), better, sums.end());
    return faintShare * *better;
}

} // namespace

PositionMask faintPositions(const std::vector<const Analyzed2DRes*>& jumps)
{
    if (jumps.empty() || !jumps.front()->data())
        return nullptr;
    const double limit = limitOf(jumps);
    if (!(limit > 0.0))
        return nullptr;
    const Analyzed2DRes& first = *jumps.front();
    const int width = first.stepper.width;
    auto mask = std::make_shared<std::vector<unsigned char>>(std::size_t(width) *
                                                             std::size_t(first.stepper.height));
    forSomePositions(first.stepper, [&](int x, int y) {
        if (first.contains(x, y) && !(jumpAt(jumps, x, y) >= limit))
            (*mask)[std::size_t(y) * std::size_t(width) + std::size_t(x)] = 1;
    });
    return mask;
}
