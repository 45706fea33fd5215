#include "Desk.h"

#include "conduct/AnalysisConductor.h"
#include "conduct/RegistrationConductor.h"
#include "support/DriftingSample.h"
#include "support/LogCapture.h"

#include <QCheckBox>
#include <QPushButton>

/// Registration as its conductor runs it, without a main window: a stack whose sample drifts by
/// known whole pixels.
class TestRegistrationConductor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(dir_.isValid());
        for (int i = 0; i < DriftingSample::images; ++i) {
            const QString name = dir_.filePath(QString("s_%1.tif").arg(1000 + i));
            QVERIFY(writeBytes(
                name, tiffBytes(DriftingSample::width, DriftingSample::height,
                                [i](int x, int y) { return DriftingSample::counts(i, x, y); })));
        }
    }
    void init()
    {
        desk_ = std::make_unique<Desk>();
        registration_ = std::make_unique<RegistrationConductor>(
            RegistrationConductor::Parts{desk_->data, desk_->imageBox, panel()}, desk_->stacks,
            desk_->view, desk_->walks);
        panel_->bindCommands(desk_->book);
        registration_->bindCommands(desk_->book);
        QVERIFY(desk_->runAll({"eng_calc_base_i1 8960", "eng_calc_delta_i1 2",
                               "eng_calc_even_in_eng_i1 1",
                               "load_I1_files_of_pattern new " + dir_.path() + "/ s_*.tif"}));
        QCOMPARE(images().size(), DriftingSample::images);
    }
    void cleanup()
    {
        registration_.reset();
        panel_.reset();
        desk_.reset();
    }

    void autoAllBringsTheStackBack_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("onto");
        QTest::newRow("to the first")
            << QStringList{"registration_set_reference 0", "registration_auto_all 0"} << 0;
        QTest::newRow("to one in the middle, by another threshold")
            << QStringList{"registration_threshold 400", "registration_set_reference 12",
                           "registration_auto_all 0"}
            << 12;
        QTest::newRow("to the one before") << QStringList{"registration_auto_all 1"} << 0;
        // What is on show is the last image that was loaded.
        QTest::newRow("to the one on show")
            << QStringList{"seek_image 3", "registration_set_reference", "seek_image 9",
                           "registration_auto_all 0"}
            << 3;
    }

    void autoAllBringsTheStackBack()
    {
        QFETCH(const QStringList, lines);
        QFETCH(const int, onto);
        const TiffStack before = images();
        QVERIFY(desk_->runAll(lines) && desk_->failures.isEmpty());
        verifyComeBack(onto);
        QCOMPARE(before[5]->shiftX, 0); // who copied the stack has it as it was
        QVERIFY(desk_->runAll({"registration_clear_shifts"}));
        for (const SharedImage& image : images())
            QVERIFY(image->shiftX == 0 && image->shiftY == 0);
        QVERIFY(panel_->shift().isNull());
    }

    /// Each image by "Auto Shift" and "Set Shift", or by itself as it comes on show.
    void autoShiftBringsOneImageAfterTheOtherBack_data()
    {
        QTest::addColumn<bool>("byItself");
        QTest::newRow("buttons") << false;
        QTest::newRow("by itself") << true;
    }

    void autoShiftBringsOneImageAfterTheOtherBack()
    {
        QFETCH(const bool, byItself);
        desk_->run("seek_image 0");
        panel_->findChild<QPushButton*>("SetRef")->click();
        if (byItself)
            QVERIFY(desk_->runAll(
                {"registration_view 2", "registration_auto_set 1", "registration_auto_each 1"}));
        for (int i = 1; i < DriftingSample::images; ++i) {
            desk_->run(QString("seek_image %1").arg(i));
            if (byItself)
                continue;
            panel_->findChild<QPushButton*>("ShiftAuto")->click();
            panel_->findChild<QPushButton*>("SetShift")->click();
        }
        verifyComeBack(0);
        // An image that is moved already is found where it is.
        QVERIFY(desk_->runAll({"registration_auto_set 1", "seek_image 20",
                               "registration_auto_shift", "registration_auto_shift"}));
        verifyComeBack(0);
        QCOMPARE(desk_->failures, QStringList());
    }

    void aSearchReportsOnceHoweverItEnds_data()
    {
        QTest::addColumn<QString>("meanwhile");
        QTest::addColumn<QString>("failure");
        QTest::newRow("to its end") << ""
                                    << "";
        QTest::newRow("the button") << "button"
                                    << "stopped";
        QTest::newRow("cleared") << "clear_I1_files"
                                 << "stopped, the I1 images are gone";
        QTest::newRow("moved") << "registration_set_shift 1 1 4"
                               << "stopped, I1 images are moved";
        QTest::newRow("I0 cleared") << "clear_I0_files"
                                    << "";
        QTest::newRow("started anew") << "registration_auto_all 1"
                                      << "stopped";
        QTest::newRow("let go") << "end" << CommandEnd::letGo;
    }

    void aSearchReportsOnceHoweverItEnds()
    {
        QFETCH(const QString, meanwhile);
        QFETCH(const QString, failure);
        int reports = 0;
        QStringList failures;
        desk_->book
            .run(ExCmdRegistrationAutoAll, CmdLine("registration_auto_all 1"),
                 CommandEnd([&](const QStringList& why) {
                     ++reports;
                     failures += why;
                 }))
            .done();
        QVERIFY(registration_->isRunning());
        if (meanwhile == "button")
            panel_->findChild<QPushButton*>("AutoAll")->click();
        else if (meanwhile == "end")
            registration_.reset();
        else if (!meanwhile.isEmpty())
            desk_->run(meanwhile);
        QTRY_COMPARE(reports, 1);
        QCOMPARE(failures.join('|'), failure);
        QTRY_VERIFY(!registration_ || !registration_->isRunning());
        if (meanwhile == "button")
            QCOMPARE(images()[20]->shiftX, 0);
        QTest::qWait(20);
        QCOMPARE(reports, 1);
    }

    void whatCanNotBeDoneIsOneLine_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("line");
        QTest::newRow("no reference") << "registration_auto_all 0"
                                      << "Auto All not started: no ref bin image";
        QTest::newRow("no such image") << "registration_set_reference 24"
                                       << "I1 has no image 24";
        QTest::newRow("too far") << "registration_set_shift 0 -54 2"
                                 << "Image 2 of I1 not moved by 0, -54: it has 72 x 54 pixels";
        QTest::newRow("no image") << "registration_set_shift 1 1 -3"
                                  << "I1 has no image -3";
        QTest::newRow("threshold")
            << "registration_threshold 1001"
            << "No threshold between 0 and 1000: registration_threshold 1001";
        QTest::newRow("nothing to search") << "registration_auto_shift"
                                           << "no ref bin image";
    }

    void whatCanNotBeDoneIsOneLine()
    {
        QFETCH(const QString, command);
        QFETCH(const QString, line);
        const LogCapture log;
        const TiffStack before = images();
        QVERIFY(desk_->runAll({command}));
        QCOMPARE(log.linesWith(line), 1);
        QCOMPARE(images(), before);
    }

    /// The map tells blocks that some image does not reach; the others are fitted as before.
    void aMoveEndsAWalkAndTheNextOneMarksTheEdges()
    {
        AnalysisConductor analysis({desk_->maps, desk_->reader, desk_->analyzer}, desk_->view,
                                   desk_->cursor, desk_->walks);
        analysis.bindCommands(desk_->book);
        QVERIFY(desk_->load(experiment_));
        const auto over = std::make_shared<bool>(false);
        desk_->run("analyzer_exec_LCF", over);
        QVERIFY(!*over);
        desk_->run("registration_set_shift 3 -1 30");
        QVERIFY(*over);
        QCOMPARE(desk_->failures, QStringList("stopped, I1 images are moved"));
        QVERIFY(desk_->runAll({"set_band_w 1", "analyzer_exec_LCF"}));
        const Analyzed2DRes& map = desk_->maps.at({MapKind::Outcomes, 0});
        int marked = 0;
        for (int y = 0; y < experiment_.height; ++y) {
            for (int x = 1; x < experiment_.width - 1; x += 3) {
                const bool off = x - 1 < 3 || y >= experiment_.height - 1;
                const bool isMarked = map.shownValueAt(x, y) == double(Outcome::OffImage);
                QCOMPARE(isMarked, off);
                marked += isMarked;
            }
        }
        QCOMPARE(marked, 7 + 3);
        QVERIFY(analysis.mapsWhole());
        // Without a shift there is nothing to mark.
        QVERIFY(desk_->runAll({"registration_clear_shifts", "analyzer_exec_LCF"}));
        QCOMPARE(map.shownValueAt(1, 6), double(Outcome::Fitted));
    }

    /// What the history tells brings shifts and reference about again.
    void theStateBringsShiftsAndReferenceBack()
    {
        QVERIFY(desk_->runAll({"registration_threshold 430", "registration_set_reference 6",
                               "registration_threshold 610", "registration_auto_all 0",
                               "seek_image 17"}));
        const History& history = desk_->book.history();
        const QStringList state = history.state();
        const QVector<QPoint> shifts = desk_->data.i1.shifts();
        const std::vector<double> reference = panel_->reference().pixels;
        QVERIFY(desk_->runAll({"registration_set_reference 2"}));
        QVERIFY(desk_->runAll(history.wayBack()) && images().isEmpty());
        QVERIFY(desk_->runAll(state));
        QCOMPARE(desk_->data.i1.shifts(), shifts);
        QCOMPARE(panel_->reference().pixels, reference);
        QCOMPARE(panel_->settings().thousandths, 610);
        QCOMPARE(history.state(), state);
    }

