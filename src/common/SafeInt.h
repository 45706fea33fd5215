#pragma once

#include <climits>
#include <cmath>

/// v cut towards zero, limited to the range of int; 0 for nan. A plain cast of such values would be
/// undefined.
inline int truncatedInt(double v)
{
    if (std::isnan(v))
        return 0;
    if (v >= static_cast<double>(INT_MAX))
        return INT_MAX;
    if (v <= static_cast<double>(INT_MIN))
        return INT_MIN;
    return static_cast<int>(v);
}
