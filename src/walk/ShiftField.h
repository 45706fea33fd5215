#pragma once

#include <QPoint>
#include <QSize>
#include <QVector>

/// The energy shifts of an image's pixels as they stood when they were frozen. A cheap copy; any
/// thread reads it.
struct ShiftField
{
    QVector<double> values; ///< of the map, row by row [eV]; nan where there is none
    QSize size;             ///< of the map [pixels]
    QPoint origin;          ///< of the map on the detector [pixels]
    QPoint imageOrigin;     ///< the same of the image

    /// Shift of an image pixel [eV]; 0 outside the map and where it has none.
    double at(int x, int y) const;
};
