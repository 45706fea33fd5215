#include "image/TiffData.h"
#include "support/LogCapture.h"
#include "support/RandomStack.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

namespace {

double plainPixel(const TiffData& image, int x, int y)
{
    const int column = x - image.shiftX;
    const int row = y - image.shiftY;
    if (column < 0 || row < 0 || column >= image.width || row >= image.height)
        return 0.0;
    switch (image.pixelType) {
    case TiffData::ImgLongs:
        return image.row<quint32>(row)[column];
    case TiffData::Floats:
        return double(image.row<float>(row)[column]);
    default:
        return image.row<quint16>(row)[column];
    }
}

double plainBlockSum(const TiffData& image, int x, int y, int hw, int vw)
{
    double sum = 0.0;
    for (int yy = y - std::abs(vw); yy <= y + std::abs(vw); ++yy) {
        for (int xx = x - std::abs(hw); xx <= x + std::abs(hw); ++xx)
            sum += plainPixel(image, xx, yy);
    }
    return sum;
}

} // namespace

/// Pixel access of an image: block sums, means, bad pixels, the picture and the stack's sum.
class TestPixels : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void blockSumsAreThoseOfPlainLoops_data();
    void blockSumsAreThoseOfPlainLoops();
    void extremeBlocksAreSurvived();
    void areaMeanCountsBothEnds();
    void neighbourMeanLeavesOutBadNeighbours();
    void pictureFollowsTheScale_data();
    void pictureFollowsTheScale();
    void pictureOfOneValueIsNoFault();
    void shiftedPictureShowsZeroOutside();
    void stackSumInterpolatesAndExtrapolates();
    void errPointsFile_data();
    void errPointsFile();
    void unreadableErrPointsFileEmptiesTheList();
};

void TestPixels::blockSumsAreThoseOfPlainLoops_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("tiff words") << int(TiffData::TiffWords);
    QTest::newRow("img words") << int(TiffData::ImgWords);
    QTest::newRow("img longs") << int(TiffData::ImgLongs);
    QTest::newRow("floats") << int(TiffData::Floats);
}

void TestPixels::blockSumsAreThoseOfPlainLoops()
{
    QFETCH(int, type);
    std::mt19937 random(11);
    RandomCounts counts(3);
    const auto f = [&](int x, int y) { return counts(x, y) + (type == TiffData::Floats ? 0.37 : 0); };
    const auto image = makeImage(23, 17, TiffData::PixelType(type), f);
    for (int round = 0; round < 300; ++round) {
        image->shiftX = int(random() % 9) - 4;
        image->shiftY = int(random() % 9) - 4;
        const int x = int(random() % 40) - 8;
        const int y = int(random() % 30) - 6;
        const int hw = int(random() % 9) - 4;
        const int vw = int(random() % 9) - 4;
        const int step = 1 + int(random() % 3);
        QCOMPARE(image->blockSum(x, y, hw, vw), plainBlockSum(*image, x, y, hw, vw));
        double sums[7];
        image->blockSums(x, step, 7, y, hw, vw, sums);
        for (int k = 0; k < 7; ++k)
            QCOMPARE(sums[k], plainBlockSum(*image, x + k * step, y, hw, vw));
    }
}

void TestPixels::extremeBlocksAreSurvived()
{
    const auto image = makeImage(3, 3, TiffData::TiffWords, [](int, int) { return 2.0; });
    QCOMPARE(image->blockSum(1, 1, INT_MAX, INT_MIN), 18.0);
    QCOMPARE(image->blockSum(INT_MIN, INT_MAX, 1, 1), 0.0);
    QCOMPARE(TiffData().blockSum(0, 0, 3, 3), 0.0);
    QCOMPARE(image->areaMean(QRectF(qQNaN(), -1e300, 1e300, 1e300)), 0.0);
}

void TestPixels::areaMeanCountsBothEnds()
{
    const auto image = makeImage(5, 4, TiffData::TiffWords, [](int x, int y) { return 10 * y + x; });
    // Columns 1..3 and rows 1..2 after the numbers are cut.
    QCOMPARE(image->areaMean(QRectF(1.9, 1.2, 2.7, 1.5)), (11 + 12 + 13 + 21 + 22 + 23) / 6.0);
    QCOMPARE(image->areaMean(QRectF(1, 1, 0, 0)), 11.0);
    QCOMPARE(image->areaMean(QRectF(1, 1, -2, 2)), 0.0);
    QCOMPARE(image->areaMean(QRectF(1, 1, 2, -2)), 0.0);
}

void TestPixels::neighbourMeanLeavesOutBadNeighbours()
{
    const auto image = makeImage(3, 3, TiffData::TiffWords, [](int x, int y) { return 10 * y + x; });
    QCOMPARE(image->neighbourMean(0, 0), (10 + 1 + 11) / 3.0);
    image->x0 = 100;
    image->errPs.add(101, 0);
    image->errPs.active = true;
    QCOMPARE(image->neighbourMean(0, 0), (10 + 11) / 2.0);
    image->errPs.add(100, 1);
    image->errPs.add(101, 1);
    QCOMPARE(image->neighbourMean(0, 0), 0.0);
}

