#include "spectrum/Spectrum.h"

#include "common/Constants.h"
#include "common/TwoPointLine.h"

#include <algorithm>
#include <cstring>

namespace {
// Marks of "no point yet"; never valid indices of a curve that fits into memory.
constexpr auto noMinIndex = static_cast<qint32>(0x8FFFFFFFU);
constexpr auto noMaxIndex = static_cast<qint32>(0x70000001U);

/// Left point of the segment whose straight line gives the value at x, for a curve of n >= 2
/// points. A nan ends at the last segment.
int segmentOf(const QPointF* points, int n, double shift, double x)
{
    if (points[0].x() - shift >= x)
        return 0;
    if (x >= points[n - 1].x() - shift)
        return n - 2;
    int lo = 0;
    int hi = n - 1;
    while (hi - 1 > lo) {
        const int mid = (lo + hi) >> 1;
        if (points[mid].x() - shift > x)
            hi = mid;
        else
            lo = mid;
    }
    return lo;
}

bool ascends(const QPointF* points, int n, double shift)
{
    for (int i = 1; i < n; ++i) {
        if (!(points[i - 1].x() - shift <= points[i].x() - shift))
            return false;
    }
    return true;
}

/// Two numbers that take one instruction together: the coordinates of a point, or neighbours in an
/// array.
using Pair = double __attribute__((vector_size(2 * sizeof(double))));
static_assert(sizeof(QPointF) == sizeof(Pair), "points are read as pairs");

Pair pairAt(const void* pairs, int i)
{
    Pair p;
    std::memcpy(&p, static_cast<const char*>(pairs) + sizeof(Pair) * static_cast<size_t>(i),
                sizeof(Pair));
    return p;
}

/// Least and greatest first and second numbers of some pairs.
struct PairBounds
{
    Pair low = {runningMinStart, runningMinStart};
    Pair high = {runningMaxStart, runningMaxStart};

    /// Nan is passed over.
    void take(Pair p) { merge({p, p}); }
    void merge(const PairBounds& other)
    {
        low = other.low < low ? other.low : low;
        high = other.high > high ? other.high : high;
    }
};

PairBounds boundsOf(const void* pairs, int n)
{
    // Even and odd places run apart, so that no step waits for the one just before.
    PairBounds even;
    PairBounds odd;
    int i = 0;
    for (; i + 1 < n; i += 2) {
        even.take(pairAt(pairs, i));
        odd.take(pairAt(pairs, i + 1));
    }
    if (i < n)
        even.take(pairAt(pairs, i));
    even.merge(odd);
    return even;
}

/// The first point from `first` on whose y passes the test, which one must.
template<class Test>
int firstPoint(const QPointF* points, int first, Test test)
{
    int i = first;
    while (!test(points[i].y()))
        ++i;
    return i;
}

double lineValue(const QPointF* points, double shift, int i, double y0, double y1, double x)
{
    return twoPointLine(points[i].x() - shift, y0, points[i + 1].x() - shift, y1, x);
}
} // namespace

double Spectrum::x(int i) const
{
    if (i < 0 || i >= points.size())
        return 0.0;
    return points.at(i).x() - shift();
}

double Spectrum::y(int i) const
{
    if (i < 0 || i >= points.size())
        return 0.0;
    return points.at(i).y();
}

double Spectrum::yAt(double x) const
{
    const int n = size();
    if (n < 1)
        return 0.0;
    const QPointF* p = points.constData();
    if (n == 1)
        return p[0].y();
    const int i = segmentOf(p, n, shift(), x);
    return lineValue(p, shift(), i, p[i].y(), p[i + 1].y(), x);
}

double Spectrum::smoothedAt(double x) const
{
    const int n = std::min(size(), smoothed.size());
    if (n < 1)
        return 0.0;
    const double* values = smoothed.constData();
    if (n == 1)
        return values[0];
    const QPointF* p = points.constData();
    const int i = segmentOf(p, n, shift(), x);
    return lineValue(p, shift(), i, values[i], values[i + 1], x);
}

