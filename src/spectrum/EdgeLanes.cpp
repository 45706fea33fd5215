#include "spectrum/EdgeLanes.h"

#include "common/LaneVector.h"
#include "spectrum/GapShares.h"
#include "spectrum/LineLanes.h"
#include "spectrum/OutcomeCode.h"

namespace {

/// The vector of lanes that is worked on.
struct Group
{
    const EdgeTask& task;
    const double* mu; ///< of the first lane
    double* smoothed; ///< [energy][width]
    V steepest{};
    M odd{};

    V muAt(int i) const { return load(mu + i * laneStride); }
    V smoothedAt(int i) const { return load(smoothed + i * width); }
};

/// Larger values might leave the range of doubles further on, where nan starts.
constexpr double mostMu = 1e100;

/// The moving average, and the index of its steepest rise within the window.
void smooth(Group& g)
{
    const EdgeTask& t = g.task;
    constexpr int half = 2; // XafsSpectrum::edgeSmoothing
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
        odd |= ~(sizeOf(g.muAt(i)) < mostMu);
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

/// A field of each lane's table.
template<typename Field>
V fieldOf(const LineTable* tables, V steepest, Field field)
{
    V v{};
    for (int c = 0; c < width; ++c)
        v[c] = double(field(tables[int(steepest[c])]));
    return v;
}

/// A line's tables, by lane.
struct Tables
{
    const LineTable* tables;
    V steepest;
    V first;
    V end;
    M solvable;

    Tables(const LineTable* byIndex, V index)
        : tables(byIndex)
        , steepest(index)
        , first(of(&LineTable::first))
        , end(of(&LineTable::end))
        , solvable(of(&LineTable::solvable) != 0.0)
    {
    }

    template<typename T>
    V of(T LineTable::*member) const
    {
        return fieldOf(tables, steepest, [member](const LineTable& t) { return t.*member; });
    }
    V factor(int number) const
    {
        return fieldOf(tables, steepest, [number](const LineTable& t) { return t.factor[number]; });
    }
};

/// Hands the points from `first` to `end`, each lane's own, to `take`, with the mask of the lanes
/// that have it.
template<typename Take>
void overPoints(V first, V end, Take take)
{
    const int from = int(leastOf(first));
    const int to = int(greatestOf(end));
    V place = all(from);
    for (int i = from; i < to; ++i, place += 1.0)
        take(i, (place >= first) & (place < end));
}

LineLanes fitStraight(const Group& g, const Tables& tables)
{
    const double* const E = g.task.E;
    V sumMu{};
    V sumEMu{};
    overPoints(tables.first, tables.end, [&](int i, M in) {
        const V mu = g.muAt(i);
        sumMu += only(in, mu);
        sumEMu += only(in, E[i] * mu);
    });
    LineLanes line;
    line.c0 = (sumMu - sumEMu * tables.factor(0)) / tables.factor(3);
    line.c1 = (sumEMu - line.c0 * tables.factor(2)) / tables.factor(1);
    return line;
}

/// Solves by the factors of the three columns, of which `b` is the right side.
void solveThree(const Tables& tables, const V* b, V* x)
{
    for (int c = 0; c < width; ++c) {
        const int* const pivots = tables.tables[int(tables.steepest[c])].pivots;
        for (int k = 0; k < 3; ++k)
            x[k][c] = b[pivots[k]][c];
    }
    x[1] -= x[0] * tables.factor(0);
    x[2] -= x[0] * tables.factor(1);
    x[2] -= x[1] * tables.factor(2);
    x[2] /= tables.factor(8);
    x[1] -= x[2] * tables.factor(7);
    x[0] -= x[2] * tables.factor(5);
    x[1] /= tables.factor(6);
    x[0] -= x[1] * tables.factor(4);
    x[0] /= tables.factor(3);
}

LineLanes fitVictoreen(const Group& g, const Tables& tables)
{
    const double* const E = g.task.E;
    const V middle = tables.of(&LineTable::middleE);
    const V scale1 = tables.of(&LineTable::scale1);
    const V scale2 = tables.of(&LineTable::scale2);
    V b[3] = {};
    overPoints(tables.first, tables.end, [&](int i, M in) {
        const V mu = g.muAt(i);
        const V d = (middle - E[i]) / E[i];
        const V f1 = d * (3.0 + d * (3.0 + d)) * scale1;
        const V f2 = d * d * (2.0 + d * (8.0 / 3.0 + d)) * scale2;
        b[0] += only(in, mu);
        b[1] += only(in, f1 * mu);
        b[2] += only(in, f2 * mu);
    });
    V a[3] = {};
    solveThree(tables, b, a);
    const V A1 = a[1] * scale1;
    const V A2 = a[2] * scale2;
    LineLanes line;
    line.c2 = A2 / tables.of(&LineTable::L4);
    line.c1 = (A1 - 4.0 / 3.0 * A2) / tables.of(&LineTable::L3);
    line.c0 = a[0] - A1 + A2 / 3.0;
    return line;
}

/// Root mean square of what the line misses, 1 without points.
template<bool isVictoreen>
V rmsOf(const Group& g, const Tables& tables, const LineLanes& line)
{
    const V end = tables.of(&LineTable::residualEnd);
    V squares{};
    overPoints(tables.first, end, [&](int i, M in) {
        const V r = g.muAt(i) - lineAtPoint<isVictoreen>(g.task, line, i);
        squares += only(in, r * r);
    });
    V rms = squares / (end - tables.first);
    for (int c = 0; c < width; ++c)
        rms[c] = end[c] > tables.first[c] ? __builtin_sqrt(rms[c]) : 1.0;
    return rms;
}

/// Lanes whose lines get a bend, or whose slopes don't compare.
M bentLanes(const EdgeTask& t, const LinePair& lines, V preEnd, V postStart)
{
    const LineLanes& pre = lines.pre;
    const LineLanes& post = lines.post;
    const double low = t.E[0];
    const double high = t.E[t.n - 1];
    const V gapAbove = (post.c0 + post.c1 * preEnd) - (pre.c1 * preEnd + pre.c0);
    const V above = (-gapAbove / (post.c1 - pre.c1)) / (high - preEnd) * 0.5;
    const V gapBelow = (pre.c0 + pre.c1 * low) - (post.c1 * low + post.c0);
    const V below = (gapBelow / (post.c1 - pre.c1) + low - postStart) / (low - postStart) * 0.5;
    return (~(post.c1 >= pre.c1) & ~(above > 1.0)) | (~(pre.c1 >= post.c1) & ~(below > 1.0));
}

/// Where the smoothed curve crosses the middle of both lines most steeply (0 for nowhere), and the
/// least gap between the lines.
struct Crossing
{
    V index{};
    V leastGap{};
};

template<bool isVictoreen>
Crossing findCrossing(const Group& g, const LinePair& lines, V lastSmoothed)
{
    const EdgeTask& t = g.task;
    Crossing found;
    V steepest{};
    V before = g.smoothedAt(0);
    V here = g.smoothedAt(1);
    found.leastGap =
        lineAtPoint<isVictoreen>(t, lines.post, 0) - lineAtPoint<isVictoreen>(t, lines.pre, 0);
    for (int i = 1; i < t.n - 1; ++i) {
        const V after = i == t.n - 2 ? lastSmoothed : g.smoothedAt(i + 1);
        const V pre = lineAtPoint<isVictoreen>(t, lines.pre, i);
        const V post = lineAtPoint<isVictoreen>(t, lines.post, i);
        const V middle = (pre + post) * 0.5;
        const V rise = after - before;
        const M hit = (middle > before) & (after > middle) & (rise > steepest);
        steepest = hit ? rise : steepest;
        found.index = hit ? all(i) : found.index;
        const V gap = post - pre;
        found.leastGap = found.leastGap < gap ? found.leastGap : gap;
        before = here;
        here = after;
    }
    const V gap = lineAtPoint<isVictoreen>(t, lines.post, t.n - 1) -
                  lineAtPoint<isVictoreen>(t, lines.pre, t.n - 1);
    found.leastGap = found.leastGap < gap ? found.leastGap : gap;
    return found;
}

/// The smoothed curve at its last point, which is read on the line through the last two.
V lastSmoothedOf(const Group& g)
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

    Neighbours(const Group& g, V index, V lastSmoothed)
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

template<bool isVictoreen>
V midPoint(const Group& g, const LinePair& lines, V index, V lastSmoothed)
{
    const Neighbours near(g, index, lastSmoothed);
    V d[3];
    for (int k = 0; k < 3; ++k) {
        d[k] = (lineAt<isVictoreen>(g.task, lines.pre, near.x[k]) +
                lineAt<isVictoreen>(g.task, lines.post, near.x[k])) *
                   0.5 -
               near.y[k];
    }
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

template<bool isVictoreen>
M noisyLanes(const Group& g, const Tables& pre, const Tables& post, const LinePair& lines, V dMut)
{
    return (rmsOf<isVictoreen>(g, pre, lines.pre) * g.task.thJump > dMut) &
           (rmsOf<isVictoreen>(g, post, lines.post) * g.task.thJump > dMut);
}

template<bool isVictoreen>
M outcomesOf(const Group& g, const Tables& pre, const Tables& post, const LinePair& lines, V midx,
             V dMut)
{
    const EdgeTask& t = g.task;
    Judgement judged;
    if (t.isSuggested)
        judged.mark(noisyLanes<isVictoreen>(g, pre, post, lines, dMut), Outcome::TooNoisy);
    judged.mark(~((midx >= t.E[0]) & (midx <= t.E[t.n - 1])), Outcome::OutsideScan);
    if (t.isSuggested)
        judged.mark((midx < t.lowestMid) | (midx > t.highestMid), Outcome::OutsideWindow);
    judged.mark(~((dMut > 0.0) & (dMut < __builtin_inf())), Outcome::NoStep);
    judged.mark(~post.solvable, Outcome::NoPostEdge);
    judged.mark(~pre.solvable, Outcome::NoPreEdge);
    return judged.code;
}

/// Pre-edge and post-edge line, moved apart where they have passed each other at the edge.
template<bool isVictoreen>
LinePair fitLines(const Group& g, const Tables& pre, const Tables& post)
{
    LinePair lines;
    lines.pre = isVictoreen ? fitVictoreen(g, pre) : fitStraight(g, pre);
    lines.post = isVictoreen ? fitVictoreen(g, post) : fitStraight(g, post);
    const V edgeE = gathered(g.task.E, g.steepest);
    const V gap = lineAt<isVictoreen>(g.task, lines.post, edgeE) -
                  lineAt<isVictoreen>(g.task, lines.pre, edgeE);
    lines.pre.c0 = gap < 0.0 ? lines.pre.c0 + -0.55 * gap : lines.pre.c0;
    lines.post.c0 = gap < 0.0 ? lines.post.c0 + 0.55 * gap : lines.post.c0;
    return lines;
}

template<bool isVictoreen>
void findGroup(Group& g, int lane, EdgeLanes& out)
{
    smooth(g);
    const Tables pre(g.task.pre, g.steepest);
    const Tables post(g.task.post, g.steepest);
    const LinePair lines = fitLines<isVictoreen>(g, pre, post);
    const V preEnd = pre.of(&LineTable::to);
    const V postStart = post.of(&LineTable::from);
    const M solvable = pre.solvable & post.solvable;
    if (!isVictoreen)
        g.odd |= bentLanes(g.task, lines, preEnd, postStart) & solvable;
    const V lastSmoothed = lastSmoothedOf(g);
    const Crossing crossing = findCrossing<isVictoreen>(g, lines, lastSmoothed);
    const V midx = midPoint<isVictoreen>(g, lines, crossing.index, lastSmoothed);
    const V dMut = lineAt<isVictoreen>(g.task, lines.post, midx) -
                   lineAt<isVictoreen>(g.task, lines.pre, midx);
    const M outcomes = outcomesOf<isVictoreen>(g, pre, post, lines, midx, dMut);
    const V edgeE = gathered(g.task.E, g.steepest);
    const V edgeGap = lineAt<isVictoreen>(g.task, lines.post, edgeE) -
                      lineAt<isVictoreen>(g.task, lines.pre, edgeE);
    const V step = edgeGap > dMut ? edgeGap : dMut;
    store(out.steepest + lane, g.steepest);
    storeLine(lines.pre, out.pre, lane);
    storeLine(lines.post, out.post, lane);
    store(out.preEnd + lane, preEnd);
    store(out.postStart + lane, postStart);
    store(out.midx + lane, midx);
    store(out.dMut + lane, dMut);
    store(out.heldStep + lane, step);
    const M close = ~(crossing.leastGap >= gapShares::low * step);
    for (int c = 0; c < width; ++c) {
        out.close[lane + c] = static_cast<unsigned char>(close[c] != 0);
        out.outcome[lane + c] = static_cast<unsigned char>(outcomes[c]);
        out.odd[lane + c] = static_cast<unsigned char>(g.odd[c] != 0);
    }
}

} // namespace

namespace lanes::LANE_SET {

void findEdges(const EdgeTask& task, const double* mu, int count, double* scratch, EdgeLanes& out)
{
    for (int lane = 0; lane < count; lane += width) {
        Group g{task, mu + lane, scratch, {}, {}};
        if (task.isVictoreen)
            findGroup<true>(g, lane, out);
        else
            findGroup<false>(g, lane, out);
    }
}

} // namespace lanes::LANE_SET