void TestPixels::pictureFollowsTheScale_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("format");
    QTest::newRow("small, value by value") << int(TiffData::TiffWords) << 20 << int(ColorScale::Grey);
    QTest::newRow("large, by table") << int(TiffData::ImgWords) << 300 << int(ColorScale::Grey);
    QTest::newRow("floats") << int(TiffData::Floats) << 20 << int(ColorScale::Grey);
    QTest::newRow("hot ramp") << int(TiffData::ImgLongs) << 20 << int(ColorScale::Hot);
}

void TestPixels::pictureFollowsTheScale()
{
    QFETCH(int, type);
    QFETCH(int, side);
    QFETCH(int, format);
    RandomCounts counts(5);
    const auto image = makeImage(side + 1, side, TiffData::PixelType(type), counts);
    ColorScale scale;
    scale.lowHandle = 0.2;
    scale.highHandle = 0.7;
    scale.imageFormat = format;
    image->buildImage(scale);
    QVERIFY(image->image());
    QVERIFY(image->pictureMatches(scale));
    QVERIFY(!image->pictureMatches(ColorScale()));
    const int size = bytesPerPixel(format);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x <= side; ++x) {
            uchar expected[3] = {};
            scale.mapValue((image->pixel(x, y) - image->minVal) / (image->maxVal - image->minVal),
                           expected);
            const uchar* shown = image->image()->constScanLine(y) + x * size;
            QVERIFY(std::equal(expected, expected + size, shown));
        }
    }
}

void TestPixels::pictureOfOneValueIsNoFault()
{
    for (const int value : {0, 7}) {
        const auto image = makeImage(2, 2, TiffData::TiffWords, [=](int, int) { return value; });
        image->buildImage(ColorScale());
        QCOMPARE(image->image()->size(), QSize(2, 2));
    }
}

void TestPixels::shiftedPictureShowsZeroOutside()
{
    const auto image = makeImage(3, 1, TiffData::TiffWords, [](int x, int) { return 100 * x; });
    image->shiftX = 2;
    image->buildImage(ColorScale());
    const uchar* row = image->image()->constScanLine(0);
    QCOMPARE(int(row[0]), 0);
    QCOMPARE(int(row[1]), 0);
    QCOMPARE(int(row[2]), 0);
    image->shiftX = -2;
    image->buildImage(ColorScale());
    QCOMPARE(int(image->image()->constScanLine(0)[0]), 255);
}

void TestPixels::stackSumInterpolatesAndExtrapolates()
{
    const auto flat = [](double v) {
        return makeImage(1, 1, TiffData::TiffWords, [=](int, int) { return v; });
    };
    OwnedStack stack;
    QCOMPARE(stackBlockSum(stack.images, 5.0, 0, 0, 0, 0), 1.0);
    stack.add(flat(100), 10.0);
    QCOMPARE(stackBlockSum(stack.images, 5.0, 0, 0, 0, 0), 100.0);
    stack.add(flat(200), 20.0);
    stack.add(flat(600), 30.0);
    QCOMPARE(stackBlockSum(stack.images, 15.0, 0, 0, 0, 0), 150.0);
    QCOMPARE(stackBlockSum(stack.images, 20.0, 0, 0, 0, 0), 200.0);
    QCOMPARE(stackBlockSum(stack.images, 30.0, 0, 0, 0, 0), 600.0);
    QCOMPARE(stackBlockSum(stack.images, 35.0, 0, 0, 0, 0), 800.0);
    // Below the first energy the line may well fall below zero.
    QCOMPARE(stackBlockSum(stack.images, -10.0, 0, 0, 0, 0), -100.0);
    stack.images[2]->energy = 20.0;
    QCOMPARE(stackBlockSum(stack.images, 20.0, 0, 0, 0, 0), 400.0);
}

void TestPixels::errPointsFile_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QVector<QPoint>>("points");
    const QVector<QPoint> two{{3, 4}, {5, 6}};
    QTest::newRow("size first") << QByteArray("# Size 10 20\n3 4\n5 6\n") << two;
    QTest::newRow("comments, blanks, further items")
        << QByteArray("# Size 10 20\n\n# a comment\n3 4 9 # two\n  5\t6\n") << two;
    QTest::newRow("a size line empties the list") << QByteArray("1 1\n# Size 10 20\n3 4\n5 6") << two;
    QTest::newRow("size last leaves nothing") << QByteArray("3 4\n# Size 10 20\n") << QVector<QPoint>();
    QTest::newRow("one number alone is none") << QByteArray("3\n3 4\n5 6\n") << two;
    QTest::newRow("nothing") << QByteArray() << QVector<QPoint>();
}

void TestPixels::errPointsFile()
{
    QFETCH(QByteArray, text);
    QFETCH(QVector<QPoint>, points);
    QBuffer buffer(&text);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    ErrPoints list;
    list.read(buffer);
    QCOMPARE(list.points(), points);
    for (const QPoint& point : points)
        QVERIFY(list.contains(point.x(), point.y()));
    QVERIFY(!list.contains(7, 7));
}

void TestPixels::unreadableErrPointsFileEmptiesTheList()
{
    ErrPoints list;
    list.add(1, 2);
    list.active = true;
    list.fileName = QStringLiteral("old");
    LogCapture log;
    QVERIFY(!list.readFile(QStringLiteral("/no/such/list"), 0));
    QVERIFY(list.points().isEmpty());
    QVERIFY(!list.active);
    QVERIFY(list.fileName.isEmpty());
    QCOMPARE(log.linesWith(QStringLiteral("/no/such/list")), 1);
}

QTEST_GUILESS_MAIN(TestPixels)
#include "test_pixels.moc"
