#include "spectrum/VictLine.h"

#include <QtTest>

#include <cmath>

namespace {
constexpr double hc = 12398.424360387684;

template<class F>
Spectrum sampled(double from, double to, int n, F f)
{
    Spectrum s;
    for (int i = 0; i < n; ++i) {
        const double E = from + (to - from) * i / (n - 1);
        s.append(E, f(E));
    }
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

class TestVictLine : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void victoreenDataGiveTheirCoefficients();
    void straightDataGiveTheirCoefficients();
    void residualsDifferAtTheUpperEnd();
    void poorFitsKeepEarlierCoefficients();
    void bendJoinsBothLines_data();
    void bendJoinsBothLines();
    void bendIsMadeOnlyWhereLinesConverge();
    void arraysReadLikeSingleEnergies_data();
    void arraysReadLikeSingleEnergies();
    void crossingsAreFoundWithinTheRange();
};

void TestVictLine::victoreenDataGiveTheirCoefficients()
{
    // Coefficients of a copper foil's size; the normal equations lose some eight digits.
    const auto truth = [](double E) {
        const double l = hc / E;
        return 0.3 + 0.4 * std::pow(l, 3) - 0.1 * std::pow(l, 4);
    };
    VictLine v;
    QVERIFY(v.fit(sampled(8000, 12000, 200, truth), 8000, 12000.1, VictLine::Victoreen));
    QVERIFY(near(v.c0, 0.3, 1e-6));
    QVERIFY(near(v.c1, 0.4, 1e-6));
    QVERIFY(near(v.c2, -0.1, 1e-6));
    QVERIFY(near(v.at(9500), truth(9500), 1e-10));
    QVERIFY(v.ok && v.rms < 1e-9);
    QCOMPARE(v.count, 200);
}

void TestVictLine::straightDataGiveTheirCoefficients()
{
    Spectrum s = sampled(8800, 9000, 41, [](double E) { return 2.0 - 1e-4 * E; });
    s.append(9010, 500.0); // beyond the range
    VictLine v;
    QVERIFY(v.fit(s, 8800, 9005, 7)); // any mode but 0 is straight
    QVERIFY(near(v.slope, -1e-4, 1e-11));
    QVERIFY(near(v.c0, 2.0, 1e-7));
    QVERIFY(near(v.at(9500), 2.0 - 0.95, 1e-8));
    QCOMPARE(v.count, 41);

    s.isShifted = true; // the range and the line are those of the shifted energies
    s.eShift = 20.0;
    QVERIFY(v.fit(s, 8780, 8985, VictLine::Straight));
    QCOMPARE(v.count, 41);
    QVERIFY(near(v.at(8880), 2.0 - 0.89, 1e-8));
}

void TestVictLine::residualsDifferAtTheUpperEnd()
{
    const Spectrum s = sampled(8800, 8900, 11, [](double) { return 1.0; });
    VictLine v;
    v.fit(s, 8800, 8900, VictLine::Straight);
    QCOMPARE(v.count, 10);
    v.fit(s, 8800, 8900, VictLine::Victoreen);
    QCOMPARE(v.count, 11);
}

void TestVictLine::poorFitsKeepEarlierCoefficients()
{
    const Spectrum s = sampled(8800, 8900, 11, [](double E) { return E / 1000; });
    VictLine v = straight(3.0, 1.0, 0, 1);
    v.c1 = 4.0;
    const double c0 = v.c0;
    QVERIFY(!v.fit(Spectrum(), 8800, 8900, VictLine::Straight)); // too few points in all
    QCOMPARE(v.slope, 3.0);
    QCOMPARE(v.rms, 0.0);

    QVERIFY(!v.fit(s, 9000, 9100, VictLine::Victoreen)); // none in range: singular
    QCOMPARE(v.c0, c0);
    QCOMPARE(v.c1, 4.0);
    QCOMPARE(v.rms, 1.0);

    QVERIFY(!v.fit(s, 8815, 8825, VictLine::Straight)); // a single point in range
    QCOMPARE(v.slope, 0.0);
    QCOMPARE(v.c0, 8.82);
    QCOMPARE(v.rms, 0.0);
    QVERIFY(!v.fit(s, 8821, 8825, VictLine::Straight)); // none
    QCOMPARE(v.c0, 0.0);
    QCOMPARE(v.rms, 1.0);
}

void TestVictLine::bendJoinsBothLines_data()
{
    QTest::addColumn<int>("corrMode");
    QTest::addColumn<double>("preSlope");
    QTest::addColumn<double>("postSlope");
    // Where the bend ends on the other side, worked out by hand from the two lines, which are at
    // 0.2 and 1.2 at 9000 eV.
    QTest::addColumn<double>("farE");
    QTest::addColumn<double>("farValue");
    QTest::newRow("Bezier, pre-edge line") << 2 << 1e-3 << -1e-3 << 9600.0 << 0.377063;
    QTest::newRow("Bezier, post-edge line") << 2 << -4e-3 << 1e-3 << 8800.0 << 1.275;
    QTest::newRow("cubic, pre-edge line, crossing inside")
        << 0 << 2e-3 << -2e-3 << 9600.0 << -0.497778;
    QTest::newRow("cubic, pre-edge line, crossing outside")
        << 0 << 1e-4 << -1e-4 << 9600.0 << 0.197;
    QTest::newRow("cubic, post-edge line, crossing inside") << 0 << -8e-3 << 8e-3 << 8580.0 << 3.56;
    QTest::newRow("cubic, post-edge line, crossing outside")
        << 0 << -1e-4 << 1e-4 << 8800.0 << 1.202;
}

void TestVictLine::bendJoinsBothLines()
{
    QFETCH(int, corrMode);
    QFETCH(double, preSlope);
    QFETCH(double, postSlope);
    QFETCH(double, farE);
    QFETCH(double, farValue);
    VictLine pre = straight(preSlope, 0.2, 8800, 8970);
    VictLine post = straight(postSlope, 1.2, 9020, 9600);
    pre.corrMode = post.corrMode = corrMode;
    pre.genCorrectedInPost(post);
    post.genCorrectedInPre(pre);
    const bool above = preSlope > postSlope;
    QCOMPARE(pre.corrected, above);
    QCOMPARE(post.corrected, !above);
    VictLine& bent = above ? pre : post;
    QCOMPARE(bent.correctedAbove, above);
    // The plain line holds on the fitted side, the bend joins it there with the same slope (the
    // last Bezier sample before the upper end is a hundredth short of it, hence the tolerance).
    const double joint = above ? bent.endE : bent.startE;
    const double outside = above ? 1.0 : -1.0;
    QCOMPARE(bent.at(joint), bent.plainAt(joint));
    QVERIFY(near(bent.at(joint + 1e-6 * outside), bent.plainAt(joint), 2e-3));
    QVERIFY(near((bent.at(joint + outside) - bent.at(joint + 0.5 * outside)) / (0.5 * outside),
                 bent.slope, 2e-3));
    QVERIFY(near(bent.at(farE), farValue, 5e-3));
    if (corrMode != 2)
        return;
    QCOMPARE(bent.size(), 100);
    for (int E = 8800; E <= 9600; E += 8) // the lines stay apart
        QVERIFY2(pre.at(E) < post.at(E), qPrintable(QString::number(E)));
}

void TestVictLine::bendIsMadeOnlyWhereLinesConverge()
{
    VictLine post = straight(1e-3, 1.2, 9020, 9600);
    VictLine parallel = straight(1e-3, 0.2, 8800, 8970);
    parallel.corrected = true; // left over from an earlier fit
    parallel.genCorrectedInPost(post);
    post.genCorrectedInPre(parallel);
    QVERIFY(!parallel.corrected && !post.corrected);

    // The lines meet at 9000 + 1 / 1e-4 = 19000, far beyond twice the span of 630.
    VictLine far = straight(1.1e-3, 0.2, 8800, 8970);
    far.genCorrectedInPost(post);
    QVERIFY(!far.corrected && far.isEmpty());

    VictLine noSpan = straight(5e-3, 0.2, 8800, 9600);
    noSpan.genCorrectedInPost(post);
    QVERIFY(!noSpan.corrected);
    QTest::ignoreMessage(QtDebugMsg, "make  LU (2) false in VictLine genCorrectedInPost");
    noSpan.corrMode = 0;
    noSpan.genCorrectedInPost(post);
    QVERIFY(!noSpan.corrected);

    VictLine victoreen = straight(5e-3, 0.2, 8800, 8970);
    victoreen.mode = VictLine::Victoreen;
    victoreen.corrected = true;
    victoreen.genCorrectedInPost(post);
    QVERIFY(!victoreen.corrected);
}

void TestVictLine::arraysReadLikeSingleEnergies_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("corrMode");
    QTest::addColumn<int>("bends");
    QTest::newRow("straight") << 1 << 2 << 0;
    QTest::newRow("Victoreen") << 0 << 2 << 0;
    QTest::newRow("Bezier bend") << 1 << 2 << 1;
    QTest::newRow("two Bezier bends in the list") << 1 << 2 << 2;
    QTest::newRow("cubic bend") << 1 << 0 << 1;
}

