#include "Scan.h"

#include "ReferenceShapes.h"

#include <cmath>

namespace {
constexpr double evenStart = 8948.0; // [eV]
constexpr double evenRange = 80.0;
// Relative to the edge [eV].
constexpr double coarseEnd = -30.0;
constexpr double fineStart = -12.0;
constexpr double fineEnd = 16.0;

double toHundredths(double energy)
{
    return std::round(energy * 100.0) / 100.0;
}
} // namespace

ScanEnergies evenScan(int count)
{
    const double step = count > 1 ? evenRange / (count - 1) : evenRange;
    const double rounded = std::round(step * 1e4) / 1e4;
    ScanEnergies energies;
    for (int i = 0; i < count; ++i) {
        energies.append(evenStart + rounded * i);
    }
    return energies;
}

ScanEnergies unevenScan(const UnevenSteps& steps)
{
    ScanEnergies energies;
    double x = steps.first;
    const auto walk = [&energies, &x](double end, double step) {
        while (x < end) {
            energies.append(toHundredths(demoEdgeEnergy + x));
            x += step;
        }
    };
    walk(coarseEnd, steps.coarse);
    walk(fineStart, steps.coarse / 3.0);
    walk(fineEnd, steps.fine);
    while (x <= steps.last) {
        energies.append(toHundredths(demoEdgeEnergy + x));
        x = energyOfWaveNumber(waveNumber(x) + steps.wave);
    }
    return energies;
}
