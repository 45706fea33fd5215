#pragma once

#include "maps/MapKinds.h"

#include <optional>

class MapBook;

/// What the buttons of the analysis panel say about the map to show.
struct MapChoice
{
    int imageId = -1;   ///< id of the checked button of the "Show" group, -1 for none
    int rows = 0;       ///< number of reference rows
    bool zansa = false; ///< the button of the residual is checked
    int kindIndex = 0;  ///< kind of a row's maps: 0 jumps, 1 weights
};

/// The map to show; none when nothing is chosen or the book does not have it. A row shows its kind
/// 0 for a kind index that rows do not have.
std::optional<MapKey> chosenMap(const MapChoice& choice, const MapBook& book);
