#include "PlantedWalk.h"
#include "conduct/Desk.h"

#include "analysis/sumup/SumUpCtrl.h"
#include "analysis/sumup/SumUpWalk.h"
#include "conduct/AnalysisConductor.h"
#include "support/LogCapture.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <numeric>

Q_DECLARE_METATYPE(QVector<SumUpRange>)

namespace {

const QSize size(23, 11);
constexpr int images = 6;

/// Random counts in images of a type, the third of them shifted.
std::shared_ptr<WalkSource> sourceOf(TiffData::PixelType type, int halfX, int halfY)
{
    auto source = std::make_shared<WalkSource>();
    for (int i = 0; i < images; ++i) {
        RandomCounts counts(unsigned(i + 1), type == TiffData::ImgLongs ? 2000000000 : 60000);
        auto image = makeImage(size.width(), size.height(), type, counts);
        image->shiftX = i == 2 ? 3 : 0;
        image->shiftY = i == 2 ? -2 : 0;
        addImage(source->i1, std::move(image), 9000.0 + i);
    }
    source->block.halfX = halfX;
    source->block.halfY = halfY;
    source->block.imageWidth = size.width();
    source->block.imageHeight = size.height();
    return source;
}

/// Pixel by pixel, of the images by their numbers.
double plainSum(const WalkSource& source, const QVector<int>& numbers, int x, int y)
{
    const int halfX = source.block.halfX;
    const int halfY = source.block.halfY;
    double sum = 0.0;
    for (const int number : numbers) {
        double block = 0.0;
        for (int row = y - halfY; row <= y + halfY; ++row) {
            for (int column = x - halfX; column <= x + halfX; ++column)
                block += source.i1.at(number)->pixel(column, row);
        }
        sum += block / ((2 * halfX + 1) * (2 * halfY + 1));
    }
    return sum;
}

} // namespace

