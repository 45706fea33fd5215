#pragma once

// For the sources of the fit's lane form: the vector of lanes that is worked on.

#include "analysis/lcf/LcfLanes.h"
#include "spectrum/HeldLanes.h"

namespace {

/// The vector of lanes, and its memory.
struct Group
{
    const LcfLaneTask& task;
    const EdgeGroup& edges;
    V offsets;
    V step; ///< edge step that weights are multiplied by
    int lane;
    double* values;  ///< that are compared, [energy][width]
    double* curve;   ///< the fit curve, of shifted lanes
    double* places;  ///< Places of each energy
    double* rows;    ///< references [reference][energy][width], of shifted lanes
    double* columns; ///< of the fit, likewise; the same memory where they are the references

    int n() const { return task.edge->n; }
    double energy(int i) const { return task.edge->E[i]; }
    V valueAt(int i) const { return load(values + i * width); }
    /// What is fitted.
    V targetAt(int i) const { return task.isOfAbsorption() ? edges.muAt(i) : valueAt(i); }
    double* row(int reference, int i) const { return rows + (reference * n() + i) * width; }
    double* column(int number, int i) const { return columns + (number * n() + i) * width; }
    M isFitted(int i) const
    {
        const V E = energy(i) - offsets;
        return ~((E < task.fitFrom) | (E > task.fitTo));
    }
};

/// What the lanes are found to hold of each reference.
struct Found
{
    V weights[mostLaneReferences];
    V jumps[mostLaneReferences];
    M undefined{};
    M odd{};
};

/// Weights below 0 become 0, yet lessen the sum that the shares are of, as in the plain form.
inline void takeShares(const Group& g, const V* weights, Found& found)
{
    V sum{};
    for (int k = 0; k < g.task.references; ++k) {
        sum += weights[k];
        found.jumps[k] = weights[k] < 0.0 ? V{} : weights[k];
    }
    const V norm = sum > 0.0 ? sum : V{};
    for (int k = 0; k < g.task.references; ++k)
        found.weights[k] = found.jumps[k] / norm;
    found.undefined = norm == 0.0;
}

/// Takes the solution of the normal equations.
inline void takeSolution(const Group& g, const V* solution, Found& found)
{
    if (g.task.isOfAbsorption()) {
        takeShares(g, solution + g.task.backgroundColumns(), found);
        return;
    }
    for (int k = 0; k < g.task.references; ++k) {
        found.weights[k] = solution[k];
        found.jumps[k] = solution[k] * g.step;
    }
}

/// Share of the squares by which a fit misses a value; all of it for a value of 0.
inline V missed(V fit, V value)
{
    const V deviation = (fit - value) / value;
    return value != 0.0 ? deviation * deviation : all(1.0);
}

/// The residual of a sum over the points of the residual.
inline V residualOf(const Group& g, V sum)
{
    return (g.task.residualPoints == 0 ? V{} : sum / double(g.task.residualPoints)) / double(g.n());
}

} // namespace
