#pragma once

#include <QMetaType>
#include <QString>
#include <QVector>

#include <optional>

/// Kinds of map. Their order is the order of saving; each has a row in the table of MapKinds.cpp.
enum class MapKind
{
    ShiftMap,      ///< energy shift of each position against the standard
    LcfJump,       ///< jump that the reference of a row carries
    LcfWeight,     ///< its share of the fit
    Zansa,         ///< relative residual of the fit
    DEdge,         ///< shift of the edge
    Outcomes,      ///< Outcome of each position of the last walk that formed lines, as a number
    ResidualJump,  ///< gap of the lines at the energy of the residual absorption
    ResidualRest,  ///< absorption that the jump does not explain
    ResidualRatio, ///< its share of both
    ElemJump,      ///< jump of the raw absorption over an element's edge
    ElemJumpRatio, ///< the same over that of the target element
    ElemMutPlus,   ///< absorption above the edge
    ElemMutMinus,  ///< absorption below the edge
    ElemDE,        ///< shift of the element's edge
    ElemRoi,       ///< mean absorption of the region of interest over that below the edge
    ElemRoiRatio,  ///< the same over the jump
    ElemsCor,      ///< correlation of the elements' ratios with the standard ones
    ElemsCorTh,    ///< the same, 0 where it is below the threshold
    SumUp,         ///< sum of the counts of chosen images
    Processed,     ///< what map arithmetic made of its operands
    Operand1,
    Operand2
};

constexpr int mapKinds = int(MapKind::Operand2) + 1;

/// What a kind has a map of each for.
enum class RowsOf
{
    Nothing,    ///< there is one map
    References, ///< the reference rows of the fit
    Elements    ///< the rows of the element analysis
};

/// The pair of scale fields that a map's fixed scale comes from.
enum class ScaleFields
{
    None,
    DMut,
    Ratio
};

/// What is the same for all maps of a kind. The texts are Latin-1.
struct MapKindTraits
{
    MapKind kind;
    const char* name; ///< of the map object; %1 is the name of an element's row
    const char* word; ///< in file names: behind the number or name of the row, or alone
    const char* unit; ///< of the values; empty for shares and jumps
    ScaleFields scale;
    RowsOf rows;
    bool isResult; ///< an analysis fills it, and it is saved with the results
};

const MapKindTraits& traitsOf(MapKind kind);

/// Kinds that are saved with the results, in that order.
QVector<MapKind> resultKinds();

/// The kind of result that a reference row counts as its `index`-th, from 0; none for another
/// index.
std::optional<MapKind> rowMapKind(int index);

/// Names a map of the program.
struct MapKey
{
    MapKind kind;
    int row = 0; ///< 0 for a kind that rows do not have
};

/// The energy shift map in force.
constexpr MapKey shiftMapKey{MapKind::ShiftMap, 0};

bool operator==(const MapKey& a, const MapKey& b);
/// The order of saving: the reference rows, in each row by kind, then the maps that are no row's,
/// then the element rows.
bool operator<(const MapKey& a, const MapKey& b);

Q_DECLARE_METATYPE(MapKey)
