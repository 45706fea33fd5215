#include "display/ColorBar.h"
#include "display/ImgDispA.h"
#include "maps/Analyzed2DRes.h"

#include <QWheelEvent>
#include <QtTest>

#include <climits>
#include <cmath>

/// The image area and the colour bar with a real mouse.
class TestImageArea : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        picture_.fill(100);
        area_ = std::make_unique<ImgDispA>();
        area_->setFrameShape(QFrame::NoFrame);
        area_->resize(200, 100); // ten widget pixels an image pixel
        area_->setImage({&picture_, 20, 10, 0.0, 1.0});
    }

    void dragSelectsAnAreaUntilARightClick()
    {
        const QSignalSpy selected(area_.get(), &ImgDispA::newAreaSelected);
        drag(area_.get(), {150, 80}, {50, 20});
        QVERIFY(area_->hasSelection() &&
                area_->selectedArea() == QRectF(5, 2, 10, 6)); // made normal
        QTest::mouseClick(area_.get(), Qt::RightButton, {}, {10, 10});
        QVERIFY(!area_->hasSelection());
        drag(area_.get(), {50, 20}, {50, 90});
        drag(area_.get(), {50, 20}, {50, 20}, Qt::ControlModifier);
        QVERIFY(!area_->hasSelection());
        QCOMPARE(area_->viewWindow(), whole_);
        QCOMPARE(selected.size(), 1);
    }

    /// A click is a way of fewer than 3 pixels of the screen; also one that went further meanwhile.
    void clickLeavesTheSelectionAsItWas()
    {
        drag(area_.get(), {50, 20}, {150, 80});
        const QRectF made(5, 2, 10, 6);
        for (const auto keys : {Qt::NoModifier, Qt::ControlModifier}) {
            for (const QPoint& end : {QPoint(50, 20), QPoint(52, 18), QPoint(50, 90)}) {
                drag(area_.get(), {50, 20}, end, keys);
                QCOMPARE(area_->selectedArea(), made);
            }
        }
        QTest::mousePress(area_.get(), Qt::LeftButton, {}, {10, 10});
        move(area_.get(), {90, 90}, Qt::LeftButton);
        QCOMPARE(area_->selectedArea(), QRectF(1, 1, 8, 8));
        move(area_.get(), {11, 11}, Qt::LeftButton);
        QTest::mouseRelease(area_.get(), Qt::LeftButton, {}, {11, 11});
        QVERIFY(area_->selectedArea() == made && area_->viewWindow() == whole_);
        drag(area_.get(), {52, 18}, {51, 15});
        QCOMPARE(area_->selectedArea(), QRectF(5.1, 1.5, 0.1, 0.3));
        area_->recallOldSelectedArea();
        QCOMPARE(area_->selectedArea(), made);
    }

    void imagesOfAnotherSizeResetViewAndSelection()
    {
        area_->setSelectedArea(1, 1, 3, 3);
        area_->setViewWAsSelectedArea();
        const QRectF chosen(1, 1, 2, 2);
        area_->setImageSize({20, 10}); // chosen while there was none
        QVERIFY(area_->selectedArea() == chosen && area_->viewWindow() == chosen);
        area_->setImageSize({});
        area_->setImageSize({20, 10});
        QVERIFY(area_->hasSelection() && area_->viewWindow() == chosen);
        area_->setSelectedArea(1, 1, 3, 3);
        area_->setImageSize({});
        area_->setImageSize({30, 10});
        QVERIFY(!area_->hasSelection());
        QCOMPARE(area_->viewWindow(), QRectF(0, 0, 30, 10));
        area_->setImageSize({});
        area_->setSelectedArea(1, 1, 3, 3); // for those to come
        area_->setImageSize({20, 10});
        QVERIFY(area_->selectedArea() == chosen && area_->viewWindow() == whole_);
    }

    void dragWithKeysMovesTheView()
    {
        drag(area_.get(), {50, 20}, {150, 80}, Qt::ControlModifier);
        QCOMPARE(area_->viewWindow(), QRectF(5, 2, 10, 6));
        area_->clearSelection();
        area_->resetImageViewWindow();
        drag(area_.get(), {100, 50}, {80, 60}, Qt::ShiftModifier);
        QCOMPARE(area_->viewWindow(), QRectF(2, -1, 20, 10));
        QVERIFY(!area_->hasSelection());
    }

    void wheelZoomsRoundTheCursorAndInStripsOneWay()
    {
        wheel({100, 25}, 120);
        const QRectF zoomed = area_->viewWindow();
        QCOMPARE(zoomed.size(), QSizeF(20, 10) / 1.1);
        QVERIFY(qAbs(zoomed.x() + 0.5 * zoomed.width() - 10) < 1e-12);
        QVERIFY(qAbs(zoomed.y() + 0.25 * zoomed.height() - 2.5) < 1e-12);
        area_->resetImageViewWindow();
        wheel({5, 50}, -120);
        QCOMPARE(area_->viewWindow().size(), QSizeF(20, 11));
        area_->setSquarePixels(true);
        area_->resetImageViewWindow();
        wheel({5, 50}, -120);
        QCOMPARE(area_->viewWindow().size(), QSizeF(22, 11));
    }

    void wheelGoesByTheWayOfItsTurn_data()
    {
        QTest::addColumn<QPoint>("pixels");
        QTest::addColumn<QPoint>("angle");
        QTest::addColumn<Qt::ScrollPhase>("phase");
        QTest::addColumn<double>("notches");
        QTest::newRow("two notches") << QPoint() << QPoint(0, 240) << Qt::NoScrollPhase << 2.0;
        QTest::newRow("a fine wheel") << QPoint() << QPoint(3, -15) << Qt::NoScrollPhase << -0.125;
        QTest::newRow("sideways") << QPoint() << QPoint(120, 40) << Qt::NoScrollPhase << 0.0;
        QTest::newRow("nothing") << QPoint() << QPoint() << Qt::ScrollEnd << 0.0;
        QTest::newRow("touchpad") << QPoint(2, 30) << QPoint(0, 1) << Qt::ScrollUpdate << 0.5;
        QTest::newRow("touchpad sideways")
            << QPoint(-30, 2) << QPoint(0, 60) << Qt::ScrollUpdate << 0.0;
        QTest::newRow("pixels of the driver")
            << QPoint(0, 120) << QPoint(0, 120) << Qt::NoScrollPhase << 1.0;
    }
    void wheelGoesByTheWayOfItsTurn()
    {
        QFETCH(QPoint, pixels);
        QFETCH(QPoint, angle);
        QFETCH(Qt::ScrollPhase, phase);
        QFETCH(double, notches);
        const QSignalSpy turned(area_.get(), &DispA::wheelMoved0);
        const QPointF at(100, 50);
        move(area_.get(), at, Qt::NoButton);
        QWheelEvent turn(at, at, pixels, angle, Qt::NoButton, {}, phase, false);
        QApplication::sendEvent(area_.get(), &turn);
        QCOMPARE(turned.size(), notches != 0.0 ? 1 : 0);
        QCOMPARE(area_->viewWindow().width(), 20 * std::pow(1.1, -notches));
    }

    void altKeepsTheMouseQuiet()
    {
        const QSignalSpy moved(area_.get(), &ImgDispA::mouseMoved);
        move(area_.get(), {10, 10}, Qt::NoButton, Qt::AltModifier);
        move(area_.get(), {15, 25}, Qt::NoButton);
        QCOMPARE(moved.value(0).mid(0, 2), (QVariantList{1.5, 2.5}));
    }

    void viewIsKeptWhenTheImageChanges()
    {
        area_->setSelectedArea(2, 3, 6, 7);
        area_->setViewWAsSelectedArea();
        QCOMPARE(area_->viewImage(), picture_.copy(2, 3, 4, 4));
        for (const auto& [factor, cut] : {std::pair(0.75, QRect(2, 3, 4, 4)),    // parts of pixels
                                          std::pair(5.0 / 3, QRect(1, 2, 6, 6)), // are pixels
                                          std::pair(100.0, picture_.rect())}) {
            area_->zoomBy(factor);
            QCOMPARE(area_->viewImage(), picture_.copy(cut));
        }
        area_->setViewWAsSelectedArea();
        const QImage other(40, 40, QImage::Format_Grayscale8);
        area_->setImage({&other, 40, 40, 0.0, 1.0});
        QCOMPARE(area_->viewWindow(), QRectF(2, 3, 4, 4));
        area_->setImage({});
        QVERIFY(area_->viewImage().isNull());
        area_->grab();
    }

    void selectionByCommandCanBeRecalled()
    {
        area_->setSelectedArea(2, 2, 6, 6);
        QVERIFY(!area_->isInSelectedArea(4, 4)); // deliberate: see the declaration
        area_->setSelectedArea(12, 9, 8, 5);
        QCOMPARE(area_->selectedArea(), QRectF(8, 5, 4, 4));
        area_->recallOldSelectedArea();
        QCOMPARE(area_->selectedArea(), QRectF(2, 2, 4, 4));
        area_->clearSelection();
        area_->setSelectedArea(1, 2, 3, 4);
        area_->recallOldSelectedArea();
        QVERIFY(!area_->hasSelection());
    }

    void viewBeyondTheImageLeavesTheRestWhite()
    {
        area_->setSelectedArea(-20, -10, 60, 30); // the image fills the second quarter each way
        area_->setViewWAsSelectedArea();
        const QImage shown = area_->grab().toImage();
        for (const QPoint& in : {QPoint(51, 26), QPoint(98, 48)})
            QCOMPARE(shown.pixelColor(in), QColor(100, 100, 100));
        for (const QPoint& out : {QPoint(48, 30), QPoint(102, 30), QPoint(60, 52)})
            QCOMPARE(shown.pixelColor(out), QColor(Qt::white));
        area_->setSelectedArea(INT_MIN, INT_MIN, INT_MAX, INT_MAX); // and costs nothing
        area_->setViewWAsSelectedArea();
        area_->grab();
        QCOMPARE(area_->viewImage().size(), picture_.size());
    }

    void overLayerShowsTheMapAsLongAsItLives()
    {
        const QSignalSpy range(area_.get(), &ImgDispA::rangeShown);
        area_->setShowOverLayer(true);
        area_->setEmptyText("nothing");
        const QImage empty = area_->grab().toImage();
        area_->setEmptyText({});
        QVERIFY(area_->grab().toImage() != empty);
        QVERIFY(!area_->currentImage() && range.isEmpty());
        {
            Analyzed2DRes map("map");
            map.prepare(AnalyzeCond(20, 10, 0, 0, whole_, -1, -1));
            map.setData(3, 3, 1, 1, 7.0);
            map.setData(8, 3, 1, 1, -2.0);
            map.genImg();
            area_->setAnalyzedRes(&map);
            QVERIFY(area_->currentImage() == map.img());
            area_->grab();
            QCOMPARE(range.last(), (QVariantList{-2.0, 7.0}));
        }
        QVERIFY(!area_->currentImage());
        area_->grab();
    }

    void nearerHandleOfTheBarIsDragged()
    {
        ColorBar bar;
        bar.resize(20, 100);
        const QSignalSpy updating(&bar, &ColorBar::cBarUpdating);
        const QSignalSpy updated(&bar, &ColorBar::cBarUpdated);
        drag(&bar, {5, 80}, {5, 70});
        QCOMPARE(QPointF(bar.lowHandle, bar.highHandle), QPointF(0.3, 1.0));
        QCOMPARE(QPoint(updating.size(), updated.size()), QPoint(1, 1));
        // Half way between both handles neither is taken, yet the click is told.
        bar.highHandle = 0.7;
        QTest::mouseClick(&bar, Qt::LeftButton, {}, {5, 50});
        QCOMPARE(QPointF(bar.lowHandle, bar.highHandle), QPointF(0.3, 0.7));
        QCOMPARE(updated.size(), 2);
        bar.highHandle = bar.lowHandle; // a ramp without a width
        bar.paintCBar();
        QTest::mouseDClick(&bar, Qt::RightButton, {}, {5, 50});
        QCOMPARE(bar.lowHandle, bar.highHandle);
        QTest::mouseDClick(&bar, Qt::LeftButton, {}, {5, 50});
        QCOMPARE(QPointF(bar.lowHandle, bar.highHandle), QPointF(0, 1));
    }

private:
    static void move(QWidget* on, QPointF to, Qt::MouseButtons held,
                     Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QMouseEvent event(QEvent::MouseMove, to, Qt::NoButton, held, keys);
        QApplication::sendEvent(on, &event);
    }
    static void drag(QWidget* on, QPoint from, QPoint to, Qt::KeyboardModifiers keys = {})
    {
        QTest::mousePress(on, Qt::LeftButton, keys, from);
        move(on, to, Qt::LeftButton, keys);
        QTest::mouseRelease(on, Qt::LeftButton, keys, to);
    }
    void wheel(QPoint at, int delta)
    {
        move(area_.get(), at, Qt::NoButton);
        QWheelEvent turn(at, at, {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(area_.get(), &turn);
    }

    const QRectF whole_{0, 0, 20, 10};
    QImage picture_{20, 10, QImage::Format_Grayscale8};
    std::unique_ptr<ImgDispA> area_;
};

QTEST_MAIN(TestImageArea)
#include "test_image_area.moc"
