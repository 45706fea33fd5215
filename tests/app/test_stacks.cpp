#include "BodyFixture.h"
#include "display/ImgDispA.h"
#include "selection/SelectDataFiles.h"
#include "support/LogCapture.h"

#include <QLineEdit>
#include <QSlider>

/// Stacks, dark terms and browsing in the main window.
class TestStacks : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void quietLoadBringsSliderAndRowUpToDate();
    void failedFilesLeaveGapsInTheRow();
    void differingExposuresTurnTheFieldRed();
    void addingAppendsAndNewReplaces();
    void darkAreaIsTakenOffAndTheSelectionComesBack();
    void darkAreaWithoutASelectionChangesNothing();
    void darkImageIsScaledToTheExposureOfTheForm();
    void unreadableDarkLeavesNone();
    void totalI0ReplacesI0();
    void suggestedElementShowsItsEdge();
    void unavailableCommandsLogAndReport();
    void commandsInARemStretchDoNothing();

private:
    SmallExperiment experiment_;
};

void TestStacks::quietLoadBringsSliderAndRowUpToDate()
{
    Body body;
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    QCOMPARE(body.i1Stack().size(), experiment_.energies);
    auto* slider = body.findChild<QSlider*>(QStringLiteral("SeekBar"));
    auto* row = body.findChild<SelectDataFiles*>(QStringLiteral("SelectI1Files"));
    QCOMPARE(slider->maximum(), experiment_.energies - 1);
    QCOMPARE(row->currentIndex(), experiment_.energies - 1);
    QCOMPARE(row->exposureText(), QStringLiteral("20"));
    QCOMPARE(body.i1Stack()[3]->energy, experiment_.firstEnergy + 3 * experiment_.energyStep);
    slider->setValue(4);
    QCOMPARE(row->currentIndex(), 4);
    QCOMPARE(body.findChild<QLineEdit*>(QStringLiteral("ImgNo"))->text(), QStringLiteral("4"));
    QVERIFY(body.findChild<ImgDispA*>(QStringLiteral("dispA"))->currentImage());
}

void TestStacks::failedFilesLeaveGapsInTheRow()
{
    Body body;
    BodyDriver driver(body);
    const LogCapture log;
    QVERIFY(driver.run(QStringLiteral("load_I1_files new %1 /none %2")
                           .arg(experiment_.i1[0], experiment_.i1[1])));
    QCOMPARE(body.i1Stack().size(), 2);
    QCOMPARE(body.findChild<SelectDataFiles*>(QStringLiteral("SelectI1Files"))->count(), 2);
    QCOMPARE(log.linesWith(QStringLiteral("/none")), 1);
}

void TestStacks::differingExposuresTurnTheFieldRed()
{
    const QString other = experiment_.filePath(QStringLiteral("other.img"));
    QVERIFY(writeBytes(other, imgBytes(12, 7, "ExposureTime=30 ms", 2, [](int, int) { return 1; })));
    Body body;
    BodyDriver driver(body);
    QVERIFY(driver.run(QStringLiteral("load_I1_files new %1 %2").arg(experiment_.i1[0], other)));
    const auto styles = [&body] {
        QString all;
        const auto* row = body.findChild<SelectDataFiles*>(QStringLiteral("SelectI1Files"));
        for (const QLineEdit* edit : row->findChildren<QLineEdit*>())
            all += edit->styleSheet();
        return all;
    };
    QVERIFY(styles().contains(QLatin1String("rgb(255, 192, 192)")));
    QVERIFY(driver.run(QStringLiteral("load_I1_files new %1").arg(experiment_.i1[0])));
    QVERIFY(!styles().contains(QLatin1String("rgb(255, 192, 192)")));
}

void TestStacks::addingAppendsAndNewReplaces()
{
    Body body;
    BodyDriver driver(body);
    const QString file = experiment_.i1[0];
    QVERIFY(driver.run(QStringLiteral("load_I1_files new ") + file));
    QVERIFY(driver.run(QStringLiteral("load_I1_files add ") + file));
    QCOMPARE(body.i1Stack().size(), 2);
    QVERIFY(driver.run(QStringLiteral("LOAD_i1_FILES New ") + file));
    QCOMPARE(body.i1Stack().size(), 1);
    QVERIFY(driver.run(QStringLiteral("clear_I1_files")));
    QVERIFY(body.i1Stack().isEmpty());
}

void TestStacks::darkAreaIsTakenOffAndTheSelectionComesBack()
{
    Body body;
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    auto* area = body.findChild<ImgDispA*>(QStringLiteral("dispA"));
    QVERIFY(driver.runAll({"select_region 1 1 5 5", "select_region 8 2 9 4", "set_i1_dark_area"}));
    QCOMPARE(area->area(), QRectF(1, 1, 4, 4));
    const TiffStack& i1 = body.i1Stack();
    const Spectrum spectrum = body.rawXafsAt(3, 3, 1, 1);
    for (int i = 0; i < i1.size(); i += 20) {
        const double dark = i1[i]->areaMean(QRectF(8, 2, 1, 2)) * 9;
        const double counts = i1[i]->blockSum(3, 3, 1, 1) - dark;
        const double i0 = body.i0Stack()[i]->blockSum(3, 3, 1, 1);
        QCOMPARE(spectrum.y(i), counts * i0 > 0 ? std::log(i0 / counts) : 1.0);
    }
    QVERIFY(driver.run(QStringLiteral("clear_i1_dark_area")));
    QCOMPARE(body.rawXafsAt(3, 3, 0, 0).y(0),
             std::log(body.i0Stack()[0]->pixel(3, 3) / i1[0]->pixel(3, 3)));
}

