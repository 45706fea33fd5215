#include "maps/FaintPositions.h"

#include "maps/Analyzed2DRes.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double faintShare = 0.1;  ///< of the jump of
constexpr double betterShare = 0.9; ///< the position that this share of all lies below

double jumpAt(const std::vector<const Analyzed2DRes*>& jumps, const AnalyzeCond& at)
{
    double sum = 0.0;
    for (const Analyzed2DRes* map : jumps)
        sum += map->valueAt(at.cx, at.cy);
    return sum;
}

template<typename Visit>
void forPositions(AnalyzeCond walk, Visit visit)
{
    walk.start();
    do {
        visit(walk);
    } while (walk.next());
}

/// The jump below which a position is faint; 0 for none.
double limitOf(const std::vector<const Analyzed2DRes*>& jumps)
{
    const Analyzed2DRes& first = *jumps.front();
    std::vector<double> sums;
    forPositions(first.stepper, [&](const AnalyzeCond& at) {
        const double sum = jumpAt(jumps, at);
        if (!first.isWithoutEdge(at.cx, at.cy) && std::isfinite(sum))
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
    forPositions(first.stepper, [&](const AnalyzeCond& at) {
        if (first.contains(at.cx, at.cy) && !(jumpAt(jumps, at) >= limit))
            (*mask)[std::size_t(at.cy) * std::size_t(width) + std::size_t(at.cx)] = 1;
    });
    return mask;
}
