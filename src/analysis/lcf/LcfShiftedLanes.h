#pragma once

// For the sources of the fit's lane form: positions that have offsets, so that references are read,
// and the normal equations are formed, for each lane.

#include "analysis/lcf/LcfLaneGroup.h"

namespace {

/// Where the lanes read a curve at one energy: neighbours with nearly the same offset mostly share
/// a segment, which needs no reading lane by lane. In memory [width].
class Places
{
public:
    explicit Places(double* at)
        : at_(at)
    {
    }

    /// Not own() of the lanes: all read this one.
    bool areShared() const { return at_[1] < 0.0; }
    int shared() const { return int(at_[0]); }
    V own() const { return load(at_); }

    void share(int place)
    {
        at_[0] = place;
        at_[1] = -1.0;
    }
    void takeOwn(const int* places)
    {
        for (int c = 0; c < width; ++c)
            at_[c] = places[c];
    }

private:
    double* at_;
};

/// Searches segments of curves that ascend, at rising energies. `low` goes from one energy to the
/// next; a lane's is never above the segment that it reads.
struct SegmentSearch
{
    int low[width];

    /// startOf(k) is the energy, of all lanes, that segment k begins at; lane c has segments up to
    /// lastOf(c).
    template<typename StartOf, typename LastOf>
    void find(V E, StartOf startOf, LastOf lastOf, Places places)
    {
        rise(0, E, startOf, lastOf);
        const int k = low[0];
        if (!any(~((E >= startOf(k)) & (E < startOf(k + 1)))) && isCommon(k, lastOf)) {
            for (int& place : low)
                place = k;
            places.share(k);
            return;
        }
        for (int c = 1; c < width; ++c)
            rise(c, E, startOf, lastOf);
        places.takeOwn(low);
    }

private:
    template<typename StartOf, typename LastOf>
    void rise(int c, V E, StartOf startOf, LastOf lastOf)
    {
        while (low[c] < lastOf(c) && startOf(low[c] + 1)[c] <= E[c])
            ++low[c];
    }

    /// All lanes have the segment and none is beyond it.
    template<typename LastOf>
    bool isCommon(int k, LastOf lastOf) const
    {
        for (int c = 0; c < width; ++c) {
            if (low[c] > k || lastOf(c) < k)
                return false;
        }
        return true;
    }
};

inline V energyIn(const Group& g, const LcfLaneCurve& curve, int i)
{
    return g.energy(i) - g.offsets + curve.rowShift + curve.curveShift;
}

inline void findSegments(const Group& g, const LcfLaneCurve& curve)
{
    SegmentSearch search{};
    for (int i = 0; i < g.n(); ++i) {
        search.find(
            energyIn(g, curve, i), [&](int k) { return all(curve.x[k]); },
            [&](int) { return curve.segments - 1; }, Places(g.places + i * width));
    }
}

/// A reference's values at one energy, as the fit curve takes them and as the fit does.
inline void readReference(const Group& g, int reference, int i)
{
    const LcfLaneCurve& curve = g.task.curves[reference];
    const Places places(g.places + i * width);
    const int column = g.task.backgroundColumns() + reference;
    const V E = energyIn(g, curve, i);
    if (places.areShared()) {
        const int k = places.shared();
        const V along = E - curve.x[k];
        store(g.row(reference, i), curve.slope[k] * along + curve.y[k]);
        if (g.task.isOfAbsorption())
            store(g.column(column, i), curve.fittedSlope[k] * along + curve.fittedY[k]);
        return;
    }
    const V k = places.own();
    const V along = E - gathered(curve.x, k);
    store(g.row(reference, i), gathered(curve.slope, k) * along + gathered(curve.y, k));
    if (g.task.isOfAbsorption())
        store(g.column(column, i),
              gathered(curve.fittedSlope, k) * along + gathered(curve.fittedY, k));
}

inline void readReferences(const Group& g)
{
    for (int k = 0; k < g.task.references; ++k) {
        if (!g.task.curves[k].readsLikeTheLast)
            findSegments(g, g.task.curves[k]);
        for (int i = 0; i < g.n(); ++i)
            readReference(g, k, i);
    }
}

inline void makeBackgroundColumns(const Group& g)
{
    for (int i = 0; i < g.n(); ++i) {
        store(g.column(0, i), all(1.0));
        store(g.column(1, i), (g.energy(i) - g.offsets) - g.task.centre);
    }
}

/// The fit curve of the rows' weights at each energy.
inline void makeCurve(const Group& g)
{
    for (int i = 0; i < g.n(); ++i) {
        V sum{};
        for (int k = 0; k < g.task.references; ++k)
            sum += g.task.rowWeights[k] * load(g.row(k, i));
        store(g.curve + i * width, sum);
    }
}

/// The points of the fit curve, which end where the references do.
struct CurvePoints
{
    int first[width];
    int end[width];

