#pragma once

#include "maps/Analyzed2DRes.h"

/// What is made of the block sums s1 and s2 of two maps.
enum class MapOperation
{
    Sub, ///< s1 - s2
    Div, ///< s1 / s2; 1.0 where s2 is exactly 0, so that nothing over nothing looks neutral
    Mask ///< s1 where s2 is above 0, else 0.0
};

/// Fills `out`, which was prepared with the walk to go by and is neither of the operands. At each
/// position the values of both maps are summed over the block round it, and not divided by its
/// pixels; pixels outside a map count 0, also where the maps differ in size. The picture is left to
/// the caller.
void processMaps(MapOperation operation, const Analyzed2DRes& map1, const Analyzed2DRes& map2,
                 Analyzed2DRes& out);
