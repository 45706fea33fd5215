#pragma once

#include "common/LogParts.h"

#include <cstdint>
#include <cstring>

// Elementary functions whose bits are the same on every processor. The C library chooses its
// variant by the processor, with fused multiplication or without, and saved numbers would show
// which. These are plain double arithmetic in a fixed order, with no table and no function below
// them but the square root, which is exact by rule. Each is within 1 ulp of the true value, and
// answers what is no number as the C library does, without errno or exceptions.

namespace portable {

inline std::uint64_t bitsOf(double x)
{
    std::uint64_t bits;
    std::memcpy(&bits, &x, sizeof x);
    return bits;
}

inline double fromBits(std::uint64_t bits)
{
    double x;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

/// A word whose highest bit is 0 for a positive normal number, and 1 for any other, nan included.
/// Loops that collect it by "or" need no comparison.
inline std::uint64_t signOfRare(double x)
{
    constexpr std::uint64_t smallestNormal = 0x0010000000000000;
    constexpr std::uint64_t largest = 0x7fefffffffffffff;
    const std::uint64_t bits = bitsOf(x);
    return bits | (bits - smallestNormal) | (largest - bits);
}

/// log() of what is no positive normal number: 0 gives -inf, a negative number nan; inf and nan
/// pass, and a subnormal number has its logarithm.
double logOfRare(double x);

/// log() of x 2^shift, for a positive normal x; of anything else, a number without meaning.
///
/// x 2^shift = 2^k m with m in [sqrt(1/2), sqrt(2)) and f = m - 1; then see logOfParts().
inline double logOfCommon(double x, int shift = 0)
{
    constexpr std::uint64_t one = 0x3ff0000000000000;
    constexpr std::uint64_t sqrtHalf = 0x3fe6a09e667f3bcd;
    constexpr int mantissaBits = 52;
    constexpr std::uint64_t mantissa = (std::uint64_t(1) << mantissaBits) - 1;

    // Counted from sqrt(1/2), the exponent is k without a comparison.
    const std::uint64_t bits = bitsOf(x) + (one - sqrtHalf);
    const double k = double(int(bits >> mantissaBits) - int(one >> mantissaBits) + shift);
    const double f = fromBits((bits & mantissa) + sqrtHalf) - 1.0;
    return logOfParts(k, f);
}

/// Natural logarithm. It is inline, since a map takes it many million times.
inline double log(double x)
{
    return signOfRare(x) >> 63 == 0 ? logOfCommon(x) : logOfRare(x);
}

/// Sine of an angle [rad]; nan of an infinite one. From about 1.6e6 on it is the sine of an angle
/// that differs from x by less than half the distance to the next double.
double sin(double x);

/// Angle [rad] in [-pi/2, pi/2] whose sine is x; nan outside [-1, 1].
double asin(double x);

} // namespace portable
