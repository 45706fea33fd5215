#include "LcfFixtures.h"
#include "PlainLcf.h"

#include <QtTest>

#include <cstring>
#include <limits>

namespace {

quint64 bitsOf(double v)
{
    quint64 bits;
    std::memcpy(&bits, &v, sizeof bits);
    return bits;
}

/// True when both doubles are the same to the last bit, nan included.
bool sameBits(double a, double b)
{
    return bitsOf(a) == bitsOf(b) || (a == 0.0 && b == 0.0);
}

bool sameBits(const QVector<double>& a, const QVector<double>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](double x, double y) { return sameBits(x, y); });
}

void compare(const LcfResult& fast, const LcfResult& plain)
{
    QCOMPARE(fast.analysed, plain.analysed);
    QCOMPARE(fast.fitted, plain.fitted);
    QCOMPARE(fast.activeRows, plain.activeRows);
    QVERIFY(sameBits(fast.ratios, plain.ratios));
    QVERIFY(sameBits(fast.dMuts, plain.dMuts));
    QVERIFY2(sameBits(fast.zansa, plain.zansa),
             qPrintable(QStringLiteral("%1 %2").arg(fast.zansa).arg(plain.zansa)));
}

/// Spectra of a walk: mixtures with noise, sometimes other energies, offsets or no edge.
QVector<XafsSpectrum> randomSpectra(unsigned seed, bool oneGrid, bool offsets)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    QVector<XafsSpectrum> spectra;
    for (int k = 0; k < 60; ++k) {
        const int n = oneGrid ? 200 : 120 + k % 3 * 40;
        Spectrum s;
        for (const double E : scanEnergies(n))
            s.append(E, edgeShape(E, 8990.0 + 10.0 * uniform(random), 1.0, 9.0) +
                            0.05 * uniform(random));
        s.isShifted = !oneGrid && k % 4 == 0;
        s.eShift = 1.5;
        const double offset = offsets ? 4.0 * uniform(random) - 2.0 : 0.0;
        spectra.append(XafsSpectrum(s, QStringLiteral("r"), VictLine::Straight, offset, {}));
        if (k % 11 == 5)
            spectra.last().dMut = 0.0;
        if (k % 13 == 7)
            spectra.last().doubleNormalizedPreBase.points.resize(77);
        if (k % 17 == 3)
            spectra.last() = XafsSpectrum();
    }
    return spectra;
}

} // namespace

class TestLcfFit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void findsThePartsOfAMixture();
    void scalesPartsByTheEdgeStepAndKeepsNegativeOnes();
    void aPlanEqualsTheFitDoneAnew_data();
    void aPlanEqualsTheFitDoneAnew();
    void givesZerosWithoutAnEdge();
    void analysesNothingWithoutPointsOrRows();
    void aWalkWithoutEarlierFitHasResidualsOfOne();
    void aFitOutsideAWalkGivesANormalisedCurve();
    void readsReferencesAtTheirShift();
    void numbersThatAreNoneStayInTheirSpectrum();
    void equalReferencesDoNoHarm();
};

void TestLcfFit::findsThePartsOfAMixture()
{
    // Equal edge estimate and line gap: the normalised mixture is the mixture of the normalised.
    const QVector<double> energies = scanEnergies(220);
    LcfRequest request;
    request.rows = {referenceRow(edgeSpectrum(energies, 8990, 1.0, 9.0)),
                    referenceRow(edgeSpectrum(energies, 8990, 1.0, 16.0))};
    for (LcfReferenceData& row : request.rows) {
        // Straight lines shared by all three, so that they normalise alike.
        row.spectrum.doubleNormalizedPreBase.clear();
        for (int i = 0; i < row.spectrum.size(); ++i)
            row.spectrum.doubleNormalizedPreBase.append(row.spectrum.x(i),
                                                        (row.spectrum.y(i) - 0.2) / 1.2);
    }
    XafsSpectrum mixture = request.rows.at(0).spectrum;
    mixture.isShifted = false;
    Spectrum& curve = mixture.doubleNormalizedPreBase;
    for (int i = 0; i < curve.size(); ++i)
        curve.points[i].setY(
            0.3 * curve.points[i].y() +
            0.7 * request.rows.at(1).spectrum.doubleNormalizedPreBase.points.at(i).y());
    mixture.dMut = 2.0;
    const LcfResult r = fitLcf(mixture, request);
    QVERIFY(r.fitted);
    QVERIFY(std::fabs(r.ratios.at(0) - 0.3) < 1e-9);
    QVERIFY(std::fabs(r.ratios.at(1) - 0.7) < 1e-9);
    QVERIFY(std::fabs(r.dMuts.at(1) - 1.4) < 2e-9);
    QVERIFY(r.zansa < 1e-18);
}

