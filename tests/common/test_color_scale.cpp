#include "common/ColorScale.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

ColorScale scaleWith(int format, double low = 0.0, double high = 1.0)
{
    ColorScale scale;
    scale.imageFormat = format;
    scale.lowHandle = low;
    scale.highHandle = high;
    return scale;
}

} // namespace

class TestColorScale : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void greyValueFollowsTheHandles_data();
    void greyValueFollowsTheHandles();
    void hotRampRunsBlackRedYellowWhite_data();
    void hotRampRunsBlackRedYellowWhite();
    void pixelSizeFollowsTheFormat();
    void rangeDoesNotChangeTheMapping();
    void plotColorsRepeatAfterNine();
};

void TestColorScale::greyValueFollowsTheHandles_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("grey");
    QTest::newRow("minimum") << 0.0 << 1.0 << 0.0 << 0;
    QTest::newRow("maximum falls on the limit") << 0.0 << 1.0 << 1.0 << 255;
    QTest::newRow("truncated") << 0.0 << 1.0 << 127.999 / 256 << 127;
    QTest::newRow("below") << 0.0 << 1.0 << -3.0 << 0;
    QTest::newRow("above") << 0.0 << 1.0 << 7.0 << 255;
    QTest::newRow("stretched") << 0.25 << 0.75 << 0.5 << 128;
    QTest::newRow("outside the handles") << 0.25 << 0.75 << 0.2 << 0;
    QTest::newRow("inverted ramp, dark end") << 1.0 << 0.0 << 1.0 << 0;
    QTest::newRow("inverted ramp, bright end") << 1.0 << 0.0 << 0.0 << 255;
    QTest::newRow("inverted ramp, quarter") << 1.0 << 0.0 << 0.25 << 192;
    QTest::newRow("handles together, above") << 0.5 << 0.5 << 0.6 << 255;
    QTest::newRow("handles together, below") << 0.5 << 0.5 << 0.4 << 0;
    QTest::newRow("handles together, 0/0") << 0.5 << 0.5 << 0.5 << 0;
    QTest::newRow("nan") << 0.0 << 1.0 << notANumber << 0;
    QTest::newRow("infinite") << 0.0 << 1.0 << infinite << 255;
    QTest::newRow("minus infinite") << 0.0 << 1.0 << -infinite << 0;
    QTest::newRow("beyond any integer") << 0.0 << 1e-300 << 1e300 << 255;
}

void TestColorScale::greyValueFollowsTheHandles()
{
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(double, value);
    uchar pixel[2] = {7, 7};
    uchar* const end = scaleWith(ColorScale::Grey, low, high).mapValue(value, pixel);
    QCOMPARE(int(end - pixel), 1);
    QTEST(int(pixel[0]), "grey");
    QCOMPARE(int(pixel[1]), 7);
}

void TestColorScale::hotRampRunsBlackRedYellowWhite_data()
{
    QTest::addColumn<double>("index");
    QTest::addColumn<QColor>("color");
    QTest::newRow("black") << 0.0 << QColor(0, 0, 0);
    QTest::newRow("red rises") << 100.0 << QColor(100, 0, 0);
    QTest::newRow("red") << 255.0 << QColor(255, 0, 0);
    QTest::newRow("first green") << 256.0 << QColor(255, 1, 0);
    QTest::newRow("yellow") << 510.0 << QColor(255, 255, 0);
    QTest::newRow("first blue") << 511.0 << QColor(255, 255, 1);
    QTest::newRow("white") << 765.0 << QColor(255, 255, 255);
    QTest::newRow("end") << 766.0 << QColor(255, 255, 255);
    QTest::newRow("nan") << notANumber << QColor(0, 0, 0);
}

void TestColorScale::hotRampRunsBlackRedYellowWhite()
{
    QFETCH(double, index);
    // Half an index further, so that rounding of the division can't reach the index below.
    QTEST(scaleWith(ColorScale::Hot).colorOfValue((index + 0.5) / 766), "color");
}

void TestColorScale::pixelSizeFollowsTheFormat()
{
    uchar pixel[3] = {1, 2, 3};
    QCOMPARE(int(scaleWith(ColorScale::Hot).mapValue(0.5, pixel) - pixel), 3);
    QCOMPARE(int(scaleWith(5).mapValue(0.5, pixel) - pixel), 0);
    QCOMPARE(scaleWith(5).colorOfValue(0.5), QColor(Qt::black));
    QCOMPARE(scaleWith(ColorScale::Grey).colorOfValue(0.5), QColor(128, 128, 128));
    for (const int width : {1, 2, 3, 4, 5, 257}) {
        QCOMPARE(displayStride(ColorScale::Grey, width),
                 QImage(width, 1, QImage::Format_Grayscale8).bytesPerLine());
        QCOMPARE(displayStride(ColorScale::Hot, width),
                 QImage(width, 1, QImage::Format_RGB888).bytesPerLine());
    }
    QCOMPARE(displayStride(5, 10), 0);
}

void TestColorScale::rangeDoesNotChangeTheMapping()
{
    ColorScale scale;
    ColorScale other;
    other.rangeMax = 100;
    QVERIFY(scale.mapsLike(other));
    other.lowHandle = 0.1;
    QVERIFY(!scale.mapsLike(other));

    QCOMPARE(currentColorScale().highHandle, 1.0);
    theColorBar = &other;
    QCOMPARE(&currentColorScale(), &other);
    theColorBar = nullptr;
}

void TestColorScale::plotColorsRepeatAfterNine()
{
    QCOMPARE(plotColor(3), QColor(255, 200, 0));
    QCOMPARE(plotColor(8), QColor(0, 200, 255));
    QCOMPARE(plotColor(9), plotColor(0));
    QCOMPARE(plotColor(-1), plotColor(8));
}

QTEST_APPLESS_MAIN(TestColorScale)
#include "test_color_scale.moc"
