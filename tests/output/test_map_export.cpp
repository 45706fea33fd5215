#include "maps/Analyzed2DRes.h"
#include "output/MapExport.h"
#include "output/TiffWriter.h"

#include <QtTest>

#include <tiffio.h>

#include <csignal>
#include <memory>
#include <sys/resource.h>

namespace {

struct ReadTiff
{
    QSize size;
    QMap<quint32, quint32> tags;
    QVector<quint16> pixels;
};

ReadTiff readTiff(const QString& fname)
{
    ReadTiff r;
    const std::unique_ptr<TIFF, void (*)(TIFF*)> tif(
        TIFFOpen(QFile::encodeName(fname).constData(), "r"), TIFFClose);
    if (!tif)
        return r;
    for (const quint32 tag : {TIFFTAG_IMAGEWIDTH, TIFFTAG_IMAGELENGTH, TIFFTAG_ROWSPERSTRIP}) {
        quint32 v = 0;
        TIFFGetField(tif.get(), tag, &v);
        r.tags[tag] = v;
    }
    for (const quint32 tag : {TIFFTAG_COMPRESSION, TIFFTAG_PHOTOMETRIC, TIFFTAG_SAMPLESPERPIXEL,
                              TIFFTAG_BITSPERSAMPLE, TIFFTAG_PLANARCONFIG, TIFFTAG_ORIENTATION}) {
        quint16 v = 0;
        TIFFGetField(tif.get(), tag, &v);
        r.tags[tag] = v;
    }
    r.size = QSize(int(r.tags[TIFFTAG_IMAGEWIDTH]), int(r.tags[TIFFTAG_IMAGELENGTH]));
    r.pixels.resize(r.size.width() * r.size.height());
    for (int y = 0; y < r.size.height(); ++y)
        TIFFReadScanline(tif.get(), r.pixels.data() + y * r.size.width(), quint32(y));
    return r;
}

void fillDiagonally(Analyzed2DRes& map, const AnalyzeCond& ac)
{
    map.prepare(ac);
    AnalyzeCond walk = ac;
    do {
        map.setData(walk.cx, walk.cy, walk.halfX, walk.halfY, walk.cx + 2.0 * walk.cy);
    } while (walk.next());
}

QStringList filesIn(const QTemporaryDir& dir)
{
    return QDir(dir.path()).entryList(QDir::Files);
}

} // namespace

class TestMapExport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void readsBackWhatItWrote_data();
    void readsBackWhatItWrote();
    void setsTheTags();
    void writesConstantImages();
    void leavesNothingWhenItFails_data();
    void leavesNothingWhenItFails();
    void keepsTheEarlierFileWhenItFails();
    void leavesNothingOnAFullDisk();
    void namesMapsByNumber_data();
    void namesMapsByNumber();
    void savesOneValueAPixelOrAPosition_data();
    void savesOneValueAPixelOrAPosition();
    void savesTextByItsOptions();
    void aMapWithoutValuesWritesNoTiff();

private:
    QTemporaryDir dir_;
};

void TestMapExport::initTestCase()
{
    TIFFSetErrorHandler(nullptr);
}

void TestMapExport::readsBackWhatItWrote_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("one pixel") << QSize(1, 1);
    QTest::newRow("one strip") << QSize(31, 20);
    QTest::newRow("one strip exactly") << QSize(20, 20);
    QTest::newRow("many strips, the last one short") << QSize(7, 45);
    QTest::newRow("one pixel wide") << QSize(1, 30);
}

void TestMapExport::readsBackWhatItWrote()
{
    QFETCH(QSize, size);
    QVector<quint16> data(size.width() * size.height());
    for (int i = 0; i < data.size(); ++i)
        data[i] = quint16(i * 40503 + 7);
    // A name of another script than the system's own must reach the disk as it is.
    const QString fname = dir_.filePath(QStringLiteral("\u5730\u56f3 \u00e9.tif"));
    QVERIFY(TiffWriter::writeU16(fname, size.width(), size.height(), data.constData()));
    const ReadTiff r = readTiff(fname);
    QCOMPARE(r.size, size);
    QCOMPARE(r.pixels, data);
    QCOMPARE(filesIn(dir_).size(), 1);
    QVERIFY(QFile::remove(fname));
}

