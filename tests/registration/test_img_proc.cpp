#include "display/ProcDispA.h"
#include "registration/ImgProc.h"
#include "registration/ProcPicture.h"
#include "support/DriftingSample.h"
#include "support/LogCapture.h"
#include "support/RandomStack.h"

#include <QtTest>
#include <QtWidgets>

namespace {

SharedImage driftingImage(int i, bool softBeam = false)
{
    return makeImage(DriftingSample::width, DriftingSample::height, TiffData::TiffWords,
                     [&](int x, int y) { return DriftingSample::counts(i, x, y, softBeam); });
}

QString textOf(const ImgProc& panel, const char* field)
{
    return panel.findChild<QLineEdit*>(field)->text();
}

void click(const ImgProc& panel, const char* button)
{
    panel.findChild<QAbstractButton*>(button)->click();
}

void type(const ImgProc& panel, const char* field, const QString& text)
{
    auto* const edit = panel.findChild<QLineEdit*>(field);
    edit->setText(text);
    Q_EMIT edit->editingFinished();
}

} // namespace

/// The panel of registration by itself.
class TestImgProc : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void thresholdAndSliderFollowEachOther()
    {
        ImgProc panel;
        panel.setImage(
            makeImage(4, 1, TiffData::TiffWords, [](int x, int) { return 100 + 100 * x; }));
        auto* const slider = panel.findChild<QSlider*>("BinThVSlider");
        QCOMPARE(textOf(panel, "MinEdgeV") + ' ' + textOf(panel, "MaxEdgeV"), QString("100 400"));
        slider->setValue(250);
        QCOMPARE(textOf(panel, "BinThV"), QString("175"));
        type(panel, "BinThV", "300");
        QCOMPARE(slider->value(), 667);
        QCOMPARE(textOf(panel, "BinThV"), QString("300"));
        // The next image has the same place in its own range; so has a range that is typed.
        slider->setValue(500);
        panel.setImage(
            makeImage(4, 1, TiffData::TiffWords, [](int x, int) { return 10 * x + 10; }));
        QCOMPARE(textOf(panel, "BinThV"), QString("25"));
        type(panel, "MaxEdgeV", "110");
        QCOMPARE(textOf(panel, "BinThV"), QString("60"));
    }

    /// By "Auto Shift" and "Set Shift", each image from where the one before was found.
    void autoShiftFindsTheDriftFromImageToImage_data()
    {
        QTest::addColumn<bool>("edges");
        QTest::addColumn<bool>("byItself");
        QTest::newRow("counts") << false << false;
        QTest::newRow("edges") << true << false;
        QTest::newRow("by itself") << false << true;
    }

    void autoShiftFindsTheDriftFromImageToImage()
    {
        QFETCH(const bool, edges);
        QFETCH(const bool, byItself);
        ImgProc panel;
        QSignalSpy set(&panel, &ImgProc::imgShift);
        panel.findChild<QCheckBox*>("EdgeDetect")->setChecked(edges);
        panel.setThreshold(edges ? 300 : 500);
        panel.setImage(driftingImage(0, edges));
        click(panel, "SetRef");
        if (byItself) {
            panel.setView(ImgProc::ComparedView);
            click(panel, "AAutoShift");
            click(panel, "ASetShift");
        }
        for (int i = 1; i < DriftingSample::images; ++i) {
            panel.setImage(driftingImage(i, edges));
            if (!byItself) {
                click(panel, "ShiftAuto");
                click(panel, "SetShift");
            }
            QCOMPARE(set.size(), i);
            const QPoint shift(set.last()[0].toInt(), set.last()[1].toInt());
            QCOMPARE(shift, DriftingSample::backTo(0, i));
        }
        QVERIFY(panel.lastProduct() > (edges ? 0.3 : 0.99));
    }

    /// What the reference's image is moved by counts too.
    void theShiftBringsTheImageToWhereTheReferenceIs()
    {
        ImgProc panel;
        panel.setImage(driftingImage(3));
        click(panel, "SetRef");
        panel.setReferenceShift({4, -6});
        panel.setImage(driftingImage(5));
        type(panel, "ShiftX", "4");
        type(panel, "ShiftY", "-6");
        click(panel, "ShiftAuto");
        QCOMPARE(panel.shift(), DriftingSample::backTo(3, 5) + QPoint(4, -6));
    }

    void theComparisonHasRedGreenAndTheProduct()
    {
        ImgProc panel;
        // Columns 1 and 2 are set in the reference, 2 and 3 in the image.
        const auto bright = [](int first) {
            return makeImage(6, 2, TiffData::TiffWords,
                             [first](int x, int) { return x == first || x == first + 1 ? 9 : 1; });
        };
        panel.setImage(bright(1));
        click(panel, "SetRef");
        panel.setImage(bright(2));
        panel.setView(ImgProc::ComparedView);
        QCOMPARE(textOf(panel, "NormScolarP"), QString("0.5"));
        auto* const area = panel.findChild<ProcDispA*>("Picture");
        area->resize(area->size().expandedTo(area->minimumSize()));
        const auto colours = [area] {
            const QImage shown = area->grab().toImage();
            QVector<QRgb> row;
            for (int x = 0; x < 6; ++x)
                row.append(shown.pixel((2 * x + 1) * shown.width() / 12, 5));
            return row;
        };
        const QRgb black = qRgb(0, 0, 0);
        const QRgb red = qRgb(255, 0, 0);
        const QRgb green = qRgb(0, 255, 0);
        const QRgb yellow = qRgb(255, 255, 0);
        QCOMPARE(colours(), (QVector<QRgb>{black, green, yellow, red, black, black}));
        click(panel, "ShiftL");
        QCOMPARE(colours(), (QVector<QRgb>{black, yellow, yellow, black, black, outsideColour()}));
        QCOMPARE(textOf(panel, "NormScolarP"), QString("1"));
        QCOMPARE(panel.shift(), QPoint(-1, 0));
        click(panel, "ShiftD");
        QCOMPARE(panel.shift(), QPoint(-1, 1));
    }

    void whatIsMissingCostsALineAndNothingElse()
    {
        ImgProc panel;
        LogCapture log;
        panel.setView(ImgProc::ComparedView);
        QVERIFY(log.linesWith("no bin image") > 0);
        panel.setImage(driftingImage(0));
        click(panel, "ShiftAuto");
        QVERIFY(log.linesWith("no ref bin image") > 0);
        click(panel, "SetRef");
        const double before = panel.lastProduct();
        panel.setImage(makeImage(5, 5, TiffData::TiffWords, [](int x, int) { return x; }));
        type(panel, "ShiftX", "2");
        click(panel, "ShiftAuto");
        QVERIFY(log.linesWith("size mis-match") > 0);
        QCOMPARE(panel.shift(), QPoint(2, 0));
        QCOMPARE(panel.lastProduct(), before);
        // What is no whole number counts as 0, and what is too large as the size.
        type(panel, "ShiftX", "2.5");
        type(panel, "ShiftY", "-2000000000");
        QCOMPARE(panel.shift(), QPoint(0, -5));
        panel.setImage(nullptr);
        click(panel, "ShiftAuto");
        QVERIFY(panel.shift().isNull());
    }

    void theWheelLeavesThePixelUnderTheCursor()
    {
        ProcDispA area;
        area.resize(200, 100);
        QImage picture(40, 20, QImage::Format_RGB888);
        area.setImage(&picture);
        area.mouse.moveTo({50, 75});
        area.wheelFactor = 0.5;
        area.onWheelMoved();
        QCOMPARE(area.viewWindow(), QRectF(5, 7.5, 20, 10));
        // Pictures of the same size keep the view; those of another come into view whole.
        QImage next(40, 20, QImage::Format_RGB888);
        area.setImage(&next);
        QCOMPARE(area.viewWindow(), QRectF(5, 7.5, 20, 10));
        QSignalSpy moved(&area, &ProcDispA::mouseMoved);
        area.onMouseMoved();
        QCOMPARE(moved.takeFirst(), (QVariantList{10.0, 15.0}));
        QImage other(8, 8, QImage::Format_RGB888);
        area.setImage(&other);
        QCOMPARE(area.viewWindow(), QRectF(0, 0, 8, 8));
    }
};

QTEST_MAIN(TestImgProc)
#include "test_img_proc.moc"
