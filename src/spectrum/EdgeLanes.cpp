#include "spectrum/EdgeLanes.h"

#include "common/LaneVector.h"
#include "spectrum/BendLanes.h"
#include "spectrum/EdgeRules.h"
#include "spectrum/LineFitLanes.h"
#include "spectrum/OutcomeCode.h"

namespace {

/// Larger values might leave the range of doubles further on, where nan starts.
constexpr double mostMu = 1e100;

/// The moving average, and the index of its steepest rise within the window.
void smooth(EdgeSearch& g)
{
    const EdgeTask& t = g.task;
    constexpr int half = edgeRules::smoothing;
    V sum{};
    V best{};
    V before{};
    V steepest{};
    M odd{};
    int count = half + 1;
    for (int i = 0; i < count; ++i)
        sum += g.muAt(i);
    for (int i = 0; i < t.n; ++i) {
        const V mean = sum / double(count);
        store(g.smoothed + i * width, mean);
        odd |= ~(absolute(g.muAt(i)) < mostMu);
        if (i > t.firstRise && i <= t.endRise) {
            const V rise = mean - before;
            const M steeper = rise > best;
            best = steeper ? rise : best;
            steepest = steeper ? all(i - 1) : steepest;
        }
        before = mean;
        if (i >= half) {
            sum -= g.muAt(i - half);
            --count;
        }
        if (i + half + 1 < t.n) {
            sum += g.muAt(i + half + 1);
            ++count;
        }
    }
    g.steepest = steepest;
    g.odd = odd;
}

/// Where the smoothed curve crosses the middle of both lines most steeply (0 for nowhere), and the
/// least gap between the lines.
struct Crossing
{
    V index{};
    V leastGap{};
};

template<LineMode mode>
Crossing findCrossing(const EdgeSearch& g, const LineValues<mode>& lines, V lastSmoothed)
{
    const int n = g.task.n;
    Crossing found;
    V steepest{};
    V before = g.smoothedAt(0);
    V here = g.smoothedAt(1);
    const auto takeGap = [&found](V gap) {
        found.leastGap = found.leastGap < gap ? found.leastGap : gap;
    };
    found.leastGap = lines.post(0) - lines.pre(0);
    for (int i = 1; i < n - 1; ++i) {
        const V after = i == n - 2 ? lastSmoothed : g.smoothedAt(i + 1);
        const V pre = lines.pre(i);
        const V post = lines.post(i);
        const V middle = (pre + post) * 0.5;
        const V rise = after - before;
        const M hit = (middle > before) & (after > middle) & (rise > steepest);
        steepest = hit ? rise : steepest;
        found.index = hit ? all(i) : found.index;
        takeGap(post - pre);
        before = here;
        here = after;
    }
    takeGap(lines.post(n - 1) - lines.pre(n - 1));
    return found;
}

/// The smoothed curve at its last point, which is read on the line through the last two.
V lastSmoothedOf(const EdgeSearch& g)
{
    const int n = g.task.n;
    const double* const E = g.task.E;
    const V first = g.smoothedAt(n - 2);
    const V slope = (g.smoothedAt(n - 1) - first) / (E[n - 1] - E[n - 2]);
    return slope * (E[n - 1] - E[n - 2]) + first;
}

/// Energies and smoothed values round the crossing. Without one the point before the first stands
/// at the energy 0, and is read on the line through the first two.
struct Neighbours
{
    V x[3];
    V y[3];

    Neighbours(const EdgeSearch& g, V index, V lastSmoothed)
    {
        const int n = g.task.n;
        const double* const E = g.task.E;
        const V slope = (g.smoothedAt(1) - g.smoothedAt(0)) / (E[1] - E[0]);
        const V beforeAll = slope * (0.0 - E[0]) + g.smoothedAt(0);
        for (int c = 0; c < width; ++c) {
            for (int k = 0; k < 3; ++k) {
                const int i = int(index[c]) + k - 1;
                x[k][c] = i < 0 ? 0.0 : E[i];
                y[k][c] = i < 0        ? beforeAll[c]
                          : i == n - 1 ? lastSmoothed[c]
                                       : g.smoothed[i * width + c];
            }
        }
    }
};

/// Both lines of the lanes at any energies.
template<LineMode mode>
struct LinesAnywhere
{
    const EdgeTask& task;
    const LinePair& lines;
    const Bends& bends;
    const BendSamples* samples; ///< where some line is bent
    V preEnd;
    V postStart;

