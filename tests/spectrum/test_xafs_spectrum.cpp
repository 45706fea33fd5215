#include "spectrum/PlainForms.h"

#include <QtTest>

namespace {
/// An edge at 8985 eV; the words of the recipe change it.
Spectrum edgeCurve(std::mt19937& random, int n, const QString& recipe)
{
    const auto has = [&recipe](const char* word) { return recipe.contains(word); };
    std::normal_distribution<double> noise(0.0, has("noisy") ? 0.3 : 0.01);
    std::uniform_real_distribution<double> step(0.5, 1.5);
    const double preSlope = has("pre-bent") ? 1e-3 : has("post-bent") ? -4e-3 : 0.0;
    const double height = has("flat") ? 0.0 : has("falling") ? -1.0 : 1.0;
    Spectrum s;
    s.isShifted = has("shifted");
    s.eShift = s.isShifted ? 3.7 : 0.0;
    double E = 8800.0;
    for (int i = 0; i < n; ++i) {
        E += has("duplicates") && random() % 10 < 3 ? 0.0 : step(random) * 600.0 / n;
        const double d = E - 8985.0;
        double mu = 0.4 + height * (0.5 + std::atan(d / 2.0) / M_PI) + qMin(d, 0.0) * preSlope;
        mu += has("nan") && i % 20 == 7 ? std::nan("") : noise(random);
        s.append(has("unsorted") && i % 3 == 1 ? E - 7.0 : E, mu);
    }
    return s;
}

bool sameBounds(const Spectrum& a, const Spectrum& b)
{
    return a.xMin == b.xMin && a.xMax == b.xMax && a.yMin == b.yMin && a.yMax == b.yMax &&
           a.yMinIndex == b.yMinIndex && a.yMaxIndex == b.yMaxIndex;
}

XafsSpectrum fastOf(const Spectrum& s, int mode = 1, const SuggestElm& elm = SuggestElm())
{
    return XafsSpectrum(s, "test", mode, 0.0, elm);
}

plain::Spectrum plainOf(const Spectrum& s, int mode = 1, const SuggestElm& elm = SuggestElm())
{
    plain::Spectrum p;
    p.shift = s.shift();
    p.elm = elm;
    for (const QPointF& point : s.points) {
        p.rawX.append(point.x());
        p.x.append(point.x() - p.shift);
        p.mu.append(point.y());
    }
    p.normalize(mode);
    return p;
}

/// Name of the first result that differs, empty for none.
QByteArray difference(const XafsSpectrum& s, const plain::Spectrum& p)
{
    if (!plain::same(s.pre.c0, p.pre.c0) || !plain::same(s.post.c0, p.post.c0) ||
        s.pre.size() != p.pre.size() || s.post.size() != p.post.size())
        return "lines";
    if (!plain::same(s.midx, p.midx) || !plain::same(s.dMut, p.dMut) ||
        s.outOfRangeMidx != p.outOfRange || s.noisyMidx != p.noisy || s.outcome != p.outcome)
        return "edge";
    const Spectrum* const curves[] = {&s.normalizedPreBase, &s.doubleNormalizedPreBase,
                                      &s.normalizedPostBase, &s.doubleNormalizedPostBase};
    for (int k = 0; k < 4; ++k) {
        Spectrum expected;
        expected.setPoints(p.x.data(), p.curves[k].data(), p.x.size());
        if (curves[k]->size() != p.x.size() || !sameBounds(*curves[k], expected))
            return "bounds";
        for (int i = 0; i < p.x.size(); ++i) {
            if (curves[k]->x(i) != p.x[i] || !plain::same(curves[k]->y(i), p.curves[k][i]))
                return "curves";
        }
    }
    return {};
}
} // namespace

