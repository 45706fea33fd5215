#include "Phantom.h"

#include "CountRandom.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double pi = 3.14159265358979323846;
constexpr double easyCounts = 40000.0;
constexpr double hardCounts = 2000.0;
constexpr UnevenSteps hardSteps{-100.0, 150.0, 5.0, 0.5, 0.06};
constexpr double readNoise = 3.0; // [counts]
constexpr double largestStep = 1.15;
constexpr double foilThickness = 1.2; // of the standard, in reference spectra
constexpr quint64 badPixelStream = 1ULL << 40U;
constexpr quint64 standardStream = 1ULL << 41U;

/// A position in the unit square.
struct Place
{
    double u;
    double v;
};

double distance(const Place& p, double u, double v)
{
    return std::hypot(p.u - u, p.v - v);
}

/// 0 below -1, 1 above 1, smooth in between.
double softStep(double t)
{
    return 0.5 + 0.5 * std::sin(0.5 * pi * std::clamp(t, -1.0, 1.0));
}

/// 1 inside the grain, 0 outside it and in the hole of it.
double sampleMask(const Place& p)
{
    const double angle = std::atan2(p.v - 0.52, p.u - 0.52);
    const double rim = 0.39 + 0.045 * std::sin(5.0 * angle);
    const double inGrain = softStep((rim - distance(p, 0.52, 0.52)) / 0.03);
    const double outOfHole = softStep((distance(p, 0.63, 0.40) - 0.085) / 0.03);
    return inGrain * outOfHole;
}

double edgeStepAt(const Place& p)
{
    const double relief = 0.5 + 0.5 * std::sin(7.0 * p.u + 1.0) * std::cos(6.0 * p.v - 0.5);
    return largestStep * sampleMask(p) * (0.4 + 0.6 * relief);
}

/// Soft patches: each species leads somewhere, and no region is pure.
std::array<double, speciesCount> fractionsAt(const Place& p)
{
    const std::array<double, speciesCount> levels{
        1.7 * std::cos(2.0 * pi * (0.9 * p.u - 0.5 * p.v)),
        1.7 * std::cos(2.0 * pi * (0.5 * p.u + 0.9 * p.v) + 2.1),
        1.7 * std::sin(2.0 * pi * 1.6 * distance(p, 0.45, 0.55) + 0.6)};
    std::array<double, speciesCount> result{};
    double sum = 0.0;
    for (std::size_t s = 0; s < result.size(); ++s) {
        result[s] = std::exp(levels[s]);
        sum += result[s];
    }
    for (double& value : result) {
        value /= sum;
    }
    return result;
}

/// The film that carries the sample, in waves, and the sample's own share.
double backgroundAt(const Place& p, double edgeStep)
{
    const double film = 0.22 + 0.06 * std::sin(9.0 * p.u + 2.0 * p.v);
    return film + 0.45 * edgeStep;
}

double beamAt(const Place& p, double counts)
{
    const double r = distance(p, 0.5, 0.46);
    const double profile = 0.72 + 0.28 * std::exp(-r * r / 0.18);
    return counts * profile * (1.0 + 0.02 * std::sin(14.0 * p.u) * std::cos(11.0 * p.v));
}

/// The monochromator's tilt and the waves of its crystals. [eV]
double shiftAt(const Place& p)
{
    const double waves = std::sin(5.0 * p.u + 1.2) * std::cos(3.4 * p.v);
    return 1.1 * (p.v - 0.5) + 0.25 * p.u + 0.45 * waves;
}

/// The beam's intensity along the scan: it decays and breathes.
double drift(const ScanEnergies& scan, int index)
{
    return 1.0 - 0.10 * index / std::max(1, scan.size() - 1) + 0.015 * std::sin(0.37 * index);
}

void plantBadPixels(Phantom& phantom)
{
    const int size = phantom.conditions.size;
    const int pairs = 2 + size * size / 8000;
    CountRandom random(phantom.conditions.seed, badPixelStream);
    const auto place = [&random, size]() {
        const auto x = static_cast<int>(random.uniform() * size);
        const auto y = static_cast<int>(random.uniform() * size);
        return QPoint(x, y);
    };
    const auto inDarkCorner = [&phantom](const QPoint& p) {
        return p.x() < phantom.darkCorner && p.y() < phantom.darkCorner;
    };
    const auto isTaken = [&phantom](const QPoint& p) {
        return phantom.hot.contains(p) || phantom.dead.contains(p);
    };
    while (phantom.hot.size() < pairs || phantom.dead.size() < pairs) {
        const QPoint p = place();
        if (inDarkCorner(p) || isTaken(p)) {
            continue;
        }
        (phantom.hot.size() < pairs ? phantom.hot : phantom.dead).append(p);
    }
}

/// Absorption of the sample at a pixel that sees this energy.
double sampleAbsorption(const Phantom& phantom, int pixel, double energy)
{
    const double background = phantom.background[pixel] * backgroundShape(energy);
    if (!(phantom.edgeStep[pixel] > 0.0)) {
        return background;
    }
    double shape = 0.0;
    for (int s = 0; s < speciesCount; ++s) {
        shape += phantom.fractions[static_cast<std::size_t>(s)][pixel] *
                 speciesShape(phantom.conditions.difficulty, s, energy);
    }
    return phantom.edgeStep[pixel] * shape + background;
}