    V pre(V E) const { return at(lines.pre, bends.pre & (E > preEnd), E); }
    V post(V E) const { return at(lines.post, bends.post & (E < postStart), E); }

private:
    V at(const LineLanes& line, M bent, V E) const
    {
        V value = lineAt<mode == LineMode::Victoreen>(task, line, E);
        if constexpr (mode == LineMode::Bent) {
            for (int c = 0; c < width; ++c) {
                int low = 0;
                if (bent[c] != 0)
                    value[c] = samples->at(c, E[c], low);
            }
        }
        return value;
    }
};

template<LineMode mode>
V midPoint(const EdgeSearch& g, const LinesAnywhere<mode>& lines, V index, V lastSmoothed)
{
    const Neighbours near(g, index, lastSmoothed);
    V d[3];
    for (int k = 0; k < 3; ++k)
        d[k] = (lines.pre(near.x[k]) + lines.post(near.x[k])) * 0.5 - near.y[k];
    const V xm = near.x[0];
    const V x0 = near.x[1];
    const V xp = near.x[2];
    const V a = (x0 - xm) / (d[0] - d[1]) * d[0] + xm;
    // Counted from xm: part of the definition, as in XafsSpectrum::midPoint().
    const V b = (xp - x0) / (d[1] - d[2]) * d[1] + xm;
    const V c = (xp - xm) / (d[0] - d[2]) * d[0] + xm;
    return (a + b + c) / 3.0;
}

/// What is told of a lane, in the order of Outcome: the last mask that is set here wins.
struct Judgement
{
    M code = M{} + std::int64_t(Outcome::Fitted);

    void mark(M where, Outcome outcome) { code = where ? M{} + std::int64_t(outcome) : code; }
};

/// Fitted lines with what is known of them before they are moved apart and bent.
struct Fitted
{
    Tables preTables;
    Tables postTables;
    LinePair lines;
    V preRms{};
    V postRms{};

    explicit Fitted(const EdgeSearch& g)
        : preTables(g.task.pre, g.steepest)
        , postTables(g.task.post, g.steepest)
    {
    }