void TestMapExport::setsTheTags()
{
    const QString fname = dir_.filePath(QStringLiteral("tags.tif"));
    QVERIFY(TiffWriter::writeZeros(fname, 5, 12));
    const QMap<quint32, quint32> expected{{256, 5}, {257, 12}, {259, 1}, {262, 1}, {278, 5},
                                          {277, 1}, {258, 16}, {284, 1}, {274, 1}};
    QCOMPARE(readTiff(fname).tags, expected);
    QVERIFY(QFile::remove(fname));
}

void TestMapExport::writesConstantImages()
{
    const QString fname = dir_.filePath(QStringLiteral("flat.dat"));
    QVERIFY(TiffWriter::writeOnes(fname, 4, 9));
    QCOMPARE(readTiff(fname).pixels, QVector<quint16>(36, 1));
    QVERIFY(TiffWriter::writeConstant(fname, 4, 3, 65535)); // over the earlier one
    QCOMPARE(readTiff(fname).pixels, QVector<quint16>(12, 65535));
    QVERIFY(TiffWriter::writeZeros(fname, 2, 2));
    QCOMPARE(readTiff(fname).pixels, QVector<quint16>(4, 0));
    QVERIFY(QFile::remove(fname));
}

void TestMapExport::leavesNothingWhenItFails_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    QTest::newRow("no such folder") << "none/a.tif" << QSize(2, 2);
    QTest::newRow("a folder has the name") << "sub" << QSize(2, 2);
    QTest::newRow("empty image") << "a.tif" << QSize(0, 2);
    QTest::newRow("negative size") << "a.tif" << QSize(-3, -3);
    QTest::newRow("more than any image holds") << "a.tif" << QSize(1 << 20, 1 << 20);
}

void TestMapExport::leavesNothingWhenItFails()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QDir(dir_.path()).mkpath(QStringLiteral("sub/held"));
    const QString fname = dir_.filePath(name);
    const QString line = QStringLiteral("Can't write TIFF file \"%1\"").arg(fname);
    QTest::ignoreMessage(QtDebugMsg, line.toUtf8().constData());
    QVERIFY(!TiffWriter::writeConstant(fname, size.width(), size.height(), 3));
    QCOMPARE(filesIn(dir_), QStringList());
}

void TestMapExport::keepsTheEarlierFileWhenItFails()
{
    const QString fname = dir_.filePath(QStringLiteral("kept.tif"));
    QVERIFY(TiffWriter::writeOnes(fname, 3, 3));
    QVERIFY(!TiffWriter::writeU16(fname, 3, 3, nullptr));
    QCOMPARE(readTiff(fname).pixels, QVector<quint16>(9, 1));
    QVERIFY(QFile::remove(fname));
}

void TestMapExport::leavesNothingOnAFullDisk()
{
    // A limit on the size of files ends a write in its middle, as a full disk does.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    Analyzed2DRes map(QStringLiteral("m"));
    fillDiagonally(map, AnalyzeCond(90, 90, 0, 0, QRectF(0, 0, 90, 90), -1, -1));
    rlimit small = before;
    small.rlim_cur = 5000;
    setrlimit(RLIMIT_FSIZE, &small);
    const QString fname = dir_.filePath(QStringLiteral("m.tif"));
    const bool tiff = saveMapAsTiff(map, fname, 0, {});
    const bool text = saveMapAsText(map, fname, 0, {});
    setrlimit(RLIMIT_FSIZE, &before);
    QVERIFY(!tiff);
    QVERIFY(!text);
    QCOMPARE(filesIn(dir_), QStringList());
}

