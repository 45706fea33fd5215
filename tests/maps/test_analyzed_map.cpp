#include "maps/Analyzed2DRes.h"

#include "common/ColorScale.h"

#include <QtTest>

#include <limits>
#include <memory>

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

AnalyzeCond wholeImage(int w, int h, int half = 0)
{
    return AnalyzeCond(w, h, half, half, QRectF(0, 0, w, h), -1, -1);
}

/// A map of one value a pixel, in row order.
void fill(Analyzed2DRes& map, int w, int h, const QVector<double>& values)
{
    map.prepare(wholeImage(w, h));
    for (int i = 0; i < values.size(); ++i)
        map.setData(i % w, i / w, 0, 0, values[i]);
}

QVector<double> fieldOf(const Analyzed2DRes& map)
{
    const int n = map.stepper.width * map.stepper.height;
    return map.data() == nullptr ? QVector<double>() : QVector<double>(map.data(), map.data() + n);
}

QVector<int> savedBy(Analyzed2DRes& map, bool fixed, double lo, double hi, bool asAnalyzed)
{
    const std::unique_ptr<quint16[]> saved(map.tiffDataForSave(fixed, lo, hi, asAnalyzed));
    return saved ? QVector<int>(saved.get(), saved.get() + map.savedSamples) : QVector<int>();
}

QByteArray greyRow(const Analyzed2DRes& map, int y)
{
    return {reinterpret_cast<const char*>(map.img()->constScanLine(y)), map.img()->width()};
}

} // namespace

class TestAnalyzedMap : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void startsEmpty();
    void storesBlocksClippedAndKeepsTheFirstExtremes();
    void paintsThroughTheColourScale();
    void paintsTheProcessedFieldAndFixedScales();
    void survivesValuesThatAreNoNumbers();
    void scalesPositionsTo16Bits_data();
    void scalesPositionsTo16Bits();
    void wrapsPixelsOutOfScale();
    void savesPositionsPastTheImageAsZero();
    void writesText_data();
    void writesText();
    void refusesATextFileThatCanNotBeWritten();
    void copiesAFinishedMapWhole();
    void copiesOnlySettingsOfAMapWithoutPicture();
    void clears();
};

void TestAnalyzedMap::startsEmpty()
{
    Analyzed2DRes map(QStringLiteral("m"));
    QVERIFY(map.img() == nullptr);
    QVERIFY(map.data() == nullptr);
    QVERIFY(map.tiffDataForSave(false, 0, 1, false) == nullptr);
    QCOMPARE(map.valueAt(0, 0), 0.0);
    map.setData(0, 0, 1, 1, 3.0);
    map.deglitch();
    map.deglitch2(40.0);
    map.copyProc2Data();
    map.setFixedScale(true);
    QVERIFY(map.imgValid);
    QVERIFY(map.img()->isNull());
    QCOMPARE(map.max, 3.0);
}

void TestAnalyzedMap::storesBlocksClippedAndKeepsTheFirstExtremes()
{
    Analyzed2DRes map(QStringLiteral("m"));
    map.prepare(wholeImage(4, 3));
    map.setData(3, 0, -1, 1, 5.0);
    map.setData(0, 2, 0, 0, -1.0);
    map.setData(1, 1, 0, 0, 5.0);
    map.setData(9, 9, 1, 1, -1.0);
    QCOMPARE(fieldOf(map), (QVector<double>{0, 0, 5, 5, 0, 5, 5, 5, -1, 0, 0, 0}));
    QCOMPARE(QPoint(map.maxX, map.maxY), QPoint(3, 0));
    QCOMPARE(QPoint(map.minX, map.minY), QPoint(0, 2));
    // A value out of the image still counts for the extremes.
    map.setData(-5, 0, 1, 1, 80.0);
    QCOMPARE(map.max, 80.0);
    QCOMPARE(map.valueAt(-1, 0), 0.0);
    QCOMPARE(map.valueAt(3, 1), 5.0);
}

void TestAnalyzedMap::paintsThroughTheColourScale()
{
    Analyzed2DRes map(QStringLiteral("m"));
    fill(map, 5, 2, {0, 1, 2, 3, 4, 4, 3, 2, 1, 0});
    QVERIFY(!map.imgValid);
    map.genImg();
    QVERIFY(map.imgValid);
    QCOMPARE(map.img()->format(), QImage::Format_Grayscale8);
    QCOMPARE(map.img()->size(), QSize(5, 2));
    QCOMPARE(map.img()->bytesPerLine(), 8);
    const char up[] = {0, 64, char(128), char(192), char(255)};
    const char down[] = {char(255), char(192), char(128), 64, 0};
    QCOMPARE(greyRow(map, 0), QByteArray(up, 5));
    QCOMPARE(greyRow(map, 1), QByteArray(down, 5));
    map.imgFormat = ColorScale::Hot;
    map.genImg();
    QCOMPARE(map.img()->format(), QImage::Format_RGB888);
    QCOMPARE(map.img()->pixelColor(0, 0), QColor(Qt::black));
    QCOMPARE(map.img()->pixelColor(4, 1), map.img()->pixelColor(0, 0));
}

