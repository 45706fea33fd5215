#include "BodyFixture.h"
#include "calibration/CalibCtrl.h"
#include "calibration/ShiftMapFile.h"
#include "display/ImgDispA.h"
#include "support/LogCapture.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// The calibration in the main window: its run, its file and its batch commands.
class TestCalibration : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { writeShiftedStacks(); }

    void init()
    {
        body_ = std::make_unique<DrivenBody>();
        panel_ = body_->findChild<CalibCtrl*>();
        QVERIFY(panel_ && load());
    }
    void cleanup() { body_.reset(); }

    void batchCalibratesSavesAndLoads()
    {
        QVERIFY(body_->runAll({"calib_type 1", "calib_inner_range 5 1 0.1", "calib_exec"}));
        QCOMPARE(button()->text(), QString("Stop Calib."));
        const LogCapture log;
        QVERIFY(body_->run("calib_wait"));
        QCOMPARE(log.linesWith("Calibration: fitted 192"), 1);
        QCOMPARE(button()->text(), QString("Exec Calib."));
        QCOMPARE(panel_->findChild<QLabel*>("Progress")->text(), QString("100.0"));
        QVERIFY(worstError() < coarseGridError);
        const double least = field("DEMin").toDouble();
        QVERIFY(std::abs(least - planted(0, 0)) < coarseGridError);

        const QString saved = dir_.filePath("shifts");
        QVERIFY(body_->runAll({"calib_save_map " + saved, "calib_clear_map"}));
        QCOMPARE(body_->energyShiftAt(5, 5), 0.0);
        QVERIFY(body_->run("calib_load_map " + saved + ".emp"));
        QCOMPARE(field("EMPFileName"), saved + ".emp");
        QVERIFY(worstError() < coarseGridError);

        // The spectrum at the cursor takes its shift from the map.
        body_->showXafsSpectrum(7, 4);
        QCOMPARE(body_->findChild<QLabel*>("EShiftOnTbl")->text(),
                 QString::asprintf("%6.3f", body_->energyShiftAt(7, 4)));
    }

    void windowLivesDuringARunAndTheSecondPressStops()
    {
        auto* area = body_->findChild<ImgDispA*>("dispA");
        body_->grab();
        searchFinely();
        QTRY_VERIFY(button()->isEnabled());
        button()->click();
        QVERIFY(QTest::qWaitFor([this] { return body_->energyShiftAt(3, 0) != 0.0; }));
        QMouseEvent move(QEvent::MouseMove, area->rect().center(), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(area, &move);
        QVERIFY(body_->findChild<QLabel*>("Position")->text() != "(   0,    0)");
        auto* const halfWidth = body_->findChild<QLineEdit*>("HWidth");
        halfWidth->clear();
        QTest::keyClicks(halfWidth, "3\r");
        QVERIFY(halfWidth->text() == "3" && button()->text() == "Stop Calib.");
        QTest::keyClicks(halfWidth, "\b0\r");
        QTest::mouseClick(button(), Qt::LeftButton);
        QCOMPARE(button()->text(), QString("Exec Calib."));
        QVERIFY(field("DEAvr").isEmpty()); // no statistics of a part
        QVERIFY(body_->energyShiftAt(3, 0) != 0.0);
        QCOMPARE(body_->energyShiftAt(width - 1, height - 1), 0.0);
        // Nothing of the stopped run goes on.
        QVERIFY(body_->runAll({"calib_wait", "calib_exec", "calib_wait"}));
        QVERIFY(body_->energyShiftAt(width - 1, height - 1) != 0.0);
    }

    void theFormerMapComesBackWhole()
    {
        const LogCapture log;
        auto* const former = panel_->findChild<QPushButton*>("FormerMap");
        QVERIFY(body_->run("calib_former_map") && !former->isEnabled());
        QCOMPARE(log.linesWith("No former energy shift map"), 1);
        QVERIFY(body_->runAll({"calib_type 1", "calib_exec", "calib_wait"}));
        QVERIFY(!former->isEnabled()); // no map was there before
        const QString mean = field("DEAvr");
        QVERIFY(!mean.isEmpty() && !field("DEMedian").isEmpty());
        QVERIFY(body_->runAll({"calib_check_size 0", "calib_load_map " + flatMap()}));
        const double loaded = body_->energyShiftAt(5, 5);
        QVERIFY(field("DEAvr").isEmpty()); // a file tells none
        QTest::mouseClick(former, Qt::LeftButton);
        QVERIFY(worstError() < coarseGridError && field("XOffset") == "0");
        QCOMPARE(field("DEAvr"), mean);
        QVERIFY(body_->runAll({"calib_clear_map", "calib_former_map"}));
        QVERIFY(worstError() < coarseGridError);
        QVERIFY(body_->run("calib_former_map")); // back to no map
        QCOMPARE(body_->energyShiftAt(9, 9), 0.0);
        QVERIFY(field("DEMin").isEmpty());

        QVERIFY(body_->runAll({"calib_former_map", "calib_load_map " + flatMap()}));
        body_->execCalibration();
        body_->execCalibration(); // stopped before its first position
        QVERIFY(body_->energyShiftAt(5, 5) == loaded && loaded != 0.0 && field("XOffset") == "-2");
        QVERIFY(!marked() && body_->run("calib_former_map"));
        QVERIFY(worstError() < coarseGridError);

        searchFinely();
        QVERIFY(body_->run("calib_exec"));
        QVERIFY(QTest::qWaitFor([this] { return body_->energyShiftAt(3, 0) != 0.0; }));
        body_->execCalibration(); // the button stops
        QVERIFY(marked());
        QVERIFY(body_->run("calib_former_map") && !marked());
        QVERIFY(worstError() < coarseGridError);
        QVERIFY(body_->run("calib_former_map") && marked());
        QCOMPARE(body_->energyShiftAt(width - 1, height - 1), 0.0);

        // What a stopped run has filled does not take the place of the whole map that it replaced.
        QVERIFY(body_->runAll({"calib_former_map", "calib_exec"}));
        QVERIFY(QTest::qWaitFor([this] { return body_->energyShiftAt(3, 0) != 0.0; }));
        QVERIFY(body_->runAll({"calib_clear_map", "calib_former_map"}));
        QVERIFY(worstError() < coarseGridError);
        // The name of its file belongs to a map.
        QVERIFY(field("EMPFileName").isEmpty());
        QVERIFY(body_->runAll({"calib_load_map " + flatMap(), "calib_former_map"}));
        QVERIFY(field("EMPFileName").isEmpty());
        QVERIFY(body_->run("calib_former_map") && field("EMPFileName") == flatMap());
    }

    void aSavedMapHasAnEdge()
    {
        QVERIFY(body_->runAll({"calib_exec", "calib_wait", "calib_load_std none.dat"}));
        QCOMPARE(body_->findChild<QLabel*>("EShiftFromStd")->text(), QString(" 0.00"));
        const QString name = dir_.filePath("edge.emp");
        QVERIFY(body_->runAll({"calib_set_edge_eV 0", "calib_save_map " + name}));
        QVERIFY(!QFile::exists(name));
        QVERIFY(body_->runAll({"calib_set_edge_eV 8981.5", "calib_save_map " + name}));
        QCOMPARE(savedEdge(name), 8981.5);
        QVERIFY(body_->runAll(
            {"calib_load_map " + name, "calib_set_edge_eV -", "calib_save_map " + name}));
        QCOMPARE(savedEdge(name), 8981.5); // at which it was read
        QVERIFY(body_->runAll({"calib_load_std " + experiment_.dir.path() + "/standard.dat",
                               "calib_std_background 0", "calib_set_edge_eV 9000",
                               "calib_save_map " + name}));
        QVERIFY(std::abs(savedEdge(name) - panel_->standard().midx) < 0.01);
    }

    void clearedImagesEndTheRun()
    {
        const LogCapture log;
        QVERIFY(body_->runAll({"calib_exec", "clear_I1_files", "calib_wait"}));
        QCOMPARE(log.linesWith("Calibration stopped, the I1 images are gone"), 1);
        QVERIFY(body_->runAll({"calib_exec", "calib_wait"}));
        QCOMPARE(log.linesWith("Calibration not started"), 1);
    }

    /// Who waits is told; commands start anew what runs, and nothing without a standard.
    void stoppedAndRefusedCalibrationsAreFailures()
    {
        const FailureCount& failures = body_->batchCtrl()->failures();
        const QSignalSpy ends(&body_->batch(), &BatchConductor::finishBatchExec);
        CmdLine wait("calib_wait");
        wait.ticket = 900;
        wait.lineNo = 7;
        QVERIFY(body_->runAll({"calib_type 1", "calib_exec"}));
        body_->execCmdSlot(wait, false);
        QCOMPARE(ends.size(), 2);
        QVERIFY(body_->run("calib_exec"));
        QCOMPARE(ends.at(2).at(1).toInt(), 900);
        QVERIFY(failures.count == 1 && failures.first.text() == "line 7, calib_wait: stopped");
        QVERIFY(body_->run("calib_wait") && worstError() < coarseGridError);

        const LogCapture log;
        QVERIFY(body_->runAll({"calib_load_std none.dat", "calib_exec", "calib_wait"}));
        QCOMPARE(log.linesWith("Calibration not started: no standard is loaded"), 1);
        QCOMPARE(failures.count, 3);
        QVERIFY(worstError() < coarseGridError);
    }

    void aStopIsAFailureOfTheRunHoweverItEnds_data()
    {
        QTest::addColumn<QString>("rest");
        QTest::newRow("end of the text") << "";
        QTest::newRow("quit") << "quit\n";
        QTest::newRow("asked") << "calib_wait\n";
        QTest::newRow("asked twice") << "calib_wait\ncalib_wait\nquit\n";
        QTest::newRow("started anew") << "calib_exec\n";
    }

    void aStopIsAFailureOfTheRunHoweverItEnds()
    {
        QFETCH(QString, rest);
        const FailureCount& failures = body_->batchCtrl()->failures();
        QSignalSpy finishing(&body_->batch(), &BatchConductor::finishing);
        // So fine a search that the next line finds it running.
        searchFinely();
        body_->batchCtrl()->setText("calib_exec\nclear_I1_files\n" + rest);
        body_->batchCtrl()->execBatchSlot();
        QVERIFY(finishing.wait(60000));
        // A new start can't be without images.
        QCOMPARE(failures.count, rest == "calib_exec\n" ? 2 : 1);
        QVERIFY(failures.first.text().endsWith("stopped, the I1 images are gone"));
    }

    void filesThatDoNotFitReportTheirEndAndChangeNothing()
    {
        QVERIFY(body_->runAll({"calib_exec", "calib_wait"}));
        const double before = body_->energyShiftAt(2, 2);
        const QByteArray head = "###MVKT\nStd Edge Energy [eV]    : 8980\n"
                                "Spacing [nm]            : 3.1355316\n"
                                "Width [pix]             : 3\nHeight [pix]            : 2\n"
                                "##-----------------\n0 0 0\n0 0.001 0\n";
        const QString small = experiment_.write("small.emp", head);
        const QString broken = experiment_.write("broken.emp", "no map");
        const LogCapture log;
        for (const QString& name : {QString("/none.emp"), broken, small})
            QVERIFY(body_->run("calib_load_map " + name));
        QCOMPARE(log.linesWith("Can not open"), 1);
        QCOMPARE(log.linesWith("Invalid Energy Map Data File"), 1);
        QCOMPARE(log.linesWith("size : 3 x 2 : is not matched to the current image size : 16 x 12"),
                 1);
        QCOMPARE(body_->energyShiftAt(2, 2), before);
        QVERIFY(body_->runAll({"calib_check_size 0", "calib_load_map " + small}));
        QVERIFY(body_->energyShiftAt(1, 1) != 0.0);
        QCOMPARE(body_->energyShiftAt(5, 5), 0.0); // outside the small map
    }

    void aMapWithoutImagesIsShownWhole()
    {
        QVERIFY(body_->runAll(
            {"calib_exec", "calib_wait", "calib_save_map " + dir_.filePath("alone.emp")}));
        DrivenBody fresh;
        QVERIFY(
            fresh.runAll({"calib_load_map " + dir_.filePath("alone.emp"), "select_disp_image 2"}));
        fresh.grab();
        QCOMPARE(fresh.findChild<ImgDispA*>("dispA")->viewWindow(), QRectF(0, 0, width, height));
    }

    void outliersAreTakenOut()
    {
        QByteArray text = "###MVKT\nStd Edge Energy [eV]    : 8980\n"
                          "Spacing [nm]            : 3.1355316\n"
                          "Width [pix]             : 16\nHeight [pix]            : 12\n"
                          "Area X1                 : 16\nArea Y1                 : 12\n"
                          "##-----------------\n";
        for (int i = 0; i < width * height; ++i)
            text += i == 5 * width + 6 ? "-0.5 " : "-0.002 ";
        QVERIFY(body_->run("calib_load_map " + experiment_.write("spike.emp", text)));
        QVERIFY(std::abs(body_->energyShiftAt(6, 5)) > 40.0);
        QVERIFY(body_->run("calib_normalize_shift"));
        QVERIFY(std::abs(body_->energyShiftAt(6, 5) - body_->energyShiftAt(2, 2)) < 1.0);
    }

private:
    static constexpr int width = 16;
    static constexpr int height = 12;

    /// Straight lines between energies that are 2 eV apart follow the edge no better [eV].
    static constexpr double coarseGridError = 0.15;

    static double planted(int x, int y) { return 0.1 * x + 0.05 * y - 0.4; }

    static double mu(double E)
    {
        const double t = E - 8985.0;
        return 0.2 + 0.5 * (1.0 + std::tanh((E - 8980.0) / 2.0)) + 0.4 * std::exp(-t * t / 18.0) +
               0.05 * std::sin((E - 8980.0) / 6.0);
    }

    void writeShiftedStacks()
    {
        QByteArray standard;
        for (int i = 0; i < SmallExperiment::energies; ++i) {
            const double E = SmallExperiment::firstEnergy + SmallExperiment::energyStep * i;
            const QString name = QString("s1_%1.img").arg(1000 + i);
            const auto pixel = [E](int x, int y) { return 4e9 * std::exp(-mu(E - planted(x, y))); };
            experiment_.write(name, imgBytes(width, height, "BytesPerPixel=4,", 4, pixel));
            standard += QByteArray::number(E) + ' ' + QByteArray::number(mu(E), 'g', 17) + '\n';
        }
        experiment_.write("standard.dat", standard);
    }

    bool load()
    {
        const QString folder = experiment_.dir.path();
        return body_->runAll({"set_band_w 0", "set_band_h 0", "eng_calc_base_i1 8920",
                              "eng_calc_delta_i1 2", "eng_calc_even_in_eng_i1 1",
                              "load_i1_files_of_pattern new " + folder + "/ s1_*.img",
                              "calib_load_std " + folder + "/standard.dat"});
    }

    /// File of a map of one shift, whose images lie elsewhere on the detector.
    QString flatMap() const
    {
        return experiment_.write("flat.emp", "###MVKT\nStd Edge Energy [eV]    : 8980\n"
                                             "Spacing [nm]            : 3.1355316\n"
                                             "X Offset [pix]          : -2\n"
                                             "Width [pix]             : 9\n"
                                             "Height [pix]            : 7\n##-----------------\n" +
                                                 QByteArray("0.01 ").repeated(63));
    }

    /// Position by position, and so finely that a run can be met in its middle.
    void searchFinely()
    {
        body_->setMaxPositionsPerRequest(1);
        QVERIFY(body_->runAll({"calib_type 1", "calib_inner_range 20 0.005 0.001"}));
    }

    bool marked() const { return !panel_->findChild<QLabel*>("MapMark")->isHidden(); }

    static double savedEdge(const QString& name)
    {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly))
            return 0.0;
        QTextStream in(&file);
        return readMapHeader(in).stdEdgeE;
    }

    double worstError() const
    {
        double worst = 0.0;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x)
                worst = std::max(worst, std::abs(body_->energyShiftAt(x, y) - planted(x, y)));
        }
        return worst;
    }
    QPushButton* button() const { return panel_->findChild<QPushButton*>("ExecCalib"); }
    QString field(const char* name) const { return panel_->findChild<QLineEdit*>(name)->text(); }

    const SmallExperiment experiment_;
    const QTemporaryDir dir_;
    std::unique_ptr<DrivenBody> body_;
    CalibCtrl* panel_ = nullptr;
};

QTEST_MAIN(TestCalibration)
#include "test_calibration.moc"