void Spectrum::genSmoothed(int halfWidth)
{
    const int n = size();
    const int h = std::clamp(halfWidth, 0, n);
    QVector<double> means(n);
    double* out = means.data();
    const QPointF* p = points.constData();
    double sum = 0.0;
    int count = std::min(h + 1, n);
    for (int i = 0; i < count; ++i)
        sum += p[i].y();
    for (int i = 0; i < n; ++i) {
        out[i] = sum / count;
        if (i - h >= 0) {
            sum -= p[i - h].y();
            --count;
        }
        if (i + h + 1 < n) {
            sum += p[i + h + 1].y();
            ++count;
        }
    }
    smoothed = means;
}

void Spectrum::resetBounds()
{
    xMin = yMin = runningMinStart;
    xMax = yMax = runningMaxStart;
    yMinIndex = noMinIndex;
    yMaxIndex = noMaxIndex;
}

void Spectrum::clear()
{
    points.clear();
    resetBounds();
}

void Spectrum::append(double x, double y)
{
    points.append(QPointF(x, y));
    extendBounds(size() - 1);
}

void Spectrum::setPoints(const QVector<QPointF>& newPoints)
{
    points = newPoints;
    resetBounds();
    extendBounds(0);
}

Spectrum::Extremes Spectrum::extremesOf(const double* values, int n)
{
    PairBounds bounds = boundsOf(values, n / 2);
    if (n % 2 == 1)
        bounds.take(Pair{values[n - 1], values[n - 1]});
    return {std::min(bounds.low[0], bounds.low[1]), std::max(bounds.high[0], bounds.high[1])};
}

void Spectrum::setPoints(const double* xs, const double* ys, int n)
{
    setPoints(xs, extremesOf(xs, n), ys, n);
}

void Spectrum::setPoints(const double* xs, const Extremes& xRange, const double* ys, int n)
{
    setPointsOnly(xs, ys, n);
    xMin = xRange.low;
    xMax = xRange.high;
    const Extremes y = extremesOf(ys, n);
    takeExtremes(y.low, y.high, 0);
}

void Spectrum::setPointsOnly(const double* xs, const double* ys, int n)
{
    QVector<QPointF> newPoints(n);
    QPointF* out = newPoints.data();
    for (int i = 0; i < n; ++i)
        out[i] = QPointF(xs[i], ys[i]);
    points.swap(newPoints);
    resetBounds();
}

void Spectrum::extendBounds(int first)
{
    const PairBounds added = boundsOf(points.constData() + first, size() - first);
    xMin = std::min(xMin, added.low[0]);
    xMax = std::max(xMax, added.high[0]);
    takeExtremes(added.low[1], added.high[1], first);
}

/// Takes the extremes of the y from point `first` on. Looking for where they stand afterwards is
/// quicker than carrying the indices along.
void Spectrum::takeExtremes(double low, double high, int first)
{
    const QPointF* p = points.constData();
    if (low < yMin) {
        yMinIndex = firstPoint(p, first, [low](double y) { return y <= low; });
        yMin = p[yMinIndex].y();
    }
    if (high > yMax) {
        yMaxIndex = firstPoint(p, first, [high](double y) { return y >= high; });
        yMax = p[yMaxIndex].y();
    }
}

SpectrumCursor::SpectrumCursor(const Spectrum& curve)
    : curve_(curve)
    , points_(curve.points.constData())
    , size_(curve.size())
    , shift_(curve.shift())
    , ascends_(ascends(points_, size_, shift_))
{
}

int SpectrumCursor::segmentAt(double x)
{
    const auto energy = [this](int i) { return points_[i].x() - shift_; };
    if (energy(0) >= x)
        return 0;
    if (!ascends_ || !(x >= energy(low_))) {
        low_ = segmentOf(points_, size_, shift_, x);
        return low_;
    }
    while (low_ < size_ - 2 && energy(low_ + 1) <= x)
        ++low_;
    return low_;
}

double SpectrumCursor::yAt(double x)
{
    if (size_ < 2)
        return curve_.yAt(x);
    const int i = segmentAt(x);
    return lineValue(points_, shift_, i, points_[i].y(), points_[i + 1].y(), x);
}

double SpectrumCursor::smoothedAt(double x)
{
    if (size_ < 2 || curve_.smoothed.size() < size_)
        return curve_.smoothedAt(x);
    const double* values = curve_.smoothed.constData();
    const int i = segmentAt(x);
    return lineValue(points_, shift_, i, values[i], values[i + 1], x);
}
