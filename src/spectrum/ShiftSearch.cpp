#include "spectrum/ShiftSearch.h"

#include "common/LaneForms.h"
#include "spectrum/XafsSpectrum.h"

#include <QDebug>

#include <algorithm>
#include <cmath>

namespace {
/// Points on either side of the edge that a shift is judged by first.
constexpr int edgeHalf = 12;

/// Below this, squares may have lost digits to underflow.
constexpr double leastSquares = 1e-100;

// A search with a step far too fine for its range ends here instead of blocking the program.
constexpr int mostShiftsTried = 100000;

bool allFinite(const double* values, int n)
{
    return std::all_of(values, values + n, [](double v) { return std::isfinite(v); });
}
} // namespace

ShiftSearch::ShiftSearch(const XafsSpectrum& ref, int n)
    : energies_(n)
    , values_(n)
    , ref_(ref.doubleNormalizedPreBase)
    , refMin_(ref.xMin)
    , refMax_(ref.xMax)
    , refShift_(ref.doubleNormalizedPreBase.shift())
    , sumShifts_(LANE_FORM(sumShifts))
{
}

ShiftSearch::ShiftSearch(const XafsSpectrum& spectrum, const XafsSpectrum& ref)
    : ShiftSearch(ref, spectrum.size())
{
    const QPointF* points = spectrum.points.constData();
    const QPointF* curve = spectrum.doubleNormalizedPreBase.points.constData();
    const int curveSize = spectrum.doubleNormalizedPreBase.size();
    for (int i = 0; i < spectrum.size(); ++i) {
        energies_[i] = points[i].x();
        values_[i] = i < curveSize ? curve[i].y() : 0.0;
    }
    takeEdge(spectrum.midx + spectrum.shift());
}

ShiftSearch::ShiftSearch(const double* energies, const double* values, int n, double edge,
                         const XafsSpectrum& ref)
    : ShiftSearch(ref, n)
{
    std::copy_n(energies, n, energies_.data());
    std::copy_n(values, n, values_.data());
    takeEdge(edge);
}

void ShiftSearch::takeEdge(double edge)
{
    for (const double v : values_)
        squares_ += v * v;
    const double* E = energies_.constData();
    rises_ = allFinite(E, energies_.size()) && std::is_sorted(E, E + energies_.size());
    const int edgeAt = static_cast<int>(std::lower_bound(E, E + energies_.size(), edge) - E);
    edgeFirst_ = std::max(edgeAt - edgeHalf, 0);
    edgeEnd_ = std::min(edgeAt + edgeHalf, energies_.size());
}

double ShiftSearch::find(double centre, double range, double step, double minStep)
{
    if (step < minStep || !std::isfinite(range))
        return 0.0;
    // All levels share this centre and the best value, so a finer level does not refine round the
    // best shift of a coarser one: deliberate.
    int left = mostShiftsTried;
    for (; step >= minStep && step > 0.0; step *= 0.1, range *= 0.1) {
        QVarLengthArray<double, 128> offsets;
        double d = -range;
        for (; d <= range && offsets.size() < left; d += step)
            offsets.append(d);
        tryShifts(centre, offsets.constData(), offsets.size());
        left -= offsets.size();
        if (d <= range) {
            qDebug() << "shift search given up: range" << range << "is too wide for step" << step;
            break;
        }
    }
    return bestShift_;
}

ShiftSearch::Sums ShiftSearch::sumsAt(int first, int end, double shift)
{
    Sums sums;
    int low = 0;
    const double* energies = energies_.constData();
    const double* values = values_.constData();
    for (int i = first; i < end; ++i) {
        const double E = energies[i] - shift;
        if (E < refMin_ || E > refMax_)
            continue;
        if (Q_UNLIKELY(std::isnan(E)))
            logNan();
        const double r = ref_.at(low, E + refShift_);
        const double t = values[i];
        sums.tt += t * t;
        sums.rr += r * r;
        sums.tr += t * r;
    }
    return sums;
}

double ShiftSearch::Sums::innerProduct() const
{
    if (!(tt > 0.0) || !(rr > 0.0))
        return 0.0;
    return tr / std::sqrt(tt * rr);
}

double ShiftSearch::innerProduct(double shift)
{
    return sumsAt(0, energies_.size(), shift).innerProduct();
}

/// The batch's sums over points `first` to `end`: those of sumsAt() to the last bit, for each sum
/// takes the points in their order.
void ShiftSearch::sumUp(int first, int end, Batch& batch)
{
    if (!ref_.hasSegments() || !rises_ || !allFinite(batch.shifts, batch.n)) {
        for (int k = 0; k < batch.n; ++k) {
            const Sums sums = sumsAt(first, end, batch.shifts[k]);
            batch.tt[k] = sums.tt;
            batch.rr[k] = sums.rr;
            batch.tr[k] = sums.tr;
        }
        return;
    }
    if (batch.n == 0)
        return;
    std::fill(batch.shifts + batch.n, batch.shifts + most, batch.shifts[batch.n - 1]);
    sumShifts_({energies_.constData() + first, values_.constData() + first, end - first},
               {ref_.xs(), ref_.ys(), ref_.slopes(), ref_.segments(), refShift_, refMin_, refMax_},
               {batch.n, batch.shifts, batch.tt, batch.rr, batch.tr});
}

/// Whether a shift's inner product is sure to be less than `product`, told by the sums over points
/// round the edge alone.
///
/// 1 - P^2 is the residual sum of squares of the spectrum against the best multiple of the
/// reference, over the spectrum's own sum of squares. Fewer points leave less residual and all
/// points more squares, so the edge's residual over all squares is a lower limit of it.
bool ShiftSearch::staysBelow(double product, const Sums& edge) const
{
    if (!(product > 0.0) || !(edge.rr > leastSquares) || !(squares_ > leastSquares))
        return false;
    const double residual = edge.tt - edge.tr * (edge.tr / edge.rr);
    constexpr double margin = 1e-9; // wide of all rounding
    return residual > squares_ * (1.0 - product * product + margin);
}

void ShiftSearch::tryShifts(double centre, const double* offsets, int n)
{
    for (int first = 0; first < n; first += most)
        tryBatch(centre, offsets + first, std::min(most, n - first));
}

void ShiftSearch::tryBatch(double centre, const double* offsets, int n)
{
    // The likeliest shift goes first: its product sorts out most of the others.
    const auto nearer = [](double a, double b) { return std::fabs(a) < std::fabs(b); };
    const auto likely = std::min_element(offsets, offsets + n, nearer) - offsets;
    const double product = std::max(best_, innerProduct(centre + offsets[likely]));
    Batch edge;
    for (int k = 0; k < n; ++k)
        edge.shifts[edge.n++] = centre + offsets[k];
    sumUp(edgeFirst_, edgeEnd_, edge);
    Batch left;
    for (int k = 0; k < n; ++k) {
        if (!staysBelow(product, edge.at(k)))
            left.shifts[left.n++] = edge.shifts[k];
    }
    sumUp(0, energies_.size(), left);
    for (int k = 0; k < left.n; ++k)
        take(left.at(k).innerProduct(), left.shifts[k]);
}

void ShiftSearch::take(double product, double shift)
{
    if (product > best_) {
        best_ = product;
        bestShift_ = shift;
    }
}

void ShiftSearch::logNan()
{
    if (!nanLogged_)
        qDebug() << "nan EeV in XafsSpectrum::doubleNormalizedPreBase";
    nanLogged_ = true;
}
