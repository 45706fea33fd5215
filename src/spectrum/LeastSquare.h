#pragma once

#include <QVector>

/// Least-squares polynomial y = coeffs[0] + coeffs[1] x + ... by accumulation: points are added to
/// sums and are not kept.
class LeastSquare
{
public:
    int order;                  ///< number of coefficients
    QVector<double> coeffs;     ///< `order` values, 0 before the first solution
    QVector<double> powerSums;  ///< sums of x^k, 2 * order values
    QVector<double> momentSums; ///< sums of y x^k, order values
    double sumY2 = 0.0;
    int count = 0;
    bool autoSolve = false; ///< solve and calcRMS follow every add
    double rms = 0.0;       ///< root mean square residual as of the last calcRMS

    /// An order below 1 acts as 1.
    explicit LeastSquare(int numberOfCoefficients, bool solveAtOnce = false);

    void add(double x, double y);
    /// False, with `coeffs` as they were, when the points do not determine the polynomial.
    bool solve();
    /// Sets rms from the sums, 0.0 without points or residual.
    void calcRMS();
};
