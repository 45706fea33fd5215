#include "BodyFixture.h"
#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfSection.h"
#include "display/ImgDispA.h"
#include "support/LogCapture.h"
#include "support/RandomStack.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>

/// Walks over the map in the main window, by its real commands, signals and threads.
class TestWalks : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void plantedFractionsComeBack()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        QVERIFY(body.run("analyzer_exec_LCF"));
        for (int y = 0; y < experiment_.height; ++y) {
            for (int x = 0; x < experiment_.width; ++x) {
                const double f = SmallExperiment::fraction(x, y);
                QVERIFY2(std::abs(ratioMap(body, 0)->valueAt(x, y) - f) < 1e-6,
                         qPrintable(QString::number(ratioMap(body, 0)->valueAt(x, y) - f)));
                QVERIFY(std::abs(ratioMap(body, 1)->valueAt(x, y) - (1 - f)) < 1e-6);
            }
        }
        // The rows show the weights of the single fit that loading caused, that of (0, 0).
        const double single = singleFit(body, 0, 0).zansa;
        QVERIFY(std::abs(residual(body, 0, 0) / single - 1.0) < 1e-9);
        QVERIFY(ratioMap(body, 0)->imgValid);
        QVERIFY(body.runAll({"analyzer_zansa_own_weights 1", "analyzer_exec_LCF"}));
        QVERIFY(std::abs(residual(body, 5, 5) / singleFit(body, 5, 5).zansa - 1.0) < 1e-9);
    }

    void aWalkTellsWhatItLeavesOut_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("log");
        const QString refused = "2D analysis not started: the selected area ";
        QTest::newRow("beside the image")
            << QStringList{"select_region 40 2 50 6"} << refused + "(40, 2)-(50, 6)";
        QTest::newRow("without end") << QStringList{"select_region 5 0 20 -2147483648"} << refused;
        QTest::newRow("without width") << QStringList{"select_region 5 1 5 6"} << refused;
        QTest::newRow("cut to the image")
            << QStringList{"select_region -4 2 3 900"} << "2D analysis: fitted 15";
        QTest::newRow("beside the suggested edge")
            << QStringList{"Suggest_Elm 1", "Suggesting_Edge_eV 9003"}
            << "2D analysis: fitted 0, mid point outside the window 84";
        QByteArray inKeV;
        for (int i = 0; i < 40; ++i)
            inKeV += QByteArray::number(8.96 + i * 0.001) + ' ' + (i < 20 ? "0.1\n" : "1.1\n");
        const QString file = experiment_.write("keV.dat", inKeV);
        QTest::newRow("a reference in keV")
            << QStringList{"analyzer_set_LCF_std 2 0 0 " + file}
            << QString("Reference 2 (%1): no point inside the fitting range").arg(file);
    }

    /// Each costs one line of the log, and what is left is right.
    void aWalkTellsWhatItLeavesOut()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, log);
        DrivenBody body;
        QVERIFY(body.load(experiment_) && body.runAll(lines));
        const LogCapture capture;
        QVERIFY(body.run("analyzer_exec_LCF"));
        QCOMPARE(capture.linesWith(log), 1);
        if (log.startsWith("Reference")) {
            QVERIFY(std::abs(ratioMap(body, 0)->valueAt(4, 4) - SmallExperiment::fraction(4, 4)) <
                    1e-6);
            QCOMPARE(ratioMap(body, 2)->valueAt(4, 4), 0.0);
        }
    }

    /// The right half of the image has no edge.
    void positionsWithoutAnEdgeShowTheResidualBefore()
    {
        for (int i = 0; i < experiment_.energies; ++i) {
            const double E = experiment_.firstEnergy + experiment_.energyStep * i;
            experiment_.write(QString("h1_%1.img").arg(1000 + i),
                              imgBytes(experiment_.width, experiment_.height, "BytesPerPixel=4,", 4,
                                       [E](int x, int) {
                                           return 4e9 * std::exp(x < 6 ? -SmallExperiment::mu1(E)
                                                                       : 1e-4 * (E - 9000.0));
                                       }));
        }
        DrivenBody body;
        QVERIFY(body.load(experiment_) && body.run("analyzer_exec_LCF"));
        QVERIFY(residual(body, 11, 6) > 0.0);
        QVERIFY(body.run("load_I1_files_of_pattern new " + experiment_.dir.path() + "/ h1_*.img"));
        QVERIFY(body.runAll({"select_region 8 0 12 7", "analyzer_exec_LCF"}));
        QCOMPARE(residual(body, 9, 3), 0.0); // nothing of the walk before
        QVERIFY(body.runAll({"select_region 0 0 12 7", "analyzer_exec_LCF"}));
        QVERIFY(residual(body, 5, 3) > 0.0 && residual(body, 9, 3) == residual(body, 5, 3));
        QVERIFY(body.runAll({"analyzer_zansa_own_weights 1", "analyzer_exec_LCF"}));
        QVERIFY(residual(body, 5, 3) > 0.0 && residual(body, 9, 3) == 0.0);
    }

    void conditionsOfTheEdgeReachTheFit()
    {
        DrivenBody body;
        QVERIFY(body.runAll({"suggesting_th_jump 3.5", "hold_gap 0"}));
        QCOMPARE(body.suggestElm().thJump, 3.5);
        QVERIFY(!body.analyzer()->lcf().request({}).holdGap);
        QVERIFY(body.run("hold_gap 1") && body.analyzer()->lcf().request({}).holdGap);
        // Outside the image the line of the view says why there is nothing to see.
        QVERIFY(body.load(experiment_) && body.run("move_position -3 900"));
        QStringList lines;
        for (const QLabel* line : body.findChildren<QLabel*>("ExtMsg"))
            lines.append(line->text());
        QVERIFY(lines.contains("no points"));
    }

    /// Without the rounding of pixels, through the normalisation of all three curves.
    void noiselessMixtureGivesItsWeightsBack()
    {
        const auto spectrum = [](double share) {
            Spectrum curve;
            for (int i = 0; i < SmallExperiment::energies; ++i) {
                const double E = SmallExperiment::firstEnergy + SmallExperiment::energyStep * i;
                curve.append(E, share * SmallExperiment::mu0(E) +
                                    (1 - share) * SmallExperiment::mu1(E));
            }
            return XafsSpectrum(curve, "mixture", VictLine::Straight, 0.0, SuggestElm());
        };
        LcfRequest request;
        for (const double share : {1.0, 0.0}) {
            LcfReferenceData row;
            row.spectrum = spectrum(share);
            row.active = true;
            request.rows.append(row);
        }
        const LcfResult result = fitLcf(spectrum(0.3), request);
        QVERIFY(result.fitted);
        QVERIFY(std::abs(result.ratios[0] - 0.3) < 1e-9);
        QVERIFY(std::abs(result.ratios[1] - 0.7) < 1e-9);
    }

    void requestsOfAnySizeGiveTheSameMaps()
    {
        QVector<QVector<double>> maps;
        for (const int positions : {1, 5, 4096}) {
            DrivenBody body;
            body.setMaxPositionsPerRequest(positions);
            QVERIFY(body.load(experiment_));
            QVERIFY(body.run("analyzer_exec_LCF"));
            maps.append(values(ratioMap(body, 0)) + values(body.map(MapKind::LcfJump, 1)) +
                        values(body.map(MapKind::Zansa)));
        }
        QCOMPARE(maps[0], maps[1]);
        QCOMPARE(maps[0], maps[2]);
    }

    void blocksAreWalkedSideBySideAndClipped()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        QVERIFY(body.runAll({"set_band_w 2", "set_band_h 1", "analyzer_exec_LCF"}));
        const Analyzed2DRes* map = ratioMap(body, 0);
        // Centres at 2, 7 and, overhanging, none: 12 is not below the end of the area.
        QCOMPARE(map->valueAt(0, 0), map->valueAt(4, 2));
        QVERIFY(map->valueAt(5, 0) != map->valueAt(4, 0));
        QCOMPARE(map->valueAt(5, 3), map->valueAt(9, 5));
        QCOMPARE(map->valueAt(10, 0), 0.0);
    }

    void stopKeepsWhatWasRecordedAndASecondWalkStartsAnew()
    {
        DrivenBody body;
        body.setMaxPositionsPerRequest(1);
        QVERIFY(body.load(experiment_));
        // The same button stops, here behind the tenth position; others are worked on then.
        int answers = 0;
        connect(&body.analysis(), &AnalysisConductor::progressed, this, [&] {
            if (++answers == 10)
                body.start2DAnalysis();
        });
        const auto* button = body.analyzer()->findChild<QPushButton*>("AskAnalyze");
        body.start2DAnalysis();
        QCOMPARE(button->text(), QString("Stop"));
        QTRY_VERIFY(answers >= 10);
        QCOMPARE(button->text(), QString("Analyze"));
        QTest::qWait(20);
        QCOMPARE(answers, 10);
        const QVector<double> stopped = values(ratioMap(body, 0));
        QCOMPARE(stopped.size() - stopped.count(0.0), 10);
        QVERIFY(!ratioMap(body, 0)->imgValid);
        QVERIFY(body.runAll(
            {"analyzer_select_image_type 0", "analyzer_select_image 0", "select_disp_image 3"}));
        QVERIFY(ratioMap(body, 0)->imgValid); // what can be saved can be seen
        QVERIFY(body.run("analyzer_exec_LCF"));
        QVERIFY(values(ratioMap(body, 0)).last() > 0.5);
    }

    /// Over 120,000 positions: what is typed and where the mouse goes is seen to in between, and a
    /// stop does not wait for the rest.
    void theWindowAnswersWhileAWalkRuns()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        QVERIFY(body.runAll({"clear_I1_files", "clear_I0_files", "eng_calc_base_i1 8850",
                             "eng_calc_delta_i1 3.5", "eng_calc_base_i0 8850",
                             "eng_calc_delta_i0 3.5"}));
        constexpr int side = 350;
        for (int i = 0; i < 60; ++i) {
            const auto counts = [i](int x, int) { return 9000.0 + x - (i > 37 ? 4000.0 : 0.0); };
            const auto beam = [](int x, int) { return 20000.0 + x; };
            body.loadedI1(makeImage(side, side, TiffData::TiffWords, counts).release(), i);
            body.stacks().loadedI0(makeImage(side, side, TiffData::TiffWords, beam).release(), i);
        }
        body.setMaxPositionsPerRequest(1);
        QVERIFY(body.run(QStringLiteral("select_region 0 0 %1 %1").arg(side)));
        const auto* button = body.analyzer()->findChild<QPushButton*>("AskAnalyze");
        auto* field = body.findChild<QLineEdit*>("HWidth");
        const QSignalSpy spectra(&body.cursor(), &CursorConductor::spectrumFormed);
        body.start2DAnalysis();
        for (int turn = 0; turn < 5; ++turn) {
            field->selectAll();
            QTest::keyClicks(field, QString::number(turn));
            QMouseEvent move(QEvent::MouseMove, QPointF(20 + turn, 30), Qt::NoButton, Qt::NoButton,
                             Qt::NoModifier);
            QCoreApplication::postEvent(body.findChild<ImgDispA*>("dispA"), new QMouseEvent(move));
            QTest::qWait(5);
            QCOMPARE(field->text(), QString::number(turn));
            QVERIFY(spectra.size() > turn);
            QCOMPARE(button->text(), QString("Stop"));
        }
        QElapsedTimer stopping;
        stopping.start();
        body.start2DAnalysis();
        QVERIFY(stopping.elapsed() < 500);
        QCOMPARE(button->text(), QString("Analyze"));
    }

    /// Who waits for a walk that is stopped, by the button or by a new one, is told once.
    void stoppedAndRefusedWalksAreFailures()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        const FailureCount& failures = body.batchCtrl()->failures();
        const QSignalSpy ends(&body.batch(), &BatchConductor::finishBatchExec);
        CmdLine walk("analyzer_exec_LCF");
        const LogCapture log;
        for (walk.ticket = 901; walk.ticket <= 903; ++walk.ticket) {
            walk.lineNo = walk.ticket - 900;
            body.execCmdSlot(walk, false);
            QCOMPARE(ends.size(), walk.ticket == 901 ? 0 : 1 + walk.lineNo / 3);
            if (walk.ticket == 901)
                body.start2DAnalysis();
        }
        QTRY_COMPARE(ends.size(), 3);
        QCOMPARE(ends.at(2).at(1).toInt(), 903);
        QVERIFY(failures.count == 2 &&
                failures.first.text() == "line 1, analyzer_exec_LCF: stopped");
        QCOMPARE(log.linesWith("2D analysis stopped"), 2);
        QVERIFY(values(ratioMap(body, 0)).last() > 0.5);

        // No reference is left to fit; the maps stay.
        for (int row = 0; row < 2; ++row)
            QVERIFY(body.run(QString("analyzer_set_LCF_std %1 0 90000 %2")
                                 .arg(row)
                                 .arg(experiment_.references[row])));
        QVERIFY(body.run("analyzer_exec_LCF"));
        QCOMPARE(log.linesWith("2D analysis not started: LCF is left out"), 1);
        QVERIFY(failures.count == 3 && values(ratioMap(body, 0)).last() > 0.5);
    }

    void aWalkTakesTheFilteredMapBack()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        auto* const box = body.findChild<QCheckBox*>("ShowDeGlitched");
        const LogCapture log;
        QVERIFY(!box->isEnabled()); // there is no map
        QVERIFY(body.runAll({"analyzer_select_image 0", "analyzer_exec_LCF"}));
        QTRY_VERIFY(box->isEnabled());
        box->click(); // nothing is filtered yet
        QVERIFY(!box->isChecked());
        QCOMPARE(log.linesWith("No deglitched values"), 1);
        body.findChild<QPushButton*>("DeGlitch")->click();
        box->click();
        QVERIFY(box->isChecked() && body.selectedMap()->useProc());
        QVERIFY(body.run("analyzer_exec_LCF"));
        QVERIFY(!box->isChecked() && !body.selectedMap()->useProc());
        QCOMPARE(log.linesWith("No deglitched values"), 1);
    }

    void positionsOutsideTheImageDoNotStallTheWalk()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        QVERIFY(body.runAll({"select_region 9 5 30 20", "analyzer_exec_LCF"}));
        QVERIFY(std::abs(ratioMap(body, 0)->valueAt(11, 6) - SmallExperiment::fraction(11, 6)) <
                1e-6);
        QCOMPARE(ratioMap(body, 0)->valueAt(8, 6), 0.0);
    }

    void uncheckedReferenceKeepsAnEmptyMap()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        QVERIFY(body.runAll(
            {QStringLiteral("analyzer_set_LCF_std 0 0 0 %1 0").arg(experiment_.references[0]),
             "analyzer_exec_LCF"}));
        QCOMPARE(values(ratioMap(body, 0)).count(0.0), experiment_.width * experiment_.height);
        QVERIFY(ratioMap(body, 1)->valueAt(3, 3) > 0.5);
    }

private:
    static QVector<double> values(const Analyzed2DRes* map)
    {
        const int n = map->stepper.width * map->stepper.height;
        QVector<double> v(n);
        std::copy(map->data(), map->data() + n, v.begin());
        return v;
    }
    static Analyzed2DRes* ratioMap(DrivenBody& body, int row)
    {
        return body.map(MapKind::LcfWeight, row);
    }

    static LcfResult singleFit(const DrivenBody& body, int x, int y)
    {
        const SuggestElm elm = body.suggestElm();
        const XafsSpectrum s(body.rawXafsAt(x, y, 0, 0), "single", VictLine::Straight, 0.0, elm);
        return fitLcf(s, body.analyzer()->lcf().request({elm, {}}));
    }
    static double residual(DrivenBody& body, int x, int y)
    {
        return body.map(MapKind::Zansa)->valueAt(x, y);
    }

    SmallExperiment experiment_;
};

QTEST_MAIN(TestWalks)
#include "test_walks.moc"
