#pragma once

#include "common/Lanes.h"

// Lane form of readElement() over energies that ascend strictly: the same bits for each lane whose
// values are numbers.

/// What is looked up for a row, the same for all positions.
struct ElementLaneRow
{
    int top; ///< the segment that energy + dE is read on begins at this point
    double topE;
    int bottom; ///< the same of energy - dE
    double bottomE;
    int crossFrom; ///< points at which crossings are sought
    int crossTo;
    int roiFrom; ///< points of the region of interest
    int roiTo;
    double energy;
};

struct ElementLaneTask
{
    const double* E;       ///< of the scan [eV]
    const double* middles; ///< of neighbours
    int rows;
    const ElementLaneRow* row;
};

/// What is read of a row, [lane].
struct ElementLaneReadings
{
    double above[laneStride];
    double below[laneStride];
    double shift[laneStride];
    double roi[laneStride];
};

/// mu is [energy][laneStride]; one entry of `out` a row.
DECLARE_LANE_FORM(readElements, const ElementLaneTask& task, const double* mu, int count,
                  ElementLaneReadings* out)