void TestVictLine::arraysReadLikeSingleEnergies()
{
    QFETCH(int, mode);
    QFETCH(int, corrMode);
    QFETCH(int, bends);
    VictLine v = straight(1e-3, 0.2, 8800, 8970);
    v.corrMode = corrMode;
    for (int i = 0; i < bends; ++i)
        v.genCorrectedInPost(straight(-1e-3, 1.2, 9020, 9600));
    v.mode = mode;
    v.c1 = 0.4;
    v.c2 = 0.1;
    QCOMPARE(v.corrected, bends > 0);
    QVector<double> energies;
    for (int i = 0; i < 97; ++i)
        energies.append(8790.3 + 9.1 * i);
    energies << 8970.0 << 9000.0; // the joint itself, and a step back
    QVector<double> values(energies.size());
    v.valuesAt(energies.constData(), energies.size(), values.data());
    for (int i = 0; i < energies.size(); ++i)
        QVERIFY(values[i] == v.at(energies[i]));
}

void TestVictLine::crossingsAreFoundWithinTheRange()
{
    const VictLine a = straight(1e-3, 1.0, 0, 0);
    VictLine b = straight(-1e-3, 1.0, 0, 0); // they meet at 9000
    QVERIFY(a.crossesWithin(b, 8990, 9010));
    QVERIFY(!a.crossesWithin(b, 9001, 9010));
    QVERIFY(a.crossesWithin(a, 0, 1));
    QVERIFY(!a.crossesWithin(straight(1e-3, 2.0, 0, 0), 0, 1e6));
    b.mode = VictLine::Victoreen;
    QVERIFY(!a.crossesWithin(b, 8990, 9010));
}

QTEST_APPLESS_MAIN(TestVictLine)
#include "test_vict_line.moc"
