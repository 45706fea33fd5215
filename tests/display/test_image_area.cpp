#include "display/ColorBar.h"
#include "display/ImgDispA.h"
#include "maps/Analyzed2DRes.h"

#include <QPainter>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

#include <limits>

/// The image area and the colour bar with a real mouse.
class TestImageArea : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void dragSelectsAnArea();
    void controlDragZoomsIntoTheArea();
    void clickWithoutADragChangesNoFlag();
    void rightClickClearsTheSelection();
    void shiftDragMovesTheView();
    void wheelZoomsRoundTheCursorAndInStripsOneWay();
    void altKeepsTheMouseQuiet();
    void viewIsKeptWhenTheImageChanges();
    void selectionByCommandCanBeRecalled();
    void viewImageIsAPixelLarger();
    void viewBeyondTheImageLeavesTheRestWhite();
    void viewWithoutLimitsCostsNothing();
    void overLayerShowsTheMap();
    void inverseComparisonInY();
    void layersArePaintedInOrder();
    void nearerHandleOfTheBarIsDragged();

private:
    void drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::mousePress(area_.get(), Qt::LeftButton, keys, from);
        QMouseEvent move(QEvent::MouseMove, QPointF(to), Qt::NoButton, Qt::LeftButton, keys);
        QApplication::sendEvent(area_.get(), &move);
        QTest::mouseRelease(area_.get(), Qt::LeftButton, keys, to);
    }
    void wheel(const QPoint& at, int delta)
    {
        QMouseEvent move(QEvent::MouseMove, QPointF(at), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(area_.get(), &move);
        QWheelEvent turn(at, at, QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        QApplication::sendEvent(area_.get(), &turn);
    }

    QImage picture_{20, 10, QImage::Format_Grayscale8};
    std::unique_ptr<ImgDispA> area_;
};

void TestImageArea::init()
{
    picture_.fill(100);
    area_ = std::make_unique<ImgDispA>();
    area_->resize(200, 100); // ten widget pixels an image pixel
    area_->setImage({&picture_, 20, 10, 0.0, 1.0});
}

void TestImageArea::dragSelectsAnArea()
{
    const QSignalSpy selected(area_.get(), &ImgDispA::newAreaSelected);
    QCOMPARE(area_->area(), QRectF(0, 0, 20, 10));
    drag({150, 80}, {50, 20});
    QVERIFY(area_->hasSelection());
    QCOMPARE(area_->area(), QRectF(5, 2, 10, 6)); // made normal
    QCOMPARE(area_->viewWindow(), QRectF(0, 0, 20, 10));
    QCOMPARE(selected.size(), 1);
}

void TestImageArea::controlDragZoomsIntoTheArea()
{
    drag({50, 20}, {150, 80}, Qt::ControlModifier);
    QCOMPARE(area_->viewWindow(), QRectF(5, 2, 10, 6));
    // The whole image stays the area without a selection, whatever the view.
    area_->clearSelection();
    QCOMPARE(area_->area(), QRectF(0, 0, 20, 10));
    area_->resetImageViewWindow();
    QCOMPARE(area_->viewWindow(), QRectF(0, 0, 20, 10));
}

void TestImageArea::clickWithoutADragChangesNoFlag()
{
    const QSignalSpy selected(area_.get(), &ImgDispA::newAreaSelected);
    drag({50, 20}, {50, 90});
    drag({50, 20}, {50, 20}, Qt::ControlModifier);
    QVERIFY(!area_->hasSelection());
    QCOMPARE(area_->viewWindow(), QRectF(0, 0, 20, 10));
    QCOMPARE(selected.size(), 0);
}

void TestImageArea::rightClickClearsTheSelection()
{
    drag({50, 20}, {150, 80});
    QTest::mouseClick(area_.get(), Qt::RightButton, Qt::NoModifier, {10, 10});
    QVERIFY(!area_->hasSelection());
    area_->setViewWAsSelectedArea();
    QCOMPARE(area_->viewWindow(), QRectF(0, 0, 20, 10));
}

void TestImageArea::shiftDragMovesTheView()
{
    drag({100, 50}, {80, 60}, Qt::ShiftModifier);
    QCOMPARE(area_->viewWindow(), QRectF(2, -1, 20, 10));
    QVERIFY(!area_->hasSelection());
}

void TestImageArea::wheelZoomsRoundTheCursorAndInStripsOneWay()
{
    wheel({100, 25}, 120);
    const QRectF zoomed = area_->viewWindow();
    QCOMPARE(zoomed.width(), 20 / 1.1);
    QCOMPARE(zoomed.height(), 10 / 1.1);
    QVERIFY(qAbs(zoomed.x() + 0.5 * zoomed.width() - 10) < 1e-12);
    QVERIFY(qAbs(zoomed.y() + 0.25 * zoomed.height() - 2.5) < 1e-12);
    area_->resetImageViewWindow();
    wheel({5, 50}, -120);
    QCOMPARE(area_->viewWindow().width(), 20.0);
    QCOMPARE(area_->viewWindow().height(), 11.0);
    area_->resetImageViewWindow();
    wheel({100, 95}, -120);
    QCOMPARE(area_->viewWindow().width(), 22.0);
    QCOMPARE(area_->viewWindow().height(), 10.0);
}

void TestImageArea::altKeepsTheMouseQuiet()
{
    const QSignalSpy moved(area_.get(), &ImgDispA::mouseMoved);
    QMouseEvent quiet(QEvent::MouseMove, QPointF(10, 10), Qt::NoButton, Qt::NoButton,
                      Qt::AltModifier);
    QApplication::sendEvent(area_.get(), &quiet);
    QCOMPARE(moved.size(), 0);
    QMouseEvent loud(QEvent::MouseMove, QPointF(15, 25), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(area_.get(), &loud);
    QCOMPARE(moved.size(), 1);
    QCOMPARE(moved[0][0].toDouble(), 1.5);
    QCOMPARE(moved[0][1].toDouble(), 2.5);
}

void TestImageArea::viewIsKeptWhenTheImageChanges()
{
    area_->setSelectedArea(1, 1, 5, 5);
    area_->setViewWAsSelectedArea();
    const QImage other(40, 40, QImage::Format_Grayscale8);
    area_->setImage({&other, 40, 40, 0.0, 1.0});
    QCOMPARE(area_->viewWindow(), QRectF(1, 1, 4, 4));
    area_->setImage({});
    area_->resetImageViewWindow();
    QCOMPARE(area_->viewWindow(), QRectF(1, 1, 4, 4));
    area_->grab();
}

void TestImageArea::selectionByCommandCanBeRecalled()
{
    area_->setSelectedArea(1, 2, 3, 4);
    area_->recallOldSelectedArea();
    QVERIFY(!area_->hasSelection());
    area_->setSelectedArea(1, 2, 3, 4);
    area_->setSelectedArea(9, 8, 7, 6);
    QCOMPARE(area_->area(), QRectF(9, 8, -2, -2));
    area_->recallOldSelectedArea();
    QVERIFY(area_->hasSelection());
    QCOMPARE(area_->area(), QRectF(1, 2, 2, 2));
}

void TestImageArea::viewImageIsAPixelLarger()
{
    area_->setSelectedArea(2, 3, 6, 7);
    area_->setViewWAsSelectedArea();
    QCOMPARE(area_->viewImage().size(), QSize(5, 5));
    area_->setImage({});
    QVERIFY(area_->viewImage().isNull());
}

void TestImageArea::viewBeyondTheImageLeavesTheRestWhite()
{
    area_->setFrameShape(QFrame::NoFrame);
    area_->setSelectedArea(-20, -10, 60, 30); // the image fills the second quarter each way
    area_->setViewWAsSelectedArea();
    const QImage shown = area_->grab().toImage();
    for (const QPoint& inside : {QPoint(51, 26), QPoint(98, 48)})
        QCOMPARE(shown.pixelColor(inside), QColor(100, 100, 100));
    for (const QPoint& outside : {QPoint(48, 30), QPoint(102, 30), QPoint(60, 23), QPoint(60, 52)})
        QCOMPARE(shown.pixelColor(outside), QColor(Qt::white));
    QCOMPARE(area_->coord.realToScreenX(0), 50.0);
}

void TestImageArea::viewWithoutLimitsCostsNothing()
{
    constexpr int low = std::numeric_limits<int>::min();
    constexpr int high = std::numeric_limits<int>::max();
    area_->setSelectedArea(low, low, high, high);
    area_->setViewWAsSelectedArea();
    area_->grab();
    QCOMPARE(area_->viewImage().size(), picture_.size());
}

void TestImageArea::overLayerShowsTheMap()
{
    const QSignalSpy range(area_.get(), &ImgDispA::rangeShown);
    area_->setShowOverLayer(true);
    QVERIFY(!area_->currentImage());
    area_->grab();
    QCOMPARE(range.size(), 0);
    {
        Analyzed2DRes map(QStringLiteral("map"));
        map.prepare(AnalyzeCond(20, 10, 0, 0, QRectF(0, 0, 20, 10), -1, -1));
        map.setData(3, 3, 1, 1, 7.0);
        map.setData(8, 3, 1, 1, -2.0);
        map.genImg();
        area_->setAnalyzedRes(&map);
        QVERIFY(area_->currentImage() == map.img());
        area_->grab();
        QCOMPARE(range.last()[0].toDouble(), -2.0);
        QCOMPARE(range.last()[1].toDouble(), 7.0);
    }
    // A map that is gone is not shown any more.
    QVERIFY(!area_->currentImage());
    area_->grab();
}

void TestImageArea::inverseComparisonInY()
{
    QVERIFY(area_->isInSelectedArea(100, 100));
    area_->setSelectedArea(2, 2, 6, 6);
    QVERIFY(!area_->isInSelectedArea(4, 4)); // deliberate: see the declaration
    area_->setSelectedArea(2, 6, 6, 2);
    QVERIFY(area_->isInSelectedArea(4, 4));
}

void TestImageArea::layersArePaintedInOrder()
{
    connect(area_.get(), &DispA::drawImage2, this,
            [](QPainter* p) { p->fillRect(0, 0, 10, 10, Qt::red); });
    const QImage shown = area_->grab().toImage();
    QCOMPARE(shown.pixelColor(5, 5), QColor(Qt::red));
    QCOMPARE(shown.pixelColor(50, 50), QColor(100, 100, 100));
}

void TestImageArea::nearerHandleOfTheBarIsDragged()
{
    ColorBar bar;
    bar.resize(20, 100);
    const QSignalSpy updating(&bar, &ColorBar::cBarUpdating);
    const QSignalSpy updated(&bar, &ColorBar::cBarUpdated);
    QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, {5, 80});
    QVERIFY(bar.dragging);
    QMouseEvent move(QEvent::MouseMove, QPointF(5, 70), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&bar, &move);
    QTest::mouseRelease(&bar, Qt::LeftButton, Qt::NoModifier, {5, 70});
    QCOMPARE(bar.lowHandle, 0.3);
    QCOMPARE(bar.highHandle, 1.0);
    QCOMPARE(updating.size(), 1);
    QCOMPARE(updated.size(), 1);
    // Half way between both handles neither is taken, yet the click is told.
    bar.lowHandle = 0.25;
    bar.highHandle = 0.75;
    QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, {5, 50});
    QVERIFY(!bar.dragging);
    QTest::mouseRelease(&bar, Qt::LeftButton, Qt::NoModifier, {5, 50});
    QCOMPARE(updated.size(), 2);
    bar.setRange(-1, 5);
    QCOMPARE(bar.rangeMax, 5.0);
    const QColor grey = bar.colorOfH(60);
    QCOMPARE(grey.red(), grey.blue());
    bar.highHandle = bar.lowHandle; // a ramp without a width paints, and crashes nothing
    bar.paintCBar();
}

QTEST_MAIN(TestImageArea)
#include "test_image_area.moc"
