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

/// Triangular factors of an N x N matrix, with all memory on the stack.
template<int N>
class SmallFactors
{
public:
    /// False for a singular matrix.
    bool make(const std::array<std::array<double, N>, N>& a)
    {
        std::array<const double*, N> rows;
        for (std::size_t i = 0; i < N; ++i) {
            rows[i] = a[i].data();
            l[i] = lower_[i].data();
            u[i] = upper_[i].data();
        }
        return Matrix::makeLU(N, rows.data(), l.data(), u.data(), pivots.data());
    }

    std::array<double*, N> l; ///< rows of the lower and the upper triangle
    std::array<double*, N> u;
    std::array<int, N> pivots;

private:
    std::array<std::array<double, N>, N> lower_;
    std::array<std::array<double, N>, N> upper_;
};

/// Solves the N x N system a x = b with all memory on the stack; x is set only when all steps
/// succeed.
template<int N>
SolveStep solveSmall(const std::array<std::array<double, N>, N>& a, const std::array<double, N>& b,
                     std::array<double, N>& x)
{
    SmallFactors<N> factors;
    std::array<double, N> y;
    std::array<double, N> solution;
    if (!factors.make(a))
        return SolveStep::MakeLU;
    if (!Matrix::solveLV(N, factors.l.data(), b.data(), y.data(), factors.pivots.data()))
        return SolveStep::SolveLV;
    if (!Matrix::solveUV(N, factors.u.data(), y.data(), solution.data(), factors.pivots.data()))
        return SolveStep::SolveUV;
    for (size_t j = 0; j < N; ++j)
        x[j] = solution[static_cast<size_t>(factors.pivots[j])];
    return SolveStep::Solved;
}
