#pragma once

// For sources of lane forms: HeldGap and the curve that is compared, by the plain forms'
// operations.

#include "spectrum/EdgeRules.h"
#include "spectrum/LineLanes.h"
#include "spectrum/OutcomeCode.h"

namespace {

/// Edges of the lanes of a vector, with fitted edges or not.
struct EdgeGroup
{
    const EdgeTask& task;
    const double* mu; ///< of the first lane, [energy][laneStride]
    LinePair lines;
    V steepest;
    V preEnd;
    V postStart;
    V step;             ///< XafsSpectrum::heldStep()
    M close;            ///< fitted, and the lines come close
    const double* bend; ///< of the first lane
    M preBent;
    M postBent;

    EdgeGroup(const EdgeTask& edgeTask, const EdgeLanes& edges, const double* muOfTile, int lane)
        : task(edgeTask)
        , mu(muOfTile + lane)
        , lines{linesOf(edges.pre, lane), linesOf(edges.post, lane)}
        , steepest(load(edges.steepest + lane))
        , preEnd(load(edges.preEnd + lane))
        , postStart(load(edges.postStart + lane))
        , step(load(edges.heldStep + lane))
        , close(M{})
        , bend(edges.bend + lane)
        , preBent(maskOf(edges.preBent + lane))
        , postBent(maskOf(edges.postBent + lane))
    {
        for (int c = 0; c < width; ++c) {
            const bool fitted = edges.outcome[lane + c] == int(Outcome::Fitted);
            close[c] = fitted && edges.close[lane + c] != 0 ? -1 : 0;
        }
    }

    V muAt(int i) const { return load(mu + i * laneStride); }

    LineMode mode() const
    {
        if (task.isVictoreen)
            return LineMode::Victoreen;
        return any(preBent | postBent) ? LineMode::Bent : LineMode::Straight;
    }
    template<LineMode mode>
    LineValues<mode> values() const
    {
        return {task, lines, bend, preBent, postBent};
    }
};

/// Where values are continued by the step.
struct HeldLanes
{
    M held{};
    M unsound{};
    V firstAbove{};
    V lastBelow{};
};

/// Energies [eV] that a comparison reads, the lanes' offsets taken off.
struct ReadLanes
{
    double from;
    double to;
    V offsets;

    M contains(double E) const { return ~(((E - offsets) < from) | ((E - offsets) > to)); }
};

template<LineMode mode>
HeldLanes holdGap(const EdgeGroup& g, const ReadLanes& read)
{
    const LineValues<mode> lines = g.template values<mode>();
    HeldLanes h;
    h.firstAbove = all(g.task.n);
    h.lastBelow = all(-1.0);
    M above{};
    M low{};
    V place{};
    for (int i = 0; i < g.task.n; ++i, place += 1.0) {
        const double E = g.task.E[i];
        const V gap = lines.post(i) - lines.pre(i);
        const M inside = (place == g.steepest) | ((E >= g.preEnd) & (E <= g.postStart));
        const M isLow = ~(gap >= edgeRules::lowGap * g.step) & read.contains(E);
        h.unsound |= isLow & inside;
        low |= isLow;
        const M leaves = ~inside & ~(gap >= edgeRules::holdGap * g.step);
        const M begins = leaves & (place > g.steepest) & ~above;
        h.firstAbove = begins ? place : h.firstAbove;
        above |= begins;
        h.lastBelow = leaves & (place < g.steepest) ? place : h.lastBelow;
    }
    h.unsound &= g.close;
    h.held = low & g.close & ~h.unsound;
    return h;
}

/// The value that is compared, at a point.
template<LineMode mode, bool isHeld>
V comparedAt(const EdgeGroup& g, const HeldLanes& h, int i)
{
    const LineValues<mode> lines = g.template values<mode>();
    const V pre = lines.pre(i);
    const V post = lines.post(i);
    const V mu = g.muAt(i);
    V value = (mu - pre) / (post - pre);
    if constexpr (isHeld) {
        const V place = all(i);
        const M above = h.held & (place >= h.firstAbove);
        const M below = h.held & (place <= h.lastBelow);
        const V continued = (below ? mu - pre : mu - post) / g.step;
        value = above ? continued + 1.0 : value;
        value = below ? continued : value;
    }
    return value;
}

} // namespace