    V preEnd() const { return preTables.of(&LineTable::to); }
    V postStart() const { return postTables.of(&LineTable::from); }
};

/// Pre-edge and post-edge line, moved apart where they have passed each other at the edge.
template<bool isVictoreen>
Fitted fitLines(const EdgeSearch& g)
{
    Fitted f(g);
    f.lines.pre = isVictoreen ? fitVictoreen(g, f.preTables) : fitStraight(g, f.preTables);
    f.lines.post = isVictoreen ? fitVictoreen(g, f.postTables) : fitStraight(g, f.postTables);
    if (g.task.isSuggested) {
        f.preRms = rmsOf<isVictoreen>(g, f.preTables, f.lines.pre);
        f.postRms = rmsOf<isVictoreen>(g, f.postTables, f.lines.post);
    }
    const V edgeE = gathered(g.task.E, g.steepest);
    const V gap = lineAt<isVictoreen>(g.task, f.lines.post, edgeE) -
                  lineAt<isVictoreen>(g.task, f.lines.pre, edgeE);
    const V apart = edgeRules::apartShare * gap;
    f.lines.pre.c0 = gap < 0.0 ? f.lines.pre.c0 - apart : f.lines.pre.c0;
    f.lines.post.c0 = gap < 0.0 ? f.lines.post.c0 + apart : f.lines.post.c0;
    return f;
}

M outcomesOf(const EdgeTask& t, const Fitted& f, V midx, V dMut)
{
    Judgement judged;
    if (t.isSuggested)
        judged.mark((f.preRms * t.thJump > dMut) & (f.postRms * t.thJump > dMut),
                    Outcome::TooNoisy);
    judged.mark(~((midx >= t.E[0]) & (midx <= t.E[t.n - 1])), Outcome::OutsideScan);
    if (t.isSuggested)
        judged.mark((midx < t.lowestMid) | (midx > t.highestMid), Outcome::OutsideWindow);
    judged.mark(~((dMut > 0.0) & (dMut < __builtin_inf())), Outcome::NoStep);
    judged.mark(~f.postTables.solvable, Outcome::NoPostEdge);
    judged.mark(~f.preTables.solvable, Outcome::NoPreEdge);
    return judged.code;
}

/// The edge on lines that are whole, and all that is told of the lanes.
template<LineMode mode>
void findEdge(const EdgeSearch& g, const Fitted& f, const Bends& bends, const BendSamples* samples,
              int lane, EdgeLanes& out)
{
    const LineValues<mode> values{g.task, f.lines, out.bend + lane, bends.pre, bends.post};
    const LinesAnywhere<mode> lines{g.task, f.lines, bends, samples, f.preEnd(), f.postStart()};
    const V lastSmoothed = lastSmoothedOf(g);
    const Crossing crossing = findCrossing<mode>(g, values, lastSmoothed);
    const V midx = midPoint<mode>(g, lines, crossing.index, lastSmoothed);
    const V dMut = lines.post(midx) - lines.pre(midx);
    const V edgeE = gathered(g.task.E, g.steepest);
    const V edgeGap = lines.post(edgeE) - lines.pre(edgeE);
    const V step = edgeGap > dMut ? edgeGap : dMut;
    store(out.steepest + lane, g.steepest);
    storeLine(f.lines.pre, out.pre, lane);
    storeLine(f.lines.post, out.post, lane);
    store(out.preEnd + lane, f.preEnd());
    store(out.postStart + lane, f.postStart());
    store(out.midx + lane, midx);
    store(out.dMut + lane, dMut);
    store(out.heldStep + lane, step);
    storeMarks(bends.pre, out.preBent + lane);
    storeMarks(bends.post, out.postBent + lane);
    storeMarks(~(crossing.leastGap >= edgeRules::lowGap * step), out.close + lane);
    storeMarks(g.odd, out.odd + lane);
    const M outcomes = outcomesOf(g.task, f, midx, dMut);
    for (int c = 0; c < width; ++c)
        out.outcome[lane + c] = static_cast<unsigned char>(outcomes[c]);
}

/// Straight lines, and the bends of those that would cross.
void findOnStraight(EdgeSearch& g, double* memory, int lane, EdgeLanes& out)
{
    const Fitted f = fitLines<false>(g);
    Bends bends = bendsOf(g.task, f.lines, f.preEnd(), f.postStart());
    const M solvable = f.preTables.solvable & f.postTables.solvable;
    g.odd |= bends.odd & solvable;
    bends.pre &= solvable & ~bends.odd;
    bends.post &= solvable & ~bends.odd;
    if (!any(bends.any())) {
        findEdge<LineMode::Straight>(g, f, bends, nullptr, lane, out);
        return;
    }
    const BendSamples samples(g.task, bends, memory);
    sampleBends(g.task, f.lines, bends, samples, f.preEnd(), f.postStart(), out.bend + lane);
    findEdge<LineMode::Bent>(g, f, bends, &samples, lane, out);
}

void findGroup(EdgeSearch& g, double* memory, int lane, EdgeLanes& out)
{
    smooth(g);
    if (g.task.isVictoreen)
        findEdge<LineMode::Victoreen>(g, fitLines<true>(g), Bends(), nullptr, lane, out);
    else
        findOnStraight(g, memory, lane, out);
}

} // namespace

namespace lanes::LANE_SET {

void findEdges(const EdgeTask& task, const double* mu, int count, double* scratch, EdgeLanes& out)
{
    for (int lane = 0; lane < count; lane += width) {
        EdgeSearch g{task, mu + lane, scratch, {}, {}};
        findGroup(g, scratch + task.n * width, lane, out);
    }
}

} // namespace lanes::LANE_SET
