#pragma once

#include "maps/MapKinds.h"

#include <optional>

class MapBook;

/// The buttons for maps that are no reference row's, as batch commands count them behind the rows
/// that there are at start.
enum class FixedImage
{
    ResidualJump,
    ResidualRest,
    ResidualRatio,
    Zansa,
    DEdge,
    ElemJump,
    ElemJumpRatio,
    ElemsCor,
    ElemsCorTh,
    ElemMutPlus,
    ElemMutMinus,
    ElemDE,
    ElemRoi,
    ElemRoiRatio,
    SumUp,
    Outcomes
};

/// The fixed button of a kind of map; none for kinds that have none.
std::optional<FixedImage> fixedImageOf(MapKind kind);

/// What the buttons of the analysis panel say about the map to show.
struct MapChoice
{
    int row = -1;                    ///< reference row whose "Show" is checked, -1 for none
    int rows = 0;                    ///< number of reference rows
    std::optional<FixedImage> fixed; ///< the fixed button that is checked
    int kindIndex = 0;               ///< kind of a reference row's maps: 0 jumps, 1 weights
    bool elements = false;           ///< the element analysis is on
    int elementRow = -1;             ///< element row whose "Show" is checked, -1 for none
    int elementRows = 0;             ///< number of element rows
    bool arithmetic = false;         ///< map arithmetic is on
    std::optional<MapKind> operand;  ///< map of the arithmetic whose button is checked
};

/// The map to show; none when nothing is chosen or the book does not have it. A row shows its kind
/// 0 for a kind index that rows do not have; maps of the residual absorption are shown once they
/// have a picture, those of elements while their analysis is on; those of map arithmetic, while
/// that is on, stand above all others.
std::optional<MapKey> chosenMap(const MapChoice& choice, const MapBook& book);
