#include "display/ColorBar.h"
#include "display/ImgDispA.h"
#include "maps/Analyzed2DRes.h"

#include <QWheelEvent>
#include <QtTest>

#include <climits>

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
        area_->setSelectedArea(2, 6, 6, 2);
        QVERIFY(area_->selectedArea() == QRectF(2, 6, 4, -4) && area_->isInSelectedArea(4, 4));
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
        area_->grab();
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
