#pragma once

#include <QPointF>
#include <QVector>

/// A curve of (energy [eV], value) points: the value class that block sums of a stack are gathered
/// into and that all spectrum work stands on. Copies share their points (Qt's implicit sharing).
///
/// "x" below is the energy as read through x(i), that is with the shift taken off; "raw x" is what
/// `points` holds. Out-of-range indices read as 0.0.
class Spectrum
{
public:
    int tag = 1;             ///< carried along with copies; no rule reads it
    QVector<QPointF> points; ///< (raw energy [eV], value) in the order of measurement
    double xMin;             ///< running bounds of the appended points, raw energies
    double xMax;
    double yMin;
    double yMax;
    qint32 yMinIndex; ///< point that set yMin; meaningless before the first append
    qint32 yMaxIndex;
    QVector<double> smoothed; ///< moving average of y, made by genSmoothed()
    bool isShifted = false;   ///< when set, x(i) is raw x minus eShift
    double eShift = 0.0;      ///< energy shift [eV]
    double spare = 0.0;       ///< carried along with copies; no rule reads it

    Spectrum() { resetBounds(); }

    int size() const { return points.size(); }
    bool isEmpty() const { return points.isEmpty(); }

    /// Energy shift in force: eShift when isShifted, else 0.
    double shift() const { return isShifted ? eShift : 0.0; }

    double x(int i) const;
    double y(int i) const;

    /// Value at energy x: 0.0 without points, the only value of a single point, else on the
    /// straight line between the two points around x; beyond the ends on the line through the
    /// first or last two points. Energies are taken to ascend.
    double yAt(double x) const;

    /// The same on `smoothed`.
    double smoothedAt(double x) const;

    /// Rebuilds `smoothed`: mean of y over the window [i - halfWidth, i + halfWidth], which
    /// shrinks at both ends. The sum runs along with the window and is not formed anew. A negative
    /// halfWidth acts as 0.
    void genSmoothed(int halfWidth);

    void resetBounds();

    /// Empties `points` and resets the bounds; leaves `smoothed` alone.
    void clear();

    /// Adds a point and updates the bounds by strict comparison.
    void append(double x, double y);

    /// Takes the whole curve at once, with the same bounds as appending point by point.
    void setPoints(const QVector<QPointF>& newPoints);
    void setPoints(const double* xs, const double* ys, int n);

    /// Least and greatest of some numbers; nan is passed over.
    struct Extremes
    {
        double low;
        double high;
    };
    static Extremes extremesOf(const double* values, int n);
    /// setPoints() of energies whose extremes are known: curves over the same energies share them.
    void setPoints(const double* xs, const Extremes& xRange, const double* ys, int n);
    /// setPoints() without bounds, which stay those of no point: for curves that are only read.
    void setPointsOnly(const double* xs, const double* ys, int n);

protected:
    /// Takes the points from index `first` on into the bounds, as appending each would.
    void extendBounds(int first);

private:
    void takeExtremes(double low, double high, int first);
};

/// Reads an ascending curve at ascending energies without bisecting anew for each: gives the same
/// values as Spectrum::yAt, to the last bit. Bisects where the curve does not ascend or an energy
/// steps back. The curve must outlive the cursor and not change.
class SpectrumCursor
{
public:
    explicit SpectrumCursor(const Spectrum& curve);
    double yAt(double x);
    /// Spectrum::smoothedAt of the curve.
    double smoothedAt(double x);

private:
    int segmentAt(double x);

    const Spectrum& curve_;
    const QPointF* points_;
    int size_;
    double shift_;
    bool ascends_;
    int low_ = 0;
};
