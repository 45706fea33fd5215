#include "spectrum/LeastSquare.h"
#include "support/ImageFiles.h"
#include "spectrum/Matrix.h"
#include "spectrum/VictLine.h"

#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <random>

namespace {
template<class F>
Spectrum sampled(double from, double step, int n, F f)
{
    Spectrum s;
    for (int i = 0; i < n; ++i)
        s.append(from + step * i, f(from + step * i));
    return s;
}

VictLine straight(double slope, double valueAt9000, double from, double to)
{
    VictLine v;
    v.slope = slope;
    v.c0 = valueAt9000 - slope * 9000.0;
    v.startE = from;
    v.endE = to;
    return v;
}

bool near(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}
} // namespace

/// Systems of equations, polynomials and background lines that are fitted by them, and bends.
class TestVictLine : public QObject
{
    Q_OBJECT

    double** a = Matrix::allocMatrix(8);
    double** l = Matrix::allocMatrix(8);
    double** u = Matrix::allocMatrix(8);
    double* b = Matrix::allocVector(8);
    double* y = Matrix::allocVector(8);
    double* x = Matrix::allocVector(8);
    int* pivots = Matrix::allocPivots(8);

    bool solve(int n) const
    {
        return Matrix::makeLU(n, a, l, u, pivots) && Matrix::solveLV(n, l, b, y, pivots) &&
               Matrix::solveUV(n, u, y, x, pivots);
    }

private Q_SLOTS:
    void cleanupTestCase()
    {
        for (double** m : {a, l, u})
            Matrix::freeMatrix(8, m);
        for (double* v : {b, y, x})
            Matrix::freeVector(v);
        Matrix::freePivots(pivots);
    }

    void plantedSolutionsComeBack()
    {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> value(-1.0, 1.0);
        for (int n = 1; n <= 8; ++n) {
            for (int i = 0; i < n; ++i) {
                b[i] = 0.0;
                for (int j = 0; j < n; ++j) {
                    a[i][j] = i + j == 0 && n > 1 ? 0.0 : value(random); // 0: needs an exchange
                    b[i] += a[i][j] * (j + 1);
                }
            }
            QVERIFY(solve(n));
            for (int j = 0; j < n; ++j)
                QVERIFY(std::abs(x[pivots[j]] - (j + 1)) < 1e-9);
        }
    }

    void singularSystemsAndNanAreSurvived()
    {
        const double rows[3][3] = {{0, 2, 1}, {0, 4, 3}, {0, 1, 9}};
        for (int i = 0; i < 3; ++i)
            std::copy_n(rows[i], 3, a[i]);
        QVERIFY(!solve(3));
        // Column 0 keeps its place and is skipped; column 1 then chooses the greater of two.
        QVERIFY(pivots[0] == 0 && pivots[1] == 1 && l[2][1] == 0.25 && u[2][2] == 8.25);
        QVERIFY(Matrix::makeLU(0, nullptr, nullptr, nullptr, nullptr));
        Matrix::identity(2, a);
        a[0][0] = std::nan("");
        a[1][0] = 1e-9;
        QVERIFY(Matrix::hasNaNMatrix(2, a) && solve(2) && Matrix::hasNaNVector(2, x));
        QCOMPARE(pivots[0], 1); // no comparison chooses the nan
    }

    void polynomialComesBackWithItsResidual()
    {
        LeastSquare fit(2);
        fit.coeffs = {5.0, 6.0};
        fit.add(0.0, 1.0);
        QVERIFY(!fit.solve() && fit.coeffs == QVector<double>({5.0, 6.0})); // singular
        for (int i = 1; i < 20; ++i)
            fit.add(i / 10.0, 1.0 - 3.0 * i / 10.0 + (i % 2 == 0 ? 0.1 : -0.1));
        QVERIFY(fit.solve());
        fit.calcRMS();
        QVERIFY(std::abs(fit.coeffs[1] + 3.0) < 0.05 && std::abs(fit.rms - 0.1) < 0.01);
    }