void TestLcfFit::scalesPartsByTheEdgeStepAndKeepsNegativeOnes()
{
    LcfRequest request = fourRows();
    XafsSpectrum s = edgeSpectrum(scanEnergies(200), 9003, 0.5, 9.0);
    const LcfResult r = fitLcf(s, request);
    QCOMPARE(r.activeRows, (QVector<int>{0, 1, 3}));
    QVERIFY(*std::min_element(r.ratios.begin(), r.ratios.end()) < 0.0);
    for (int j = 0; j < 3; ++j)
        QCOMPARE(r.dMuts.at(j), r.ratios.at(j) * s.dMut);
}

void TestLcfFit::aPlanEqualsTheFitDoneAnew_data()
{
    QTest::addColumn<bool>("walk");
    QTest::addColumn<bool>("oneGrid");
    QTest::addColumn<bool>("offsets");
    QTest::addColumn<QPointF>("range");
    QTest::addColumn<int>("used");
    const QPointF all(0, 30000);
    QTest::newRow("walk, constant energies") << true << true << false << all << 4;
    QTest::newRow("walk, offsets") << true << true << true << all << 4;
    QTest::newRow("walk, everything changes") << true << false << true << QPointF(8950, 9100) << 4;
    QTest::newRow("single fits") << false << false << true << QPointF(8950, 9100) << 4;
    QTest::newRow("single fits, constant energies") << false << true << false << all << 4;
    QTest::newRow("a range that misses") << true << true << false << QPointF(20000, 30000) << 4;
    QTest::newRow("fewer points than references")
        << true << true << true << QPointF(9000, 9002) << 4;
    QTest::newRow("one reference in use") << false << true << true << all << 1;
    QTest::newRow("no reference in use") << true << true << true << all << 0;
}

void TestLcfFit::aPlanEqualsTheFitDoneAnew()
{
    QFETCH(bool, walk);
    QFETCH(bool, oneGrid);
    QFETCH(bool, offsets);
    QFETCH(QPointF, range);
    QFETCH(int, used);
    LcfRequest request = fourRows();
    request.inWalk = walk;
    request.rangeStart = range.x();
    request.rangeEnd = range.y();
    // A curve that carries a shift of its own.
    request.rows[3].spectrum.doubleNormalizedPreBase.isShifted = true;
    request.rows[3].spectrum.doubleNormalizedPreBase.eShift = 0.4;
    for (int i = used; i < 4; ++i)
        request.rows[i].active = false;
    LcfPlan plan(request);
    PlainLcf plain(request);
    for (unsigned seed = 1; seed < 4; ++seed) {
        const QVector<XafsSpectrum> spectra = randomSpectra(seed, oneGrid, offsets);
        for (const XafsSpectrum& s : spectra) {
            compare(plan.fit(s), plain.fit(s));
            if (QTest::currentTestFailed())
                return;
        }
    }
}

void TestLcfFit::givesZerosWithoutAnEdge()
{
    XafsSpectrum s = edgeSpectrum(scanEnergies(100), 8990, 1.0, 9.0);
    for (const double step : {0.0, -0.5}) {
        s.dMut = step;
        const LcfResult r = fitLcf(s, fourRows());
        QVERIFY(r.analysed && !r.fitted);
        QCOMPARE(r.ratios, QVector<double>(4, 0.0));
        QCOMPARE(r.dMuts, QVector<double>(4, 0.0));
        QVERIFY(!r.fit);
    }
}

