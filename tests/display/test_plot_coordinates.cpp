#include "display/ChCoord.h"
#include "display/MouseC.h"

#include <QMouseEvent>
#include <QtTest>

/// Plot coordinates and the mouse's record: plain arithmetic without a widget.
class TestPlotCoordinates : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void realAndScreenValuesAreInverse();
    void marginsAreCutToWholePixels();
    void edgeStripsLieAtBothEndsInAnyOrder();
    void ticks_data();
    void ticks();
    void tickStepGrowsUntilItIsWideEnough();
    void mouseActionCodes_data();
    void mouseActionCodes();
    void positionsAreRoundedHalfUp_data();
    void positionsAreRoundedHalfUp();
    void doubleClickLeavesThePositionAlone();
};

void TestPlotCoordinates::realAndScreenValuesAreInverse()
{
    ChCoord c;
    c.setScreenArea(0, 600, 800, 0); // real y grows upward
    c.applyMargins();
    c.setRealArea(8900, -1, 9100, 3);
    QCOMPARE(c.realToScreenX(8900), c.plotX0);
    QCOMPARE(c.realToScreenX(9100), c.plotX1);
    QCOMPARE(c.realToScreenY(3), c.plotY1);
    QVERIFY(c.realToScreenY(2) < c.realToScreenY(1));
    for (const double v : {8900.0, 8987.5, 9200.0})
        QVERIFY(qAbs(c.screenToRealX(c.realToScreenX(v)) - v) < 1e-9);
    QVERIFY(qAbs(c.screenToRealDY(c.realToScreenDY(0.25)) - 0.25) < 1e-12);
    QVERIFY(qAbs(c.screenToRealOffsetX(c.plotX0 + 10) + 8900 - c.screenToRealX(c.plotX0 + 10)) <
            1e-9);
    QCOMPARE(c.screenToRealClampedX(-1e6), 8900.0);
    QCOMPARE(c.screenToRealClampedY(-1e6), 3.0);
    QCOMPARE(c.screenToRealClampedY(1e6), -1.0);
}

void TestPlotCoordinates::marginsAreCutToWholePixels()
{
    ChCoord c;
    c.setScreenArea(0, 207, 333, 0);
    c.applyMargins();
    QCOMPARE(c.plotX0, 33.0);
    QCOMPARE(c.plotX1, 333.0 - 16.0);
    QCOMPARE(c.plotY0, 207.0 - 20.0); // the top margin lies at the first y
    QCOMPARE(c.plotY1, 10.0);
}

void TestPlotCoordinates::edgeStripsLieAtBothEndsInAnyOrder()
{
    ChCoord c;
    c.setScreenArea(0, 100, 200, 0);
    QVERIFY(c.nearPlotEdgeX(19.9));
    QVERIFY(!c.nearPlotEdgeX(20.0));
    QVERIFY(!c.nearPlotEdgeX(180.0));
    QVERIFY(c.nearPlotEdgeX(180.1));
    QVERIFY(c.nearAreaEdgeY(95.0));
    QVERIFY(c.nearAreaEdgeY(5.0));
    QVERIFY(!c.nearAreaEdgeY(50.0));
}

void TestPlotCoordinates::ticks_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("last");
    QTest::newRow("leading digit 1") << 8901.0 << 9050.0 << 20.0 << 8920.0 << 9040.0;
    QTest::newRow("3") << 0.1 << 3.4 << 0.5 << 0.5 << 3.0;
    QTest::newRow("7") << -3.5 << 3.6 << 1.0 << -3.0 << 3.0;
    QTest::newRow("9") << 0.0 << 95.0 << 20.0 << 0.0 << 80.0;
}

void TestPlotCoordinates::ticks()
{
    QFETCH(double, min);
    QFETCH(double, max);
    double step = 0;
    double first = 0;
    double last = 0;
    ChCoord::autoTicks(min, max, step, first, last);
    QTEST(step, "step");
    QTEST(first, "first");
    QTEST(last, "last");
}

void TestPlotCoordinates::tickStepGrowsUntilItIsWideEnough()
{
    ChCoord c;
    c.setScreenArea(0, 0, 100, 100);
    c.setRealX(0, 100); // a pixel a unit
    QCOMPARE(c.tickStepFor(1, 0.5), 1.0);
    QCOMPARE(c.tickStepFor(1, 1.0), 2.0); // the test is strict
    QCOMPARE(c.tickStepFor(1, 30), 50.0);
    QCOMPARE(c.tickStepFor(1, 1e12), 1e8);
}

void TestPlotCoordinates::mouseActionCodes_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("code");
    const int all[] = {Qt::NoModifier,
                       Qt::ShiftModifier,
                       Qt::ControlModifier,
                       Qt::AltModifier,
                       Qt::ShiftModifier | Qt::ControlModifier,
                       Qt::ShiftModifier | Qt::AltModifier,
                       Qt::ControlModifier | Qt::AltModifier,
                       Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier};
    for (int i = 0; i < 8; ++i) {
        QTest::addRow("left %d", i) << int(Qt::LeftButton) << all[i] << i;
        QTest::addRow("right %d", i) << int(Qt::RightButton) << all[i] << i + 8;
    }
    QTest::newRow("middle") << int(Qt::MiddleButton) << int(Qt::ShiftModifier) << 16;
}

void TestPlotCoordinates::mouseActionCodes()
{
    QFETCH(int, button);
    QFETCH(int, modifiers);
    QTEST(MouseC::mouseAction(button, modifiers), "code");
}

void TestPlotCoordinates::positionsAreRoundedHalfUp_data()
{
    QTest::addColumn<double>("at");
    QTest::addColumn<int>("pixel");
    QTest::newRow("-0.4") << -0.4 << 0;
    QTest::newRow("-0.5") << -0.5 << 0;
    QTest::newRow("-0.6") << -0.6 << -1;
    QTest::newRow("2.5") << 2.5 << 3;
}

void TestPlotCoordinates::positionsAreRoundedHalfUp()
{
    QFETCH(double, at);
    const QMouseEvent e(QEvent::MouseMove, QPointF(at, 7), Qt::NoButton, Qt::NoButton,
                        Qt::NoModifier);
    MouseC mouse;
    mouse.recordMove(e);
    QTEST(mouse.pos.x(), "pixel");
}

void TestPlotCoordinates::doubleClickLeavesThePositionAlone()
{
    const auto event = [](QEvent::Type type, double x) {
        return QMouseEvent(type, QPointF(x, 0), Qt::LeftButton, Qt::LeftButton, Qt::ShiftModifier);
    };
    MouseC mouse;
    mouse.recordPress(event(QEvent::MouseButtonPress, 4));
    QVERIFY(mouse.pressed);
    QCOMPARE(mouse.pressAction(), int(MouseC::Shift));
    mouse.recordRelease(event(QEvent::MouseButtonRelease, 6));
    QVERIFY(!mouse.pressed);
    mouse.recordDoubleClick(event(QEvent::MouseButtonDblClick, 9));
    QCOMPARE(mouse.prevPos.x(), 4);
    QCOMPARE(mouse.pos.x(), 6);
    QCOMPARE(mouse.doubleClickPos.x(), 9);
}

QTEST_GUILESS_MAIN(TestPlotCoordinates)
#include "test_plot_coordinates.moc"
