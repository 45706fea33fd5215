#pragma once

#include "common/Lanes.h"

// Lane form of the sums behind an inner product: a lane is a shift.

/// A curve that ascends strictly.
struct ShiftCurve
{
    const double* x; ///< [eV], the curve's own shift taken off
    const double* y;
    const double* slope; ///< of the segment that begins at the point
    int segments;
    double ownShift;
    double lowest; ///< energies that it is compared at, raw [eV]
    double highest;
};

/// Points of the spectrum that is compared, at finite energies [eV] that ascend.
struct ShiftPoints
{
    const double* energies;
    const double* values;
    int count;
};

/// Sums at several shifts, which ascend; arrays of a multiple of mostWidth.
struct ShiftSums
{
    int count;
    const double* shifts; ///< [eV]; all of the array, finite
    double* tt;           ///< squares of the spectrum
    double* rr;           ///< squares of the curve
    double* tr;
};

DECLARE_LANE_FORM(sumShifts, const ShiftPoints& points, const ShiftCurve& curve,
                  const ShiftSums& sums)
