#pragma once

#include <memory>
#include <vector>

class Analyzed2DRes;

/// One value a pixel of a map, not 0 at the positions that are faint, of those by which ranges are
/// found (maps/SomePositions.h).
using PositionMask = std::shared_ptr<const std::vector<unsigned char>>;

/// Positions beside the sample where noise passed for an edge: the jumps of all rows together come
/// to less than a tenth of what the better positions have. Their shares are noise over noise, and
/// would take all colours. Null when none is, without maps, and where hardly any position has a
/// jump.
PositionMask faintPositions(const std::vector<const Analyzed2DRes*>& jumps);