class TestXafsSpectrum : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void curvesReadLikeThePlainRule()
    {
        std::mt19937 random(20);
        const char* const recipes[] = {
            "", "shifted", "duplicates", "unsorted", "duplicates shifted", "nan"};
        for (int round = 0; round < 6 * 60; ++round) {
            Spectrum s = edgeCurve(random, round / 6, recipes[round % 6]);
            s.genSmoothed(2);
            plain::Values xs;
            plain::Values ys;
            // Every point itself, places between and beyond both ends, in rising order; then nan
            // and steps back, after which a cursor must find its place again.
            plain::Values queries = {8700.0};
            for (const QPointF& p : qAsConst(s.points)) {
                xs.append(p.x() - s.shift());
                ys.append(p.y());
                queries << xs.last() << xs.last() + 0.13;
            }
            queries << 9600.0 << std::nan("") << 8905.0 << 8903.0 << 8930.0;
            const plain::Values smooth = plain::smoothed(ys, 2);
            SpectrumCursor cursor(s);
            SpectrumCursor smoothCursor(s);
            for (const double q : qAsConst(queries)) {
                const double expected = plain::interpolate(xs, ys, q);
                QVERIFY(plain::same(s.yAt(q), expected));
                QVERIFY(plain::same(cursor.yAt(q), expected));
                const double expectedSmooth = plain::interpolate(xs, smooth, q);
                QVERIFY(plain::same(s.smoothedAt(q), expectedSmooth));
                QVERIFY(plain::same(smoothCursor.smoothedAt(q), expectedSmooth));
            }
            s.genSmoothed(round % 5 * 20);
            QVERIFY(round % 6 == 5 || s.smoothed == plain::smoothed(ys, round % 5 * 20));
        }
    }

    void boundsFollowStrictComparison()
    {
        std::mt19937 random(22);
        for (int n = 1; n < 40; ++n) {
            Spectrum s = edgeCurve(random, n, n % 2 == 0 ? "nan" : "duplicates");
            s.append(s.x(0), s.y(0)); // equal extremes keep the first index
            plain::Values xs;
            plain::Values ys;
            for (int i = 0; i < s.size(); ++i) {
                xs.append(s.x(i));
                ys.append(s.y(i));
                QVERIFY(xs[i] >= s.xMin && xs[i] <= s.xMax && !(ys[i] < s.yMin || ys[i] > s.yMax));
            }
            QVERIFY(s.xMin == xs[0] && s.xMax == xs[n - 1]);
            QVERIFY(s.yMinIndex == ys.indexOf(s.yMin));
            QVERIFY(s.yMaxIndex == ys.indexOf(s.yMax));
            Spectrum whole = s;
            whole.append(-1.0, 1e9);
            whole.setPoints(s.points);
            Spectrum fromArrays;
            fromArrays.setPoints(xs.data(), ys.data(), s.size());
            QVERIFY(sameBounds(whole, s) && sameBounds(fromArrays, s));
        }
    }

    void normalisationIsThePlainChain_data()
    {
        QTest::addColumn<QString>("recipe");
        for (const char* recipe :
             {"straight", "pre-bent", "post-bent", "Victoreen", "shifted pre-bent", "duplicates",
              "duplicates shifted Victoreen", "nan", "flat noisy", "falling", "window",
              "window shifted noisy", "window beside", "window doubtful", "window above"})
            QTest::newRow(recipe) << recipe;
    }

    void normalisationIsThePlainChain()
    {
        QFETCH(QString, recipe);
        const int mode = recipe.contains("Victoreen") ? VictLine::Victoreen : VictLine::Straight;
        SuggestElm elm;
        elm.use = recipe.contains("window");
        elm.thJump = recipe.contains("doubtful") ? 1000.0 : 1.0;
        elm.edgeE += recipe.contains("beside") ? 120.0 : recipe.contains("above") ? 3000.0 : 0.0;
        std::mt19937 random(30);
        for (const int n : {1, 2, 3, 4, 5, 7, 12, 40, 81, 200, 600}) {
            for (int round = 0; round < 12; ++round) {
                const Spectrum s = edgeCurve(random, n, recipe);
                XafsSpectrum fast = fastOf(s, mode, elm);
                plain::Spectrum slow = plainOf(s, mode, elm);
                QCOMPARE(difference(fast, slow), QByteArray());
                // Again on the same object: bends of before stay in the lines.
                for (const int again : {1 - mode, mode}) {
                    fast.normalize(again);
                    slow.normalize(again);
                }
                QCOMPARE(difference(fast, slow), QByteArray());
                QVERIFY(elm.use || plain::same(fast.findMidx(), fast.midx));
            }
        }
    }

    void infiniteSlopesAreReadLikeThePlainForm()
    {
        // Reading the smoothed value of a grid point straight would miss the nan.
        Spectrum s;
        for (int i = 0; i < 40; ++i)
            s.append(8970.0 + i * 1e-9, (i < 20 ? -1.0 : 1.0) * 4e299);
        QCOMPARE(difference(fastOf(s), plainOf(s)), QByteArray());
    }

    void comparisonIsThePlainSum()
    {
        std::mt19937 random(31);
        for (const char* recipe : {"", "noisy", "duplicates", "shifted", "nan"}) {
            for (const int n : {1, 2, 3, 30, 120}) {
                const Spectrum a = edgeCurve(random, n, recipe);
                const Spectrum b = edgeCurve(random, n % 2 == 0 ? 3 * n : n + 1, recipe);
                const XafsSpectrum fast = fastOf(a);
                const XafsSpectrum fastRef = fastOf(b);
                const plain::Spectrum slow = plainOf(a);
                const plain::Spectrum slowRef = plainOf(b);
                for (const double shift : {0.0, -3.3, 7.9, 250.0, 1e5})
                    QVERIFY(plain::same(fast.innerProduct(shift, fastRef),
                                        slow.innerProduct(shift, slowRef)));
                // The usual search; one that does not visit the mid points' difference; and one of
                // more shifts than are worked on together.
                const double searches[][3] = {{20.0, 0.7, 0.05}, {0.7, 1.0, 0.01}, {9.0, 0.1, 0.1}};
                for (const auto& [range, step, least] : searches)
                    QVERIFY(plain::same(fast.findBestShift(fastRef, range, step, least),
                                        slow.findBestShift(slowRef, range, step, least)));
            }
        }
    }

    void plantedEdgeAndShiftComeBack()
    {
        // Edge, step and background slope. The arctangent's tails take 0.2 / (pi * distance) of
        // the step off the lines' levels.
        const double rows[][3] = {{8985.0, 1.0, 0.0}, {8990.5, 0.6, -3e-4}, {8980.2, 0.05, 1e-4}};
        XafsSpectrum x[3];
        for (int k = 0; k < 3; ++k) {
            const auto [edge, step, slope] = rows[k];
            Spectrum s;
            for (int i = 0; i < 1400; ++i) {
                const double E = 8700.0 + 0.5 * i;
                s.append(E, slope * E + step * (0.5 + std::atan((E - edge) / 0.5) / M_PI));
            }
            x[k] = fastOf(s);
            QVERIFY(std::abs(x[k].midx - edge) < 0.5);
            QVERIFY(std::abs(x[k].dMut / step - 1.0) < 0.02);
            QVERIFY(std::abs(x[k].normalizedPreBase.yAt(9300.0) - 1.0) < 0.02);
            QVERIFY(std::abs(x[k].doubleNormalizedPreBase.yAt(8750.0)) < 0.02);
            QVERIFY(std::abs(x[k].findBestShift(x[0], 20.0, 1.0, 0.01) - (edge - 8985.0)) < 0.15);
        }
        QVERIFY(std::abs(x[0].innerProduct(0.0, x[0]) - 1.0) < 1e-12);
    }

    void shiftSearchEndsForAnySettings()
    {
        std::mt19937 random(34);
        const XafsSpectrum x = fastOf(edgeCurve(random, 20, ""));
        QCOMPARE(x.findBestShift(x, 20.0, 0.05, 0.1), 0.0); // step below the least one
        x.findBestShift(x, 1e9, 1e-9, 1e-9);
        x.findBestShift(x, qInf(), 1.0, 0.1);
        x.findBestShift(x, 5.0, 0.0, 0.0);
        x.findBestShift(x, 5.0, qQNaN(), 0.1);
        const XafsSpectrum empty;
        QCOMPARE(empty.innerProduct(0.0, empty), 0.0);
        QTest::ignoreMessage(QtDebugMsg, "nan EeV in XafsSpectrum::doubleNormalizedPreBase");
        QCOMPARE(x.innerProduct(qQNaN(), x), 0.0);
    }
};

QTEST_APPLESS_MAIN(TestXafsSpectrum)
#include "test_xafs_spectrum.moc"
