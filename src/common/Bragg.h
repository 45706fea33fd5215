#pragma once

#include "common/Constants.h"
#include "common/PortableMath.h"

#include <cmath>

// Bragg's law between the angle of a crystal monochromator and the energy it lets through.

/// Energy [eV] at a Bragg angle [degrees] of a crystal with the lattice spacing [angstrom];
/// infinite where the sine or the spacing is 0.
inline double energyOfAngle(double degrees, double spacing)
{
    return hcEvAngstrom / (portable::sin(degrees * shortPi / 180.0) * 2.0 * spacing);
}

/// Bragg angle [degrees] of an energy [eV] with the lattice spacing [angstrom]; -1.0 where the
/// crystal can't reach the energy (the sine would exceed 1 in size).
inline double angleOfEnergy(double energy, double spacing)
{
    const double sine = hcEvAngstrom / energy / (2.0 * spacing);
    if (std::abs(sine) > 1.0)
        return -1.0;
    return portable::asin(sine) / shortPi * 180.0;
}
