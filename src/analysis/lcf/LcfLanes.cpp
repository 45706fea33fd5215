#include "analysis/lcf/LcfLanes.h"

#include "analysis/lcf/LcfShiftedLanes.h"

namespace {

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

/// Sums of the products of `count` columns with what is fitted, over the points of the fit, and on
/// the way, where it is asked for, the sum of what the walk's fit curve misses.
template<int count, LcfLaneMethod method, bool withMissed>
V sumProducts(const Group& g, int first, V* sums)
{
    V sum[count] = {};
    V missedSum{};
    const double* row = g.task.columns + first;
    for (int i = 0; i < g.n(); ++i, row += g.task.columnStride) {
        const V value = g.valueAt(i);
        const V target = method == LcfLaneMethod::Absorption ? g.edges.muAt(i) : value;
        if (g.task.isFitted[i]) {
            for (int k = 0; k < count; ++k)
                sum[k] += row[k] * target;
        }
        if (withMissed && g.task.isResidual[i])
            missedSum += missed(all(g.task.fitValues[i]), value);
    }
    for (int k = 0; k < count; ++k)
        sums[first + k] = sum[k];
    return missedSum;
}

/// The right side of the normal equations; gives what the walk's fit curve misses.
template<LcfLaneMethod method>
V sumTargets(const Group& g, V* b)
{
    constexpr int background = method == LcfLaneMethod::Absorption ? 2 : 0;
    V missedSum{};
    if (g.task.ownWeights)
        sumProducts<background + sumsAtOnce, method, false>(g, 0, b);
    else
        missedSum = sumProducts<background + sumsAtOnce, method, true>(g, 0, b);
    for (int first = background + sumsAtOnce; first < g.task.columnCount(); first += sumsAtOnce)
        sumProducts<sumsAtOnce, method, false>(g, first, b);
    return missedSum;
}

/// Solves by the factors that all lanes share.
void solve(const Group& g, const V* b, V* solution)
{
    const LcfLaneTask& t = g.task;
    const int n = t.columnCount();
    for (int k = 0; k < n; ++k)
        solution[k] = b[t.pivots[k]];
    for (int k = 0; k < n - 1; ++k) {
        for (int j = k + 1; j < n; ++j)
            solution[j] -= solution[k] * t.lower[j * n + k];
    }
    for (int k = n - 1; k >= 0; --k) {
        if (t.upper[k * n + k] == 0.0)
            continue;
        solution[k] /= t.upper[k * n + k];
        for (int j = k - 1; j >= 0; --j)
            solution[j] -= solution[k] * t.upper[j * n + k];
    }
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

V fitUnshifted(const Group& g, Found& found)
{
    V b[mostLaneColumns + sumsAtOnce];
    V solution[mostLaneColumns];
    const V missedSum = g.task.isOfAbsorption() ? sumTargets<LcfLaneMethod::Absorption>(g, b)
                                                : sumTargets<LcfLaneMethod::Normalised>(g, b);
    solve(g, b, solution);
    takeSolution(g, solution, found);
    return g.task.ownWeights ? ownResidual(g, found.weights) : residualOf(g, missedSum);
}

/// The steps of lanes with lines. Where there is no edge the plain form keeps one that is not above
/// 0, or infinite, and only if none was suggested.
V stepsOf(const LcfLaneTask& task, const EdgeLanes& edges, int lane)
{
    V steps{};
    for (int c = 0; c < width; ++c) {
        const int outcome = edges.outcome[lane + c];
        const double step = edges.dMut[lane + c];
        const bool isKept = outcome == int(Outcome::Fitted) ||
                            (outcome == int(Outcome::NoStep) && !task.edge->isSuggested);
        steps[c] = isKept && step > 0.0 ? step : 0.0;
    }
    return steps;
}

void fitGroup(const Group& g, bool isShifted, LcfLaneFits& out)
{
    const HeldLanes held = takeValues(g);
    Found found;
    // An offset beyond all energies would leave nothing to search in.
    constexpr double mostOffset = 1e6;
    found.odd = ~(absolute(g.offsets) < mostOffset);
    const V zansa = isShifted ? fitShifted(g, found) : fitUnshifted(g, found);
    for (int k = 0; k < g.task.references; ++k) {
        store(out.jumps[k] + g.lane, found.jumps[k]);
        store(out.weights[k] + g.lane, found.weights[k]);
    }
    store(out.zansa + g.lane, zansa);
    storeMarks(held.held, out.held + g.lane);
    storeMarks(held.unsound, out.unsound + g.lane);
    storeMarks(found.undefined, out.undefined + g.lane);
    storeMarks(found.odd, out.odd + g.lane);
}

} // namespace

namespace lanes::LANE_SET {

void fitLcfLanes(const LcfLaneTask& task, const LcfLaneRun& run, double* scratch, LcfLaneFits& out)
{
    const int part = task.edge->n * width;
    double* const rows = scratch + 3 * part;
    double* const columns = task.isOfAbsorption() ? rows + task.references * part : rows;
    for (int lane = 0; lane < run.count; lane += width) {
        const EdgeGroup edges(*task.edge, *run.edges, run.mu, lane);
        const Group g{task, edges,   load(run.offsets + lane), stepsOf(task, *run.edges, lane),
                      lane, scratch, scratch + part,           scratch + 2 * part,
                      rows, columns};
        fitGroup(g, run.isShifted, out);
    }
}

} // namespace lanes::LANE_SET