    void aFileIsFittedAsFarAsItIsALine()
    {
        const QTemporaryDir dir;
        const QString name = dir.filePath("line.dat");
        QVERIFY(writeBytes(name, "100 -7 x\nE mu\n1 0 5\n2 0 7\nonly\n3 0 9\n4 0 -40\n"));
        LeastSquare fit(2);
        const auto [zero, slope] = fit.fitFile(name, 0, 2, 2);
        QVERIFY(std::abs(zero - 3.0) < 1e-9 && std::abs(slope - 2.0) < 1e-9);
        QVERIFY(fit.count == 4 && fit.coeffs[1] < 0.0); // the last point counts, and breaks the line
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("LeastSquare:: Can't open .*/none"));
        QCOMPARE(fit.fitFile(dir.filePath("none"), 0, 1, 0), std::make_pair(0.0, 0.0));
    }

    void plantedCoefficientsComeBack()
    {
        // Coefficients of a copper foil's size.
        const auto truth = [](double E) {
            return 0.3 + 0.4 * std::pow(12398.424360387684 / E, 3) -
                   0.1 * std::pow(12398.424360387684 / E, 4);
        };
        VictLine v;
        QVERIFY(v.fit(sampled(8000, 20, 200, truth), 8000, 12000.1, VictLine::Victoreen));
        QVERIFY(near(v.c0, 0.3, 1e-6) && near(v.c1, 0.4, 1e-6) && near(v.c2, -0.1, 1e-6));
        QVERIFY(near(v.at(9500), truth(9500), 1e-10) && v.ok && v.rms < 1e-9);
        // Over the few points in front of an edge both powers of the wavelength are all but
        // constant: a solve in them would be wrong in the third digit.
        QVERIFY(v.fit(sampled(8948, 1, 17, truth), 8948, 8965, VictLine::Victoreen));
        QVERIFY(near(v.c0, 0.3, 1e-6) && near(v.c1, 0.4, 1e-6) && near(v.c2, -0.1, 1e-6));
        QVERIFY(near(v.at(9100), truth(9100), 1e-10));
        Spectrum s = sampled(8800, 5, 41, [](double E) { return 2.0 - 1e-4 * E; });
        s.append(9010, 500.0);            // beyond the range
        QVERIFY(v.fit(s, 8800, 9005, 7)); // any mode but 0 is straight
        QVERIFY(near(v.slope, -1e-4, 1e-11) && near(v.c0, 2.0, 1e-7) && v.count == 41);
        s.isShifted = true; // the range and the line are those of the shifted energies
        s.eShift = 20.0;
        QVERIFY(v.fit(s, 8780, 8985, VictLine::Straight) && v.count == 41);
        QVERIFY(near(v.at(8880), 2.0 - 0.89, 1e-8));
    }

    void poorFitsKeepEarlierCoefficients()
    {
        const Spectrum s = sampled(8800, 10, 11, [](double E) { return E / 1000; });
        VictLine v = straight(3.0, 1.0, 0, 1);
        v.c1 = 4.0;
        QVERIFY(!v.fit(Spectrum(), 8800, 8900, VictLine::Straight)); // too few points in all
        QVERIFY(v.slope == 3.0 && v.rms == 0.0);
        QVERIFY(!v.fit(s, 9000, 9100, VictLine::Victoreen)); // none in range: singular
        QVERIFY(v.c0 == 1.0 - 3.0 * 9000.0 && v.c1 == 4.0 && v.rms == 1.0);
        QVERIFY(!v.fit(s, 8815, 8825, VictLine::Straight)); // a single point in range
        QVERIFY(v.slope == 0.0 && v.c0 == 8.82 && v.rms == 0.0);
        QVERIFY(!v.fit(s, 8821, 8825, VictLine::Straight)); // none
        QVERIFY(v.c0 == 0.0 && v.rms == 1.0);
        // The residual's upper end belongs to the Victoreen form only: deliberate.
        QVERIFY(v.fit(s, 8800, 8900, VictLine::Straight) && v.count == 10);
        QVERIFY(v.fit(s, 8800, 8900, VictLine::Victoreen) && v.count == 11);
    }

    void bendJoinsBothLines()
    {
        // Kind of bend (2 Bezier, 0 cubic), slopes before and behind the edge, and where the bend
        // ends on the other side, worked out by hand from the two lines, which are at 0.2 and 1.2
        // at 9000 eV. The cubic has one form for lines that cross between and one for others.
        const double rows[][5] = {{2, 1e-3, -1e-3, 9600, 0.377063},  {2, -4e-3, 1e-3, 8800, 1.275},
                                  {0, 2e-3, -2e-3, 9600, -0.497778}, {0, 1e-4, -1e-4, 9600, 0.197},
                                  {0, -8e-3, 8e-3, 8580, 3.56},      {0, -1e-4, 1e-4, 8800, 1.202}};
        for (const auto& [kind, preSlope, postSlope, farE, farValue] : rows) {
            VictLine pre = straight(preSlope, 0.2, 8800, 8970);
            VictLine post = straight(postSlope, 1.2, 9020, 9600);
            pre.corrMode = post.corrMode = int(kind);
            pre.genCorrectedInPost(post);
            post.genCorrectedInPre(pre);
            const bool above = preSlope > postSlope;
            QVERIFY(pre.corrected == above && post.corrected == !above);
            VictLine& bent = above ? pre : post;
            // The plain line holds on the fitted side, the bend joins it there with the same slope
            // (the last Bezier sample before the upper end is a hundredth short of it, hence the
            // tolerance).
            const double joint = above ? bent.endE : bent.startE;
            const double outside = above ? 1.0 : -1.0;
            QVERIFY(bent.correctedAbove == above && bent.at(joint) == bent.plainAt(joint));
            QVERIFY(near(bent.at(joint + 1e-6 * outside), bent.plainAt(joint), 2e-3));
            QVERIFY(
                near((bent.at(joint + outside) - bent.at(joint + 0.5 * outside)) / (0.5 * outside),
                     bent.slope, 2e-3));
            QVERIFY(near(bent.at(farE), farValue, 5e-3));
        }
    }

    void bendIsMadeOnlyWhereLinesConverge()
    {
        const VictLine post = straight(1e-3, 1.2, 9020, 9600);
        // Parallel; meeting at 19000 eV, far beyond twice the span; without a span; Victoreen.
        VictLine lines[] = {straight(1e-3, 0.2, 8800, 8970), straight(1.1e-3, 0.2, 8800, 8970),
                            straight(5e-3, 0.2, 8800, 9600), straight(5e-3, 0.2, 8800, 8970)};
        lines[3].mode = VictLine::Victoreen;
        for (VictLine& line : lines) {
            line.corrected = true; // left over from an earlier fit
            line.genCorrectedInPost(post);
            QVERIFY(!line.corrected && line.isEmpty());
        }
    }
};

QTEST_APPLESS_MAIN(TestVictLine)
#include "test_vict_line.moc"
