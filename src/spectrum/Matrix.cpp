#include "spectrum/Matrix.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

namespace {
/// Position of the pivot row of column k in the pivot list. An all-zero column (or one of nan)
/// keeps position k.
int pivotPosition(int n, const double* const* l, const int* pivots, int k)
{
    int best = k;
    double greatest = 0.0;
    for (int i = k; i < n; ++i) {
        const double size = std::abs(l[pivots[i]][k]);
        if (size > greatest) {
            greatest = size;
            best = i;
        }
    }
    return best;
}

void eliminateColumn(int n, double** l, const int* pivots, int k)
{
    const double* pivotRow = l[pivots[k]];
    for (int i = k + 1; i < n; ++i) {
        double* row = l[pivots[i]];
        row[k] /= pivotRow[k];
        for (int j = k + 1; j < n; ++j)
            row[j] -= row[k] * pivotRow[j];
    }
}

/// Moves what stands on and above the diagonal from l into u.
void splitFactors(int n, double** l, double** u, const int* pivots)
{
    for (int i = 0; i < n; ++i) {
        double* lower = l[pivots[i]];
        double* upper = u[pivots[i]];
        for (int j = 0; j < i; ++j)
            upper[j] = 0.0;
        for (int j = i; j < n; ++j) {
            upper[j] = lower[j];
            lower[j] = j == i ? 1.0 : 0.0;
        }
    }
}

/// The unused row with the greatest diagonal element, or the first unused one if none compares
/// (nan).
int diagonalPivot(int n, const double* const* m, const std::vector<bool>& used)
{
    int best = -1;
    double greatest = -1e300;
    for (int i = 0; i < n; ++i) {
        if (used[static_cast<size_t>(i)])
            continue;
        const double size = std::abs(m[i][i]);
        if (size > greatest) {
            greatest = size;
            best = i;
        }
    }
    if (best >= 0)
        return best;
    return static_cast<int>(std::find(used.begin(), used.end(), false) - used.begin());
}

void subtractRow(int n, double** m, double** inv, int pivot, int row)
{
    const double factor = m[row][pivot];
    for (int j = 0; j < n; ++j) {
        m[row][j] -= factor * m[pivot][j];
        inv[row][j] -= factor * inv[pivot][j];
    }
}

void divideRow(int n, double** m, double** inv, int pivot)
{
    const double element = m[pivot][pivot];
    for (int j = 0; j < n; ++j) {
        m[pivot][j] /= element;
        inv[pivot][j] /= element;
    }
}

void printHead(const char* name)
{
    std::printf("# %s = \n# ", name);
}

void printRow(int n, const double* row)
{
    for (int j = 0; j < n; ++j)
        std::printf("%g ", row[j]);
    std::printf("\n# ");
}
} // namespace

double** Matrix::allocMatrix(int n)
{
    const int rows = std::max(n, 0);
    auto** m = new double*[static_cast<size_t>(rows)];
    for (int i = 0; i < rows; ++i)
        m[i] = allocVector(rows);
    return m;
}

double* Matrix::allocVector(int n)
{
    return new double[static_cast<size_t>(std::max(n, 0))]();
}

int* Matrix::allocPivots(int n)
{
    return new int[static_cast<size_t>(std::max(n, 0))]();
}

void Matrix::freeMatrix(int n, double** m)
{
    if (m == nullptr)
        return;
    for (int i = 0; i < n; ++i)
        delete[] m[i];
    delete[] m;
}

void Matrix::freeVector(double* v)
{
    delete[] v;
}

void Matrix::freePivots(int* p)
{
    delete[] p;
}

void Matrix::zeroMatrix(int n, double** m)
{
    for (int i = 0; i < n; ++i)
        zeroVector(n, m[i]);
}

void Matrix::zeroVector(int n, double* v)
{
    std::fill_n(v, std::max(n, 0), 0.0);
}

void Matrix::zeroPivots(int n, int* p)
{
    std::fill_n(p, std::max(n, 0), 0);
}

void Matrix::identity(int n, double** m)
{
    zeroMatrix(n, m);
    for (int i = 0; i < n; ++i)
        m[i][i] = 1.0;
}

void Matrix::printMatrix(const char* name, int n, const double* const* m)
{
    printHead(name);
    for (int i = 0; i < n; ++i)
        printRow(n, m[i]);
    std::printf("\n");
}

void Matrix::printPivotedMatrix(const char* name, int n, const double* const* m, const int* pivots)
{
    printHead(name);
    for (int i = 0; i < n; ++i)
        printRow(n, m[pivots[i]]);
    std::printf("\n");
}