    explicit CurvePoints(const Group& g)
    {
        for (int c = 0; c < width; ++c) {
            first[c] = 0;
            while (first[c] < g.n() && !(g.energy(first[c]) - g.offsets[c] >= g.task.spanFrom))
                ++first[c];
            end[c] = first[c];
            while (end[c] < g.n() && g.energy(end[c]) - g.offsets[c] <= g.task.spanTo)
                ++end[c];
        }
    }
};

/// The fit curve's value at an energy, on the segment that begins at a point of it.
inline V fitCurveAt(const Group& g, double E, Places places)
{
    V E0{};
    V E1{};
    V y0{};
    V y1{};
    if (places.areShared()) {
        const int k = places.shared();
        E0 = all(g.energy(k));
        E1 = all(g.energy(k + 1));
        y0 = load(g.curve + k * width);
        y1 = load(g.curve + (k + 1) * width);
    } else {
        for (int c = 0; c < width; ++c) {
            const int k = int(places.own()[c]);
            E0[c] = g.energy(k);
            E1[c] = g.energy(k + 1);
            y0[c] = g.curve[k * width + c];
            y1[c] = g.curve[(k + 1) * width + c];
        }
    }
    const V x0 = E0 - g.offsets;
    return (y1 - y0) / ((E1 - g.offsets) - x0) * (E - x0) + y0;
}

/// The residual against the fit curve, which stands at the shifted energies and is read at those of
/// the scan.
inline V shiftedResidual(const Group& g, M& odd)
{
    CurvePoints points(g);
    SegmentSearch search{};
    for (int c = 0; c < width; ++c) {
        if (points.end[c] - points.first[c] < 2) {
            odd[c] = -1;
            points.first[c] = 0;
            points.end[c] = 2;
        }
        search.low[c] = points.first[c];
    }
    V sum{};
    for (int i = 1; i < g.n() - 1; ++i) {
        if (!g.task.isResidual[i])
            continue;
        const Places places(g.places + i * width);
        search.find(
            all(g.energy(i)), [&](int k) { return g.energy(k) - g.offsets; },
            [&](int c) { return points.end[c] - 2; }, places);
        sum += missed(fitCurveAt(g, g.energy(i), places), g.valueAt(i));
    }
    return residualOf(g, sum);
}

inline V shiftedOwnResidual(const Group& g, const V* weights)
{
    V sum{};
    V count{};
    for (int i = 1; i < g.n() - 1; ++i) {
        const M in = g.isFitted(i);
        V fit{};
        for (int k = 0; k < g.task.references; ++k)
            fit = fit + weights[k] * load(g.row(k, i));
        sum += only(in, missed(fit, g.valueAt(i)));
        count += only(in, all(1.0));
    }
    return (count == 0.0 ? V{} : sum / count) / double(g.n());
}

/// Sum over the points of the fit of a column's products with other numbers.
template<typename Other>
V sumOfFit(const Group& g, int column, Other other)
{
    V sum{};
    for (int i = 0; i < g.n(); ++i)
        sum += only(g.isFitted(i), load(g.column(column, i)) * other(i));
    return sum;
}

inline void solveShifted(const Group& g, V* solution)
{
    const int n = g.task.columnCount();
    V a[mostLaneColumns][mostLaneColumns];
    V b[mostLaneColumns];
    for (int k = 0; k < n; ++k) {
        for (int j = 0; j <= k; ++j)
            a[k][j] = a[j][k] = sumOfFit(g, k, [&](int i) { return load(g.column(j, i)); });
        b[k] = sumOfFit(g, k, [&](int i) { return g.targetAt(i); });
    }
    for (int c = 0; c < width; ++c) {
        double matrix[mostLaneColumns * mostLaneColumns];
        double right[mostLaneColumns];
        double solved[mostLaneColumns];
        for (int k = 0; k < n; ++k) {
            for (int j = 0; j < n; ++j)
                matrix[k * n + j] = a[k][j][c];
            right[k] = b[k][c];
        }
        solveLcfNormal(n, matrix, right, solved);
        for (int k = 0; k < n; ++k)
            solution[k][c] = solved[k];
    }
}

inline V fitShifted(const Group& g, Found& found)
{
    V solution[mostLaneColumns];
    readReferences(g);
    if (g.task.isOfAbsorption())
        makeBackgroundColumns(g);
    solveShifted(g, solution);
    takeSolution(g, solution, found);
    if (g.task.ownWeights)
        return shiftedOwnResidual(g, found.weights);
    makeCurve(g);
    return shiftedResidual(g, found.odd);
}

} // namespace
