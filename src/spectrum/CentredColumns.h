#pragma once

#include <algorithm>
#include <cmath>

/// Columns of the Victoreen form that can be told apart: over the few per cent of an energy that a
/// line is fitted to, lambda^3 and lambda^4 are nearly constant and nearly each other, and a solve
/// in them loses up to 13 digits.
///
/// With lambda = L (1 + d), L being that of the middle energy, (1 + d)^3 = 1 + f1 and
/// (1 + d)^4 = 1 + 4/3 f1 + f2. So a0 + A1 f1 + A2 f2 is the same model, exactly.
struct CentredColumns
{
    double middleE; ///< [eV]
    double scale1;  ///< factors that bring the larger end of each column to 1
    double scale2;

    /// Of the first and the last energy fitted to.
    CentredColumns(double firstE, double lastE)
        : middleE((firstE + lastE) * 0.5)
        , scale1(scaleOf(f1(deviation(firstE)), f1(deviation(lastE))))
        , scale2(scaleOf(f2(deviation(firstE)), f2(deviation(lastE))))
    {
    }

    /// The scaled columns at n energies.
    void fill(const double* E, int n, double* __restrict first, double* __restrict second) const
    {
        // Local copies tell the compiler that writing does not change them.
        const double middle = middleE;
        const double s1 = scale1;
        const double s2 = scale2;
        for (int i = 0; i < n; ++i) {
            const double d = (middle - E[i]) / E[i];
            first[i] = f1(d) * s1;
            second[i] = f2(d) * s2;
        }
    }

private:
    double deviation(double E) const { return (middleE - E) / E; }
    static double f1(double d) { return d * (3 + d * (3 + d)); }
    static double f2(double d) { return d * d * (2 + d * (8.0 / 3.0 + d)); }
    static double scaleOf(double atFirst, double atLast)
    {
        const double larger = std::max(std::abs(atFirst), std::abs(atLast));
        return larger == 0.0 ? 1.0 : 1.0 / larger;
    }
};
