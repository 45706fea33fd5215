#pragma once

#include "common/Lanes.h"

#include <cstdint>

// Lane forms of the counts of a block and of absorption(): the same bits for each position.

/// mu[k] = ln(i0[k] / i1[k]) of the lanes below `count`; what is behind them up to laneStride is
/// read and written. `rare` comes back not 0 when somewhere i0[k] * i1[k] is not above 0 or the
/// quotient no normal number: what stands there has no meaning, and the plain form has to have a
/// look.
DECLARE_LANE_FORM(logarithms, const double* i0, const double* i1, int count, double* mu,
                  std::uint64_t& rare)

/// Counts of 16-bit pixels as doubles.
DECLARE_LANE_FORM(countsOfWords, const std::uint16_t* pixels, int count, double* counts)

/// Adds a row of 16-bit pixels to the sums of its columns.
DECLARE_LANE_FORM(addWords, const std::uint16_t* pixels, int count, std::uint32_t* sums)

/// counts[k] -= level + dark[k].
DECLARE_LANE_FORM(takeOffDark, double* counts, int count, double level, const double* dark)

/// A straight line through two rows of counts, read at an energy between theirs, which differ.
struct CountsLine
{
    const double* low;
    const double* high;
    double lowEnergy; ///< [eV]
    double highEnergy;
    double energy;
};

/// counts[k] of each position on its line.
DECLARE_LANE_FORM(countsBetween, const CountsLine& line, int count, double* counts)
