#pragma once

#include "common/SafeInt.h"

#include <QtGlobal>

/// A painter's coordinate cut to a whole pixel. Far beyond any screen it is held back to what the
/// painter takes; nan becomes 0.
inline int screenPixel(double v)
{
    constexpr int farPixel = 32000;
    return qBound(-farPixel, truncatedInt(v), farPixel);
}
