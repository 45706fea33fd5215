#pragma once

#include <QString>
#include <QVector>

#include <utility>

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
    /// Adds the points of a file, columns xCol and yCol (from 0) of lines split at white space, but
    /// of the first skipLines lines and of those with too few columns; solves after each. Blanks in
    /// front of a line make a first column without text. Gives, and logs, the first two
    /// coefficients of the last fit whose rms was below 5 % of that of the values; 0 and 0 when
    /// none was. A file that can't be opened costs one fault line.
    std::pair<double, double> fitFile(const QString& fname, int xCol, int yCol, int skipLines);
    /// Sets rms from the sums, 0.0 without points or residual.
    void calcRMS();
};
