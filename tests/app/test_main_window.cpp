#include "BodyFixture.h"
#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfSection.h"
#include "batch/CommandTable.h"
#include "common/Bragg.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "selection/SelectDataFiles.h"
#include "support/LogCapture.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSlider>

/// Stacks, dark terms, browsing and commands in the main window, by its real signals and threads.
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

    /// A word that two parts bound would do only what the first of them says.
    void eachWordHasOneRow()
    {
        DrivenBody body;
        const QVector<EX_CMD_ID>& bound = body.batch().book().bound();
        QCOMPARE(QSet<EX_CMD_ID>(bound.begin(), bound.end()).size(), bound.size());
        const CommandBook& book = body.batch().book();
        for (const ExCmdRow& row : exCmdTable() + extensionTable()) {
            QVERIFY2(row.id == ExCmdNone || book.has(row.id), qPrintable(row.word));
            QVERIFY2(row.later == book.endsLater(row.id), qPrintable(row.word));
        }
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
        QCOMPARE(body.analyzer()->lcf().refs().size(), 4);
        QCOMPARE(body.batchCtrl()->failures().count, 1);
        QVERIFY(body.run("analyzer_set_LCF_std 99" + file));
        QCOMPARE(body.analyzer()->lcf().activeRows(), QVector<int>{99});
        QCOMPARE(body.batchCtrl()->failures().count, 1);
    }

    void commandsSayWhetherReferencesTakeTheSuggestion()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        const auto postStart = [&body] {
            return body.analyzer()->lcf().refs().at(1)->spectrum().dPostS;
        };
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
    SmallExperiment experiment_;
};

QTEST_MAIN(TestMainWindow)
#include "test_main_window.moc"
