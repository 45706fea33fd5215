#pragma once

/// The absorption of the demonstration's species round the copper K edge.
///
/// Every species rises from exactly 0 to exactly 1 between 8 eV below and 6 eV above the edge. All
/// near-edge structure lies in between, and the oscillations above it hold no constant and no
/// slope. So straight lines fitted below and above the edge are those of the background and of
/// the background plus step, whichever points of these ranges a fit takes: sample and references
/// are normalised alike although their grids and ranges differ.

constexpr int speciesCount = 3;

/// Energy of the copper K edge [eV].
constexpr double demoEdgeEnergy = 8984.36;

/// Edge step and background at the edge of every reference spectrum.
constexpr double referenceStep = 1.0;
constexpr double referenceBackground = 0.45;

/// Normalised absorption of a species at an energy [eV].
double speciesShape(int species, double energy);

/// Background of sample and references relative to its value at the edge: a straight line, with
/// the slope of a lambda^3 law there.
double backgroundShape(double energy);

/// Absorption (mu d) of a species' reference spectrum at an energy [eV].
double referenceAbsorption(int species, double energy);