void TestAnalyzedMap::paintsTheProcessedFieldAndFixedScales()
{
    Analyzed2DRes map(QStringLiteral("m"));
    fill(map, 3, 1, {0, 1, 2});
    QSignalSpy scales(&map, &Analyzed2DRes::scaleChanged);
    map.setScale(0.0, 4.0);
    QCOMPARE(scales.takeFirst(), (QVariantList{0.0, 2.0}));
    map.setFixedScale(true);
    QCOMPARE(scales.takeFirst(), (QVariantList{0.0, 4.0}));
    QCOMPARE(greyRow(map, 0), QByteArray("\0\x40\x80", 3));
    map.setFixedScale(false);
    QCOMPARE(scales.takeFirst(), (QVariantList{0.0, 2.0}));
    QCOMPARE(greyRow(map, 0), QByteArray("\0\x80\xff", 3));
    map.selectProcImg(true);
    QVERIFY(scales.isEmpty());
    QCOMPARE(map.scale().max, 1.0);
    QCOMPARE(greyRow(map, 0), QByteArray(3, '\0'));
}

void TestAnalyzedMap::survivesValuesThatAreNoNumbers()
{
    Analyzed2DRes map(QStringLiteral("m"));
    fill(map, 4, 1, {noNumber, inf, -inf, 1.0});
    map.genImg();
    QCOMPARE(map.img()->size(), QSize(4, 1));
    QVERIFY(std::isnan(map.valueAt(0, 0)));
    QCOMPARE(savedBy(map, true, 0.0, 2.0, true), (QVector<int>{0, 65535, 0, 32767}));
    QCOMPARE(savedBy(map, true, 0.0, 2.0, false), (QVector<int>{0, 0, 0, 32767}));
    fill(map, 2, 1, {3.0, 3.0}); // one value only: a scale without span
    map.genImg();
    QCOMPARE(savedBy(map, false, 0.0, 0.0, true), (QVector<int>{0, 0}));
}

void TestAnalyzedMap::scalesPositionsTo16Bits_data()
{
    QTest::addColumn<bool>("fixed");
    QTest::addColumn<bool>("proc");
    QTest::addColumn<QVector<int>>("expected");
    // Values 1, 2, 4 and 8 in blocks of 3 by 3; the processed field is their copy, of scale 0..1.
    QTest::newRow("own scale") << false << false << QVector<int>{0, 9362, 28086, 65535};
    QTest::newRow("given scale clamps") << true << false << QVector<int>{0, 0, 32767, 65535};
    QTest::newRow("processed field") << false << true << QVector<int>{65535, 65535, 65535, 65535};
}

void TestAnalyzedMap::scalesPositionsTo16Bits()
{
    QFETCH(bool, fixed);
    QFETCH(bool, proc);
    QFETCH(QVector<int>, expected);
    Analyzed2DRes map(QStringLiteral("m"));
    map.prepare(wholeImage(6, 6, 1));
    map.setData(1, 1, 1, 1, 1.0);
    map.setData(4, 1, 1, 1, 2.0);
    map.setData(1, 4, 1, 1, 4.0);
    map.setData(4, 4, 1, 1, 8.0);
    if (proc) {
        map.deglitch2(40.0); // nothing stands out: a plain copy
        map.procMin = 0.0;
        map.procMax = 1.0;
        map.useProc = true;
    }
    QCOMPARE(savedBy(map, fixed, 2.0, 6.0, true), expected);
    QCOMPARE(map.savedSamples, 4);
}

void TestAnalyzedMap::wrapsPixelsOutOfScale()
{
    Analyzed2DRes map(QStringLiteral("m"));
    fill(map, 6, 1, {0.0, 1.0, 1.0 + 2.0 / 65535, -1.0 / 65535, 1e30, 65536.0});
    // Cut to integers: 65535; 65537 = 1 and -1 = 65535 modulo 65536; 1e30 * 65535 is a multiple of
    // 65536; 65536 * 65535 too.
    QCOMPARE(savedBy(map, true, 0.0, 1.0, false), (QVector<int>{0, 65535, 1, 65535, 0, 0}));
    QCOMPARE(map.savedSamples, 6);
}

void TestAnalyzedMap::savesPositionsPastTheImageAsZero()
{
    Analyzed2DRes map(QStringLiteral("m"));
    map.prepare(AnalyzeCond(2, 1, 0, 0, QRectF(-1, 0, 5, 2), -1, -1));
    map.setData(0, 0, 0, 0, 1.0);
    map.setData(1, 0, 0, 0, 1.0);
    QCOMPARE(savedBy(map, true, 0.0, 1.0, true),
             (QVector<int>{0, 65535, 65535, 0, 0, 0, 0, 0, 0, 0}));
    map.prepare(AnalyzeCond(2, 1, 0, 0, QRectF(-1e9, -1e9, 2e9, 2e9), -1, -1));
    QVERIFY(map.tiffDataForSave(true, 0.0, 1.0, true) == nullptr);
}

