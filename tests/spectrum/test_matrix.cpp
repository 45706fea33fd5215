#include "spectrum/LeastSquare.h"
#include "spectrum/Matrix.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>

namespace {
/// A system with memory of its own.
struct System
{
    int n;
    double** a;
    double** l;
    double** u;
    double* b;
    double* y;
    double* x;
    int* pivots;

    explicit System(int order)
        : n(order)
        , a(Matrix::allocMatrix(n))
        , l(Matrix::allocMatrix(n))
        , u(Matrix::allocMatrix(n))
        , b(Matrix::allocVector(n))
        , y(Matrix::allocVector(n))
        , x(Matrix::allocVector(n))
        , pivots(Matrix::allocPivots(n))
    {
    }
    ~System()
    {
        for (double** m : {a, l, u})
            Matrix::freeMatrix(n, m);
        for (double* v : {b, y, x})
            Matrix::freeVector(v);
        Matrix::freePivots(pivots);
    }
    bool makeLU() const { return Matrix::makeLU(n, a, l, u, pivots); }
    bool solve() const
    {
        const bool made = makeLU();
        const bool lower = Matrix::solveLV(n, l, b, y, pivots);
        const bool upper = Matrix::solveUV(n, u, y, x, pivots);
        return made && lower && upper;
    }
    double solution(int j) const { return x[pivots[j]]; }
    void fillRandom(std::mt19937& random) const
    {
        std::uniform_real_distribution<double> value(-1.0, 1.0);
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j)
                a[i][j] = value(random);
        }
    }
    Q_DISABLE_COPY(System)
};
} // namespace

class TestMatrix : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void knownSolutionsComeBack();
    void factorsMultiplyToTheMatrix();
    void aZeroColumnFailsButTheOthersAreDone();
    void smallOrdersAndNan();
    void inverseTimesMatrixIsIdentity();
    void aZeroDiagonalGivesNoInverse();
    void polynomialComesBackWithItsResidual();
    void singularPolynomialKeepsItsCoefficients();
};

void TestMatrix::knownSolutionsComeBack()
{
    std::mt19937 random(1);
    for (int n = 1; n <= 8; ++n) {
        const System s(n);
        s.fillRandom(random);
        s.a[0][0] = n > 1 ? 0.0 : 2.0; // needs an exchange of rows
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j)
                s.b[i] += s.a[i][j] * (j + 1);
        }
        QVERIFY(s.solve());
        for (int j = 0; j < n; ++j)
            QVERIFY(std::abs(s.solution(j) - (j + 1)) < 1e-9);
    }
}

void TestMatrix::factorsMultiplyToTheMatrix()
{
    std::mt19937 random(2);
    const System s(6);
    s.fillRandom(random);
    QVERIFY(s.makeLU());
    for (int i = 0; i < 6; ++i) {
        const double* lower = s.l[s.pivots[i]];
        QCOMPARE(lower[i], 1.0);
        for (int j = 0; j < 6; ++j) {
            QVERIFY(j <= i || lower[j] == 0.0);
            QVERIFY(j >= i || s.u[s.pivots[i]][j] == 0.0);
            double product = 0.0;
            for (int k = 0; k < 6; ++k)
                product += lower[k] * s.u[s.pivots[k]][j];
            QVERIFY(std::abs(product - s.a[s.pivots[i]][j]) < 1e-13);
        }
    }
}

void TestMatrix::aZeroColumnFailsButTheOthersAreDone()
{
    const System s(3);
    const double rows[3][3] = {{0, 2, 1}, {0, 4, 3}, {0, 1, 9}};
    for (int i = 0; i < 3; ++i)
        std::copy_n(rows[i], 3, s.a[i]);
    QVERIFY(!s.makeLU());
    // Column 0 keeps its place and is skipped; column 1 then chooses the greater of rows 1 and 2.
    QCOMPARE(s.pivots[0], 0);
    QCOMPARE(s.pivots[1], 1);
    QCOMPARE(s.l[2][1], 0.25);
    QCOMPARE(s.u[2][2], 8.25);
    QVERIFY(Matrix::solveLV(3, s.l, s.b, s.y, s.pivots)); // ones on the diagonal
    QVERIFY(!Matrix::solveUV(3, s.u, s.y, s.x, s.pivots));
}

