#pragma once

#include "spectrum/EdgeLanes.h"

// Lane form of the normalised curve that comparisons read, at all energies.

struct ComparedLanes
{
    double* values;                    ///< [energy][laneStride]
    unsigned char held[laneStride];    ///< not 0: continued by the step where the lines come close
    unsigned char unsound[laneStride]; ///< not 0: nothing can be compared
};

/// Of lanes whose edge is fitted; of others without meaning. `holdGap`: continued where it has to
/// be, else as they are.
DECLARE_LANE_FORM(compareLanes, const EdgeTask& task, const EdgeLanes& edges, const double* mu,
                  int count, bool holdGap, ComparedLanes& out)
