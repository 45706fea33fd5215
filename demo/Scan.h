#pragma once

#include <QVector>

/// Energies of a scan in rising order [eV].
using ScanEnergies = QVector<double>;

/// Even steps over 80 eV round the edge. The step has four decimals at most, so that a field of six
/// digits holds it.
ScanEnergies evenScan(int count);

/// How a scan steps as beamlines do: coarse far below the edge, finer before it, fine over it, and
/// evenly in the wave number above.
struct UnevenSteps
{
    double first;  ///< relative to the edge, like `last` [eV]
    double last;   ///< may be missed by a step
    double coarse; ///< [eV] up to 30 eV below the edge, then a third of it up to 12 eV below
    double fine;   ///< [eV] up to 16 eV above the edge
    double wave;   ///< [1/angstrom] from there on
};

/// Energies by these steps, to 0.01 eV: file names hold them.
ScanEnergies unevenScan(const UnevenSteps& steps);
