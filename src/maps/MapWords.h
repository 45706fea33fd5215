#pragma once

#include "maps/MapKinds.h"

/// What people call a map, in the language of the interface: "Ratio of a.dat". `row` is the name of
/// the row that it is of.
QString mapTitle(MapKind kind, const QString& row);

/// What its values are, for an axis: "Shift [eV]".
QString mapAxis(MapKind kind);
