#include "ReferenceText.h"

#include "Scan.h"
#include "common/Constants.h"

#include <QVector>

#include <algorithm>
#include <array>
#include <cmath>

namespace {
// The easy references reach beyond the scan and are finer than it.
constexpr double easyStart = 8928.0; // [eV]
constexpr double easyEnd = 9058.0;
constexpr double easyStride = 0.25;
constexpr int easyAngles = 601;

// The hard ones reach beyond their scan too; above the edge they are coarser.
constexpr std::array<UnevenSteps, speciesCount> hardSteps{{{-112.0, 165.0, 4.0, 0.25, 0.070},
                                                           {-118.0, 180.0, 6.0, 0.30, 0.085},
                                                           {-105.0, 158.0, 5.0, 0.20, 0.075}}};
constexpr double si111Spacing = 3.13553; // [angstrom]
constexpr int angleSpecies = 1;
constexpr int descendingSpecies = 2;

QString number(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

double braggAngle(double energy)
{
    return std::asin(hcEvAngstrom / (2.0 * si111Spacing * energy)) * 180.0 / shortPi;
}

double braggEnergy(double angle)
{
    return hcEvAngstrom / (2.0 * si111Spacing * std::sin(angle * shortPi / 180.0));
}

/// Energies [eV] of a table.
QVector<double> tableEnergies(Difficulty difficulty, int species)
{
    if (difficulty == Difficulty::Hard) {
        QVector<double> energies = unevenScan(hardSteps[static_cast<std::size_t>(species)]);
        if (species == descendingSpecies) {
            std::reverse(energies.begin(), energies.end());
        }
        return energies;
    }
    QVector<double> energies;
    for (int i = 0; i <= static_cast<int>((easyEnd - easyStart) / easyStride); ++i) {
        energies.append(easyStart + i * easyStride);
    }
    return energies;
}

/// Angles [degrees] of a scan: even ones, as a monochromator makes them, or those of uneven
/// energies.
QVector<double> scanAngles(Difficulty difficulty, int species)
{
    QVector<double> angles;
    if (difficulty == Difficulty::Hard) {
        for (const double energy : tableEnergies(difficulty, species)) {
            angles.append(braggAngle(energy));
        }
        return angles;
    }
    const double first = braggAngle(easyStart);
    const double last = braggAngle(easyEnd);
    for (int i = 0; i < easyAngles; ++i) {
        angles.append(first + (last - first) * i / (easyAngles - 1));
    }
    return angles;
}

QString tableText(Difficulty difficulty, int species)
{
    QString text =
        QStringLiteral("# Demonstration reference, species %1\n# E [eV]  mu d\n").arg(species);
    for (const double energy : tableEnergies(difficulty, species)) {
        text += number(energy, 3) + QLatin1Char(' ') +
                number(referenceAbsorption(difficulty, species, energy), 8) + QLatin1Char('\n');
    }
    return text;
}

/// Set angle, read angle, time, I0, I1.
QString scanText(Difficulty difficulty, int species)
{
    const QVector<double> angles = scanAngles(difficulty, species);
    QString text = QStringLiteral("9809     Demonstration beamline\n"
                                  "Reference of species %1\n"
                                  "Mono : SI(111)  D= %2 A   Initial angle = %3 deg\n"
                                  "Points %4\n\n"
                                  "Angle(c)  Angle(o)  time/s  I0  I1\n"
                                  "Offset 0 0 0 0\n")
                       .arg(species)
                       .arg(number(si111Spacing, 5), number(angles.first(), 5))
                       .arg(angles.size());
    for (int i = 0; i < angles.size(); ++i) {
        const QString angle = number(angles[i], 8);
        const double i0 = 500000.0 - 40.0 * i;
        const double mu = referenceAbsorption(difficulty, species, braggEnergy(angle.toDouble()));
        text += QStringLiteral("%1 %1 1.00 %2 %3\n")
                    .arg(angle, number(i0, 3), number(i0 * std::exp(-mu), 3));
    }
    return text;
}
} // namespace

QString referenceText(Difficulty difficulty, int species)
{
    return species == angleSpecies ? scanText(difficulty, species) : tableText(difficulty, species);
}

QString kevReferenceText()
{
    constexpr double eVPerKeV = 1000.0;
    QString text = QStringLiteral("# Demonstration reference\n# E [keV]  mu d\n");
    for (const double energy : tableEnergies(Difficulty::Hard, angleSpecies)) {
        text += number(energy / eVPerKeV, 6) + QLatin1Char(' ') +
                number(referenceAbsorption(Difficulty::Hard, angleSpecies, energy), 8) +
                QLatin1Char('\n');
    }
    return text;
}
