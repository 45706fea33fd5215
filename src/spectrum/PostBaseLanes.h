#pragma once

#include "spectrum/EdgeLanes.h"

// Lane form of XafsSpectrum::doubleNormalizedPostBase, at all energies.

/// Of lanes whose edge is fitted, into values [energy][laneStride]; of others without meaning.
DECLARE_LANE_FORM(postBaseLanes, const EdgeTask& task, const EdgeLanes& edges, const double* mu,
                  int count, double* values)
