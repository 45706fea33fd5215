#include "spectrum/PlainForms.h"

#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

namespace {
const QString testName = QStringLiteral("test");

/// How the random curves of a row of the comparison are made.
struct Recipe
{
    int mode = VictLine::Straight;
    double preSlope = 0.0; ///< [1/eV]
    double postSlope = 0.0;
    double noise = 0.01;
    double shift = 0.0;
    bool duplicates = false;
    bool withNan = false;
    bool window = false;
    double edgeE = 8984.36029;
    double height = 1.0;
};

Spectrum edgeCurve(std::mt19937& random, int n, const Recipe& r)
{
    std::normal_distribution<double> noise(0.0, r.noise);
    std::uniform_real_distribution<double> step(0.5, 1.5);
    std::uniform_int_distribution<int> dice(0, 9);
    Spectrum s;
    s.isShifted = r.shift != 0.0;
    s.eShift = r.shift;
    double E = 8800.0;
    for (int i = 0; i < n; ++i) {
        E += r.duplicates && dice(random) < 3 ? 0.0 : step(random) * 600.0 / n;
        const double d = E - 8985.0;
        double mu = 0.4 + r.preSlope * d + r.height * (0.5 + std::atan(d / 2.0) / M_PI);
        mu += d > 0 ? (r.postSlope - r.preSlope) * d : 0.0;
        mu += noise(random);
        s.append(E, r.withNan && dice(random) == 0 && i % 20 == 7 ? std::nan("") : mu);
    }
    return s;
}

SuggestElm elementOf(const Recipe& r)
{
    SuggestElm elm;
    elm.use = r.window;
    elm.edgeE = r.edgeE;
    return elm;
}

plain::Spectrum plainOf(const Spectrum& s, const SuggestElm& elm)
{
    plain::Spectrum p;
    p.shift = s.isShifted ? s.eShift : 0.0;
    p.elm = elm;
    for (const QPointF& point : s.points) {
        p.rawX.push_back(point.x());
        p.x.push_back(point.x() - p.shift);
        p.mu.push_back(point.y());
    }
    return p;
}

bool sameCurve(const Spectrum& curve, const plain::Values& x, const plain::Values& y)
{
    if (static_cast<size_t>(curve.size()) != x.size())
        return false;
    Spectrum bounds;
    for (int i = 0; i < curve.size(); ++i) {
        const auto k = static_cast<size_t>(i);
        if (curve.points[i].x() != x[k] || !plain::same(curve.points[i].y(), y[k]))
            return false;
        bounds.append(x[k], y[k]);
    }
    return curve.xMin == bounds.xMin && curve.xMax == bounds.xMax && curve.yMin == bounds.yMin &&
           curve.yMax == bounds.yMax && curve.yMinIndex == bounds.yMinIndex &&
           curve.yMaxIndex == bounds.yMaxIndex;
}

/// Name of the first result that differs, empty for none.
QByteArray difference(const XafsSpectrum& s, const plain::Spectrum& p)
{
    const auto lineDiffers = [](const VictLine& a, const plain::Line& b) {
        return !plain::same(a.c0, b.c0) || !plain::same(a.slope, b.slope) ||
               !plain::same(a.c1, b.c1) || !plain::same(a.c2, b.c2) || !plain::same(a.rms, b.rms) ||
               a.corrected != b.bent;
    };
    if (lineDiffers(s.pre, p.pre))
        return "pre";
    if (lineDiffers(s.post, p.post))
        return "post";
    if (!plain::same(s.midx, p.midx))
        return "midx";
    if (!plain::same(s.dMut, p.dMut))
        return "dMut";
    if (s.outOfRangeMidx != p.outOfRange || s.noisyMidx != p.noisy)
        return "flags";
    if (!sameCurve(s.normalizedPreBase, p.x, p.preBase) ||
        !sameCurve(s.doubleNormalizedPreBase, p.x, p.doublePreBase) ||
        !sameCurve(s.normalizedPostBase, p.x, p.postBase) ||
        !sameCurve(s.doubleNormalizedPostBase, p.x, p.doublePostBase))
        return "curves";
    return {};
}
} // namespace

Q_DECLARE_METATYPE(Recipe)

class TestXafsSpectrum : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void normalisationIsThePlainChain_data();
    void normalisationIsThePlainChain();
    void comparisonIsThePlainSum_data();
    void comparisonIsThePlainSum();
    void noiselessGridPointsAreReadExactly();
    void plantedEdgeComesBack_data();
    void plantedEdgeComesBack();
    void plantedShiftComesBack();
    void shortSpectraAreSurvived();
    void linesThatCrossArePushedApart();
    void edgeGuardsMarkFailedEdges();
    void secondNormalisationKeepsTheFirstBend();
    void shiftSearchEndsForAnySettings();
    void dumpIsText();
};