void TestStacks::darkAreaWithoutASelectionChangesNothing()
{
    Body body;
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    const double before = body.rawXafsAt(3, 3, 0, 0).y(0);
    const LogCapture log;
    QVERIFY(driver.run(QStringLiteral("set_i0_dark_area")));
    QCOMPARE(log.linesWith(QStringLiteral("no area is selected")), 1);
    QCOMPARE(body.rawXafsAt(3, 3, 0, 0).y(0), before);
    QVERIFY(driver.runAll({"select_region 8 2 9 4", "set_i0_dark_area"}));
    QVERIFY(!body.findChild<ImgDispA*>(QStringLiteral("dispA"))->hasSelection());
}

void TestStacks::darkImageIsScaledToTheExposureOfTheForm()
{
    const QString dark = experiment_.filePath(QStringLiteral("dark.img"));
    QVERIFY(writeBytes(dark, imgBytes(12, 7, "ExposureTime=10 ms", 2,
                                      [](int x, int y) { return 1000 + x + y; })));
    Body body;
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    body.selectedDark(dark);
    QCOMPARE(body.findChild<QLineEdit*>(QStringLiteral("DarkExpTime"))->text(), QStringLiteral("10"));
    const double level = 1005.0 / 10.0 * 20.0;
    QCOMPARE(body.rawXafsAt(2, 3, 0, 0).y(7),
             std::log((body.i0Stack()[7]->pixel(2, 3) - level) /
                      (body.i1Stack()[7]->pixel(2, 3) - level)));
    body.clearDark();
    QCOMPARE(body.rawXafsAt(2, 3, 0, 0).y(7),
             std::log(body.i0Stack()[7]->pixel(2, 3) / body.i1Stack()[7]->pixel(2, 3)));
}

void TestStacks::unreadableDarkLeavesNone()
{
    Body body;
    const LogCapture log;
    body.selectedDark(QStringLiteral("/none"));
    QCOMPARE(body.blockConditions(0, 0).dark, nullptr);
    QCOMPARE(log.linesWith(QStringLiteral("/none")), 1);
}

void TestStacks::totalI0ReplacesI0()
{
    const QString total = experiment_.filePath(QStringLiteral("total.dat"));
    QVERIFY(writeBytes(total, "9809 scan\nOffset\n1 12.7 0 5e9 1\n2 12.6 0 6e9 1\n"));
    Body body;
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    body.newTotalI0ofI1File(total);
    const Spectrum spectrum = body.rawXafsAt(1, 1, 0, 0);
    QCOMPARE(spectrum.y(1), std::log(6e9 / body.i1Stack()[1]->pixel(1, 1)));
    QCOMPARE(spectrum.y(2), 1.0); // past the end of the file I0 counts as 0
}

void TestStacks::suggestedElementShowsItsEdge()
{
    Body body;
    BodyDriver driver(body);
    const auto* energy = body.findChild<QLineEdit*>(QStringLiteral("SuggestingEeV"));
    QCOMPARE(energy->text(), QStringLiteral("8984.36"));
    QVERIFY(driver.run(QStringLiteral("Suggesting_Elm cu")));
    QCOMPARE(energy->text(), QStringLiteral("8984.36"));
    QVERIFY(driver.run(QStringLiteral("Suggesting_Elm Fe")));
    QVERIFY(std::abs(energy->text().toDouble() - 7112.0) < 2.0);
    QVERIFY(driver.runAll({"Suggesting_Edge 1", "Suggest_Elm 1", "Suggesting_Pre_End_eV -15"}));
    QVERIFY(energy->text().toDouble() < 900.0);
    QVERIFY(body.suggestElm().use);
    QCOMPARE(body.suggestElm().preEnd, -15.0);
    QCOMPARE(body.suggestElm().thJump, 50.0);
}

void TestStacks::unavailableCommandsLogAndReport()
{
    Body body;
    BodyDriver driver(body);
    const LogCapture log;
    QVERIFY(driver.run(QStringLiteral("calib_load_map a.emp")));
    QCOMPARE(log.linesWith(QStringLiteral("calib_load_map")), 1);
    QVERIFY(driver.run(QStringLiteral("no_such_command")));
}

void TestStacks::commandsInARemStretchDoNothing()
{
    Body body;
    const QSignalSpy ends(&body, &Body::finishBatchExec);
    CmdLine line(QStringLiteral("set_band_w 77"));
    line.ticket = 3;
    body.execCmdSlot(line, true);
    QCOMPARE(ends.size(), 1);
    QCOMPARE(ends[0][0].toInt(), int(ExCmdNone));
    QCOMPARE(ends[0][1].toInt(), 3);
    QCOMPARE(body.findChild<QLineEdit*>(QStringLiteral("HWidth"))->text(), QStringLiteral("10"));
}

QTEST_MAIN(TestStacks)
#include "test_stacks.moc"
