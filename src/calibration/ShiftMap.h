#pragma once

#include "calibration/CalibBlock.h"
#include "walk/ShiftField.h"

#include <QPoint>
#include <QString>
#include <QVector>

#include <optional>

class QTextStream;
struct EMPHeader;

/// An energy shift map with all that belongs to it, as one value; copies share the field. Without
/// shifts there is no map. The one in force gives every spectrum its shift.
struct ShiftMap
{
    QVector<double> shifts;   ///< [eV], row by row; nan where there is none
    AnalyzeCond walk;         ///< over the positions that it holds; its size is that of the field
    QPoint origin;            ///< of its image on the detector [pixels]
    double edgeE = 0.0;       ///< at which it was read [eV]; 0 for one of a calibration
    bool interrupted = false; ///< its calibration was stopped
    double min = runningMinStart; ///< of the positions that have a shift [eV]
    double max = runningMaxStart;
    std::optional<CalibStatistics> statistics; ///< of its calibration, when that was completed
    XafsSpectrum standard;                     ///< of its calibration; empty for one of a file
    QString fileName; ///< of which it was read, or under which it was saved

    bool isEmpty() const { return shifts.isEmpty(); }

    /// Median of the shifts over the positions that have one, and their spread: 1.4826 times the
    /// median distance from it, which is the standard deviation of a normal distribution and takes
    /// little notice of outliers. [eV] None without a shift, and for a map that is not filled.
    struct MedianAndSpread
    {
        double median;
        double spread;
    };
    std::optional<MedianAndSpread> medianAndSpread() const;

    /// Starts a new filling: a shift of 0 everywhere, until its position is done.
    void prepare(const AnalyzeCond& newWalk);
    /// Stores a position's shift [eV] over its block; or that it has none.
    void set(const AnalyzeCond& at, double shift);
    void leaveOut(const AnalyzeCond& at);

    /// The shifts of the pixels of an image at this place on the detector.
    ShiftField field(const QPoint& imageOrigin) const;

    /// Shows the shifts in a map, where failed positions count 0; takes them back from it.
    void showIn(Analyzed2DRes& map) const;
    void takeFrom(const Analyzed2DRes& map);
};

/// Reads the values behind a valid head, which go by the edge energy given [eV]; see
/// ShiftMapFile.h.
ShiftMap readShiftMap(QTextStream& in, const EMPHeader& header, double edgeE);
