#include "spectrum/LeastSquare.h"

#include "common/Fault.h"
#include "common/TextFile.h"
#include "common/TextItems.h"
#include "spectrum/Matrix.h"

#include <QDebug>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

constexpr qint64 longestFile = 64 * 1024 * 1024;
/// Of the values' root mean square: a fit that leaves less is taken.
constexpr double goodShare = 0.05;

/// Heap memory of one solve.
struct Workspace
{
    int n;
    double** a;
    double** l;
    double** u;
    double* y;
    double* x;
    int* pivots;

    explicit Workspace(int order)
        : n(order)
        , a(Matrix::allocMatrix(n))
        , l(Matrix::allocMatrix(n))
        , u(Matrix::allocMatrix(n))
        , y(Matrix::allocVector(n))
        , x(Matrix::allocVector(n))
        , pivots(Matrix::allocPivots(n))
    {
    }
    ~Workspace()
    {
        Matrix::freeMatrix(n, a);
        Matrix::freeMatrix(n, l);
        Matrix::freeMatrix(n, u);
        Matrix::freeVector(y);
        Matrix::freeVector(x);
        Matrix::freePivots(pivots);
    }
    Q_DISABLE_COPY(Workspace)
};
} // namespace

LeastSquare::LeastSquare(int numberOfCoefficients, bool solveAtOnce)
    : order(std::max(numberOfCoefficients, 1))
    , coeffs(order, 0.0)
    , powerSums(2 * order, 0.0)
    , momentSums(order, 0.0)
    , autoSolve(solveAtOnce)
{
}

void LeastSquare::add(double x, double y)
{
    double p = 1.0;
    for (int k = 0; k < order; ++k) {
        powerSums[k] += p;
        momentSums[k] += y * p;
        p *= x;
    }
    for (int k = order; k < 2 * order; ++k) {
        powerSums[k] += p;
        p *= x;
    }
    ++count;
    sumY2 += y * y;
    if (autoSolve) {
        solve();
        calcRMS();
    }
}

bool LeastSquare::solve()
{
    const Workspace w(order);
    for (int i = 0; i < order; ++i) {
        for (int j = 0; j < order; ++j)
            w.a[i][j] = powerSums.at(i + j);
    }
    if (!Matrix::makeLU(order, w.a, w.l, w.u, w.pivots) ||
        !Matrix::solveLV(order, w.l, momentSums.constData(), w.y, w.pivots) ||
        !Matrix::solveUV(order, w.u, w.y, w.x, w.pivots))
        return false;
    for (int j = 0; j < order; ++j)
        coeffs[j] = w.x[w.pivots[j]];
    return true;
}

void LeastSquare::calcRMS()
{
    double r = 0.0;
    for (int i = 0; i < order; ++i) {
        double inner = 0.0;
        for (int j = 0; j < order; ++j)
            inner += coeffs.at(j) * powerSums.at(i + j);
        r += coeffs.at(i) * (inner - 2 * momentSums.at(i));
    }
    rms = count > 0 && r + sumY2 > 0 ? std::sqrt((r + sumY2) / count) : 0.0;
}

std::pair<double, double> LeastSquare::fitFile(const QString& fname, int xCol, int yCol,
                                               int skipLines)
{
    QString text;
    if (readTextFile(fname, longestFile, text) != TextFileResult::Ok) {
        fault(QStringLiteral("LeastSquare:: Can't open ") + quoted(fname));
        return {};
    }
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    std::pair<double, double> good{};
    int lineNo = 0;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        const QStringList fields = line.split(blanks);
        if (++lineNo <= skipLines || std::max(xCol, yCol) >= fields.size())
            continue;
        add(fields.value(xCol).toDouble(), fields.value(yCol).toDouble());
        if (solve())
            calcRMS();
        if (rms / std::sqrt(sumY2 / count) < goodShare)
            good = {coeffs.value(0), coeffs.value(1)};
    }
    qDebug() << "# a, b " << good.first << good.second;
    return good;
}
