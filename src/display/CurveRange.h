#pragma once

#include "display/PlotRange.h"
#include "spectrum/Spectrum.h"

/// A range with air for those values that are numbers.
PlotRange valueRange(const Spectrum& s);

/// The energies of a spectrum, its shift taken off.
PlotRange energyRange(const Spectrum& s);

/// Takes in what is seen of a curve between two energies: its points there, and its pieces where
/// they leave the view, so that a view between two points has a range as well. Points further apart
/// than `gap` are not joined.
void addSeen(PlotRange& range, const QVector<QPointF>& curve, double first, double last,
             double gap);