/// The sum of images, as a walk, as a panel, and as its conductor runs it.
class TestSumUp : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theSumIsThatOfTheBlocksAverages_data()
    {
        QTest::addColumn<QVector<SumUpRange>>("ranges");
        QTest::addColumn<QVector<int>>("numbers"); // of the images that count
        using Ranges = QVector<SumUpRange>;
        QTest::newRow("none") << Ranges{} << QVector<int>{};
        QTest::newRow("one") << Ranges{{1, 4}} << QVector<int>{1, 2, 3};
        QTest::newRow("without any image") << Ranges{{3, 3}, {4, 2}} << QVector<int>{};
        QTest::newRow("twice") << Ranges{{0, 2}, {0, 2}} << QVector<int>{0, 1, 0, 1};
        QTest::newRow("overlapping") << Ranges{{3, 5}, {2, 4}} << QVector<int>{3, 4, 2, 3};
        QTest::newRow("beyond both ends") << Ranges{{-9, 1}, {5, 2000000000}} << QVector<int>{0, 5};
    }

    void theSumIsThatOfTheBlocksAverages()
    {
        QFETCH(QVector<SumUpRange>, ranges);
        QFETCH(QVector<int>, numbers);
        const LogCapture log; // of each row
        for (const auto type : {TiffData::TiffWords, TiffData::ImgLongs, TiffData::Floats}) {
            for (const QSize half : {QSize(0, 0), QSize(2, 1)}) {
                Analyzed2DRes map("m");
                const PlantedWalk walk{sourceOf(type, half.width(), half.height()),
                                       QRectF({}, size),
                                       std::make_shared<SumUpKernel>(ranges),
                                       [&] { return std::make_unique<SumUpSink>(map); },
                                       {&map}};
                QCOMPARE(walk.differenceOfLanes(0), QString());
                AnalyzeCond at = walk.prepared();
                walk.run();
                do {
                    const double expected = plainSum(*walk.source, numbers, at.cx, at.cy);
                    QVERIFY(std::abs(map.valueAt(at.cx, at.cy) - expected) <= 1e-12 * expected);
                } while (at.next());
            }
        }
    }

    void deletingARangeLeavesItCounted()
    {
        SumUpCtrl ctrl;
        auto* const list = ctrl.findChild<QComboBox*>("SumUps");
        auto* const shown = ctrl.findChild<QLabel*>("SumUpRanges");
        const auto press = [&](const char* name) { ctrl.findChild<QPushButton*>(name)->click(); };
        QVERIFY(!ctrl.findChild<QPushButton*>("SumUpDel")->isEnabled());
        ctrl.del(); // nothing to delete
        for (const auto& [from, to] :
             {std::pair("0", "2"), std::pair("x", "7"), std::pair("4", "5")}) {
            ctrl.findChild<QLineEdit*>("SumUpFrom")->setText(from);
            ctrl.findChild<QLineEdit*>("SumUpTo")->setText(to);
            press("SumUpAdd");
        }
        QCOMPARE(list->itemText(1), QString("0-7"));
        list->setCurrentIndex(2);
        press("SumUpDel");
        QCOMPARE(list->currentIndex(), 1);
        list->setCurrentIndex(0);
        press("SumUpDel");
        QVERIFY(list->count() == 1 && list->currentText() == "0-7");
        QCOMPARE(ctrl.ranges().size(), 3);
        QVERIFY(shown->text().contains("0-2, 0-7, 4-5"));
        press("SumUpClear");
        QVERIFY(ctrl.ranges().isEmpty() && list->count() == 0 && !shown->text().contains('-'));
    }

    void aRunFillsItsMapAndSavesItsPicture()
    {
        const SmallExperiment experiment;
        const QTemporaryDir folder;
        QVERIFY(QDir::setCurrent(folder.path()));
        Desk desk;
        AnalysisConductor analysis({desk.maps, desk.reader, desk.analyzer}, desk.view, desk.cursor,
                                   desk.walks);
        analysis.bindCommands(desk.book);
        desk.run("analyzer_sum_up");
        QVERIFY(desk.failures.isEmpty() && !QFile::exists("sumUpImg.png"));
        QVERIFY(desk.load(experiment));
        const auto value = [&] { return desk.maps.at({MapKind::SumUp}).valueAt(5, 3); };
        const auto sumOf = [&](int first, int end) {
            QVector<int> numbers(end - first);
            std::iota(numbers.begin(), numbers.end(), first);
            return plainSum(desk.reader.source(), numbers, 5, 3);
        };
        // The analysis that is proposed stays that of the fits.
        QVERIFY(analysis.walkToStart() == AnalysisWalk::Fits);
        const LogCapture log;
        QVERIFY(desk.runAll({"analyzer_sum_up_add 25 35", "analyzer_sum_up_del 0",
                             "analyzer_use 0 0", "analyzer_sum_up"}));
        QVERIFY(std::abs(value() / sumOf(25, 35) - 1.0) < 1e-12);
        QCOMPARE(log.linesWith("Written: \"" + QDir::current().absoluteFilePath("sumUpImg.png")),
                 1);
        const Analyzed2DRes& map = desk.maps.at({MapKind::SumUp});
        const QImage saved("sumUpImg.png");
        QCOMPARE(saved.size(), QSize(experiment.width, experiment.height));
        QCOMPARE(qGray(saved.pixel(map.minX, map.minY)), 0);
        QCOMPARE(qGray(saved.pixel(map.maxX, map.maxY)), 255);
        QVERIFY(analysis.mapsWhole() && !analysis.conditionsDiffer());
        // I0 plays no part, and what goes into the sum does.
        desk.run("Use_I0 0");
        desk.run("clear_I0_files");
        QVERIFY(!analysis.conditionsDiffer());
        desk.run("analyzer_sum_up_add 20 25");
        QVERIFY(analysis.conditionsDiffer());
        // Its button chooses the map, in any way.
        desk.run("analyzer_select_image 18");
        QVERIFY(desk.analyzer.findChild<QRadioButton*>("SelSumUp")->isChecked());
        QVERIFY(desk.view.chosenResult() == MapKey{MapKind::SumUp});
        desk.run("analyzer_use 3 0");
        QVERIFY(!desk.view.chosenResult());
        desk.run("analyzer_select_analysis_mode 3");
        QVERIFY(desk.view.chosenResult() == MapKey{MapKind::SumUp});
        // A picture that can't be saved costs one line, and the map is whole all the same.
        QVERIFY(QFile::remove("sumUpImg.png") && QDir().mkdir("sumUpImg.png"));
        QVERIFY(desk.failures.isEmpty() && desk.runAll({"analyzer_sum_up"}));
        QVERIFY(desk.failures.size() == 1 && desk.failures.first().contains("sumUpImg.png"));
        QVERIFY(analysis.mapsWhole() && std::abs(value() / sumOf(20, 35) - 1.0) < 1e-12);
    }
};

QTEST_MAIN(TestSumUp)
#include "test_sum_up.moc"
