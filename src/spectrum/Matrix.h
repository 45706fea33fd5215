#pragma once

/// Dense linear algebra for the small systems of the line fits and the linear combination fit.
///
/// A matrix is an array of n row pointers to n doubles each, so that callers may hold rows where
/// they like (on the stack for the line fits); a vector is n doubles, a pivot list n ints. Nothing
/// is checked and nothing throws: singular systems show in the boolean results.
///
/// A system a x = b is solved by makeLU, solveLV, solveUV in this order. Rows never move: the
/// component for column j of the solution stands in x[pivots[j]].
class Matrix
{
public:
    /// Memory from the heap, all zero; n below 1 gives an empty array. The caller frees it.
    static double** allocMatrix(int n);
    static double* allocVector(int n);
    static int* allocPivots(int n);
    /// m may be null.
    static void freeMatrix(int n, double** m);
    /// v may be null.
    static void freeVector(double* v);
    /// p may be null.
    static void freePivots(int* p);

    static void zeroMatrix(int n, double** m);
    static void zeroVector(int n, double* v);
    static void zeroPivots(int n, int* p);
    static void identity(int n, double** m);

    /// Prints to standard output; the pivoted forms in the order of the pivots.
    static void printMatrix(const char* name, int n, const double* const* m);
    static void printPivotedMatrix(const char* name, int n, const double* const* m,
                                   const int* pivots);
    static void printVector(const char* name, int n, const double* v);
    static void printInts(const char* name, int n, const int* v);
    static void printPivotedVector(const char* name, int n, const double* v, const int* pivots);

    /// True if any element is nan; false for n below 1.
    static bool hasNaNMatrix(int n, const double* const* m);
    static bool hasNaNVector(int n, const double* v);

    static void copyMatrix(int n, const double* const* from, double** to);
    static void copyVector(int n, const double* from, double* to);

    /// c = a b; c must not be a or b.
    static void mulMatrix(int n, const double* const* a, const double* const* b, double** c);
    /// r = a v; r must not be v.
    static void mulMatrixVector(int n, const double* const* a, const double* v, double* r);

    /// Inverse by elimination with diagonal pivots; destroys m. Where a diagonal element comes out
    /// as zero its row is passed over and the result is not an inverse.
    static void invert(int n, double** m, double** inv);

    /// Factors a into l (ones on the diagonal) and u by partial pivoting, the rows of both standing
    /// in the order of a. False when a pivot is exactly zero; the other columns are still done.
    /// n below 1 is true and touches nothing.
    static bool makeLU(int n, const double* const* a, double** l, double** u, int* pivots);
    /// Forward substitution l y = v. False when a diagonal element is zero.
    static bool solveLV(int n, const double* const* l, const double* v, double* y,
                        const int* pivots);
    /// Back substitution u x = y. False when a diagonal element is zero.
    static bool solveUV(int n, const double* const* u, const double* y, double* x,
                        const int* pivots);
};
