#include "maps/AnalyzeCond.h"

#include <QtTest>

#include <limits>

using Positions = QVector<QPoint>;

class TestAnalyzeCond : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void walksThePositionsOfAnArea_data();
    void walksThePositionsOfAnArea();
    void walksInsideReversedAndFractionalAreas();
    void endsWhateverIsTyped_data();
    void endsWhateverIsTyped();
    void tellsProgressByRows();
    void clipsBlocksToTheImage();
};

namespace {

Positions walked(AnalyzeCond ac, QVector<QPoint>* rowStarts = nullptr)
{
    Positions seen;
    ac.start();
    do {
        seen.append({ac.cx, ac.cy});
        if (rowStarts != nullptr && ac.newLine)
            rowStarts->append({ac.cx, ac.cy});
    } while (ac.next() && seen.size() < 10000);
    return seen;
}

} // namespace

void TestAnalyzeCond::walksThePositionsOfAnArea_data()
{
    QTest::addColumn<QSize>("half");
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<QSize>("step");
    QTest::addColumn<Positions>("expected");

    QTest::newRow("every pixel") << QSize(0, 0) << QRectF(1, 2, 3, 2) << QSize(-1, -1)
                                 << Positions{{1, 2}, {2, 2}, {3, 2}, {1, 3}, {2, 3}, {3, 3}};
    QTest::newRow("blocks side by side, the last one overhanging")
        << QSize(2, 1) << QRectF(0, 0, 13, 4) << QSize(-1, -1)
        << Positions{{2, 1}, {7, 1}, {12, 1}};
    QTest::newRow("an exact centre at the end is left out")
        << QSize(1, 0) << QRectF(0, 0, 4, 1) << QSize(3, 1) << Positions{{1, 0}};
    QTest::newRow("given steps") << QSize(1, 1) << QRectF(2, 2, 4, 3) << QSize(2, 1)
                                 << Positions{{3, 3}, {5, 3}, {3, 4}, {5, 4}};
    QTest::newRow("an empty area has one position")
        << QSize(1, 1) << QRectF(4, 5, 0, 0) << QSize(-1, -1) << Positions{{5, 6}};
}

void TestAnalyzeCond::walksThePositionsOfAnArea()
{
    QFETCH(QSize, half);
    QFETCH(QRectF, area);
    QFETCH(QSize, step);
    QFETCH(Positions, expected);
    const AnalyzeCond ac(20, 10, half.width(), half.height(), area, step.width(), step.height());
    QVector<QPoint> rowStarts;
    QCOMPARE(walked(ac, &rowStarts), expected);
    QCOMPARE(ac.columns() * ac.rows(), expected.size());
    QCOMPARE(rowStarts.size(), ac.rows());
    for (const QPoint& p : rowStarts)
        QCOMPARE(p.x(), expected.first().x());
}

void TestAnalyzeCond::walksInsideReversedAndFractionalAreas()
{
    const AnalyzeCond reversed(20, 10, 0, 0, QRectF(5.9, 4.9, -3.0, -2.0), -1, -1);
    QCOMPARE(QRect(QPoint(reversed.x0, reversed.y0), QPoint(reversed.x1, reversed.y1)),
             QRect(QPoint(2, 2), QPoint(5, 4)));
    const AnalyzeCond negative(20, 10, 0, 0, QRectF(-1.5, -0.5, 2.7, 1.0), -1, -1);
    QCOMPARE(negative.x0, -1);
    QCOMPARE(negative.y0, 0);
    QCOMPARE(negative.x1, 1);
    const AnalyzeCond empty;
    QCOMPARE(walked(empty), Positions{QPoint(0, 0)});
    QVERIFY(empty.newLine);
}

void TestAnalyzeCond::endsWhateverIsTyped_data()
{
    QTest::addColumn<int>("half");
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<int>("step");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("step of 0") << 0 << QRectF(0, 0, 5, 5) << 0;
    QTest::newRow("negative half width") << -1 << QRectF(0, 0, 5, 5) << -1;
    QTest::newRow("giant half width")
        << std::numeric_limits<int>::max() << QRectF(0, 0, 5, 5) << -1;
    QTest::newRow("giant step") << 0 << QRectF(0, 0, 5, 5) << std::numeric_limits<int>::max();
    QTest::newRow("area that is no number") << 0 << QRectF(nan, nan, 3, nan) << -1;
    QTest::newRow("area without end")
        << 2 << QRectF(1e300, -1e300, 0, 0) << std::numeric_limits<int>::max();
}

void TestAnalyzeCond::endsWhateverIsTyped()
{
    QFETCH(int, half);
    QFETCH(QRectF, area);
    QFETCH(int, step);
    const AnalyzeCond ac(5, 5, half, half, area, step, step);
    QVERIFY(walked(ac).size() <= 36);
}

void TestAnalyzeCond::tellsProgressByRows()
{
    AnalyzeCond ac(10, 10, 0, 0, QRectF(0, 2, 2, 8), -1, -1);
    QCOMPARE(ac.progress(), 0.0);
    for (int i = 0; i < 4; ++i)
        ac.next();
    QCOMPARE(ac.progress(), 25.0);
    QCOMPARE(AnalyzeCond().progress(), 0.0);
}

void TestAnalyzeCond::clipsBlocksToTheImage()
{
    QVector<double> field(4 * 3, 0.0);
    AnalyzeCond ac(4, 3, 1, 1, QRectF(0, 0, 4, 3), -1, -1);
    ac.cx = 3;
    ac.cy = 0;
    ac.fillBlock(field.data(), 7.0);
    const QVector<double> expected{0, 0, 7, 7, 0, 0, 7, 7, 0, 0, 0, 0};
    QCOMPARE(field, expected);
    ac.cx = -40;
    ac.fillBlock(field.data(), 9.0);
    QCOMPARE(field, expected);
}

QTEST_GUILESS_MAIN(TestAnalyzeCond)
#include "test_analyze_cond.moc"
