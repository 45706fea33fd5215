#include "ReferenceShapes.h"

#include <array>
#include <cmath>

namespace {
constexpr double pi = 3.14159265358979323846;

// Energies in eV relative to the edge.
constexpr double structureStart = -8.0;
constexpr double structureFull = -5.5;
constexpr double structureFade = 3.0;
constexpr double structureEnd = 6.0;
constexpr double waveStart = 12.0;
constexpr double waveEnd = 42.0;

struct Peak
{
    double at;
    double halfWidth;
    double height;
    bool lorentzian;
};

struct SpeciesShape
{
    double edgeAt;
    double edgeWidth;
    std::array<Peak, 2> peaks;
    double waveHeight;
    double wavePeriod;
    double wavePhase;
};

// A reduced compound with an early shoulder, a metal with a split plateau, an oxide with a strong
// white line.
constexpr std::array<SpeciesShape, speciesCount> shapes{{
    {-3.2, 0.7, {{{-1.6, 1.0, 0.42, false}, {3.0, 1.4, 0.10, false}}}, 0.110, 17.0, 0.4},
    {-2.0, 0.9, {{{-0.4, 0.9, -0.25, false}, {2.2, 1.1, 0.22, false}}}, 0.140, 11.0, 2.3},
    {-0.3, 0.8, {{{0.9, 1.1, 0.85, true}, {-4.4, 0.7, 0.06, false}}}, 0.120, 14.0, 4.0},
}};

/// 0 at x = 0, 1 at x = 1, flat at both.
double smoothRise(double x)
{
    if (x <= 0.0) {
        return 0.0;
    }
    return x >= 1.0 ? 1.0 : 0.5 - 0.5 * std::cos(pi * x);
}

/// 1 over the near-edge structure, exactly 0 outside it.
double structureWindow(double x)
{
    return smoothRise((x - structureStart) / (structureFull - structureStart)) *
           smoothRise((structureEnd - x) / (structureEnd - structureFade));
}

double peakValue(const Peak& peak, double x)
{
    const double t = (x - peak.at) / peak.halfWidth;
    return peak.height * (peak.lorentzian ? 1.0 / (1.0 + t * t) : std::exp(-std::log(2.0) * t * t));
}

/// The arctangent edge and its peaks, with tails cut so that the lines beside it are undisturbed.
double nearEdge(const SpeciesShape& shape, double x)
{
    const double arctangent = 0.5 + std::atan((x - shape.edgeAt) / shape.edgeWidth) / pi;
    const double far = x < shape.edgeAt ? 0.0 : 1.0;
    double value = arctangent - far;
    for (const Peak& peak : shape.peaks) {
        value += peakValue(peak, x);
    }
    return far + value * structureWindow(x);
}

double waveWindow(double x)
{
    if (x <= waveStart || x >= waveEnd) {
        return 0.0;
    }
    const double s = std::sin(pi * (x - waveStart) / (waveEnd - waveStart));
    return s * s;
}

double plainWave(const SpeciesShape& shape, double x)
{
    const double damping = std::exp(-(x - waveStart) / 40.0);
    return shape.waveHeight * damping * std::sin(2.0 * pi * x / shape.wavePeriod + shape.wavePhase);
}

/// Constant and slope to take off a wave inside its window.
struct WaveLine
{
    double constant;
    double slope;
};

/// The line for which windowed wave minus windowed line has neither sum nor first moment.
WaveLine waveLine(const SpeciesShape& shape)
{
    constexpr double middle = 0.5 * (waveStart + waveEnd);
    constexpr int samples = 3000;
    double w0 = 0.0;
    double w2 = 0.0;
    double f0 = 0.0;
    double f1 = 0.0;
    for (int i = 1; i < samples; ++i) {
        const double x = waveStart + (waveEnd - waveStart) * i / samples;
        const double window = waveWindow(x);
        const double wave = window * plainWave(shape, x);
        w0 += window;
        w2 += window * (x - middle) * (x - middle);
        f0 += wave;
        f1 += wave * (x - middle);
    }
    // The window is even about its middle, so the two conditions are independent.
    return {f0 / w0 - f1 / w2 * middle, f1 / w2};
}

double wave(int species, double x)
{
    static const std::array<WaveLine, speciesCount> lines{waveLine(shapes[0]), waveLine(shapes[1]),
                                                          waveLine(shapes[2])};
    const auto index = static_cast<std::size_t>(species);
    const WaveLine& line = lines[index];
    return waveWindow(x) * (plainWave(shapes[index], x) - line.constant - line.slope * x);
}
} // namespace

double speciesShape(int species, double energy)
{
    const double x = energy - demoEdgeEnergy;
    return nearEdge(shapes[static_cast<std::size_t>(species)], x) + wave(species, x);
}

double backgroundShape(double energy)
{
    return 1.0 - 3.0 * (energy - demoEdgeEnergy) / demoEdgeEnergy;
}

double referenceAbsorption(int species, double energy)
{
    return referenceStep * speciesShape(species, energy) +
           referenceBackground * backgroundShape(energy);
}