double absorption(const Phantom& phantom, Stack stack, int pixel, double energy)
{
    switch (stack) {
    case Stack::I1:
        return sampleAbsorption(phantom, pixel, energy);
    case Stack::Standard:
        return foilThickness *
               referenceAbsorption(phantom.conditions.difficulty, standardSpecies, energy);
    default:
        return 0.0;
    }
}

/// The part of the sample that is in front of a pixel when an image is taken. What comes in from
/// beyond the field is like the rim.
int samplePixel(const Phantom& phantom, int pixel, int index)
{
    const int size = phantom.conditions.size;
    const QPoint gone = driftAt(phantom, index);
    const int x = std::clamp(pixel % size - gone.x(), 0, size - 1);
    const int y = std::clamp(pixel / size - gone.y(), 0, size - 1);
    return y * size + x;
}

/// Counts of the beam behind the sample, the standard or nothing, without dark level and noise.
QVector<double> beamImage(const Phantom& phantom, Stack stack, int index)
{
    const double energy = phantom.scan.at(index);
    const double intensity = drift(phantom.scan, index);
    const int size = phantom.conditions.size;
    QVector<double> image(size * size);
    for (int i = 0; i < image.size(); ++i) {
        if (i % size < phantom.darkCorner && i / size < phantom.darkCorner) {
            continue;
        }
        const int sample = stack == Stack::I1 ? samplePixel(phantom, i, index) : i;
        const double mu = absorption(phantom, stack, sample, energy - phantom.shift[i]);
        image[i] = phantom.beam[i] * intensity * std::exp(-mu);
    }
    return image;
}

quint64 noiseStream(Stack stack, int index)
{
    const auto image = static_cast<quint64>(index);
    if (stack == Stack::Standard) {
        return standardStream + image;
    }
    return 2 * image + (stack == Stack::I0 ? 1 : 0);
}

void setPixels(QVector<quint16>& counts, const QVector<QPoint>& where, int size, quint16 value)
{
    for (const QPoint& p : where) {
        counts[p.y() * size + p.x()] = value;
    }
}
} // namespace

ExperimentConditions usualConditions(Difficulty difficulty)
{
    ExperimentConditions conditions;
    conditions.difficulty = difficulty;
    if (conditions.isHard()) {
        conditions.halfWidth = 1;
    }
    return conditions;
}

ScanEnergies scanOf(const ExperimentConditions& conditions)
{
    return conditions.isHard() ? unevenScan(hardSteps) : evenScan(conditions.energies);
}

int darkCornerOf(int size)
{
    return std::max(8, size / 8);
}

Phantom makePhantom(const ExperimentConditions& conditions)
{
    Phantom phantom;
    phantom.conditions = conditions;
    phantom.scan = scanOf(conditions);
    phantom.darkCorner = darkCornerOf(conditions.size);
    const int size = conditions.size;
    const double counts = conditions.isHard() ? hardCounts : easyCounts;
    for (int i = 0; i < size * size; ++i) {
        const int row = i / size;
        const Place p{(i % size + 0.5) / size, (row + 0.5) / size};
        const double step = edgeStepAt(p);
        const std::array<double, speciesCount> fractions = fractionsAt(p);
        for (std::size_t s = 0; s < fractions.size(); ++s) {
            phantom.fractions[s].append(step > 0.0 ? fractions[s] : 0.0);
        }
        phantom.edgeStep.append(step);
        phantom.background.append(backgroundAt(p, step));
        phantom.beam.append(beamAt(p, counts));
        phantom.shift.append(conditions.isHard() ? 0.0 : shiftAt(p));
    }
    plantBadPixels(phantom);
    return phantom;
}

QPoint driftAt(const Phantom& phantom, int index)
{
    const double share = index / std::max(1.0, phantom.scan.size() - 1.0);
    const int way = phantom.conditions.drift;
    return {static_cast<int>(std::lround(share * way)),
            -static_cast<int>(std::lround(share * way * 2.0 / 3.0))};
}

QVector<quint16> exposure(const Phantom& phantom, Stack stack, int index)
{
    const QVector<double> beam = beamImage(phantom, stack, index);
    CountRandom random(phantom.conditions.seed, noiseStream(stack, index));
    QVector<quint16> counts(beam.size());
    for (int i = 0; i < beam.size(); ++i) {
        double value = beam[i] + darkLevel;
        if (phantom.conditions.noise) {
            value = random.poisson(beam[i]) + darkLevel + readNoise * random.normal();
        }
        counts[i] = static_cast<quint16>(std::clamp(std::round(value), 0.0, 65535.0));
    }
    setPixels(counts, phantom.hot, phantom.conditions.size, hotCount);
    setPixels(counts, phantom.dead, phantom.conditions.size, 0);
    return counts;
}
