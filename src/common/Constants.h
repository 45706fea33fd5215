#pragma once

// Constants that results depend on to the last digit, and that therefore stand once.

/// Planck's constant times the speed of light [eV angstrom]; lambda = hcEvAngstrom / E.
constexpr double hcEvAngstrom = 12398.424360387684;

/// Pi as all angle conversions of the program use it. Energies from angles depend on these ten
/// decimals, so a better value would shift every energy scale.
constexpr double shortPi = 3.1415926535;

/// Start values of running extremes: the first value seen replaces them.
constexpr double runningMinStart = 1e300;
constexpr double runningMaxStart = -1e300;