void TestXafsSpectrum::normalisationIsThePlainChain_data()
{
    QTest::addColumn<Recipe>("recipe");
    const auto row = [](const char* name, auto change) {
        Recipe r;
        change(r);
        QTest::newRow(name) << r;
    };
    row("straight lines", [](Recipe&) {});
    row("pre-edge line bent", [](Recipe& r) { r.preSlope = 1e-3; });
    row("post-edge line bent", [](Recipe& r) { r.preSlope = -4e-3; });
    row("Victoreen", [](Recipe& r) { r.mode = VictLine::Victoreen; });
    row("shifted", [](Recipe& r) { r.shift = 3.7; });
    row("shifted, bent", [](Recipe& r) {
        r.shift = -2.3;
        r.preSlope = 1e-3;
    });
    row("equal energies", [](Recipe& r) { r.duplicates = true; });
    row("equal energies, shifted, Victoreen", [](Recipe& r) {
        r.duplicates = true;
        r.shift = 1.1;
        r.mode = VictLine::Victoreen;
    });
    row("nan values", [](Recipe& r) { r.withNan = true; });
    row("noise alone", [](Recipe& r) {
        r.height = 0.0;
        r.noise = 1.0;
    });
    row("falling edge", [](Recipe& r) { r.height = -1.0; });
    row("element window", [](Recipe& r) { r.window = true; });
    row("element window, shifted, noisy", [](Recipe& r) {
        r.window = true;
        r.shift = 5.0;
        r.noise = 0.3;
    });
    row("element window beside the edge", [](Recipe& r) {
        r.window = true;
        r.edgeE = 9100.0;
    });
    row("element window below all energies", [](Recipe& r) {
        r.window = true;
        r.edgeE = 7000.0;
    });
    row("element window above all energies", [](Recipe& r) {
        r.window = true;
        r.edgeE = 12000.0;
    });
}

void TestXafsSpectrum::normalisationIsThePlainChain()
{
    QFETCH(Recipe, recipe);
    std::mt19937 random(30);
    for (const int n : {1, 2, 3, 4, 5, 7, 12, 40, 81, 200, 600}) {
        for (int round = 0; round < 12; ++round) {
            const Spectrum s = edgeCurve(random, n, recipe);
            const SuggestElm elm = elementOf(recipe);
            XafsSpectrum fast(s, testName, recipe.mode, 0.0, elm);
            plain::Spectrum slow = plainOf(s, elm);
            slow.normalize(recipe.mode);
            QCOMPARE(difference(fast, slow), QByteArray());
            // Again on the same object: bends of before stay in the lines.
            fast.normalize(1 - recipe.mode);
            slow.normalize(1 - recipe.mode);
            fast.normalize(recipe.mode);
            slow.normalize(recipe.mode);
            QCOMPARE(difference(fast, slow), QByteArray());
            if (!recipe.window)
                QVERIFY(plain::same(fast.findMidx(), fast.midx));
        }
    }
}

void TestXafsSpectrum::comparisonIsThePlainSum_data()
{
    QTest::addColumn<Recipe>("recipe");
    QTest::newRow("plain") << Recipe();
    Recipe r;
    r.duplicates = true;
    QTest::newRow("equal energies") << r;
    r = Recipe();
    r.shift = 2.5;
    QTest::newRow("shifted") << r;
    r = Recipe();
    r.withNan = true;
    QTest::newRow("nan values") << r;
}

void TestXafsSpectrum::comparisonIsThePlainSum()
{
    QFETCH(Recipe, recipe);
    std::mt19937 random(31);
    for (const int n : {1, 2, 3, 30, 120}) {
        const Spectrum a = edgeCurve(random, n, recipe);
        const Spectrum b = edgeCurve(random, n + n % 2, recipe);
        const XafsSpectrum fast(a, testName, 1, 0.0, SuggestElm());
        const XafsSpectrum fastRef(b, testName, 1, 0.0, SuggestElm());
        plain::Spectrum slow = plainOf(a, SuggestElm());
        plain::Spectrum slowRef = plainOf(b, SuggestElm());
        slow.normalize(1);
        slowRef.normalize(1);
        for (const double shift : {0.0, -3.3, 7.9, 250.0, 1e5})
            QVERIFY(
                plain::same(fast.innerProduct(shift, fastRef), slow.innerProduct(shift, slowRef)));
        QVERIFY(plain::same(fast.findBestShift(fastRef, 20.0, 1.0, 0.1),
                            slow.findBestShift(slowRef, 20.0, 1.0, 0.1)));
        QVERIFY(plain::same(fast.findBestShift(fastRef, 5.0, 0.7, 0.01),
                            slow.findBestShift(slowRef, 5.0, 0.7, 0.01)));
    }
}

