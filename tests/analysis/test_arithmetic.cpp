#include "conduct/Desk.h"

#include "analysis/arithmetic/ArithmeticSection.h"
#include "calibration/ShiftMapFile.h"
#include "common/Fault.h"
#include "conduct/AnalysisConductor.h"
#include "conduct/ArithmeticConductor.h"
#include "conduct/CalibConductor.h"
#include "display/ColorBar.h"
#include "display/ImgDispA.h"
#include "maps/MapArithmetic.h"

#include <QLineEdit>
#include <QPushButton>

namespace {

AnalyzeCond walkOf(int width, int height, int half)
{
    return {width, height, half, half, QRectF(0, 0, width, height), -1, -1};
}

template<typename F>
void fill(Analyzed2DRes& map, int width, int height, F f)
{
    map.prepare(walkOf(width, height, 0));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            map.setData(x, y, 0, 0, f(x, y));
    }
    map.genImg();
}

} // namespace

/// Maps made of two others, and how commands and the panel come by them.
class TestArithmetic : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<Desk>();
        theColorBar = desk_->imageBox.bar();
        section_ = std::make_unique<ArithmeticSection>();
        calib_ = std::make_unique<CalibConductor>(
            CalibConductor::Parts{desk_->data, desk_->shiftMap, desk_->maps, desk_->reader,
                                  desk_->spectrumBox, desk_->calibCtrl},
            desk_->cursor, desk_->walks);
        analysis_ = std::make_unique<AnalysisConductor>(
            AnalysisConductor::Parts{desk_->maps, desk_->reader, desk_->analyzer}, desk_->view,
            desk_->cursor, desk_->walks);
        arithmetic_ = std::make_unique<ArithmeticConductor>(
            ArithmeticConductor::Parts{desk_->maps, desk_->reader, *section_}, desk_->view,
            *calib_);
        analysis_->bindCommands(desk_->book);
        arithmetic_->bindCommands(desk_->book);
    }
    void cleanup()
    {
        arithmetic_.reset();
        analysis_.reset();
        calib_.reset();
        section_.reset();
        theColorBar = nullptr;
        desk_.reset();
    }

    /// Levels that make every sum exact; the second map ends within the walk.
    void blockSumsOfMapsThatDifferInSize()
    {
        Analyzed2DRes a("a"), b("b"), out("out");
        fill(a, 15, 10, [](int, int) { return 3.0; });
        fill(b, 12, 5, [](int, int) { return 0.5; });
        const auto made = [&](MapOperation operation) {
            out.prepare(walkOf(15, 10, 2));
            processMaps(operation, a, b, out);
            return QVector<double>{out.valueAt(0, 4), out.valueAt(12, 2), out.valueAt(7, 7)};
        };
        // Blocks of 25 pixels: all of them, 10 of them, and none in the second map.
        QCOMPARE(made(MapOperation::Sub), (QVector<double>{62.5, 70.0, 75.0}));
        QCOMPARE(made(MapOperation::Div), (QVector<double>{6.0, 15.0, 1.0}));
        QCOMPARE(made(MapOperation::Mask), (QVector<double>{75.0, 75.0, 0.0}));
        b.setData(2, 2, 2, 2, -0.5);
        QCOMPARE(made(MapOperation::Mask).first(), 0.0);
        QCOMPARE(made(MapOperation::Div).first(), -6.0);
    }

    void operandsAreCapturedLoadedAndProcessedByCommand()
    {
        QVERIFY(desk_->load(experiment_));
        run("analyzer_process 0");
        QCOMPARE(failed(), QStringList{"Maps are not processed: map 1 holds no picture"});
        run("analyzer_map1_capture");
        QCOMPARE(failed(), QStringList{"Map 1 is not captured: no map is chosen"});
        run("analyzer_map1_load " + experiment_.references[0]);
        QCOMPARE(failed().size(), 1);
        QVERIFY(desk_->runAll({"analyzer_select_analysis_mode 0", "analyzer_exec_LCF"}));
        run("analyzer_select_image 0");
        run("analyzer_map1_capture");
        QVERIFY(!child<QPushButton>("AskProcessMaps")->isEnabled());
        const QString file = shiftMapFile();
        run("analyzer_map2_load " + file);
        QVERIFY(child<QPushButton>("AskProcessMaps")->isEnabled());
        QCOMPARE(child<QLineEdit>("Map1Name")->text(), map(MapKind::LcfJump)->name);
        QCOMPARE(child<QLineEdit>("Map2Name")->text(), file);
        run("analyzer_map2_load " + experiment_.references[0]);
        QCOMPARE(failed().size(), 1);

        // Operands are copies, and the area of now decides where they are processed.
        const double jump = map(MapKind::LcfJump)->valueAt(4, 3);
        const double shift = map(MapKind::Operand2)->valueAt(4, 3);
        QVERIFY(jump > 0.0 && std::abs(shift - 1.43) < 1e-3);
        map(MapKind::LcfJump)->prepare(walkOf(3, 3, 0));
        desk_->imageBox.area()->setSelectedArea(4, 3, 6, 5);
        run("analyzer_process 0");
        QCOMPARE(map(MapKind::Processed)->valueAt(4, 3), jump - shift);
        QCOMPARE(map(MapKind::Processed)->valueAt(0, 0), 0.0);
        run("analyzer_process 1");
        QCOMPARE(map(MapKind::Processed)->valueAt(4, 3), jump / shift);
        QVERIFY(section_->operation() == MapOperation::Div);
        run("analyzer_process 3");
        QCOMPARE(failed(), QStringList{"No operation on maps has the number 3"});
        QVERIFY(section_->operation() == MapOperation::Div);
        QVERIFY(map(MapKind::Processed)->imgValid);
        QCOMPARE(desk_->maps.originOf({MapKind::Processed}).analysis, QString("arithmetic"));
    }

    void buttonsChooseOneOfTheThreeMaps()
    {
        QVERIFY(!section_->shownOperand());
        const QSignalSpy changes(section_.get(), &ArithmeticSection::changedSelection);
        child<QAbstractButton>("ShowMap2")->click();
        QVERIFY(section_->shownOperand() == MapKind::Operand2);
        child<QAbstractButton>("ShowProcessedMap")->click();
        QVERIFY(section_->shownOperand() == MapKind::Processed);
        section_->clearShown();
        QVERIFY(!section_->shownOperand());
        child<QAbstractButton>("ShowProcessedMap")->click();
        QCOMPARE(changes.size(), 3);
    }

    void theChosenMapIsFilteredByCommand()
    {
        for (const char* const line : {"analyzer_deglitch 2 0.9", "analyzer_show_deglitched 1"}) {
            run(line);
            QCOMPARE(failed().size(), 1);
        }
        QVERIFY(desk_->load(experiment_));
        run("analyzer_select_image 0");
        run("analyzer_deglitch 2 0.9");
        QCOMPARE(failed(), QStringList{"Map LCF Ref 1 is not deglitched: it holds no values"});
        Analyzed2DRes& jumps = *map(MapKind::LcfJump);
        fill(jumps, 12, 7, [](int x, int y) { return x == 5 && y == 3 ? 90.0 : 1.0; });
        run("analyzer_show_deglitched 1");
        QCOMPARE(failed(), QStringList{"Map LCF Ref 1 holds no deglitched values"});
        run("analyzer_deglitch 3 0.5");
        QCOMPARE(jumps.deglitchFactor, 3.0);
        QCOMPARE(jumps.shownValueAt(5, 3), 90.0);
        run("analyzer_show_deglitched 1");
        QCOMPARE(jumps.shownValueAt(5, 3), 1.0);
        run("analyzer_show_deglitched 0");
        QCOMPARE(jumps.shownValueAt(5, 3), 90.0);
        QVERIFY(failed().isEmpty());
    }

