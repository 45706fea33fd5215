#pragma once

#include <QtGlobal>

#include <random>

/// Random counts that are the same on every platform: the engine's output is fixed by the C++
/// standard, and the distributions stand here because those of the standard library are not.
class CountRandom
{
public:
    /// Streams of one seed with different numbers are independent of each other.
    CountRandom(quint64 seed, quint64 stream);

    /// Uniform in (0, 1), both ends excluded.
    double uniform();
    /// Standard normal deviate.
    double normal();
    /// Poisson deviate; 0.0 for a mean at or below 0.
    double poisson(double mean);

private:
    double poissonByProduct(double mean);
    double poissonByRejection(double mean);

    std::mt19937_64 engine_;
};
