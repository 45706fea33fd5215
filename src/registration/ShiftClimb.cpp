#include "registration/ShiftClimb.h"

namespace {

constexpr int neighbours[8][2] = {{1, 1},   {1, 0},  {1, -1}, {0, -1},
                                  {-1, -1}, {-1, 0}, {-1, 1}, {0, 1}};

/// The better one of the neighbours, or the place itself.
FoundShift bestAround(const BitImage& image, const BitImage& reference, const FoundShift& place)
{
    FoundShift best = place;
    for (const auto& [dx, dy] : neighbours) {
        const QPoint shift = place.shift + QPoint(dx, dy);
        const double product = image.sumsWith(reference, shift).product();
        if (product > best.product)
            best = {shift, product};
    }
    return best;
}

} // namespace

FoundShift climbToShift(const BitImage& image, const BitImage& reference, const QPoint& start,
                        const std::atomic<bool>* stop)
{
    FoundShift place{start, image.sumsWith(reference, start).product()};
    // Each step is strictly better, and there are no more shifts than pixels with an overlap.
    while (!stop || !*stop) {
        const FoundShift best = bestAround(image, reference, place);
        if (best.shift == place.shift)
            break;
        place = best;
    }
    return place;
}