void TestMapExport::namesMapsByNumber_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << "/d/map.tif"
                           << "/d/map-3.tif";
    QTest::newRow("points in the name") << "/d.x/a.b.dat"
                                        << "/d.x/a.b-3.tif";
    QTest::newRow("no extension") << "/d/map"
                                  << "/d/map-3.tif";
    QTest::newRow("a place marker in the name") << "/d/50%2.tif"
                                                << "/d/50%2-3.tif";
}

void TestMapExport::namesMapsByNumber()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QCOMPARE(mapFileName(name, 3, QStringLiteral("tif")), expected);
}

void TestMapExport::savesOneValueAPixelOrAPosition_data()
{
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<int>("half");
    QTest::addColumn<bool>("asAnalyzed");
    QTest::addColumn<QSize>("size");
    const QRectF whole(0, 0, 11, 7);
    QTest::newRow("pixels") << whole << 1 << false << QSize(11, 7);
    QTest::newRow("blocks of 3 by 3") << whole << 1 << true << QSize(4, 2);
    QTest::newRow("steps of 1 give the whole image") << whole << 0 << true << QSize(11, 7);
    QTest::newRow("part of the image") << QRectF(2, 1, 6, 4) << 1 << true << QSize(2, 1);
    QTest::newRow("empty area") << QRectF(5, 5, 0, 0) << 2 << true << QSize(1, 1);
}

void TestMapExport::savesOneValueAPixelOrAPosition()
{
    QFETCH(QRectF, area);
    QFETCH(int, half);
    QFETCH(bool, asAnalyzed);
    QFETCH(QSize, size);
    Analyzed2DRes map(QStringLiteral("m"));
    const AnalyzeCond ac(11, 7, half, half, area, -1, -1);
    fillDiagonally(map, ac);
    TiffSaveOptions options;
    options.fixedScale = true;
    options.scaleMax = 65535.0; // values as they are
    options.asAnalyzed = asAnalyzed;
    const QString fname = dir_.filePath(QStringLiteral("m.xyz"));
    QVERIFY(saveMapAsTiff(map, fname, 2, options));
    const QString saved = dir_.filePath(QStringLiteral("m-2.tif"));
    const ReadTiff r = readTiff(saved);
    QCOMPARE(r.size, size);
    AnalyzeCond walk = ac;
    for (int i = 0; asAnalyzed && i < r.pixels.size(); ++i, walk.next())
        QCOMPARE(int(r.pixels.at(i)), int(map.valueAt(walk.cx, walk.cy)));
    for (int i = 0; !asAnalyzed && i < r.pixels.size(); ++i)
        QCOMPARE(int(r.pixels.at(i)), int(map.valueAt(i % 11, i / 11)));
    QVERIFY(QFile::remove(saved));
}

void TestMapExport::savesTextByItsOptions()
{
    Analyzed2DRes map(QStringLiteral("m"));
    fillDiagonally(map, AnalyzeCond(6, 3, 1, 1, QRectF(0, 0, 6, 3), -1, -1));
    TextSaveOptions options;
    options.asXYVal = false;
    QVERIFY(saveMapAsText(map, dir_.filePath(QStringLiteral("m.tif")), 0, options));
    QFile file(dir_.filePath(QStringLiteral("m-0.dat")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\n3,6\n"));
    QVERIFY(file.remove());
    QVERIFY(!saveMapAsText(map, dir_.filePath(QStringLiteral("none/m.tif")), 0, options));
}

void TestMapExport::aMapWithoutValuesWritesNoTiff()
{
    Analyzed2DRes map(QStringLiteral("empty one"));
    QTest::ignoreMessage(QtDebugMsg, "Nothing to save in map \"empty one\"");
    QVERIFY(!saveMapAsTiff(map, dir_.filePath(QStringLiteral("m.tif")), 0, {}));
    QCOMPARE(filesIn(dir_), QStringList());
}

QTEST_GUILESS_MAIN(TestMapExport)
#include "test_map_export.moc"