void TestXafsSpectrum::noiselessGridPointsAreReadExactly()
{
    // Values whose slopes are not finite: reading the smoothed value straight would miss the nan.
    Spectrum s;
    for (int i = 0; i < 40; ++i)
        s.append(8970.0 + i * 1e-9, (i < 20 ? -1.0 : 1.0) * 4e299);
    const XafsSpectrum fast(s, testName, 1, 0.0, SuggestElm());
    plain::Spectrum slow = plainOf(s, SuggestElm());
    slow.normalize(1);
    QCOMPARE(difference(fast, slow), QByteArray());
}

void TestXafsSpectrum::plantedEdgeComesBack_data()
{
    QTest::addColumn<double>("edge");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("slope");
    QTest::newRow("flat") << 8985.0 << 1.0 << 0.0;
    QTest::newRow("falling background") << 8990.5 << 0.6 << -3e-4;
    QTest::newRow("rising background, small step") << 8980.2 << 0.05 << 1e-4;
}

void TestXafsSpectrum::plantedEdgeComesBack()
{
    QFETCH(double, edge);
    QFETCH(double, step);
    QFETCH(double, slope);
    // An edge of arctangent shape with a half width of 0.5 eV on a line, sampled every 0.5 eV. The
    // tails of the arctangent take 0.2 / (pi * distance) of the step off the lines' levels.
    Spectrum s;
    for (int i = 0; i < 1400; ++i) {
        const double E = 8700.0 + 0.5 * i;
        s.append(E, 0.3 + slope * (E - 8985.0) + step * (0.5 + std::atan((E - edge) / 0.5) / M_PI));
    }
    const XafsSpectrum x(s, testName, VictLine::Straight, 0.0, SuggestElm());
    QVERIFY2(std::abs(x.midx - edge) < 0.5, qPrintable(QString::number(x.midx - edge)));
    QVERIFY2(std::abs(x.dMut / step - 1.0) < 0.02, qPrintable(QString::number(x.dMut / step)));
    // The normalised curves run from 0 to 1.
    for (const Spectrum* curve : {&x.normalizedPreBase, &x.doubleNormalizedPreBase}) {
        QVERIFY(std::abs(curve->yAt(9300.0) - 1.0) < 0.02);
        QVERIFY(std::abs(x.doubleNormalizedPreBase.yAt(8750.0)) < 0.02);
    }
    QVERIFY(std::abs(x.doubleNormalizedPostBase.yAt(9300.0)) < 0.02);
    QVERIFY(std::abs(x.normalizedPostBase.yAt(9300.0)) < 0.02);
}

void TestXafsSpectrum::plantedShiftComesBack()
{
    const auto curve = [](double shift) {
        Spectrum s;
        for (int i = 0; i < 300; ++i) {
            const double E = 8850.0 + i;
            const double d = E - shift - 8985.0;
            s.append(E, 0.5 + std::atan(d / 3.0) / M_PI + (d > 0 ? 0.1 * std::sin(d / 8.0) : 0.0));
        }
        return XafsSpectrum(s, testName, VictLine::Straight, 0.0, SuggestElm());
    };
    const XafsSpectrum standard = curve(0.0);
    for (const double shift : {-4.0, 0.0, 2.5, 6.0})
        QVERIFY(std::abs(curve(shift).findBestShift(standard, 20.0, 1.0, 0.01) - shift) < 0.15);
    QVERIFY(std::abs(standard.innerProduct(0.0, standard) - 1.0) < 1e-12);
}

void TestXafsSpectrum::shortSpectraAreSurvived()
{
    XafsSpectrum empty;
    empty.normalizeIfData(VictLine::Straight);
    QCOMPARE(empty.midx, 0.0);
    QCOMPARE(empty.dMut, 0.0);
    QCOMPARE(empty.name, QStringLiteral("No Name"));
    QCOMPARE(empty.innerProduct(0.0, empty), 0.0);
    Spectrum one;
    one.append(9000.0, 1.0);
    const XafsSpectrum x(one, testName, VictLine::Straight, 1.5, SuggestElm());
    QCOMPARE(x.eOffset, 1.5);
    QVERIFY(!x.pre.ok && !x.post.ok);
    QCOMPARE(x.normalizedPreBase.size(), 1);
}

