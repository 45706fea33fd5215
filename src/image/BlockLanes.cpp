#include "image/BlockLanes.h"

#include "common/LaneVector.h"
#include "common/LogParts.h"

namespace {

inline U bitsOf(V v)
{
    return (U)v;
}

inline V fromBits(U bits)
{
    return (V)bits;
}

/// portable::logOfCommon() of each lane, by the same operations; the exponent is turned into a
/// double through the digits of 2^52, which is exact.
inline V logOfCommon(V x)
{
    constexpr std::uint64_t one = 0x3ff0000000000000;
    constexpr std::uint64_t sqrtHalf = 0x3fe6a09e667f3bcd;
    constexpr std::uint64_t mantissa = 0x000fffffffffffff;
    constexpr std::uint64_t digitsOfTwoTo52 = 0x4330000000000000;
    constexpr double twoTo52 = 4503599627370496.0;
    constexpr double exponentBias = 1023.0;
    const U bits = bitsOf(x) + (one - sqrtHalf);
    const V k = fromBits((bits >> 52) | digitsOfTwoTo52) - (twoTo52 + exponentBias);
    const V f = fromBits((bits & mantissa) + sqrtHalf) - 1.0;
    return logOfParts(k, f);
}

/// Not 0 in its highest bit where portable::signOfRare() isn't.
inline U signOfRare(V x)
{
    constexpr std::uint64_t smallestNormal = 0x0010000000000000;
    constexpr std::uint64_t largest = 0x7fefffffffffffff;
    const U bits = bitsOf(x);
    return bits | (bits - smallestNormal) | (largest - bits);
}

} // namespace

namespace lanes::LANE_SET {

void logarithms(const double* i0, const double* i1, int count, double* mu, std::uint64_t& rare)
{
    U signs{};
    for (int k = 0; k < count; k += width) {
        const V beam = load(i0 + k);
        const V sample = load(i1 + k);
        const V quotient = beam / sample;
        signs |= signOfRare(quotient) | (bitsOf(beam * sample) - 1);
        store(mu + k, logOfCommon(quotient));
    }
    std::uint64_t found = 0;
    for (int c = 0; c < width; ++c)
        found |= signs[c];
    rare = found >> 63;
}

void countsOfWords(const std::uint16_t* pixels, int count, double* counts)
{
    for (int k = 0; k < count; ++k)
        counts[k] = double(pixels[k]);
}

void addWords(const std::uint16_t* pixels, int count, std::uint32_t* sums)
{
    for (int k = 0; k < count; ++k)
        sums[k] += pixels[k];
}

void takeOffDark(double* counts, int count, double level, const double* dark)
{
    for (int k = 0; k < count; ++k)
        counts[k] -= level + dark[k];
}

void countsBetween(const CountsLine& line, int count, double* counts)
{
    const double span = line.highEnergy - line.lowEnergy;
    const double along = line.energy - line.lowEnergy;
    for (int k = 0; k < count; ++k)
        counts[k] = (line.high[k] - line.low[k]) / span * along + line.low[k];
}

} // namespace lanes::LANE_SET