private:
    ImgProc& panel()
    {
        panel_ = std::make_unique<ImgProc>();
        return *panel_;
    }
    const TiffStack& images() const { return desk_->data.i1.images; }

    /// The shifts are those of the planted drift, and each pixel of the sample has the spectrum
    /// that it has where nothing drifts.
    void verifyComeBack(int onto) const
    {
        for (int i = 0; i < DriftingSample::images; ++i)
            QCOMPARE(QPoint(images()[i]->shiftX, images()[i]->shiftY),
                     DriftingSample::backTo(onto, i));
        for (const QPoint& at : {QPoint(36, 25), QPoint(40, 20), QPoint(30, 30)}) {
            const Spectrum spectrum = desk_->reader.rawI1At(at.x(), at.y(), 1, 1);
            QCOMPARE(spectrum.size(), DriftingSample::images);
            for (int i = 0; i < DriftingSample::images; ++i) {
                const QPoint there = at - DriftingSample::backTo(onto, i);
                double sum = 0.0;
                for (int y = -1; y <= 1; ++y) {
                    for (int x = -1; x <= 1; ++x)
                        sum += DriftingSample::counts(i, there.x() + x, there.y() + y);
                }
                QCOMPARE(spectrum.y(i), sum);
            }
        }
    }

    const QTemporaryDir dir_;
    const SmallExperiment experiment_;
    std::unique_ptr<Desk> desk_;
    std::unique_ptr<ImgProc> panel_; ///< in the desk's place of panels
    std::unique_ptr<RegistrationConductor> registration_;
};

QTEST_MAIN(TestRegistrationConductor)
#include "test_registration_conductor.moc"
