#pragma once

// For sources of lane forms: background lines of the lanes of a vector, read by the plain form's
// operations.

#include "common/LaneVector.h"
#include "spectrum/EdgeLanes.h"

namespace {

struct LineLanes
{
    V c0{};
    V c1{}; ///< or the slope
    V c2{};
};

struct LinePair
{
    LineLanes pre;
    LineLanes post;
};

inline V straightAt(const LineLanes& line, V E)
{
    return line.c0 + line.c1 * E;
}

inline V victoreenAt(const LineLanes& line, V lambda, V lambda3)
{
    return line.c0 + (line.c1 + line.c2 * lambda) * lambda3;
}

/// The line at any energy.
template<bool isVictoreen>
V lineAt(const EdgeTask& t, const LineLanes& line, V E)
{
    if constexpr (isVictoreen) {
        const V lambda = t.hc / E;
        return victoreenAt(line, lambda, lambda * lambda * lambda);
    }
    return straightAt(line, E);
}

/// The line at a point of the curve.
template<bool isVictoreen>
V lineAtPoint(const EdgeTask& t, const LineLanes& line, int i)
{
    if constexpr (isVictoreen)
        return victoreenAt(line, all(t.lambda[i]), all(t.lambda3[i]));
    return straightAt(line, all(t.E[i]));
}

/// What lines a vector of lanes has.
enum class LineMode
{
    Straight,
    Bent, ///< straight ones, some with a bend
    Victoreen
};

/// Both lines at the points of the curve.
template<LineMode mode>
struct LineValues
{
    const EdgeTask& task;
    const LinePair& lines;
    const double* bend; ///< of the first lane, [energy][laneStride]
    M preBent;
    M postBent;

    V pre(int i) const { return at(lines.pre, preBent, i); }
    V post(int i) const { return at(lines.post, postBent, i); }

private:
    V at(const LineLanes& line, M bent, int i) const
    {
        const V value = lineAtPoint<mode == LineMode::Victoreen>(task, line, i);
        if constexpr (mode == LineMode::Bent)
            return bent ? load(bend + i * laneStride) : value;
        return value;
    }
};

inline LineLanes linesOf(const double (&coefficients)[EdgeLanes::coefficients][laneStride],
                         int lane)
{
    return {load(coefficients[0] + lane), load(coefficients[1] + lane),
            load(coefficients[2] + lane)};
}

inline void storeLine(const LineLanes& line,
                      double (&coefficients)[EdgeLanes::coefficients][laneStride], int lane)
{
    store(coefficients[0] + lane, line.c0);
    store(coefficients[1] + lane, line.c1);
    store(coefficients[2] + lane, line.c2);
}

} // namespace
