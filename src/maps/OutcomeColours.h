#pragma once

#include "spectrum/Outcome.h"

#include <QColor>

#include <vector>

class Analyzed2DRes;

/// Colours of an outcome map: that of the outcome number k is the k-th. Told apart by the
/// colour-blind too, and none is that of a position without an edge.
const std::vector<QRgb>& outcomeColours();

/// How many positions of a finished outcome map have each outcome. A map without values has none;
/// a value that is no outcome's number is not counted.
OutcomeCounts outcomesOf(const Analyzed2DRes& map);

/// "5 no step above 0", the number being the map's value; for a value that is no outcome's number
/// an empty text.
QString outcomeLabel(double value);
