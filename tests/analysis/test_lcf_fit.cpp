#include "LcfFixtures.h"
#include "PlainLcf.h"

#include "analysis/AnalyzeProc.h"
#include "analysis/lcf/LcfWalk.h"
#include "maps/Analyzed2DRes.h"

#include <QtTest>

#include <cmath>

namespace {

/// The same to the last bit, nan included.
bool sameBits(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool sameBits(const QVector<double>& a, const QVector<double>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](double x, double y) { return sameBits(x, y); });
}

bool same(const LcfResult& fast, const LcfResult& plain)
{
    return fast.analysed == plain.analysed && fast.outcome == plain.outcome &&
           fast.gapHeld == plain.gapHeld && fast.activeRows == plain.activeRows &&
           sameBits(fast.ratios, plain.ratios) && sameBits(fast.dMuts, plain.dMuts) &&
           sameBits(fast.zansa, plain.zansa);
}

/// Spectra of a walk: mixtures with noise, sometimes other energies, offsets or no edge.
QVector<XafsSpectrum> randomSpectra(bool oneGrid, bool offsets)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    QVector<XafsSpectrum> spectra;
    for (int k = 0; k < 180; ++k) {
        Spectrum s;
        for (const double E : scanEnergies(oneGrid ? 200 : 120 + k % 3 * 40))
            s.append(E, edgeShape(E, 8990.0 + 10.0 * uniform(random), 1.0, 9.0) +
                            0.05 * uniform(random));
        s.isShifted = !oneGrid && k % 4 == 0;
        s.eShift = 1.5;
        const double offset = offsets ? 4.0 * uniform(random) - 2.0 : 0.0;
        spectra.append(XafsSpectrum(s, "r", VictLine::Straight, offset, {}));
        if (k % 11 == 5)
            spectra.last().outcome = Outcome::NoStep;
        if (k % 13 == 7)
            spectra.last().doubleNormalizedPreBase.points.resize(77);
        if (k % 17 == 3)
            spectra.last() = XafsSpectrum();
    }
    return spectra;
}

/// Two references on the scan's own grid.
LcfRequest requestOf(LcfMethod method)
{
    LcfRequest request;
    request.method = method;
    for (const double edge : {8990.0, 8997.0})
        request.rows.append({edgeSpectrum(scanEnergies(200), edge, 1.3, edge / 1000), true});
    return request;
}

/// Unit steps of the references, times the weights, on a straight background.
XafsSpectrum planted(const LcfRequest& request, const QVector<double>& weights, double slope)
{
    Spectrum s;
    for (const double E : scanEnergies(200)) {
        double mu = 0.4 + slope * (E - 8850.0);
        for (int j = 0; j < weights.size(); ++j)
            mu += weights[j] * request.rows[j].spectrum.doubleNormalizedPostBase.yAt(E);
        s.append(E, mu);
    }
    return {s, QStringLiteral("planted"), VictLine::Straight, 0.0, SuggestElm()};
}

XafsSpectrum shownSpectrum()
{
    return edgeSpectrum(scanEnergies(200), 8995, 1.0, 9.0);
}

AnalysisRequest requestOf(int tasks)
{
    AnalysisRequest request{shownSpectrum(), {}};
    for (int i = 0; i < tasks; ++i)
        request.tasks.append({i, std::make_shared<LcfKernel>(fourRows(), QVector<int>{0, 1, 3})});
    return request;
}
} // namespace

