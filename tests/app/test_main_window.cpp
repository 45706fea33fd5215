#include "BodyFixture.h"
#include "analysis/LCFReference.h"
#include "common/Bragg.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "selection/SelectDataFiles.h"
#include "support/LogCapture.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

/// Stacks, dark terms, browsing and the walk in the main window, by its real signals and threads.
class TestMainWindow : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void quietLoadBringsSliderAndRowUpToDate()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        QCOMPARE(body.i1Stack().size(), experiment_.energies);
        auto* slider = body.findChild<QSlider*>("SeekBar");
        auto* row = body.findChild<SelectDataFiles*>("SelectI1Files");
        QCOMPARE(slider->maximum(), experiment_.energies - 1);
        QCOMPARE(row->currentIndex(), experiment_.energies - 1);
        QCOMPARE(row->exposureText(), QString("20"));
        QCOMPARE(body.i1Stack()[3]->energy, experiment_.firstEnergy + 3 * experiment_.energyStep);
        slider->setValue(4);
        QCOMPARE(row->currentIndex(), 4);
        QCOMPARE(body.findChild<QLineEdit*>("ImgNo")->text(), QString("4"));
        QVERIFY(body.findChild<ImgDispA*>("dispA")->currentImage());
    }

    void failedFilesLeaveGapsInTheRow()
    {
        DrivenBody body;
        const LogCapture log;
        QVERIFY(body.run(QStringLiteral("load_I1_files new %1 /none %2")
                             .arg(experiment_.i1[0], experiment_.i1[1])));
        QVERIFY(body.run("LOAD_i1_FILES Add " + experiment_.i1[0]));
        QCOMPARE(body.i1Stack().size(), 3);
        QCOMPARE(body.findChild<SelectDataFiles*>("SelectI1Files")->count(), 3);
        QCOMPARE(log.linesWith("/none"), 1);
    }

    void clearedSelectionsLeaveNoLateImages()
    {
        DrivenBody body;
        body.readI1Files(experiment_.i1, true);
        body.readI1Files(experiment_.i1.mid(0, 3), true);
        body.clearI1Files();
        body.readI1Files(experiment_.i1.mid(5, 2), true);
        auto* row = body.findChild<SelectDataFiles*>("SelectI1Files");
        QTRY_COMPARE(row->currentIndex(), 1);
        QCOMPARE(body.i1Stack().size(), 2);
        QCOMPARE(body.i1Stack().first()->fileName, experiment_.i1[5]);
    }

    void differingExposuresTurnTheFieldRed()
    {
        const QString other = experiment_.write(
            "other.img", imgBytes(12, 7, "ExposureTime=30 ms", 2, [](int, int) { return 1; }));
        DrivenBody body;
        QVERIFY(body.run(QStringLiteral("load_I1_files new %1 %2").arg(experiment_.i1[0], other)));
        const auto styles = [&body] {
            QString all;
            const auto* row = body.findChild<SelectDataFiles*>("SelectI1Files");
            for (const QLineEdit* edit : row->findChildren<QLineEdit*>())
                all += edit->styleSheet();
            return all;
        };
        QVERIFY(styles().contains("rgb(255, 192, 192)"));
        QVERIFY(body.run(QStringLiteral("load_I1_files new %1").arg(experiment_.i1[0])));
        QVERIFY(!styles().contains("rgb(255, 192, 192)"));
    }

    void darkAreaIsTakenOffAndTheSelectionComesBack()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        auto* area = body.findChild<ImgDispA*>("dispA");
        const LogCapture log;
        QVERIFY(body.run("set_i1_dark_area"));
        QCOMPARE(log.linesWith("no area is selected"), 1);
        QVERIFY(
            body.runAll({"select_region 1 1 5 5", "select_region 8 2 9 4", "set_i1_dark_area"}));
        QCOMPARE(area->selectedArea(), QRectF(1, 1, 4, 4));
        const TiffStack& i1 = body.i1Stack();
        const Spectrum spectrum = body.rawXafsAt(3, 3, 1, 1);
        for (int i = 0; i < i1.size(); i += 20) {
            const double dark = i1[i]->areaMean(QRectF(8, 2, 1, 2)) * 9;
            const double counts = i1[i]->blockSum(3, 3, 1, 1) - dark;
            const double i0 = body.i0Stack()[i]->blockSum(3, 3, 1, 1);
            QCOMPARE(spectrum.y(i), counts * i0 > 0 ? std::log(i0 / counts) : 1.0);
        }
        QVERIFY(body.run("clear_i1_dark_area"));
        QCOMPARE(body.rawXafsAt(3, 3, 0, 0).y(0),
                 std::log(body.i0Stack()[0]->pixel(3, 3) / i1[0]->pixel(3, 3)));
    }

    void darkImageIsScaledToTheExposureOfTheForm()
    {
        const QString dark =
            experiment_.write("dark.img", imgBytes(12, 7, "ExposureTime=10 ms", 2,
                                                   [](int x, int y) { return 1000 + x + y; }));
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        body.selectedDark(dark);
        QCOMPARE(body.findChild<QLineEdit*>("DarkExpTime")->text(), QString("10"));
        const double level = 1005.0 / 10.0 * 20.0;
        QCOMPARE(body.rawXafsAt(2, 3, 0, 0).y(7),
                 std::log((body.i0Stack()[7]->pixel(2, 3) - level) /
                          (body.i1Stack()[7]->pixel(2, 3) - level)));
        body.selectedDark("/none");
        QVERIFY(!body.blockConditions(0, 0).dark);
        body.selectedDark(dark);
        body.clearDark();
        QCOMPARE(body.rawXafsAt(2, 3, 0, 0).y(7),
                 std::log(body.i0Stack()[7]->pixel(2, 3) / body.i1Stack()[7]->pixel(2, 3)));
    }

    /// A corner without beam shows what the dark image would: 10 counts a ms.
    void darkImageAndAreaGiveTheSameSignal()
    {
        const auto beam = [](double counts) {
            return imgBytes(6, 4, "ExposureTime=20 ms", 2,
                            [=](int x, int) { return x < 2 ? 200 : 200 + counts; });
        };
        const QString dark = experiment_.write(
            "dark10.img", imgBytes(6, 4, "ExposureTime=10 ms", 2, [](int, int) { return 100; }));
        DrivenBody body;
        QVERIFY(
            body.runAll({"Use_I0 1", "load_I1_files new " + experiment_.write("d1.img", beam(3000)),
                         "load_I0_files new " + experiment_.write("d0.img", beam(9000)),
                         "select_region 0 0 1 3"}));
        const auto signal = [&body] { return body.rawXafsAt(4, 2, 0, 0).y(0); };
        body.selectedDark(dark);
        QCOMPARE(signal(), std::log(3.0));
        QVERIFY(body.runAll({"set_i1_dark_area", "select_region 0 0 1 3", "set_i0_dark_area"}));
        QCOMPARE(signal(), std::log(3.0));
        // The area makes up for an exposure that is told wrong, as soon as it is.
        body.findChild<QLineEdit*>("DarkExpTime")->setText("5");
        QCOMPARE(signal(), std::log(3.0));
        body.findChild<SelectDataFiles*>("SelectI0Files")->setExposure(70, true);
        QCOMPARE(signal(), std::log(3.0));
        body.clearDark();
        QCOMPARE(signal(), std::log(3.0));
    }

    void energiesAreAppliedAnewAndDoubtsAreMarked()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        auto* row = body.findChild<SelectDataFiles*>("SelectI1Files");
        QVERIFY(row->mark().isEmpty());
        const LogCapture log;
        QVERIFY(body.runAll({"skip_i1 2", "load_I1_files new " + experiment_.i1.join(' ')}));
        QVERIFY(body.runAll({"eng_calc_base_i1 9000.00001", "eng_apply_i1"}));
        QCOMPARE(body.i1Stack()[3]->energy, 9000.00001 + 6 * experiment_.energyStep);
        QCOMPARE(body.rawXafsAt(1, 1, 0, 0).points[3].x(), body.i1Stack()[3]->energy);
        QCOMPARE(log.linesWith("energies do not rise"), 0);
        QVERIFY(body.runAll({"eng_calc_delta_i1 -1", "eng_apply_i1"}));
        QCOMPARE(log.linesWith("energies do not rise"), 1);
        QCOMPARE(log.linesWith(experiment_.i1[0] + " and"), 1);
        QVERIFY(log.linesWith(experiment_.i1[2]) == 1 && row->mark().contains("i1_1002.img"));
        QVERIFY(body.runAll({"eng_calc_delta_i1 0", "eng_apply_i1"}));
        QCOMPARE(log.linesWith("two images of one energy"), 1);
        QVERIFY(body.runAll({"eng_crystal_d_i1 1.637478", "eng_crystal_d_i1 x",
                             "eng_calc_disp_unit_i1 2", "eng_calc_base_i1 30", "eng_apply_i1"}));
        QCOMPARE(body.i1Stack()[0]->energy, energyOfAngle(30, 1.637478));
        QVERIFY(body.runAll({"eng_by_name_i1", "eng_by_name_reg_exp_i1 none", "eng_apply_i1"}));
        QCOMPARE(log.linesWith("no energy in 31 of 31 file names"), 1);
        QVERIFY(row->mark().isEmpty());
        // A load tells it once, at its end, and takes the files of a folder by their numbers.
        const QString folder = experiment_.dir.path() + "/n";
        for (const char* name : {"n9.img", "n10.img", "n8_x.img"})
            experiment_.write(name, imgBytes(1, 1, "", 2, [](int, int) { return 1; }));
        QVERIFY(body.runAll({"skip_i1 1", "eng_by_name_reg_exp_i1 n(?<E>[0-9]+)[.]",
                             "load_I1_files_of_pattern new " + folder.chopped(1) + " n*.img"}));
        QCOMPARE(body.i1Stack()[2]->energy, 10.0);
        QCOMPARE(log.linesWith("no energy in 1 of 3 file names"), 1);
    }

    void totalI0ReplacesI0()
    {
        const QString total =
            experiment_.write("total.dat", "9809 scan\nOffset\n1 12.7 0 5e9 1\n2 12.6 0 6e9 1\n");
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        body.newTotalI0ofI1File(total);
        const Spectrum spectrum = body.rawXafsAt(1, 1, 0, 0);
        QCOMPARE(spectrum.y(1), std::log(6e9 / body.i1Stack()[1]->pixel(1, 1)));
        QCOMPARE(spectrum.y(2), 1.0); // past the end of the file I0 counts as 0
    }

    void suggestedElementShowsItsEdge()
    {
        DrivenBody body;
        const auto* energy = body.findChild<QLineEdit*>("SuggestingEeV");
        QCOMPARE(energy->text(), QString("8984.36029"));
        QVERIFY(body.runAll({"Suggesting_Elm Fe", "Suggest_Elm 1", "Suggesting_Pre_End_eV -15"}));
        QVERIFY(std::abs(energy->text().toDouble() - 7112.0) < 2.0);
        QVERIFY(body.suggestElm().use && body.suggestElm().preEnd == -15.0);
    }

    void commandsSetTheBoxesOfTheAnalyzersOwnView()
    {
        DrivenBody body;
        const XafsView* view = body.analyzer()->view();
        for (const bool on : {true, false}) {
            const QString switched = on ? " 1" : " 0";
            QVERIFY(body.runAll({"analyzer_view_normalize" + switched,
                                 "analyzer_view_enerugy_correction" + switched}));
            QCOMPARE(view->findChild<QCheckBox*>("Normalized")->isChecked(), on);
            QCOMPARE(view->findChild<QCheckBox*>("ECorrect")->isChecked(), on);
        }
    }

    void unavailableCommandsLogAndReport()
    {
        DrivenBody body;
        const LogCapture log;
        QVERIFY(body.run("analyzer_elems_set_deVs 5"));
        QCOMPARE(log.linesWith("analyzer_elems_set_deVs"), 1);
        QVERIFY(body.run("no_such_command"));
    }

    void commandsInARemStretchDoNothing()
    {
        DrivenBody body;
        const QSignalSpy ends(&body.batch(), &BatchConductor::finishBatchExec);
        CmdLine line("set_band_w 77");
        line.ticket = 3;
        body.execCmdSlot(line, true);
        QCOMPARE(ends.size(), 1);
        QCOMPARE(ends[0][0].toInt(), int(ExCmdNone));
        QCOMPARE(ends[0][1].toInt(), 3);
        QCOMPARE(body.findChild<QLineEdit*>("HWidth")->text(), QString("10"));
    }

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
        QVERIFY(!body.analyzer()->lcfRequest({}, {}).holdGap);
        QVERIFY(body.run("hold_gap 1") && body.analyzer()->lcfRequest({}, {}).holdGap);
        // Outside the image the line of the view says why there is nothing to see.
        QVERIFY(body.load(experiment_) && body.run("move_position -3 900"));
        QStringList lines;
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            if (const auto* line = widget->findChild<QLabel*>("ExtMsg"))
                lines.append(line->text());
        }
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
        QVERIFY(result.fitted());
        QVERIFY(std::abs(result.ratios[0] - 0.3) < 1e-9);
        QVERIFY(std::abs(result.ratios[1] - 0.7) < 1e-9);
    }

    /// A row that is added in the middle of a walk has no maps in it.
    void rowsAddedDuringAWalkChangeNoMap()
    {
        DrivenBody body;
        body.setMaxPositionsPerRequest(1);
        QVERIFY(body.load(experiment_));
        QTimer::singleShot(0, &body, [&] {
            body.analyzer()->setLCFStd(4, true, 0.0, experiment_.references[1], "0");
        });
        QVERIFY(body.run("analyzer_exec_LCF"));
        QVERIFY(std::abs(ratioMap(body, 0)->valueAt(0, 0) - SmallExperiment::fraction(0, 0)) <
                1e-6);
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
        // The same button stops, here behind the tenth answer; two more are on their way then.
        int answers = 0;
        connect(body.analyzer(), &Analyzer::finished, this, [&](const AnalysisResult& result) {
            if (result.walk != 0 && ++answers == 10)
                body.start2DAnalysis();
        });
        body.start2DAnalysis();
        QTRY_VERIFY(answers >= 11);
        const QVector<double> stopped = values(ratioMap(body, 0));
        QCOMPARE(stopped.size() - stopped.count(0.0), 10);
        QVERIFY(!ratioMap(body, 0)->imgValid);
        QVERIFY(body.runAll(
            {"analyzer_select_image_type 0", "analyzer_select_image 0", "select_disp_image 3"}));
        QVERIFY(ratioMap(body, 0)->imgValid); // what can be saved can be seen
        QVERIFY(body.run("analyzer_exec_LCF"));
        QVERIFY(values(ratioMap(body, 0)).last() > 0.5);
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

    void choicesThatThereAreNotAreFailures()
    {
        DrivenBody body;
        const QStringList commands{"select_disp_image 7",
                                   "analyzer_select_image 66",
                                   "analyzer_select_image_type 5",
                                   "analyzer_select_analysis_mode 9",
                                   "save_image_w_num a",
                                   "save_all_images",
                                   "save_image " + experiment_.dir.path() + '/'};
        for (int i = 0; i < commands.size(); ++i) {
            QVERIFY(body.run(commands[i]));
            QCOMPARE(body.batchCtrl()->failures().count, i + 1);
        }
    }

    void referenceRowsAreAddedUpToTheLast()
    {
        DrivenBody body;
        const QString file = " 0 0 " + experiment_.references[0];
        QVERIFY(body.run("analyzer_set_LCF_std 100" + file));
        QCOMPARE(body.analyzer()->refs().size(), 4);
        QCOMPARE(body.batchCtrl()->failures().count, 1);
        QVERIFY(body.run("analyzer_set_LCF_std 99" + file));
        QCOMPARE(body.analyzer()->activeRows(), QVector<int>{99});
        QCOMPARE(body.batchCtrl()->failures().count, 1);
    }

    void aWalkTakesTheFilteredMapBack()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        auto* const box = body.findChild<QCheckBox*>("ShowDeGlitched");
        const LogCapture log;
        box->click();
        QVERIFY(!box->isChecked() && log.linesWith("No map is chosen") == 1);
        QVERIFY(body.runAll({"analyzer_select_image 0", "analyzer_exec_LCF"}));
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

    void clearedImagesEndTheWalk()
    {
        DrivenBody body;
        body.setMaxPositionsPerRequest(1);
        QVERIFY(body.load(experiment_));
        const LogCapture log;
        QTimer::singleShot(0, &body, [&] { body.clearI1Files(); });
        QVERIFY(body.run("analyzer_exec_LCF"));
        QCOMPARE(log.linesWith("the I1 images are gone"), 1);
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

    void commandsSayWhetherReferencesTakeTheSuggestion()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        const auto postStart = [&body] { return body.analyzer()->refs().at(1)->spectrum().dPostS; };
        const QPair<QString, double> steps[] = {
            {"Suggesting_Post_Start_eV 15", 10.0}, {"Suggest_Elm 1", 15.0},
            {"Suggesting_Post_Start_eV 18", 18.0}, {"suggest_for_refs 0", 10.0},
            {"suggest_for_refs 1", 18.0},          {"Suggest_Elm 0", 10.0}};
        for (const auto& [line, expected] : steps) {
            QVERIFY(body.run(line));
            QCOMPARE(postStart(), expected);
        }
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
        return fitLcf(s, body.analyzer()->lcfRequest(elm, {}));
    }
    static double residual(DrivenBody& body, int x, int y)
    {
        return body.map(MapKind::Zansa)->valueAt(x, y);
    }

    SmallExperiment experiment_;
};

QTEST_MAIN(TestMainWindow)
#include "test_main_window.moc"
