#include "BodyFixture.h"
#include "analysis/LCFReference.h"
#include "support/LogCapture.h"

/// The walk over the map, through the main window's real signals and threads.
class TestWalk : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void plantedFractionsComeBack();
    void requestsOfAnySizeGiveTheSameMaps();
    void blocksAreWalkedSideBySideAndClipped();
    void stopKeepsWhatWasRecordedAndASecondWalkStartsAnew();
    void startingWithoutImagesLogsAndReports();
    void positionsOutsideTheImageDoNotStallTheWalk();
    void clearedImagesEndTheWalk();
    void uncheckedReferenceKeepsAnEmptyMap();

private:
    static QVector<double> values(const Analyzed2DRes* map)
    {
        const int n = map->stepper.width * map->stepper.height;
        QVector<double> v(n);
        std::copy(map->data(), map->data() + n, v.begin());
        return v;
    }
    static Analyzed2DRes* ratioMap(const Body& body, int row)
    {
        return body.analyzer()->refs()[row]->map(1);
    }

    SmallExperiment experiment_;
};

void TestWalk::plantedFractionsComeBack()
{
    Body body;
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    QVERIFY(driver.run(QStringLiteral("analyzer_exec_LCF")));
    for (int y = 0; y < experiment_.height; ++y) {
        for (int x = 0; x < experiment_.width; ++x) {
            const double f = SmallExperiment::fraction(x, y);
            QVERIFY2(std::abs(ratioMap(body, 0)->valueAt(x, y) - f) < 1e-6,
                     qPrintable(QString::number(ratioMap(body, 0)->valueAt(x, y) - f)));
            QVERIFY(std::abs(ratioMap(body, 1)->valueAt(x, y) - (1 - f)) < 1e-6);
            // No row was fitted before, so the fit curve of the walk is zero: each of the points
            // counts as a full residual.
            QVERIFY(std::abs(body.analyzer()->zansaMap()->valueAt(x, y) -
                             1.0 / experiment_.energies) < 1e-12);
        }
    }
    QVERIFY(ratioMap(body, 0)->imgValid);
}

void TestWalk::requestsOfAnySizeGiveTheSameMaps()
{
    QVector<QVector<double>> maps;
    for (const int positions : {1, 5, 4096}) {
        Body body;
        body.setMaxPositionsPerRequest(positions);
        BodyDriver driver(body);
        QVERIFY(driver.load(experiment_));
        QVERIFY(driver.run(QStringLiteral("analyzer_exec_LCF")));
        maps.append(values(ratioMap(body, 0)) + values(body.analyzer()->refs()[1]->map(0)) +
                    values(body.analyzer()->zansaMap()));
    }
    QCOMPARE(maps[0], maps[1]);
    QCOMPARE(maps[0], maps[2]);
}

void TestWalk::blocksAreWalkedSideBySideAndClipped()
{
    Body body;
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    QVERIFY(driver.runAll({"set_band_w 2", "set_band_h 1", "analyzer_exec_LCF"}));
    const Analyzed2DRes* map = ratioMap(body, 0);
    // Centres at 2, 7 and, overhanging, none: 12 is not below the end of the area.
    QCOMPARE(map->valueAt(0, 0), map->valueAt(4, 2));
    QVERIFY(map->valueAt(5, 0) != map->valueAt(4, 0));
    QCOMPARE(map->valueAt(5, 3), map->valueAt(9, 5));
    QCOMPARE(map->valueAt(10, 0), 0.0);
}

void TestWalk::stopKeepsWhatWasRecordedAndASecondWalkStartsAnew()
{
    Body body;
    body.setMaxPositionsPerRequest(1);
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    body.start2DAnalysis();
    body.start2DAnalysis(); // the same button stops
    QTest::qWait(30);
    QVERIFY(!ratioMap(body, 0)->imgValid);
    const QVector<double> stopped = values(ratioMap(body, 0));
    QTest::qWait(30);
    QCOMPARE(values(ratioMap(body, 0)), stopped);
    QVERIFY(driver.run(QStringLiteral("analyzer_exec_LCF")));
    QVERIFY(values(ratioMap(body, 0)).last() > 0.5);
}

void TestWalk::startingWithoutImagesLogsAndReports()
{
    Body body;
    BodyDriver driver(body);
    LogCapture log;
    QVERIFY(driver.run(QStringLiteral("analyzer_exec_LCF")));
    QCOMPARE(log.linesWith(QStringLiteral("no I1 images")), 1);
}

void TestWalk::positionsOutsideTheImageDoNotStallTheWalk()
{
    Body body;
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    QVERIFY(driver.runAll({"select_region 9 5 30 20", "analyzer_exec_LCF"}));
    QVERIFY(std::abs(ratioMap(body, 0)->valueAt(11, 6) - SmallExperiment::fraction(11, 6)) < 1e-6);
    QCOMPARE(ratioMap(body, 0)->valueAt(8, 6), 0.0);
}

void TestWalk::clearedImagesEndTheWalk()
{
    Body body;
    body.setMaxPositionsPerRequest(1);
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    QTimer::singleShot(0, &body, &Body::clearI1Files);
    QVERIFY(driver.run(QStringLiteral("analyzer_exec_LCF")));
}

void TestWalk::uncheckedReferenceKeepsAnEmptyMap()
{
    Body body;
    BodyDriver driver(body);
    QVERIFY(driver.load(experiment_));
    QVERIFY(driver.runAll({QStringLiteral("analyzer_set_LCF_std 0 0 0 %1 0")
                               .arg(experiment_.references[0]),
                           "analyzer_exec_LCF"}));
    QCOMPARE(values(ratioMap(body, 0)).count(0.0), experiment_.width * experiment_.height);
    QVERIFY(ratioMap(body, 1)->valueAt(3, 3) > 0.5);
}

QTEST_MAIN(TestWalk)
#include "test_walk.moc"