private:
    void run(const QString& line)
    {
        const FaultCollector collector;
        QVERIFY(desk_->runAll({line}));
        faults_ = collector.faults();
    }
    /// What the last command could not do.
    QStringList failed() const { return faults_; }

    template<typename T>
    T* child(const QString& name) const
    {
        return section_->findChild<T*>(name);
    }
    Analyzed2DRes* map(MapKind kind) const { return desk_->maps.find({kind, 0}); }

    QString shiftMapFile() const
    {
        ShiftMapRecord record;
        record.recorded = recordDate();
        record.header = {true, 0, 0, 12, 7, 0, 0, 0, 12, 0, 7, 8980.0, 3.1355316};
        record.mapWidth = record.imageWidth = 12;
        record.mapHeight = record.imageHeight = 7;
        return saveShiftMap(experiment_.dir.filePath("shift.emp"), record,
                            [](int x, int y) { return 1.0 + 0.1 * x + 0.01 * y; });
    }

    const SmallExperiment experiment_;
    std::unique_ptr<Desk> desk_;
    std::unique_ptr<ArithmeticSection> section_;
    std::unique_ptr<CalibConductor> calib_;
    std::unique_ptr<AnalysisConductor> analysis_;
    std::unique_ptr<ArithmeticConductor> arithmetic_;
    QStringList faults_;
};

QTEST_MAIN(TestArithmetic)
#include "test_arithmetic.moc"
