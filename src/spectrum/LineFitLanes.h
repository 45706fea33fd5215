#pragma once

// For sources of lane forms: fits of both background lines, by the plain form's operations.

#include "spectrum/LineLanes.h"

namespace {

/// The vector of lanes that is worked on.
struct EdgeSearch
{
    const EdgeTask& task;
    const double* mu; ///< of the first lane
    double* smoothed; ///< [energy][width]
    V steepest{};
    M odd{};

    V muAt(int i) const { return load(mu + i * laneStride); }
    V smoothedAt(int i) const { return load(smoothed + i * width); }
};

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

inline LineLanes fitStraight(const EdgeSearch& g, const Tables& tables)
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
inline void solveThree(const Tables& tables, const V* b, V* x)
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

inline LineLanes fitVictoreen(const EdgeSearch& g, const Tables& tables)
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
V rmsOf(const EdgeSearch& g, const Tables& tables, const LineLanes& line)
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

} // namespace
