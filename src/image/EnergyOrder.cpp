#include "image/EnergyOrder.h"

#include "common/TwoPointLine.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr ImagePair noPair{-1, -1};

/// A strict order also of what is no number.
bool isLower(double a, double b)
{
    return a < b || (std::isnan(b) && !std::isnan(a));
}

} // namespace

EnergyOrder energyOrder(const TiffStack& stack)
{
    EnergyOrder order(stack.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return isLower(stack[a]->energy, stack[b]->energy); });
    return order;
}

ImagePair imagesAround(const TiffStack& stack, const EnergyOrder& order, double E)
{
    const int n = order.size();
    if (E < stack[order.first()]->energy)
        return {order[0], order[1]};
    if (E >= stack[order.last()]->energy)
        return {order[n - 2], order[n - 1]};
    int low = 0;
    int high = n - 1;
    while (low + 1 < high) {
        const int middle = (low + high) / 2;
        (E >= stack[order[middle]]->energy ? low : high) = middle;
    }
    return {order[low], order[high]};
}

double stackBlockSum(const TiffStack& stack, const EnergyOrder& order, double E, int x, int y,
                     int hw, int vw)
{
    if (stack.isEmpty())
        return 1.0;
    if (stack.size() == 1)
        return stack.first()->blockSum(x, y, hw, vw);
    const ImagePair pair = imagesAround(stack, order, E);
    const TiffData& low = *stack[pair.first];
    const TiffData& high = *stack[pair.second];
    return twoPointLine(low.energy, low.blockSum(x, y, hw, vw), high.energy,
                        high.blockSum(x, y, hw, vw), E);
}

ImagePair fallingPair(const TiffStack& stack)
{
    for (int i = 0; i + 1 < stack.size(); ++i) {
        const double energy = stack[i]->energy;
        const double next = stack[i + 1]->energy;
        if (!(next >= energy))
            return {i, i + 1};
    }
    return noPair;
}

ImagePair equalPair(const TiffStack& stack)
{
    const EnergyOrder order = energyOrder(stack);
    for (int i = 0; i + 1 < order.size(); ++i) {
        if (stack[order[i]]->energy == stack[order[i + 1]]->energy)
            return {order[i], order[i + 1]};
    }
    return noPair;
}
