#pragma once

#include "registration/BitImage.h"

#include <atomic>

/// A shift of an image [pixels], and the product with the reference that it gives.
struct FoundShift
{
    QPoint shift;
    double product = 0.0;
};

/// Climbs from a shift to the next top of the product of an image with a reference of its size: as
/// long as one of the eight neighbours is strictly better, to the best of them, the first one of
/// equals. A plateau ends it, and so does a start without overlap. `stop`, when given and set, ends
/// it between two steps.
FoundShift climbToShift(const BitImage& image, const BitImage& reference, const QPoint& start,
                        const std::atomic<bool>* stop = nullptr);
