#include "spectrum/PlainForms.h"

#include <QtTest>

namespace {
struct Curve
{
    Spectrum spectrum;
    plain::Values x;
    plain::Values y;
};

enum Kind
{
    Ascending,
    Duplicates,
    Unsorted,
    WithNan
};

Curve randomCurve(std::mt19937& random, int n, Kind kind, bool shifted)
{
    std::uniform_real_distribution<double> value(-2.0, 2.0);
    std::uniform_int_distribution<int> step(0, 4);
    Curve c;
    c.spectrum.isShifted = shifted;
    c.spectrum.eShift = 1.7;
    double x = 8900.0;
    for (int i = 0; i < n; ++i) {
        const bool stay = kind == Duplicates && step(random) < 2;
        x += stay ? 0.0 : 0.3 + step(random);
        double y = value(random);
        if (kind == WithNan && step(random) == 0)
            y = std::nan("");
        const double rawX = kind == Unsorted && i % 3 == 1 ? x - 7.0 : x;
        c.spectrum.append(rawX, y);
        c.x.push_back(shifted ? rawX - 1.7 : rawX);
        c.y.push_back(y);
    }
    return c;
}
} // namespace

class TestSpectrum : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void curvesReadLikeThePlainRule_data();
    void curvesReadLikeThePlainRule();
    void movingAverageRunsAlong();
    void boundsFollowStrictComparison();
    void indicesOutsideReadAsZero();
};

void TestSpectrum::curvesReadLikeThePlainRule_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("shifted");
    QTest::newRow("ascending") << int(Ascending) << false;
    QTest::newRow("ascending, shifted") << int(Ascending) << true;
    QTest::newRow("equal energies") << int(Duplicates) << false;
    QTest::newRow("equal energies, shifted") << int(Duplicates) << true;
    QTest::newRow("not ascending") << int(Unsorted) << false;
    QTest::newRow("nan values") << int(WithNan) << false;
}

void TestSpectrum::curvesReadLikeThePlainRule()
{
    QFETCH(int, kind);
    QFETCH(bool, shifted);
    std::mt19937 random(20);
    for (int n = 0; n < 60; ++n) {
        Curve c = randomCurve(random, n, static_cast<Kind>(kind), shifted);
        c.spectrum.genSmoothed(2);
        const plain::Values smooth = plain::smoothed(c.y, 2);
        // Every point itself, places between and beyond both ends, in rising order; then nan and
        // steps back, after which a cursor must find its place again.
        plain::Values queries = {8880.0};
        for (const double x : c.x) {
            queries.push_back(x);
            queries.push_back(x + 0.13);
        }
        queries.insert(queries.end(), {9200.0, std::nan(""), 8905.0, 8903.0, 8930.0});
        SpectrumCursor cursor(c.spectrum);
        SpectrumCursor smoothCursor(c.spectrum);
        for (const double q : queries) {
            const double expected = plain::interpolate(c.x, c.y, q);
            QVERIFY(plain::same(c.spectrum.yAt(q), expected));
            QVERIFY(plain::same(cursor.yAt(q), expected));
            const double expectedSmooth = plain::interpolate(c.x, smooth, q);
            QVERIFY(plain::same(c.spectrum.smoothedAt(q), expectedSmooth));
            QVERIFY(plain::same(smoothCursor.smoothedAt(q), expectedSmooth));
        }
    }
}

void TestSpectrum::movingAverageRunsAlong()
{
    std::mt19937 random(21);
    for (int n = 0; n < 12; ++n) {
        for (const int h : {0, 1, 2, 5, 40}) {
            Curve c = randomCurve(random, n, Ascending, false);
            c.spectrum.genSmoothed(h);
            const plain::Values expected = plain::smoothed(c.y, h);
            QCOMPARE(c.spectrum.smoothed.size(), n);
            for (int i = 0; i < n; ++i)
                QVERIFY(c.spectrum.smoothed[i] == expected[static_cast<size_t>(i)]);
        }
    }
}

void TestSpectrum::boundsFollowStrictComparison()
{
    std::mt19937 random(22);
    for (int n = 1; n < 40; ++n) {
        Curve c = randomCurve(random, n, n % 2 == 0 ? WithNan : Duplicates, false);
        c.spectrum.append(c.spectrum.x(0), c.spectrum.y(0)); // equal extremes keep the first index
        Spectrum whole;
        whole.append(-1.0, 1e9);
        whole.setPoints(c.spectrum.points);
        plain::Values xs;
        plain::Values ys;
        Spectrum expected;
        for (int i = 0; i < c.spectrum.size(); ++i) {
            const QPointF p = c.spectrum.points[i];
            xs.push_back(p.x());
            ys.push_back(p.y());
            expected.xMin = p.x() < expected.xMin ? p.x() : expected.xMin;
            expected.xMax = p.x() > expected.xMax ? p.x() : expected.xMax;
            expected.yMinIndex = p.y() < expected.yMin ? i : expected.yMinIndex;
            expected.yMin = p.y() < expected.yMin ? p.y() : expected.yMin;
            expected.yMaxIndex = p.y() > expected.yMax ? i : expected.yMaxIndex;
            expected.yMax = p.y() > expected.yMax ? p.y() : expected.yMax;
        }
        Spectrum fromArrays;
        fromArrays.setPoints(xs.data(), ys.data(), c.spectrum.size());
        for (const Spectrum& s : {c.spectrum, whole, fromArrays}) {
            QVERIFY(s.xMin == expected.xMin && s.xMax == expected.xMax);
            QVERIFY(s.yMin == expected.yMin && s.yMax == expected.yMax);
            QCOMPARE(s.yMinIndex, expected.yMinIndex);
            QCOMPARE(s.yMaxIndex, expected.yMaxIndex);
        }
    }
}

void TestSpectrum::indicesOutsideReadAsZero()
{
    Spectrum s;
    s.isShifted = true;
    s.eShift = 5.0;
    QCOMPARE(s.x(0), 0.0);
    s.append(10.0, 3.0);
    QCOMPARE(s.x(0), 5.0);
    QCOMPARE(s.x(-1), 0.0);
    QCOMPARE(s.y(1), 0.0);
    s.genSmoothed(2);
    s.clear();
    QCOMPARE(s.smoothed.size(), 1);
    QCOMPARE(s.smoothedAt(5.0), 0.0);
    QCOMPARE(s.xMin, 1e300);
}

QTEST_APPLESS_MAIN(TestSpectrum)
#include "test_spectrum.moc"
