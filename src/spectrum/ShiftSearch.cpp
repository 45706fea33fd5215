#include "spectrum/ShiftSearch.h"

#include "spectrum/XafsSpectrum.h"

#include <QDebug>

#include <algorithm>
#include <cmath>

ShiftSearch::ShiftSearch(const XafsSpectrum& spectrum, const XafsSpectrum& ref)
    : energies_(spectrum.size())
    , values_(spectrum.size())
    , refCurve_(ref.doubleNormalizedPreBase)
    , refMin_(ref.xMin)
    , refMax_(ref.xMax)
    , refShift_(refCurve_.shift())
{
    const QPointF* points = spectrum.points.constData();
    const QPointF* curve = spectrum.doubleNormalizedPreBase.points.constData();
    const int curveSize = spectrum.doubleNormalizedPreBase.size();
    for (int i = 0; i < spectrum.size(); ++i) {
        energies_[i] = points[i].x();
        values_[i] = i < curveSize ? curve[i].y() : 0.0;
    }
    tabulate();
}

void ShiftSearch::tabulate()
{
    const int n = refCurve_.size();
    if (n < 2)
        return;
    refX_.resize(n);
    refY_.resize(n);
    slopes_.resize(n - 1);
    const QPointF* p = refCurve_.points.constData();
    for (int i = 0; i < n; ++i) {
        refX_[i] = p[i].x() - refShift_;
        refY_[i] = p[i].y();
    }
    for (int i = 0; i < n - 1; ++i) {
        if (!(refX_[i] < refX_[i + 1]))
            return;
        slopes_[i] = (refY_[i + 1] - refY_[i]) / (refX_[i + 1] - refX_[i]);
    }
    tabulated_ = true;
}

/// Segment of the curve to read at E, found from the segment of the query before.
inline int ShiftSearch::segmentFrom(int low, double E) const
{
    const double* x = refX_.constData();
    const int last = refX_.size() - 2;
    if (!(E >= x[low])) {
        const double* above = std::upper_bound(x, x + last + 1, E);
        return std::max(static_cast<int>(above - x) - 1, 0);
    }
    while (low < last && x[low + 1] <= E)
        ++low;
    return low;
}

double ShiftSearch::innerProduct(double shift)
{
    double tt = 0.0;
    double rr = 0.0;
    double tr = 0.0;
    int low = 0;
    const double* energies = energies_.constData();
    const double* values = values_.constData();
    const double* refX = refX_.constData();
    const double* refY = refY_.constData();
    const double* slopes = slopes_.constData();
    const int n = energies_.size();
    for (int i = 0; i < n; ++i) {
        const double E = energies[i] - shift;
        if (E < refMin_ || E > refMax_)
            continue;
        if (Q_UNLIKELY(std::isnan(E)))
            logNan();
        double r;
        if (tabulated_) {
            low = segmentFrom(low, E + refShift_);
            r = slopes[low] * (E + refShift_ - refX[low]) + refY[low];
        } else {
            r = refCurve_.yAt(E + refShift_);
        }
        const double t = values[i];
        tt += t * t;
        rr += r * r;
        tr += t * r;
    }
    if (!(tt > 0.0) || !(rr > 0.0))
        return 0.0;
    return tr / std::sqrt(tt * rr);
}

void ShiftSearch::logNan()
{
    if (!nanLogged_)
        qDebug() << "nan EeV in XafsSpectrum::doubleNormalizedPreBase";
    nanLogged_ = true;
}
