#pragma once

#include "common/Constants.h"
#include "common/SafeInt.h"

#include <algorithm>
#include <cmath>

/// Ends of a plot's axis, gathered from the values that it must hold.
struct PlotRange
{
    double min = runningMinStart;
    double max = runningMaxStart;

    /// Takes a value in. Infinite values, which vanished counts make, must not flatten all others.
    void add(double v)
    {
        if (!std::isfinite(v))
            return;
        min = std::min(min, v);
        max = std::max(max, v);
    }

    bool hasExtent() const { return max > min; }

    /// A range that can be drawn in: a level curve runs through the middle of a range round it, and
    /// no value at all gives 0 to 1.
    PlotRange widened() const
    {
        if (hasExtent())
            return *this;
        if (!(min == max))
            return {0.0, 1.0};
        const double half = std::max(0.5, 1e-6 * std::abs(min));
        return {min - half, max + half};
    }

    /// The range with a twentieth of it more at either end, so that curves stay clear of a frame.
    PlotRange withAir() const
    {
        const double air = (max - min) / 20.0;
        return std::isfinite(air) ? PlotRange{min - air, max + air} : *this;
    }
};

/// The pixel of a coordinate, kept to such as lie far beyond any screen and a painter still takes.
inline int plotPixel(double v)
{
    constexpr int farPixel = 32000;
    return std::max(-farPixel, std::min(farPixel, truncatedInt(v)));
}