class TestLcfFit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aPlanEqualsTheFitDoneAnew()
    {
        const struct
        {
            double from, to;
            int used;
            bool walk, oneGrid, offsets;
            LcfMethod method = LcfMethod::Lcf;
        } rows[] = {{0, 30000, 4, true, true, false},
                    {0, 30000, 4, true, true, true},
                    {8950, 9100, 4, true, false, true},
                    {8950, 9100, 4, false, false, true},
                    {20000, 30000, 4, true, true, false},
                    {9000, 9002, 4, true, true, true},
                    {0, 30000, 1, false, true, true},
                    {0, 30000, 0, true, true, true},
                    {8950, 9100, 4, true, false, true, LcfMethod::OldLcf},
                    {0, 30000, 4, false, true, true, LcfMethod::Mlcf},
                    {8950, 9100, 4, true, false, true, LcfMethod::Mlcf},
                    {20000, 30000, 4, true, true, false, LcfMethod::Mlcf}};
        for (const auto& row : rows) {
            LcfRequest request = fourRows();
            request.inWalk = row.walk;
            request.method = row.method;
            request.rangeStart = row.from;
            request.rangeEnd = row.to;
            // A curve that carries a shift of its own.
            request.rows[3].spectrum.doubleNormalizedPreBase.isShifted = true;
            request.rows[3].spectrum.doubleNormalizedPreBase.eShift = 0.4;
            for (int i = row.used; i < 4; ++i)
                request.rows[i].active = false;
            LcfPlan plan(request);
            PlainLcf plain(request);
            for (const XafsSpectrum& s : randomSpectra(row.oneGrid, row.offsets))
                QVERIFY(same(plan.fit(s), plain.fit(s)));
        }
    }

    /// Victoreen lines cross within the fitting range: of spectra and of references.
    void heldGapsAreFittedLikeThePlainForm()
    {
        std::mt19937 random(8);
        std::normal_distribution<double> noise(0.0, 0.1);
        const auto scan = [&](int n) {
            Spectrum s;
            for (const double E : scanEnergies(n))
                s.append(E, edgeShape(E, 8992.0, 0.4, 9.0) + noise(random));
            return XafsSpectrum(s, "v", VictLine::Victoreen, 0.3, {});
        };
        LcfRequest request = fourRows();
        request.inWalk = true;
        for (LcfReferenceData& row : request.rows) {
            do
                row.spectrum = scan(240);
            while (HeldGap(row.spectrum, {}).state() != HeldGap::Held);
            row.spectrum.isShifted = true;
            row.spectrum.eShift = row.spectrum.eOffset = 0.4;
        }
        int held = 0;
        int unsound = 0;
        for (const auto& [hold, method] :
             {std::pair(true, LcfMethod::Lcf), std::pair(false, LcfMethod::Lcf),
              std::pair(true, LcfMethod::OldLcf), std::pair(true, LcfMethod::Mlcf)}) {
            request.holdGap = hold;
            request.method = method;
            LcfPlan plan(request);
            PlainLcf plain(request);
            for (int i = 0; i < 300; ++i) {
                const XafsSpectrum s = scan(200);
                const LcfResult r = plan.fit(s);
                QVERIFY(same(r, plain.fit(s)));
                held += r.gapHeld ? 1 : 0;
                unsound += r.outcome == Outcome::GapUnsound ? 1 : 0;
            }
            QVERIFY(hold ? held > 20 && plan.notes().size() > 0 : plan.notes().isEmpty());
        }
        QVERIFY(unsound > 0);
    }

    void ownWeightsGiveTheResidualOfASingleFit()
    {
        LcfRequest request = fourRows();
        const XafsSpectrum s = edgeSpectrum(scanEnergies(200), 8995, 1.0, 9.0);
        const double single = fitLcf(s, request).zansa;
        request.inWalk = request.ownWeights = true;
        QVERIFY(std::abs(fitLcf(s, request).zansa / single - 1.0) < 1e-9);
        // A position whose energies lie 40 eV too high, and says so: most of the range with them.
        Spectrum high;
        for (const double E : scanEnergies(200))
            high.append(E + 40.0, edgeShape(E, 8995, 1.0, 9.0));
        const XafsSpectrum shifted(high, "high", VictLine::Straight, 40.0, {});
        QVERIFY(std::abs(fitLcf(shifted, request).zansa / single - 1.0) < 1e-6);
    }

    /// Steps of 0.9 and 2.1 on any straight background, however steep, and lines that see it as the
    /// edge: the weights are those steps, and the shares theirs.
    void mlcfFindsWhatIsPlantedOnAnySlope()
    {
        LcfRequest request = requestOf(LcfMethod::Mlcf);
        request.inWalk = true;
        LcfPlan plan(request);
        for (const double slope : {0.0, 0.02, -0.2}) {
            const LcfResult r = plan.fit(planted(request, {0.9, 2.1}, slope));
            QVERIFY(r.fitted && r.outcome != Outcome::Undefined);
            QVERIFY(std::abs(r.dMuts.at(0) - 0.9) < 1e-9 && std::abs(r.dMuts.at(1) - 2.1) < 1e-9);
            QVERIFY(std::abs(r.ratios.at(0) - 0.3) < 1e-9 && std::abs(r.ratios.at(1) - 0.7) < 1e-9);
        }
        // A negative weight becomes 0, but the shares are of a sum that it stands in.
        const LcfResult clipped = plan.fit(planted(request, {-0.5, 2.0}, 0.02));
        QVERIFY(clipped.dMuts.at(0) == 0.0 && clipped.ratios.at(0) == 0.0);
        QVERIFY(std::abs(clipped.ratios.at(1) - 2.0 / 1.5) < 1e-9);
    }

    void sharesOfNoSumAreUndefinedAndShownAsSuch()
    {
        const LcfRequest request = requestOf(LcfMethod::Mlcf);
        LcfKernel kernel(request, {0, 1});
        const ShownResult r = kernel.shown(planted(request, {-0.5, -0.2}, 0.01));
        QVERIFY(r.outcome == Outcome::Undefined && r.rows == (QVector<int>{0, 1}));
        QCOMPARE(r.values.size(), kernel.valueNames().size());
        QVERIFY(r.values.at(0) == 0.0 && std::isnan(r.values.at(1)) && std::isnan(r.values.at(4)));
        QVERIFY(r.curve && r.curve->name == "anal-MLCF");
    }

    void theOldFormFitsWhatHasNoEdgeAndGivesItNoStep()
    {
        const XafsSpectrum falling = planted(requestOf(LcfMethod::Lcf), {-0.5, -0.2}, 0.0);
        QVERIFY(falling.outcome == Outcome::NoStep && falling.dMut <= 0.0);
        QVERIFY(!fitLcf(falling, requestOf(LcfMethod::Lcf)).fitted);
        const LcfResult old = fitLcf(falling, requestOf(LcfMethod::OldLcf));
        QVERIFY(old.fitted && old.outcome == Outcome::NoStep && old.fit->name == "anal-LCF");
        QVERIFY(old.ratios.at(0) != 0.0 && std::isfinite(old.ratios.at(0)));
        QVERIFY(old.dMuts.at(0) == 0.0 && old.dMuts.at(1) == 0.0);
    }

    /// Three positions of a walk: fitted, without a step, outside the image.
    void onlyTheFormsThatFitAllRecordResultsWithoutAnEdge()
    {
        for (const LcfMethod method : {LcfMethod::Lcf, LcfMethod::OldLcf, LcfMethod::Mlcf}) {
            const AnalyzeCond area(3, 1, 0, 0, QRectF(0, 0, 3, 1), -1, -1);
            Analyzed2DRes jump(QStringLiteral("j")), weight(QStringLiteral("w")),
                z(QStringLiteral("z"));
            for (Analyzed2DRes* map : {&jump, &weight, &z})
                map->prepare(area);
            TileResult result(3, 3);
            result.outcomes = {Outcome::Fitted, Outcome::NoStep, Outcome::NoPoints};
            result.values = {1.0, 2.0, 0.0, 3.0, 4.0, 0.0, 5.0, 6.0, 0.0};
            LcfSink(requestOf(method), {{0}, {&jump}, {&weight}, &z}).take({area, 3}, result);
            const bool fitsAll = method != LcfMethod::Lcf;
            QVERIFY(!weight.isWithoutEdge(0, 0) && weight.isWithoutEdge(2, 0));
            QVERIFY(weight.isWithoutEdge(1, 0) != fitsAll && jump.isWithoutEdge(1, 0) != fitsAll);
            QCOMPARE(z.valueAt(1, 0), fitsAll ? 6.0 : 5.0);
        }
    }

    void aFitOutsideAWalkGivesANormalisedCurve()
    {
        LcfRequest request = fourRows();
        const XafsSpectrum s = edgeSpectrum(scanEnergies(200), 8995, 1.0, 9.0, 0.8);
        const LcfResult r = fitLcf(s, request);
        PlainLcf plain(request);
        plain.fit(s);
        QCOMPARE(r.fit->points, plain.curve(s, r.ratios).points);
        QVERIFY(r.fit->mode == VictLine::Straight && r.fit->eOffset == 0.0 && r.fit->dMut > 0.5);
        request.rows.resize(1);
        QVERIFY(!fitLcf(s, request).analysed);
    }

    void numbersThatAreNoneStayInTheirSpectrum()
    {
        LcfRequest request = fourRows();
        request.inWalk = true;
        const XafsSpectrum sound = edgeSpectrum(scanEnergies(200), 8995, 1.0, 9.0);
        XafsSpectrum value = sound;
        value.doubleNormalizedPreBase.points[100].setY(NAN);
        XafsSpectrum energy = sound;
        energy.points[100].setX(NAN);
        LcfPlan plan(request);
        const LcfResult before = plan.fit(sound);
        QVERIFY(std::isnan(plan.fit(value).ratios.at(0)) && std::isnan(plan.fit(value).zansa));
        QTest::ignoreMessage(QtDebugMsg, "nan EeV in XafsSpectrum::doubleNormalizedPreBase");
        QVERIFY(std::isnan(plan.fit(energy).ratios.at(0)));
        QVERIFY(same(plan.fit(sound), before));
    }

    void answersEveryTaskInItsOrder()
    {
        AnalysisRequest request = requestOf(3);
        request.tasks[1].kernel = nullptr;
        QThread thread;
        AnalyzeProc proc;
        proc.moveToThread(&thread);
        QVector<AnalysisResult> results;
        connect(&proc, &AnalyzeProc::finished, this,
                [&](const AnalysisResult& result) { results.append(result); });
        QTimer::singleShot(0, &proc, [&] { proc.analyzeSpectrum0(request); });
        thread.start();
        QTRY_VERIFY_WITH_TIMEOUT(!results.isEmpty(), 60000);
        thread.quit();
        thread.wait();
        const LcfResult fit = fitLcf(shownSpectrum(), fourRows());
        QCOMPARE(results.first().answers.size(), 3);
        for (const AnalysisResult::Answer& answer : results.first().answers) {
            const bool made = answer.section != 1;
            QCOMPARE(bool(answer.result.curve), made);
            if (!made)
                continue;
            QCOMPARE(answer.result.rows, fit.activeRows);
            QVERIFY(answer.result.values.last() == fit.zansa);
            QVERIFY(answer.result.values.at(1) == fit.ratios.first());
        }
    }

    void stopsBetweenTasks()
    {
        const std::atomic<bool> stop{true};
        QVERIFY(analyze(requestOf(2), stop).answers.isEmpty());
    }

    void keepsTheCurveOutsideAWalkOnly()
    {
        for (const bool inWalk : {false, true}) {
            LcfRequest conditions = fourRows();
            conditions.inWalk = inWalk;
            QVERIFY(bool(fitLcf(shownSpectrum(), conditions).fit) != inWalk);
        }
    }
};

QTEST_GUILESS_MAIN(TestLcfFit)
#include "test_lcf_fit.moc"