void TestAnalyzedMap::writesText_data()
{
    QTest::addColumn<bool>("comma");
    QTest::addColumn<bool>("xyz");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("points, blanks")
        << false << true << QByteArray("1 0 0.1\n2 0 -3e-20\n1 1 nan\n2 1 1234567.875\n");
    QTest::newRow("points, commas")
        << true << true << QByteArray("1,0,0.1\n2,0,-3e-20\n1,1,nan\n2,1,1234567.875\n");
    QTest::newRow("rows, blanks") << false << false
                                  << QByteArray("\n0.1 -3e-20\nnan 1234567.875\n");
    QTest::newRow("rows, commas") << true << false << QByteArray("\n0.1,-3e-20\nnan,1234567.875\n");
}

void TestAnalyzedMap::writesText()
{
    QFETCH(bool, comma);
    QFETCH(bool, xyz);
    QFETCH(QByteArray, expected);
    Analyzed2DRes map(QStringLiteral("m"));
    map.prepare(AnalyzeCond(4, 2, 0, 0, QRectF(1, 0, 2, 2), -1, -1));
    map.setData(1, 0, 0, 0, 0.1);
    map.setData(2, 0, 0, 0, -3e-20);
    map.setData(1, 1, 0, 0, noNumber);
    map.setData(2, 1, 0, 0, 1234567.875);
    map.useProc = true; // text is of the field as analysed all the same
    const QTemporaryDir dir;
    const QFileInfo fi(dir.filePath(QStringLiteral("m.dat")));
    QVERIFY(map.saveAsText(fi, !comma, comma, xyz));
    QFile file(fi.filePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), expected);
}

void TestAnalyzedMap::refusesATextFileThatCanNotBeWritten()
{
    Analyzed2DRes map(QStringLiteral("m"));
    map.prepare(wholeImage(1, 1));
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("none/m.dat"));
    const QString line = QStringLiteral("Can't open \"%1\"").arg(path);
    QTest::ignoreMessage(QtDebugMsg, line.toUtf8().constData());
    QVERIFY(!map.saveAsText(QFileInfo(path), false, false, false));
    QVERIFY(QDir(dir.path()).isEmpty());
}

void TestAnalyzedMap::copiesAFinishedMapWhole()
{
    Analyzed2DRes map(QStringLiteral("m"));
    fill(map, 5, 2, {0, 1, 2, 3, 4, 4, 4, 4, 4, 4});
    map.setNo(12);
    map.setDeglitchConds(3.0, 0.25);
    map.setScale(0.0, 4.0);
    map.deglitch2(2.5);
    Analyzed2DRes copy(QStringLiteral("c"));
    copy.copyFrom(&map);
    map.clear();
    QCOMPARE(copy.name, QStringLiteral("m"));
    QCOMPARE(copy.no, 12);
    QCOMPARE(copy.stepper.width, 5);
    QCOMPARE(copy.deglitchRange, 0.25);
    QCOMPARE(copy.fixedMax, 4.0);
    QCOMPARE(copy.valueAt(3, 0), 3.0);
    QVERIFY(copy.procData() != nullptr);
    // 10 of the 16 bytes of the padded picture come along, so the second row holds two pixels.
    QCOMPARE(greyRow(copy, 0), QByteArray("\0\x40\x80\xc0\xff", 5));
    QCOMPARE(greyRow(copy, 1), QByteArray("\xff\xff\0\0\0", 5));
    copy.genImg();
    QCOMPARE(greyRow(copy, 1), QByteArray(5, '\xff'));
    copy.copyFrom(nullptr);
    QCOMPARE(copy.valueAt(3, 0), 3.0);
}

void TestAnalyzedMap::copiesOnlySettingsOfAMapWithoutPicture()
{
    Analyzed2DRes map(QStringLiteral("m"));
    fill(map, 2, 1, {1, 2});
    Analyzed2DRes copy(QStringLiteral("c"));
    fill(copy, 3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    copy.genImg();
    copy.copyFrom(&map);
    QVERIFY(copy.data() == nullptr);
    QVERIFY(copy.img() == nullptr);
    QVERIFY(!copy.imgValid);
    QCOMPARE(copy.stepper.width, 2);
    QCOMPARE(copy.max, 2.0);
    copy.setFixedScale(true); // paints although there is no field
    copy.setData(1, 0, 1, 1, 1.0);
    QCOMPARE(copy.valueAt(1, 0), 0.0);
}

void TestAnalyzedMap::clears()
{
    Analyzed2DRes map(QStringLiteral("m"));
    fill(map, 2, 1, {1, 2});
    map.genImg();
    map.clear();
    QVERIFY(map.img() == nullptr);
    QVERIFY(map.data() == nullptr);
    QVERIFY(!map.imgValid);
    QCOMPARE(map.stepper.width, 0);
    QVERIFY(map.min > map.max);
}

QTEST_GUILESS_MAIN(TestAnalyzedMap)
#include "test_analyzed_map.moc"
