#include "analysis/lcf/LcfLanes.h"

#include "common/LaneVector.h"
#include "spectrum/HeldLanes.h"

namespace {

/// The vector of lanes that is worked on, and its memory.
struct Group
{
    const LcfLaneTask& task;
    const EdgeGroup& edges;
    V offsets;
    int lane;
    double* values; ///< that are compared, [energy][width]
    double* curve;  ///< the fit curve, of shifted lanes
    double* places; ///< Places of each energy
    double* rows;   ///< references [reference][energy][width], of shifted lanes

    int n() const { return task.edge->n; }
    double energy(int i) const { return task.edge->E[i]; }
    V valueAt(int i) const { return load(values + i * width); }
    double* row(int reference, int i) const { return rows + (reference * n() + i) * width; }
    M isFitted(int i) const
    {
        const V E = energy(i) - offsets;
        return ~((E < task.fitFrom) | (E > task.fitTo));
    }
};

/// Share of the squares by which a fit misses a value; all of it for a value of 0.
inline V missed(V fit, V value)
{
    const V deviation = (fit - value) / value;
    return value != 0.0 ? deviation * deviation : all(1.0);
}

/// References that one pass over the points sums up.
constexpr int sumsAtOnce = 4;

template<LineMode mode, bool isHeld>
void takeValuesAs(const Group& g, const HeldLanes& held)
{
    for (int i = 0; i < g.n(); ++i)
        store(g.values + i * width, comparedAt<mode, isHeld>(g.edges, held, i));
}

template<LineMode mode>
HeldLanes takeValuesOf(const Group& g)
{
    HeldLanes held;
    if (g.task.holdGap && any(g.edges.close))
        held = holdGap<mode>(g.edges, {g.task.fitFrom, g.task.fitTo, g.offsets});
    if (any(held.held))
        takeValuesAs<mode, true>(g, held);
    else
        takeValuesAs<mode, false>(g, held);
    return held;
}

HeldLanes takeValues(const Group& g)
{
    switch (g.edges.mode()) {
    case LineMode::Victoreen:
        return takeValuesOf<LineMode::Victoreen>(g);
    case LineMode::Bent:
        return takeValuesOf<LineMode::Bent>(g);
    case LineMode::Straight:
        break;
    }
    return takeValuesOf<LineMode::Straight>(g);
}

/// Sums of the products of four references with the values, over the points of the fit, and on the
/// way, where it is asked for, the sum of what the walk's fit curve misses.
template<bool withMissed>
V sumProducts(const Group& g, int first, V* sums)
{
    V sum[sumsAtOnce] = {};
    V missedSum{};
    const double* row = g.task.rows + first;
    for (int i = 0; i < g.n(); ++i, row += g.task.stride) {
        const V value = g.valueAt(i);
        if (g.task.isFitted[i]) {
            for (int k = 0; k < sumsAtOnce; ++k)
                sum[k] += row[k] * value;
        }
        if (withMissed && g.task.isResidual[i])
            missedSum += missed(all(g.task.fitValues[i]), value);
    }
    for (int k = 0; k < sumsAtOnce; ++k)
        sums[first + k] = sum[k];
    return missedSum;
}

/// Solves by the factors that all lanes share.
void solve(const Group& g, const V* b, V* weights)
{
    const LcfLaneTask& t = g.task;
    const int n = t.references;
    for (int k = 0; k < n; ++k)
        weights[k] = b[t.pivots[k]];
    for (int k = 0; k < n - 1; ++k) {
        for (int j = k + 1; j < n; ++j)
            weights[j] -= weights[k] * t.lower[j * n + k];
    }
    for (int k = n - 1; k >= 0; --k) {
        if (t.upper[k * n + k] == 0.0)
            continue;
        weights[k] /= t.upper[k * n + k];
        for (int j = k - 1; j >= 0; --j)
            weights[j] -= weights[k] * t.upper[j * n + k];
    }
}

/// The residual of a sum over the points of the residual.
V residualOf(const Group& g, V sum)
{
    return (g.task.residualPoints == 0 ? V{} : sum / double(g.task.residualPoints)) / double(g.n());
}

V ownResidual(const Group& g, const V* weights)
{
    V sum{};
    for (int i = 1; i < g.n() - 1; ++i) {
        if (!g.task.isFitted[i])
            continue;
        V fit{};
        for (int k = 0; k < g.task.references; ++k)
            fit = fit + weights[k] * g.task.rows[i * g.task.stride + k];
        sum += missed(fit, g.valueAt(i));
    }
    return (g.task.ownResidualPoints == 0 ? V{} : sum / double(g.task.ownResidualPoints)) /
           double(g.n());
}

V fitUnshifted(const Group& g, V* weights)
{
    V b[mostLaneReferences + sumsAtOnce];
    V missedSum{};
    if (g.task.ownWeights)
        sumProducts<false>(g, 0, b);
    else
        missedSum = sumProducts<true>(g, 0, b);
    for (int first = sumsAtOnce; first < g.task.references; first += sumsAtOnce)
        sumProducts<false>(g, first, b);
    solve(g, b, weights);
    return g.task.ownWeights ? ownResidual(g, weights) : residualOf(g, missedSum);
}

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

V energyIn(const Group& g, const LcfLaneCurve& curve, int i)
{
    return g.energy(i) - g.offsets + curve.rowShift + curve.curveShift;
}

void findSegments(const Group& g, const LcfLaneCurve& curve)
{
    SegmentSearch search{};
    for (int i = 0; i < g.n(); ++i) {
        search.find(
            energyIn(g, curve, i), [&](int k) { return all(curve.x[k]); },
            [&](int) { return curve.segments - 1; }, Places(g.places + i * width));
    }
}

V curveAt(const LcfLaneCurve& curve, V E, Places places)
{
    if (places.areShared()) {
        const int k = places.shared();
        return curve.slope[k] * (E - curve.x[k]) + curve.y[k];
    }
    const V k = places.own();
    return gathered(curve.slope, k) * (E - gathered(curve.x, k)) + gathered(curve.y, k);
}

void readReferences(const Group& g)
{
    for (int k = 0; k < g.task.references; ++k) {
        const LcfLaneCurve& curve = g.task.curves[k];
        if (!curve.readsLikeTheLast)
            findSegments(g, curve);
        for (int i = 0; i < g.n(); ++i)
            store(g.row(k, i), curveAt(curve, energyIn(g, curve, i), Places(g.places + i * width)));
    }
}

/// The fit curve of the rows' weights at each energy.
void makeCurve(const Group& g)
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
V fitCurveAt(const Group& g, double E, Places places)
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
V shiftedResidual(const Group& g, M& odd)
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

V shiftedOwnResidual(const Group& g, const V* weights)
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

/// Sum over the points of the fit of a reference's products with other numbers.
template<typename Other>
V sumOfFit(const Group& g, int reference, Other other)
{
    V sum{};
    for (int i = 0; i < g.n(); ++i)
        sum += only(g.isFitted(i), load(g.row(reference, i)) * other(i));
    return sum;
}

void solveShifted(const Group& g, V* weights)
{
    const int n = g.task.references;
    V a[mostLaneReferences][mostLaneReferences];
    V b[mostLaneReferences];
    for (int k = 0; k < n; ++k) {
        for (int j = 0; j <= k; ++j)
            a[k][j] = a[j][k] = sumOfFit(g, k, [&](int i) { return load(g.row(j, i)); });
        b[k] = sumOfFit(g, k, [&](int i) { return g.valueAt(i); });
    }
    for (int c = 0; c < width; ++c) {
        double matrix[mostLaneReferences * mostLaneReferences];
        double right[mostLaneReferences];
        double solution[mostLaneReferences];
        for (int k = 0; k < n; ++k) {
            for (int j = 0; j < n; ++j)
                matrix[k * n + j] = a[k][j][c];
            right[k] = b[k][c];
        }
        solveLcfNormal(n, matrix, right, solution);
        for (int k = 0; k < n; ++k)
            weights[k][c] = solution[k];
    }
}

V fitShifted(const Group& g, V* weights, M& odd)
{
    readReferences(g);
    solveShifted(g, weights);
    if (g.task.ownWeights)
        return shiftedOwnResidual(g, weights);
    makeCurve(g);
    return shiftedResidual(g, odd);
}

void fitGroup(const Group& g, bool isShifted, LcfLaneFits& out)
{
    // An offset beyond all energies would leave nothing to search in.
    constexpr double mostOffset = 1e6;
    M odd = ~(absolute(g.offsets) < mostOffset);
    const HeldLanes held = takeValues(g);
    V weights[mostLaneReferences];
    const V zansa = isShifted ? fitShifted(g, weights, odd) : fitUnshifted(g, weights);
    for (int k = 0; k < g.task.references; ++k)
        store(out.weights[k] + g.lane, weights[k]);
    store(out.zansa + g.lane, zansa);
    storeMarks(held.held, out.held + g.lane);
    storeMarks(held.unsound, out.unsound + g.lane);
    storeMarks(odd, out.odd + g.lane);
}

} // namespace

namespace lanes::LANE_SET {

void fitLcfLanes(const LcfLaneTask& task, const LcfLaneRun& run, double* scratch, LcfLaneFits& out)
{
    const int part = task.edge->n * width;
    for (int lane = 0; lane < run.count; lane += width) {
        const EdgeGroup edges(*task.edge, *run.edges, run.mu, lane);
        const Group g{task,    edges,          load(run.offsets + lane), lane,
                      scratch, scratch + part, scratch + 2 * part,       scratch + 3 * part};
        fitGroup(g, run.isShifted, out);
    }
}

} // namespace lanes::LANE_SET