void TestMatrix::smallOrdersAndNan()
{
    const System one(1);
    one.a[0][0] = 4.0;
    one.b[0] = 2.0;
    QVERIFY(one.solve());
    QCOMPARE(one.solution(0), 0.5);

    int untouched = 7;
    QVERIFY(Matrix::makeLU(0, nullptr, nullptr, nullptr, &untouched));
    QCOMPARE(untouched, 7);
    QVERIFY(!Matrix::hasNaNMatrix(0, nullptr));
    Matrix::freeVector(nullptr);
    Matrix::freePivots(nullptr);

    const System two(2);
    Matrix::identity(2, two.a);
    QVERIFY(!Matrix::hasNaNMatrix(2, two.a));
    two.a[0][0] = std::numeric_limits<double>::quiet_NaN();
    QVERIFY(Matrix::hasNaNMatrix(2, two.a));
    two.a[1][0] = 1e-9;
    two.makeLU();
    QCOMPARE(two.pivots[0], 1); // no comparison chooses the nan
    QVERIFY(two.solve());
    QVERIFY(Matrix::hasNaNVector(2, two.x));
}

void TestMatrix::inverseTimesMatrixIsIdentity()
{
    std::mt19937 random(3);
    for (int n = 1; n <= 6; ++n) {
        const System s(n);
        s.fillRandom(random);
        for (int i = 0; i < n; ++i)
            s.a[i][i] += 3.0;
        Matrix::copyMatrix(n, s.a, s.l);
        Matrix::invert(n, s.l, s.u);
        double** product = Matrix::allocMatrix(n);
        Matrix::mulMatrix(n, s.a, s.u, product);
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j)
                QVERIFY(std::abs(product[i][j] - (i == j ? 1.0 : 0.0)) < 1e-12);
        }
        Matrix::freeMatrix(n, product);
    }
}

void TestMatrix::aZeroDiagonalGivesNoInverse()
{
    const System s(2);
    s.a[0][1] = s.a[1][0] = 1.0; // an inverse exists, but no diagonal pivot reaches it
    Matrix::invert(2, s.a, s.u);
    QCOMPARE(s.u[0][0], 1.0);
    QCOMPARE(s.u[0][1], 0.0);
}

void TestMatrix::polynomialComesBackWithItsResidual()
{
    LeastSquare exact(3);
    LeastSquare noisy(2, true);
    for (int i = 0; i < 20; ++i) {
        const double x = i / 10.0 - 1.0;
        exact.add(x, 2.0 - 3.0 * x + 0.5 * x * x);
        noisy.add(x, 1.0 + x + (i % 2 == 0 ? 0.1 : -0.1));
    }
    QVERIFY(exact.solve());
    exact.calcRMS();
    QVERIFY(std::abs(exact.coeffs[0] - 2.0) < 1e-12);
    QVERIFY(std::abs(exact.coeffs[1] + 3.0) < 1e-12);
    QVERIFY(std::abs(exact.coeffs[2] - 0.5) < 1e-12);
    QVERIFY(exact.rms < 1e-6);
    QCOMPARE(noisy.count, 20);
    QVERIFY(std::abs(noisy.coeffs[1] - 1.0) < 0.02);
    QVERIFY(std::abs(noisy.rms - 0.1) < 1e-3);
}

void TestMatrix::singularPolynomialKeepsItsCoefficients()
{
    LeastSquare fit(2);
    fit.coeffs = {5.0, 6.0};
    QVERIFY(!fit.solve());
    fit.add(0.0, 1.0);
    fit.add(0.0, 2.0);
    QVERIFY(!fit.solve());
    QCOMPARE(fit.coeffs, QVector<double>({5.0, 6.0}));
}

QTEST_APPLESS_MAIN(TestMatrix)
#include "test_matrix.moc"