void Matrix::printVector(const char* name, int n, const double* v)
{
    printHead(name);
    for (int i = 0; i < n; ++i)
        std::printf("%g ", v[i]);
    std::printf("\n");
}

void Matrix::printInts(const char* name, int n, const int* v)
{
    printHead(name);
    for (int i = 0; i < n; ++i)
        std::printf("%d ", v[i]);
    std::printf("\n");
}

void Matrix::printPivotedVector(const char* name, int n, const double* v, const int* pivots)
{
    printHead(name);
    for (int i = 0; i < n; ++i)
        std::printf("%g ", v[pivots[i]]);
    std::printf("\n");
}

bool Matrix::hasNaNMatrix(int n, const double* const* m)
{
    for (int i = 0; i < n; ++i) {
        if (hasNaNVector(n, m[i]))
            return true;
    }
    return false;
}

bool Matrix::hasNaNVector(int n, const double* v)
{
    for (int i = 0; i < n; ++i) {
        if (std::isnan(v[i]))
            return true;
    }
    return false;
}

void Matrix::copyMatrix(int n, const double* const* from, double** to)
{
    for (int i = 0; i < n; ++i)
        copyVector(n, from[i], to[i]);
}

void Matrix::copyVector(int n, const double* from, double* to)
{
    std::copy_n(from, std::max(n, 0), to);
}

void Matrix::mulMatrix(int n, const double* const* a, const double* const* b, double** c)
{
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            double sum = 0.0;
            for (int k = 0; k < n; ++k)
                sum += a[i][k] * b[k][j];
            c[i][j] = sum;
        }
    }
}

void Matrix::mulMatrixVector(int n, const double* const* a, const double* v, double* r)
{
    for (int i = 0; i < n; ++i) {
        double sum = 0.0;
        for (int k = 0; k < n; ++k)
            sum += a[i][k] * v[k];
        r[i] = sum;
    }
}

void Matrix::invert(int n, double** m, double** inv)
{
    identity(n, inv);
    std::vector<bool> used(static_cast<size_t>(std::max(n, 0)), false);
    std::vector<int> order; // rows that were eliminated with
    for (int round = 0; round < n; ++round) {
        const int pivot = diagonalPivot(n, m, used);
        used[static_cast<size_t>(pivot)] = true;
        if (m[pivot][pivot] == 0.0)
            continue;
        divideRow(n, m, inv, pivot);
        for (int row = 0; row < n; ++row) {
            if (!used[static_cast<size_t>(row)])
                subtractRow(n, m, inv, pivot, row);
        }
        order.push_back(pivot);
    }
    // The rows used early still hold the columns of the later ones.
    for (size_t i = order.size(); i-- > 1;) {
        for (size_t j = 0; j < i; ++j)
            subtractRow(n, m, inv, order[i], order[j]);
    }
}

bool Matrix::makeLU(int n, const double* const* a, double** l, double** u, int* pivots)
{
    for (int i = 0; i < n; ++i)
        pivots[i] = i;
    copyMatrix(n, a, l);
    bool regular = true;
    for (int k = 0; k < n; ++k) {
        std::swap(pivots[k], pivots[pivotPosition(n, l, pivots, k)]);
        if (l[pivots[k]][k] == 0.0)
            regular = false;
        else
            eliminateColumn(n, l, pivots, k);
    }
    splitFactors(n, l, u, pivots);
    return regular;
}

bool Matrix::solveLV(int n, const double* const* l, const double* v, double* y, const int* pivots)
{
    copyVector(n, v, y);
    bool regular = true;
    for (int k = 0; k < n - 1; ++k) {
        const int row = pivots[k];
        if (l[row][k] == 0.0) {
            regular = false;
            continue;
        }
        y[row] /= l[row][k];
        for (int j = k + 1; j < n; ++j)
            y[pivots[j]] -= y[row] * l[pivots[j]][k];
    }
    return regular;
}

bool Matrix::solveUV(int n, const double* const* u, const double* y, double* x, const int* pivots)
{
    copyVector(n, y, x);
    bool regular = true;
    for (int k = n - 1; k >= 0; --k) {
        const int row = pivots[k];
        if (u[row][k] == 0.0) {
            regular = false;
            continue;
        }
        x[row] /= u[row][k];
        for (int j = k - 1; j >= 0; --j)
            x[pivots[j]] -= x[row] * u[pivots[j]][k];
    }
    return regular;
}