void TestLcfFit::analysesNothingWithoutPointsOrRows()
{
    QVERIFY(!fitLcf(XafsSpectrum(), fourRows()).analysed);
    LcfRequest oneRow = fourRows();
    oneRow.rows.resize(1);
    QVERIFY(!fitLcf(edgeSpectrum(scanEnergies(100), 8990, 1.0, 9.0), oneRow).analysed);
}

void TestLcfFit::aWalkWithoutEarlierFitHasResidualsOfOne()
{
    LcfRequest request = fourRows();
    request.inWalk = true;
    for (LcfReferenceData& row : request.rows)
        row.weight = 0.0;
    const XafsSpectrum s = edgeSpectrum(scanEnergies(160), 8992, 1.0, 9.0);
    QCOMPARE(fitLcf(s, request).zansa, 1.0 / 160);
    request.rangeStart = 20000.0;
    QCOMPARE(fitLcf(s, request).zansa, 0.0);
}

void TestLcfFit::aFitOutsideAWalkGivesANormalisedCurve()
{
    const LcfRequest request = fourRows();
    const XafsSpectrum s = edgeSpectrum(scanEnergies(200), 8995, 1.0, 9.0, 0.8);
    const LcfResult r = fitLcf(s, request);
    PlainLcf plain(request);
    plain.fit(s);
    const std::vector<double> weights(r.ratios.begin(), r.ratios.end());
    QCOMPARE(r.fit->points, plain.curve(s, weights).points);
    QCOMPARE(r.fit->name, QStringLiteral("anal-LCF"));
    QCOMPARE(r.fit->mode, int(VictLine::Straight));
    QCOMPARE(r.fit->eOffset, 0.0);
    QVERIFY(r.fit->dMut > 0.5);
}

void TestLcfFit::readsReferencesAtTheirShift()
{
    // A reference moved by dE serves a spectrum that lies dE lower.
    const XafsSpectrum reference = edgeSpectrum(scanEnergies(300), 8995, 1.0, 9.0);
    QVector<double> lower = scanEnergies(300);
    for (double& E : lower)
        E -= 2.5;
    const XafsSpectrum s = edgeSpectrum(lower, 8992.5, 1.0, 9.0);
    LcfRequest request;
    request.rows = {referenceRow(reference, 2.5), referenceRow(reference, 0.0, false)};
    const double moved = std::fabs(fitLcf(s, request).ratios.at(0) - 1.0);
    request.rows[0].spectrum.eShift = 0.0;
    const double unmoved = std::fabs(fitLcf(s, request).ratios.at(0) - 1.0);
    QVERIFY2(moved < 1e-3 && moved * 10 < unmoved,
             qPrintable(QStringLiteral("%1 %2").arg(moved).arg(unmoved)));
}

void TestLcfFit::numbersThatAreNoneStayInTheirSpectrum()
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    LcfRequest request = fourRows();
    request.inWalk = true;
    const XafsSpectrum sound = edgeSpectrum(scanEnergies(200), 8995, 1.0, 9.0);
    XafsSpectrum value = sound;
    value.doubleNormalizedPreBase.points[100].setY(none);
    XafsSpectrum energy = sound;
    energy.points[100].setX(none);
    LcfPlan plan(request);
    const LcfResult before = plan.fit(sound);
    const LcfResult ofValue = plan.fit(value);
    QVERIFY(std::isnan(ofValue.ratios.at(0)) && std::isnan(ofValue.zansa));
    QTest::ignoreMessage(QtDebugMsg, "nan EeV in XafsSpectrum::doubleNormalizedPreBase");
    QVERIFY(std::isnan(plan.fit(energy).ratios.at(0)));
    compare(plan.fit(sound), before);
}

void TestLcfFit::equalReferencesDoNoHarm()
{
    LcfRequest request = fourRows();
    request.rows[1] = request.rows[0];
    const LcfResult r = fitLcf(edgeSpectrum(scanEnergies(200), 8995, 1.0, 9.0), request);
    QVERIFY(r.fitted);
    QCOMPARE(r.ratios.size(), 3);
}

QTEST_GUILESS_MAIN(TestLcfFit)
#include "test_lcf_fit.moc"
