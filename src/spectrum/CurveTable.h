#pragma once

#include "spectrum/Spectrum.h"

#include <QVarLengthArray>

#include <algorithm>

/// A curve laid out for reading at many energies, its slopes worked out once: gives the values of
/// Spectrum::yAt, to the last bit. A curve that does not strictly ascend is read by that. It must
/// outlive the table and not change.
class CurveTable
{
public:
    explicit CurveTable(const Spectrum& curve)
        : curve_(&curve)
    {
        tabulate();
    }

    /// The curve strictly ascends: it has segments.
    bool hasSegments() const { return tabulated_; }

    /// Segment to read at E, found from the segment of a query near by: quick for rising energies.
    int segmentFrom(int low, double E) const
    {
        const double* x = x_.constData();
        const int last = x_.size() - 2;
        if (!(E >= x[low])) {
            const double* above = std::upper_bound(x, x + last + 1, E);
            return std::max(static_cast<int>(above - x) - 1, 0);
        }
        while (low < last && x[low + 1] <= E)
            ++low;
        return low;
    }

    /// Value at E; `low` goes from one query to the next, from 0 on.
    double at(int& low, double E) const
    {
        if (!tabulated_)
            return curve_->yAt(E);
        low = segmentFrom(low, E);
        return slopes_[low] * (E - x_[low]) + y_[low];
    }

    int segments() const { return x_.size() - 1; }
    const double* xs() const { return x_.constData(); }
    const double* ys() const { return y_.constData(); }
    const double* slopes() const { return slopes_.constData(); }

    // Of the point that a segment starts at.
    double x(int segment) const { return x_[segment]; }
    double y(int segment) const { return y_[segment]; }
    double slope(int segment) const { return slopes_[segment]; }

private:
    using Values = QVarLengthArray<double, 512>;

    void tabulate();

    const Spectrum* curve_;
    bool tabulated_ = false;
    Values x_; ///< with the curve's shift taken off
    Values y_;
    Values slopes_;
};