void TestXafsSpectrum::linesThatCrossArePushedApart()
{
    // A falling edge: the post-edge line lies 1 below the pre-edge line, plus what the slopes give.
    XafsSpectrum x;
    for (int i = 0; i < 100; ++i)
        x.append(8900.0 + 2 * i, (i < 50 ? 2.0 : 1.0) + 1e-4 * i);
    const double edge = 8999.0;
    QVERIFY(x.fitLines(edge, VictLine::Straight));
    // A tenth of the gap is left, with the right sign.
    QVERIFY(std::abs(x.post.plainAt(edge) - x.pre.plainAt(edge) - 0.1) < 1e-6);
    QVERIFY(std::abs(x.pre.plainAt(edge) - (2.0 + 1e-4 * 49.5 - 0.55)) < 1e-6);
}

void TestXafsSpectrum::edgeGuardsMarkFailedEdges()
{
    std::mt19937 random(32);
    Recipe r;
    r.window = true;
    const Spectrum s = edgeCurve(random, 200, r);
    SuggestElm elm = elementOf(r);
    const XafsSpectrum good(s, testName, 1, 0.0, elm);
    QVERIFY(!good.outOfRangeMidx && !good.noisyMidx && good.dMut > 0.8);

    elm.thJump = 1000.0;
    const XafsSpectrum noisy(s, testName, 1, 0.0, elm);
    QVERIFY(!noisy.outOfRangeMidx && noisy.noisyMidx);
    QCOMPARE(noisy.dMut, 0.0);
    QCOMPARE(noisy.midx, elm.edgeE);
    // The curves keep the step they were made with.
    QCOMPARE(noisy.normalizedPreBase.points, good.normalizedPreBase.points);

    elm.edgeE = 7000.0;
    const XafsSpectrum away(s, testName, 1, 0.0, elm);
    QVERIFY(away.outOfRangeMidx);
    QCOMPARE(away.midx, 7000.0);
    QCOMPARE(away.dMut, 0.0);
}

void TestXafsSpectrum::secondNormalisationKeepsTheFirstBend()
{
    std::mt19937 random(33);
    Recipe r;
    r.preSlope = 1e-3;
    XafsSpectrum x(edgeCurve(random, 200, r), testName, 1, 0.0, SuggestElm());
    QVERIFY(x.pre.corrected);
    QCOMPARE(x.pre.size(), 100);
    x.normalize(1);
    QCOMPARE(x.pre.size(), 200);
}

void TestXafsSpectrum::shiftSearchEndsForAnySettings()
{
    std::mt19937 random(34);
    const XafsSpectrum x(edgeCurve(random, 20, Recipe()), testName, 1, 0.0, SuggestElm());
    QCOMPARE(x.findBestShift(x, 20.0, 0.05, 0.1), 0.0); // step below the least one
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::nan("");
    x.findBestShift(x, 1e9, 1e-9, 1e-9);
    x.findBestShift(x, inf, 1.0, 0.1);
    x.findBestShift(x, 5.0, 1.0, 0.0);
    x.findBestShift(x, 5.0, 0.0, 0.0);
    x.findBestShift(x, 5.0, -1.0, -2.0);
    x.findBestShift(x, 5.0, nan, 0.1);
    QVERIFY(x.innerProduct(0.0, x) > 0.99);
    QTest::ignoreMessage(QtDebugMsg, "nan EeV in XafsSpectrum::doubleNormalizedPreBase");
    QCOMPARE(x.innerProduct(nan, x), 0.0);
}

void TestXafsSpectrum::dumpIsText()
{
    XafsSpectrum x;
    x.setPoints({QPointF(8980.5, 0.25), QPointF(8990.5, 1.25)});
    x.midx = 8984.123456;
    x.dMut = 1.0 / 3.0;
    x.eOffset = 0.5;
    x.pre.c0 = 0.125;
    x.post.c0 = 1.0;
    x.post.slope = 1e-4;
    x.post.c1 = 2.0;
    x.post.c2 = -3.0;
    x.doubleNormalizedPreBase.append(0.0, 0.75); // shorter than the curve
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("x.dat"));
    x.dump(path, true);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("###Morvenkite::XafsSpectrum\n"
                                        "# midx    : 8984.12\n"
                                        "# dMut    : 0.333333\n"
                                        "# pre   vic : 0.125 0 0 0\n"
                                        "# poste vic : 1 0.0001 2 -3\n"
                                        "#\n"
                                        "# x  double-normalized-pre-base y pre post\n"
                                        "8980\t0.75\t0.25\t0.125\t1.89805\n"
                                        "8990\t0\t1.25\t0.125\t1.89905\n"));
    QString text;
    QTextStream out(&text);
    x.dumpTo(out, false);
    QVERIFY(text.contains(QStringLiteral("\n8980.5\t0.75\t")));
    x.dump(dir.filePath(QStringLiteral("no/such/folder.dat")), true); // logged, nothing else
}

QTEST_APPLESS_MAIN(TestXafsSpectrum)
#include "test_xafs_spectrum.moc"
