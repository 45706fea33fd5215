#pragma once

#include "spectrum/Matrix.h"

#include <array>
#include <cstddef>

/// Outcome of solveSmall: the first step that failed.
enum class SolveStep
{
    Solved,
    MakeLU,
    SolveLV,
    SolveUV
};

/// Solves the N x N system a x = b with all memory on the stack; x is set only when all steps
/// succeed.
template<int N>
SolveStep solveSmall(const std::array<std::array<double, N>, N>& a, const std::array<double, N>& b,
                     std::array<double, N>& x)
{
    std::array<std::array<double, N>, N> lower;
    std::array<std::array<double, N>, N> upper;
    std::array<const double*, N> rows;
    std::array<double*, N> l;
    std::array<double*, N> u;
    std::array<int, N> pivots;
    for (size_t i = 0; i < N; ++i) {
        rows[i] = a[i].data();
        l[i] = lower[i].data();
        u[i] = upper[i].data();
    }
    std::array<double, N> y;
    std::array<double, N> solution;
    if (!Matrix::makeLU(N, rows.data(), l.data(), u.data(), pivots.data()))
        return SolveStep::MakeLU;
    if (!Matrix::solveLV(N, l.data(), b.data(), y.data(), pivots.data()))
        return SolveStep::SolveLV;
    if (!Matrix::solveUV(N, u.data(), y.data(), solution.data(), pivots.data()))
        return SolveStep::SolveUV;
    for (size_t j = 0; j < N; ++j)
        x[j] = solution[static_cast<size_t>(pivots[j])];
    return SolveStep::Solved;
}
