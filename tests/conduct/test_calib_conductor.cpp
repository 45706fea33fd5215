#include "Desk.h"

#include "calibration/ShiftMapFile.h"
#include "conduct/CalibConductor.h"
#include "display/ImgDispA.h"
#include "support/LogCapture.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// The calibration as its conductor runs it with its panel, without a main window.
class TestCalibConductor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<Desk>();
        calibration_ = std::make_unique<CalibConductor>(
            CalibConductor::Parts{desk_->data, desk_->shiftMap, desk_->maps, desk_->reader,
                                  desk_->spectrumBox, desk_->calibCtrl},
            desk_->cursor, desk_->walks);
        calibration_->bindCommands(desk_->book);
        desk_->walks.setTileLanes(1);
        QVERIFY(desk_->load(experiment_));
        QVERIFY(desk_->runAll({"calib_load_std " + experiment_.references[0], "calib_type 1"}));
    }
    void cleanup()
    {
        calibration_.reset();
        desk_.reset();
    }

    void aWaitReportsOnceHoweverItEnds_data() { addEndings(experiment_, "calib_exec"); }

    /// Once waited for from the start, and once asked only behind the end.
    void aWaitReportsOnceHoweverItEnds()
    {
        QFETCH(QString, meanwhile);
        QFETCH(QString, failure);
        QVERIFY(desk_->runAll({"calib_exec"}));
        int reports = 0;
        QStringList failures;
        const CmdLine wait("calib_wait");
        desk_->book
            .run(ExCmdCalibWait, wait, CommandEnd([&](const QStringList& why) {
                     ++reports;
                     failures += why;
                 }))
            .done();
        QCOMPARE(reports, 0);
        if (meanwhile == "button")
            button()->click();
        else if (meanwhile == "end")
            calibration_.reset();
        else if (meanwhile == "image")
            desk_->stacks.loadedI0(new TiffData, 0);
        else if (!meanwhile.isEmpty())
            QVERIFY(desk_->runAll({meanwhile}));
        QTRY_COMPARE(reports, 1);
        QCOMPARE(failures.join('|'), failure);
        if (!calibration_)
            return;
        QTRY_VERIFY(!calibration_->isRunning());
        desk_->run("calib_wait"); // nothing is left to tell
        QVERIFY(desk_->failures.isEmpty());
        QCOMPARE(reports, 1);
    }

    /// A calibration that other images stopped is a failure of the run, which the next wait tells.
    void aStopThatNobodyHeardIsToldLater()
    {
        QVERIFY(desk_->runAll({"calib_exec", "clear_I1_files", "calib_wait"}));
        QCOMPARE(desk_->failures, QStringList("stopped, the I1 images are gone"));
        QVERIFY(desk_->runAll({"calib_wait"}));
        QCOMPARE(desk_->failures.size(), 1);
    }

    void nothingThatChangesReachesARun()
    {
        QVERIFY(desk_->runAll({"calib_exec", "calib_wait"}));
        const QVector<double> undisturbed = desk_->shiftMap.shifts;
        atPosition40([this] {
            QVERIFY(desk_->runAll({"Use_I0 0", "set_band_w 2", "calib_type 0", "Suggest_Elm 1",
                                   "eng_calc_base_i1 9000", "eng_apply_i1", "hold_gap 0",
                                   "calib_load_std " + experiment_.references[1]}));
        });
        QVERIFY(desk_->runAll({"calib_exec", "calib_wait"}));
        QCOMPARE(desk_->shiftMap.shifts, undisturbed);
    }

    /// A map that is read for another purpose leaves alone what is in force.
    void anOperandLeavesTheMapInForceAlone()
    {
        const QString other = experiment_.write(
            "other.emp", "###MVKT\nStd Edge Energy [eV]    : 8000\nSpacing [nm]            : 3.1\n"
                         "X Offset [pix]          : 7\nWidth [pix]             : 12\n"
                         "Height [pix]            : 7\n##-----------------\n" +
                             QByteArray("0.01 ").repeated(84));
        const auto fields = [this] {
            QStringList texts;
            for (const QLineEdit* field : desk_->calibCtrl.findChildren<QLineEdit*>())
                texts.append(field->text());
            return texts;
        };
        Analyzed2DRes operand("operand");
        EMPHeader header;
        const auto readOperand = [&] {
            const QStringList before = fields();
            const ShiftMap inForce = desk_->shiftMap;
            calibration_->loadMap(other, operand, header);
            QVERIFY(header.isValid && operand.valueAt(3, 3) != 0.0);
            QCOMPARE(fields(), before);
            QCOMPARE(desk_->shiftMap.shifts, inForce.shifts);
            QVERIFY(desk_->shiftMap.origin == inForce.origin && desk_->shiftMap.edgeE == 0.0);
        };
        QVERIFY(desk_->runAll({"calib_exec", "calib_wait"}));
        const QVector<double> undisturbed = desk_->shiftMap.shifts;
        readOperand();
        atPosition40(readOperand);
        QVERIFY(desk_->runAll({"calib_exec", "calib_wait"}) && desk_->failures.isEmpty());
        QCOMPARE(desk_->shiftMap.shifts, undisturbed);
    }

    void imagesThatARunDoesNotReadLeaveItAlone()
    {
        atPosition40([this] { desk_->run("clear_I0_files"); });
        QVERIFY(desk_->runAll({"Use_I0 0", "calib_exec", "calib_wait"}));
        QVERIFY(desk_->failures.isEmpty() && desk_->shiftMap.statistics);
        QVERIFY(desk_->data.i0.images.isEmpty());
    }

    void thePanelFollowsTheMapInForce()
    {
        const auto text = [this](const char* name) {
            return desk_->calibCtrl.findChild<QLineEdit*>(name)->text();
        };
        const auto* const state = desk_->calibCtrl.findChild<QLabel*>("MapState");
        const auto enabled = [this] {
            QString names;
            for (const char* name : {"NES", "ClearMap", "SaveMap", "FormerMap"}) {
                auto* b = desk_->calibCtrl.findChild<QPushButton*>(name);
                names += b->isEnabled() ? b->objectName() + ' ' : QString();
            }
            return names;
        };
        QVERIFY(state->text() == "No shift map" && enabled().isEmpty());
        QVERIFY(desk_->runAll({"calib_exec", "calib_wait"}));
        QVERIFY(calibration_->mapWhole() && state->text().isEmpty());
        QCOMPARE(enabled(), QString("NES ClearMap SaveMap "));
        const CalibStatistics& statistics = *desk_->shiftMap.statistics;
        const auto ofMap = *calibration_->medianAndSpread();
        QCOMPARE(ofMap.median, statistics.median);
        QCOMPARE(ofMap.spread, 1.4826 * statistics.mad);
        desk_->shiftMap.shifts[0] = qQNaN(); // a position without an edge
        desk_->shiftMap.shifts[1] = 1e6;     // and an outlier
        QVERIFY(qAbs(desk_->shiftMap.medianAndSpread()->median - ofMap.median) < 0.5);
        QVERIFY(!calibration_->standardChangedSince());
        QVERIFY(desk_->runAll({"calib_load_std " + experiment_.references[1]}));
        QVERIFY(calibration_->standardChangedSince());
        QVERIFY(desk_->runAll({"calib_clear_map"}));
        for (const char* name : {"DEMedian", "DESpread", "DEMin", "DEAvr", "DEMad"})
            QCOMPARE(text(name), QString());
        QVERIFY(state->text() == "No shift map" && !calibration_->standardChangedSince());
        QCOMPARE(enabled(), QString("FormerMap "));
    }

    void whatKeepsACalibrationFromStartingIsTold()
    {
        QCOMPARE(calibration_->whyNotReady(), QString());
        desk_->calibCtrl.findChild<QPushButton*>("Clear")->click();
        QVERIFY(calibration_->whyNotReady().startsWith("No standard"));
        calibration_->tellReadiness();
        QVERIFY(!button()->isEnabled() && button()->toolTip() == calibration_->whyNotReady());
        desk_->run("clear_I1_files");
        QVERIFY(calibration_->whyNotReady().startsWith("No images"));
    }

private:
    /// Does something once, in the middle of the calibration that starts next.
    void atPosition40(const std::function<void()>& act)
    {
        disconnect(disturbance_);
        disturbance_ = connect(calibration_.get(), &CalibConductor::progressed, this,
                               [this, act, position = 0]() mutable {
                                   if (++position != 40)
                                       return;
                                   QVERIFY(calibration_->isRunning());
                                   act();
                               });
    }
    QPushButton* button() const { return desk_->calibCtrl.findChild<QPushButton*>("ExecCalib"); }

    const SmallExperiment experiment_;
    QMetaObject::Connection disturbance_;
    std::unique_ptr<Desk> desk_;
    std::unique_ptr<CalibConductor> calibration_;
};

QTEST_MAIN(TestCalibConductor)
#include "test_calib_conductor.moc"
