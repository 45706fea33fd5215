#include "ReferenceShapes.h"

#include <array>
#include <cmath>

namespace {
constexpr double pi = 3.14159265358979323846;

/// k^2 over the energy above the edge: 2 m / hbar^2 [1 / (eV angstrom^2)].
constexpr double squareOfWaveNumber = 0.2624684;

/// Up to constant, slope and curvature.
constexpr int mostTerms = 3;
using Terms = std::array<double, mostTerms>;

struct Peak
{
    double at;
    double halfWidth;
    double height;
    bool lorentzian;
};

using Peaks = std::array<Peak, 3>;

struct SpeciesShape
{
    double edgeAt;
    double edgeWidth;
    Peaks peaks;
    double waveHeight;
    double wavePeriod; ///< in the set's coordinate, like the decay
    double wavePhase;
};

/// Where near-edge structure begins, is whole, begins to fade, and ends; relative to the edge [eV].
struct StructureRange
{
    double start;
    double full;
    double fade;
    double end;
};

struct WaveRange
{
    double start; ///< relative to the edge, like `end` [eV]
    double end;
    bool evenInK; ///< the oscillations run over the wave number, else over the energy
    double decay;
    int terms; ///< powers of the energy that the oscillations are free of, from the constant on
};

struct ShapeSet
{
    StructureRange structure;
    WaveRange wave;
    std::array<SpeciesShape, speciesCount> species;
};

constexpr Peak noPeak{0.0, 1.0, 0.0, false};

// A reduced compound with an early shoulder, a metal with a split plateau, an oxide with a strong
// white line.
constexpr Peaks easyPeaks[] = {{{{-1.6, 1.0, 0.42, false}, {3.0, 1.4, 0.10, false}, noPeak}},
                               {{{-0.4, 0.9, -0.25, false}, {2.2, 1.1, 0.22, false}, noPeak}},
                               {{{0.9, 1.1, 0.85, true}, {-4.4, 0.7, 0.06, false}, noPeak}}};
constexpr ShapeSet easySet{{-8.0, -5.5, 3.0, 6.0},
                           {21.0, 42.0, false, 40.0, 2},
                           {{{-3.2, 0.7, easyPeaks[0], 0.110, 17.0, 0.4},
                             {-2.0, 0.9, easyPeaks[1], 0.140, 11.0, 2.3},
                             {-0.3, 0.8, easyPeaks[2], 0.120, 14.0, 4.0}}}};

// The same kinds; the second is a foil with a further peak and the strongest oscillations.
constexpr Peaks hardPeaks[] = {
    {{{-1.6, 1.0, 0.42, false}, {3.0, 1.4, 0.10, false}, {9.0, 2.5, -0.12, false}}},
    {{{-0.4, 0.9, -0.25, false}, {2.2, 1.1, 0.22, false}, {10.0, 2.0, 0.25, false}}},
    {{{0.9, 1.1, 0.85, true}, {-4.4, 0.7, 0.06, false}, {7.5, 2.0, -0.10, false}}}};
constexpr ShapeSet hardSet{{-8.0, -5.5, 12.0, 15.0},
                           {22.0, 146.0, true, 6.0, 3},
                           {{{-3.2, 0.7, hardPeaks[0], 0.38, 1.25, 0.4},
                             {-2.0, 0.9, hardPeaks[1], 0.45, 1.10, 2.3},
                             {-0.3, 0.8, hardPeaks[2], 0.34, 1.40, 4.0}}}};

const ShapeSet& setOf(Difficulty difficulty)
{
    return difficulty == Difficulty::Easy ? easySet : hardSet;
}

/// 0 at x = 0, 1 at x = 1, flat at both.
double smoothRise(double x)
{
    if (x <= 0.0) {
        return 0.0;
    }
    return x >= 1.0 ? 1.0 : 0.5 - 0.5 * std::cos(pi * x);
}

/// 1 over the near-edge structure, exactly 0 outside it.
double structureWindow(const ShapeSet& set, double x)
{
    return smoothRise((x - set.structure.start) / (set.structure.full - set.structure.start)) *
           smoothRise((set.structure.end - x) / (set.structure.end - set.structure.fade));
}

double peakValue(const Peak& peak, double x)
{
    const double t = (x - peak.at) / peak.halfWidth;
    return peak.height * (peak.lorentzian ? 1.0 / (1.0 + t * t) : std::exp(-std::log(2.0) * t * t));
}

/// The arctangent edge and its peaks, with tails cut so that the lines beside it are undisturbed.
double nearEdge(const ShapeSet& set, const SpeciesShape& shape, double x)
{
    const double arctangent = 0.5 + std::atan((x - shape.edgeAt) / shape.edgeWidth) / pi;
    const double far = x < shape.edgeAt ? 0.0 : 1.0;
    double value = arctangent - far;
    for (const Peak& peak : shape.peaks) {
        value += peakValue(peak, x);
    }
    return far + value * structureWindow(set, x);
}

/// What a set's oscillations run evenly over.
double waveCoordinate(const ShapeSet& set, double x)
{
    return set.wave.evenInK ? waveNumber(x) : x;
}

double energyOfCoordinate(const ShapeSet& set, double t)
{
    return set.wave.evenInK ? energyOfWaveNumber(t) : t;
}

double waveWindow(const ShapeSet& set, double t)
{
    const double start = waveCoordinate(set, set.wave.start);
    const double end = waveCoordinate(set, set.wave.end);
    if (t <= start || t >= end) {
        return 0.0;
    }
    const double s = std::sin(pi * (t - start) / (end - start));
    return s * s;
}

double plainWave(const ShapeSet& set, const SpeciesShape& shape, double t)
{
    const double damping = std::exp(-(t - waveCoordinate(set, set.wave.start)) / set.wave.decay);
    return shape.waveHeight * damping * std::sin(2.0 * pi * t / shape.wavePeriod + shape.wavePhase);
}

/// Powers of the energy, from the middle of the oscillations in half their range.
Terms powersOf(const ShapeSet& set, double x)
{
    const double u = (2.0 * x - set.wave.start - set.wave.end) / (set.wave.end - set.wave.start);
    return {1.0, u, u * u};
}

/// Gauss and Jordan's solution of a symmetric positive system of the first `n` terms.
Terms solved(std::array<Terms, mostTerms> a, Terms b, std::size_t n)
{
    for (std::size_t k = 0; k < n; ++k) {
        for (std::size_t i = 0; i < n; ++i) {
            const double factor = i == k ? 0.0 : a[i][k] / a[k][k];
            for (std::size_t j = k; j < n; ++j) {
                a[i][j] -= factor * a[k][j];
            }
            b[i] -= factor * b[k];
        }
    }
    Terms x{};
    for (std::size_t k = 0; k < n; ++k) {
        x[k] = b[k] / a[k][k];
    }
    return x;
}

/// The polynomial for which windowed wave minus windowed polynomial holds none of the set's terms.
Terms wavePolynomial(const ShapeSet& set, const SpeciesShape& shape)
{
    constexpr int samples = 3000;
    const auto n = static_cast<std::size_t>(set.wave.terms);
    const double start = waveCoordinate(set, set.wave.start);
    const double end = waveCoordinate(set, set.wave.end);
    std::array<Terms, mostTerms> products{};
    Terms wave{};
    for (int i = 1; i < samples; ++i) {
        const double t = start + (end - start) * i / samples;
        const double window = waveWindow(set, t);
        const Terms powers = powersOf(set, energyOfCoordinate(set, t));
        for (std::size_t k = 0; k < n; ++k) {
            wave[k] += window * plainWave(set, shape, t) * powers[k];
            for (std::size_t l = 0; l < n; ++l) {
                products[k][l] += window * powers[k] * powers[l];
            }
        }
    }
    return solved(products, wave, n);
}

std::array<Terms, speciesCount> wavePolynomials(const ShapeSet& set)
{
    return {wavePolynomial(set, set.species[0]), wavePolynomial(set, set.species[1]),
            wavePolynomial(set, set.species[2])};
}

double wave(Difficulty difficulty, std::size_t species, double x)
{
    static const std::array<std::array<Terms, speciesCount>, 2> polynomials{
        wavePolynomials(easySet), wavePolynomials(hardSet)};
    const ShapeSet& set = setOf(difficulty);
    if (x <= set.wave.start || x >= set.wave.end) {
        return 0.0;
    }
    const Terms& polynomial = polynomials[difficulty == Difficulty::Easy ? 0 : 1][species];
    const Terms powers = powersOf(set, x);
    const double t = waveCoordinate(set, x);
    double value = plainWave(set, set.species[species], t);
    for (std::size_t k = 0; k < powers.size(); ++k) {
        value -= polynomial[k] * powers[k];
    }
    return waveWindow(set, t) * value;
}
} // namespace

double waveNumber(double aboveEdge)
{
    return std::sqrt(squareOfWaveNumber * aboveEdge);
}

double energyOfWaveNumber(double k)
{
    return k * k / squareOfWaveNumber;
}

double speciesShape(Difficulty difficulty, int species, double energy)
{
    const double x = energy - demoEdgeEnergy;
    const auto index = static_cast<std::size_t>(species);
    const ShapeSet& set = setOf(difficulty);
    return nearEdge(set, set.species[index], x) + wave(difficulty, index, x);
}

double backgroundShape(double energy)
{
    return 1.0 - 3.0 * (energy - demoEdgeEnergy) / demoEdgeEnergy;
}

double referenceAbsorption(Difficulty difficulty, int species, double energy)
{
    return referenceStep * speciesShape(difficulty, species, energy) +
           referenceBackground * backgroundShape(energy);
}
