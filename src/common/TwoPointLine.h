#pragma once

/// Value at x of the straight line through (x0, y0) and (x1, y1); the mean of the two values when
/// x0 equals x1. Every linear interpolation and extrapolation of the program is this rule.
inline double twoPointLine(double x0, double y0, double x1, double y1, double x)
{
    if (x1 == x0)
        return (y0 + y1) / 2;
    return (y1 - y0) / (x1 - x0) * (x - x0) + y0;
}
