#include "display/ChCoord.h"
#include "display/CrossSView.h"
#include "display/FileDialogs.h"
#include "display/MouseC.h"
#include "display/SmallWidgets.h"

#include <QPushButton>
#include <QtTest>

#include <cmath>

/// Plot coordinates, the mouse's record, dialogs and the cross sections.
class TestSmallWidgets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void realAndScreenValuesAreInverse()
    {
        ChCoord c;
        c.setScreenArea(0, 207, 333, 0); // real y grows upward
        c.applyMargins();
        c.setRealArea(8900, -1, 9100, 3);
        QCOMPARE(QRectF(QPointF(c.plotX0, c.plotY1), QPointF(c.plotX1, c.plotY0)),
                 QRectF(QPointF(33, 10), QPointF(317, 187))); // margins cut to whole pixels
        QVERIFY(c.realToScreenX(9100) == c.plotX1 && c.realToScreenY(3) == c.plotY1);
        for (const double v : {8900.0, 8987.5, 9200.0})
            QVERIFY(qAbs(c.screenToRealX(c.realToScreenX(v)) - v) < 1e-9);
        QVERIFY(c.screenToRealClampedX(-1e6) == 8900 && c.screenToRealClampedY(1e6) == -1);
        QVERIFY(c.nearPlotEdgeX(c.plotX0 + 1) && c.nearPlotEdgeX(c.plotX1 - 1));
        QVERIFY(!c.nearPlotEdgeX(170) && !c.nearAreaEdgeY(100)); // y0 above y1
        QVERIFY(c.nearAreaEdgeY(5) && c.nearAreaEdgeY(200));
    }

    void ticksAreRound()
    {
        const double rows[][5] = {{8901, 9050, 20, 8920, 9040}, // min, max; step, first, last
                                  {0.1, 3.4, 0.5, 0.5, 3},
                                  {-3.5, 3.6, 1, -3, 3}};
        for (const auto& row : rows) {
            double found[3];
            ChCoord::autoTicks(row[0], row[1], found[0], found[1], found[2]);
            for (int i = 0; i < 3; ++i)
                QCOMPARE(found[i], row[2 + i]);
        }
    }

    void mouseIsRecorded()
    {
        QCOMPARE(MouseC::mouseAction(Qt::LeftButton, Qt::ControlModifier | Qt::AltModifier), 6);
        QCOMPARE(MouseC::mouseAction(Qt::RightButton, Qt::ControlModifier | Qt::ShiftModifier), 12);
        const auto at = [](double x) {
            return QMouseEvent(QEvent::MouseMove, {x, 7}, Qt::LeftButton, {}, Qt::ShiftModifier);
        };
        MouseC mouse;
        for (const double x : {-1.4, -0.5, 2.5}) { // halves round up
            mouse.recordMove(at(x));
            QCOMPARE(mouse.pos.x(), int(std::floor(x + 0.5)));
        }
        mouse.recordPress(at(4));
        QCOMPARE(mouse.pressAction(), int(MouseC::Shift));
        mouse.recordRelease(at(6));
        mouse.recordDoubleClick(at(9)); // leaves the position alone: deliberate
        QCOMPARE(QPoint(mouse.pos.x(), mouse.doubleClickPos.x()), QPoint(6, 9));
    }

    void dialogsOfAGroupFollowOneFolderWhileTheyLive()
    {
        const QTemporaryDir dir;
        FDGroup group;
        FileDialog a;
        {
            SelectImgDialog b;
            for (FileDialog* dialog : QVector<FileDialog*>{&a, &b, &b})
                group.add(dialog);
            QCOMPARE(group.dialogs().size(), 2);
            Q_EMIT a.directoryEntered(dir.path());
            QCOMPARE(b.directory().absolutePath(), dir.path());
        }
        group.directoryEntered(QDir::rootPath());
        group.currentChanged(dir.filePath("none.tif")); // no such file: no folder to follow
        QCOMPARE(a.directory().absolutePath(), QDir::rootPath());
    }

    void dialogMadeLateIsWhereTheGroupIs()
    {
        const QTemporaryDir dir;
        FDGroup group;
        QWidget owner;
        LateDialog late([&owner] { return new FileDialog(&owner); }, &owner);
        group.add(&late);
        group.add(&late);
        group.directoryEntered(dir.path());
        QVERIFY(!late.made() && group.dialogs().isEmpty());
        QSignalSpy chosen(&late, &LateDialog::filesSelected);
        late.show();
        QCOMPARE(late.made()->directory().absolutePath(), dir.path());
        QCOMPARE(group.dialogs(), QVector<QFileDialog*>{late.made()});
        Q_EMIT late.made()->directoryEntered(QDir::rootPath());
        Q_EMIT late.made()->filesSelected({"a", "b"});
        QCOMPARE(chosen.size(), 1);
        late.setFolder(dir.path());
        QCOMPARE(late.get()->directory().absolutePath(), dir.path());
    }

    void crossSectionDrawsAnything()
    {
        CrossSView view;
        view.setFrameShape(QFrame::NoFrame);
        view.resize(100, 60);
        view.setCursorPos(-1);
        view.setPalette(QPalette(Qt::white, Qt::darkBlue)); // a dark desktop
        const auto middle = [&view](const QVector<QPointF>& points) {
            view.setPoints(points);
            return view.grab().toImage().pixelColor(75, 30);
        };
        QCOMPARE(middle({}), view.palette().color(QPalette::Window)); // no paper
        // One infinite value flattens nothing: the line is half way between 0 and 4.
        QCOMPARE(middle({{0, 0}, {49, 4}, {50, HUGE_VAL}, {51, 2}, {100, 2}}), QColor(Qt::black));
        QCOMPARE(middle({{0, 7}, {100, 7}}), QColor(Qt::black));
        QCOMPARE(view.grab().toImage().pixelColor(75, 5), QColor(Qt::white));
        view.setVertical(true);
        middle({{0, std::nan("")}, {1, HUGE_VAL}, {2, 3}, {3, -HUGE_VAL}});
    }

    void uprightWidgetsReadDownward()
    {
        QPushButton flat("Vertical");
        VPushButton button;
        button.setText("Vertical");
        QCOMPARE(button.sizeHint(), flat.sizeHint().transposed());
        button.resize(60, 120);
        const QImage shown = button.grab().toImage();
        const auto dark = [&](int x0, int x1, int y0, int y1) {
            for (int i = 0; i < (x1 - x0) * (y1 - y0); ++i)
                if (shown.pixelColor(x0 + i % (x1 - x0), y0 + i / (x1 - x0)).lightness() < 60)
                    return true;
            return false;
        };
        QVERIFY(dark(20, 40, 35, 55) && dark(20, 40, 65, 85));
        QVERIFY(!dark(5, 15, 10, 110) && !dark(45, 55, 10, 110));
    }
};

QTEST_MAIN(TestSmallWidgets)
#include "test_small_widgets.moc"
