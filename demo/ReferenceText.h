#pragma once

#include "ReferenceShapes.h"

#include <QString>

/// Text of a species' reference spectrum. Species 1 is a beamline's scan (Bragg angles with I0 and
/// I1), the others are tables of energy and absorption. Those of the hard experiment are uneven
/// scans of other steps than the sample's, and species 2 was scanned downwards.
QString referenceText(Difficulty difficulty, int species);

/// A table of the hard experiment that gives its energies in keV, so that the program finds none of
/// them in the scan.
QString kevReferenceText();
