#pragma once

/// The absorption of the demonstrations' species round the copper K edge.
///
/// Every species rises from exactly 0 to exactly 1 round the edge: from 8 eV below it to 6 eV above
/// it in the easy set, to 15 eV above it in the hard one. All near-edge structure lies in between.
/// The easy set's oscillations, from 21 to 42 eV above the edge, hold no constant and no slope. So
/// straight lines fitted below and above the edge are those of the background and of the background
/// plus step, whichever points of these ranges a fit takes: sample and references are normalised
/// alike although their grids and ranges differ, and whether the ranges begin 10 or 20 eV from the
/// mid point.
///
/// The hard set has uneven scans, and a least-squares fit weighs an energy by how densely a scan
/// samples it. Its oscillations hold no constant, no slope and no curvature where points lie evenly
/// in the wave number k above the edge, and every hard scan steps evenly in k from below the
/// oscillations' start, 22 eV above the edge, to their end at 146 eV. They fade in and out
/// smoothly and have ten points a period and more, so that sums over any such grid are those of
/// the integral. Beyond the two ends all shapes are exactly 1, so it is the same where a range
/// starts (20 eV above a mid point that lies within 4 eV of the edge) or ends. That there is no
/// curvature is for Victoreen lines: over such a range their three terms are a parabola to 1e-6.

constexpr int speciesCount = 3;

/// The two experiments: the easy one has many counts and even scans, the hard one few counts,
/// uneven scans and references whose oscillations rise more from point to point than the edge.
enum class Difficulty
{
    Easy,
    Hard
};

/// Energy of the copper K edge [eV].
constexpr double demoEdgeEnergy = 8984.36;

/// Edge step and background at the edge of every reference spectrum.
constexpr double referenceStep = 1.0;
constexpr double referenceBackground = 0.45;

/// Wave number [1/angstrom] of an electron that far above the edge [eV], and the other way round.
double waveNumber(double aboveEdge);
double energyOfWaveNumber(double k);

/// Normalised absorption of a species at an energy [eV].
double speciesShape(Difficulty difficulty, int species, double energy);

/// Background of sample and references relative to its value at the edge: a straight line, with
/// the slope of a lambda^3 law there.
double backgroundShape(double energy);

/// Absorption (mu d) of a species' reference spectrum at an energy [eV].
double referenceAbsorption(Difficulty difficulty, int species, double energy);
