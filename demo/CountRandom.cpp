#include "CountRandom.h"

#include <cmath>

namespace {
constexpr double pi = 3.14159265358979323846;

/// One round of the SplitMix64 generator: spreads neighbouring seeds over all 64 bits.
quint64 mixed(quint64 value)
{
    value += 0x9E3779B97F4A7C15ULL;
    value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    value = (value ^ (value >> 27U)) * 0x94D049BB133111EBULL;
    return value ^ (value >> 31U);
}

/// ln(k!) by Stirling's series; k >= 0. Better than 1e-9 from k = 9 on, exact below.
double logFactorial(double k)
{
    static constexpr double small[] = {1, 1, 2, 6, 24, 120, 720, 5040, 40320};
    if (k < 9) {
        return std::log(small[static_cast<int>(k)]);
    }
    const double n = k + 1.0;
    const double n2 = n * n;
    return (n - 0.5) * std::log(n) - n + 0.5 * std::log(2.0 * pi) +
           (1.0 / 12.0 - (1.0 / 360.0 - 1.0 / (1260.0 * n2)) / n2) / n;
}
} // namespace

CountRandom::CountRandom(quint64 seed, quint64 stream)
    : engine_(mixed(mixed(seed) + stream))
{
}

double CountRandom::uniform()
{
    // The upper 53 bits, moved by half a step so that neither 0 nor 1 comes out.
    return (static_cast<double>(engine_() >> 11U) + 0.5) * 0x1.0p-53;
}

double CountRandom::normal()
{
    // Box and Muller's transform. The second deviate is dropped, so that no state is kept.
    const double radius = std::sqrt(-2.0 * std::log(uniform()));
    return radius * std::cos(2.0 * pi * uniform());
}

double CountRandom::poisson(double mean)
{
    if (!(mean > 0.0)) {
        return 0.0;
    }
    return mean < 10.0 ? poissonByProduct(mean) : poissonByRejection(mean);
}

double CountRandom::poissonByProduct(double mean)
{
    const double limit = std::exp(-mean);
    double product = uniform();
    double count = 0.0;
    while (product > limit) {
        product *= uniform();
        count += 1.0;
    }
    return count;
}

double CountRandom::poissonByRejection(double mean)
{
    // W. Hoermann's transformed rejection with squeeze ("PTRS", Insurance: Mathematics and
    // Economics 12 (1993) 39): exact, and near one round per deviate at any mean.
    const double b = 0.931 + 2.53 * std::sqrt(mean);
    const double a = -0.059 + 0.02483 * b;
    const double inverseAlpha = 1.1239 + 1.1328 / (b - 3.4);
    const double squeeze = 0.9277 - 3.6224 / (b - 2.0);
    const double logMean = std::log(mean);
    for (;;) {
        const double u = uniform() - 0.5;
        const double v = uniform();
        const double us = 0.5 - std::fabs(u);
        const double k = std::floor((2.0 * a / us + b) * u + mean + 0.43);
        if (us >= 0.07 && v <= squeeze) {
            return k;
        }
        if (k < 0.0 || (us < 0.013 && v > us)) {
            continue;
        }
        const double left = std::log(v * inverseAlpha / (a / (us * us) + b));
        if (left <= k * logMean - mean - logFactorial(k)) {
            return k;
        }
    }
}
