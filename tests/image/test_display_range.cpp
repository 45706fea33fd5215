#include "image/DisplayRange.h"
#include "maps/Analyzed2DRes.h"

#include <QtTest>

#include <cmath>

/// Ranges that follow from values: those of stacks, and of maps.
class TestDisplayRange : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aHotPixelDoesNotDarkenTheStack()
    {
        const TiffStack images{ramp(65000), ramp(65000)};
        StackRange range;
        const ValueRange percent = *range.of(images, RangeRule::Percent1, false);
        QVERIFY(std::abs(percent.min - 110.0) < 2.0 && std::abs(percent.max - 1089.0) < 2.0);
        QVERIFY(range.of(images, RangeRule::Percent5, false)->min > percent.min);
        QCOMPARE(*range.of(images, RangeRule::All, false), (ValueRange{100.0, 65000.0}));
        QVERIFY(!range.of({}, RangeRule::Percent1, false));
    }

    void aGrowingStackIsMeasuredAtEachDoubling()
    {
        TiffStack images{ramp(1000)};
        StackRange range;
        const ValueRange first = *range.of(images, RangeRule::All, true);
        images = {images.first(), ramp(2000), ramp(3000)};
        QCOMPARE(range.of(images, RangeRule::All, true)->max, 3000.0);
        images.append(ramp(4000));
        QCOMPARE(range.of(images, RangeRule::All, true)->max, 3000.0);
        QCOMPARE(range.of(images, RangeRule::All, false)->max, 4000.0);
        QVERIFY(first.max < 2000.0);
    }

    void aFewEqualOrStrangeValuesHaveARangeToo()
    {
        std::vector<double> two{0, 0, 0, 0, 0, 0, 0, 0, 0, 5};
        for (int i = 0; i < 500; ++i)
            two.push_back(0.0);
        QCOMPARE(*ruledRange(two, RangeRule::Percent1), (ValueRange{0.0, 5.0}));
        std::vector<double> none;
        QVERIFY(!ruledRange(none, RangeRule::All));
        auto image = std::make_unique<TiffData>();
        QVERIFY(image->allocate(4, 4, TiffData::Floats));
        for (int y = 0; y < 4; ++y)
            std::fill_n(image->row<float>(y), 4, float(qQNaN()));
        StackRange range;
        range.of({SharedImage(std::move(image))}, RangeRule::Percent1, false);
    }

    /// As it is after a walk: good values round 0.5, some noise far off that no percentile would
    /// leave away, and positions without an edge whose 0 is no result.
    void automaticRangeOfAMapIsThatOfItsEdges()
    {
        Analyzed2DRes map("m");
        map.prepare(AnalyzeCond(40, 40, 0, 0, QRectF(0, 0, 40, 40), -1, -1));
        for (int i = 0; i < 1600; ++i) {
            const bool edge = i % 2 == 0;
            map.setData(i % 40, i / 40, 0, 0, edge ? 0.4 + 0.2 * (i % 89) / 88 : -7.0);
            if (i % 20 == 0)
                map.setData(i % 40, i / 40, 0, 0, -141.0);
            if (!edge)
                map.markWithoutEdge(i % 40, i / 40, 0, 0);
        }
        map.genImg();
        QCOMPARE(map.positionsWithoutEdge(), 800);
        QCOMPARE(map.scale().min, -141.0); // by itself: of all
        map.setDisplay({{RangeRule::Percent1, {}}, true});
        QVERIFY(map.scale().min > -0.5 && map.scale().min < 0.4 && map.scale().max < 0.61);
        QVERIFY(map.img()->format() == QImage::Format_RGB888);
        QCOMPARE(map.img()->pixelColor(1, 0), QColor(96, 112, 128));
        QVERIFY(qGray(map.img()->pixel(2, 0)) == qRed(map.img()->pixel(2, 0)));
        map.setData(1, 0, 0, 0, 0.5); // an edge after all
        QCOMPARE(map.positionsWithoutEdge(), 799);
        map.setDisplay({{RangeRule::All, ValueRange{0.0, 1.0}}, false});
        QCOMPARE(map.scale(), (ValueRange{0.0, 1.0}));
        QVERIFY(map.img()->format() == QImage::Format_Grayscale8);
        QCOMPARE(map.scaleForSave(false, 0, 1).min, -141.0);
    }

private:
    /// Counts of 100 to 1099, each as often, and one hot pixel.
    static SharedImage ramp(quint16 hot)
    {
        auto image = std::make_unique<TiffData>();
        image->allocate(100, 100, TiffData::TiffWords);
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 100; ++x)
                image->row<quint16>(y)[x] = quint16(100 + (x * 10 + y * 37) % 1000);
            if (y == 50)
                image->row<quint16>(y)[50] = hot;
            image->noteExtremes(y);
        }
        return image;
    }
};

QTEST_GUILESS_MAIN(TestDisplayRange)
#include "test_display_range.moc"
