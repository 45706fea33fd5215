#pragma once

#include <QMetaType>
#include <QString>
#include <QVector>

#include <optional>

/// Kinds of map. Their order is the order of saving; each has a row in the table of MapKinds.cpp.
enum class MapKind
{
    ShiftMap,  ///< energy shift of each position against the standard
    LcfJump,   ///< jump that the reference of a row carries
    LcfWeight, ///< its share of the fit
    Zansa,     ///< relative residual of the fit
    DEdge      ///< shift of the edge
};

constexpr int mapKinds = 5;

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
    const char* name; ///< of the map object
    const char* word; ///< in file names: behind the number of the row, or alone
    const char* unit; ///< of the values; empty for shares and jumps
    ScaleFields scale;
    bool ofRow;    ///< each reference row has one
    bool isResult; ///< an analysis fills it, and it is saved with the results
};

const MapKindTraits& traitsOf(MapKind kind);

/// Kinds that are saved with the results, in that order: those of the rows, then the others.
QVector<MapKind> resultKinds();

/// The kind of result that a row counts as its `index`-th, from 0; none for another index.
std::optional<MapKind> rowMapKind(int index);

/// Names a map of the program.
struct MapKey
{
    MapKind kind;
    int row = 0; ///< reference row; 0 for a kind that rows do not have
};

/// The energy shift map in force.
constexpr MapKey shiftMapKey{MapKind::ShiftMap, 0};

bool operator==(const MapKey& a, const MapKey& b);
/// The order of saving: row by row, in each row by kind, then the maps that are no row's.
bool operator<(const MapKey& a, const MapKey& b);

/// Number of the row that shows the map, or the word of one that is no row's: "2", "Zansa".
QString mapLabel(const MapKey& key);
/// The same with the word of a row's map, no two alike: "2-1", "Zansa".
QString fullMapLabel(const MapKey& key);

Q_DECLARE_METATYPE(MapKey)
