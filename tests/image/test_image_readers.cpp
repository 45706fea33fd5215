#include "image/ImageReaders.h"
#include "image/TiffData.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

double ramp(int x, int y)
{
    return 100 * y + x + 1;
}

} // namespace

/// Files of the three formats, good and broken, through the one entry that tells them apart.
class TestImageReaders : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readsEveryFormatPixelByPixel_data();
    void readsEveryFormatPixelByPixel();
    void exposureOfImgComments_data();
    void exposureOfImgComments();
    void tiffExposureComesFromExif();
    void imgHeaderGivesTheOriginOnTheDetector();
    void negativeBrnxValuesReadAsZero();
    void missingBrnxLinesReadAsZeroWithOneLogLine();
    void badPixelsAreCorrectedButNotInBrnx();
    void brokenFilesAreRefusedWithOneLogLine_data();
    void brokenFilesAreRefusedWithOneLogLine();
    void pipeIsRefusedAtOnce();
    void truncatedTiffRowsReadAsZero();
    void everyTruncationIsSurvived_data();
    void everyTruncationIsSurvived();
    void stopEndsTheReading();

private:
    QString write(const QByteArray& bytes)
    {
        const QString name = dir_.filePath(QStringLiteral("image-%1").arg(++files_));
        return writeBytes(name, bytes) ? name : QString();
    }

    QTemporaryDir dir_;
    int files_ = 0;
};

void TestImageReaders::readsEveryFormatPixelByPixel_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("type");
    QTest::addColumn<double>("factor");
    QTest::newRow("tiff") << tiffBytes(7, 5, ramp) << int(TiffData::TiffWords) << 1.0;
    QTest::newRow("img, 16 bit by default")
        << imgBytes(7, 5, "ExposureTime=0.1", 2, ramp) << int(TiffData::ImgWords) << 1.0;
    QTest::newRow("img, 32 bit") << imgBytes(7, 5, "BytesPerPixel=4,", 4, [](int x, int y) {
        return 100000.0 * ramp(x, y);
    }) << int(TiffData::ImgLongs) << 100000.0;
    QTest::newRow("brnx") << brnxBytes(7, 5, [](int x, int y) { return ramp(x, y) / 500.0; })
                          << int(TiffData::Floats) << 1.0;
}

void TestImageReaders::readsEveryFormatPixelByPixel()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, type);
    QFETCH(double, factor);
    TiffData image;
    QVERIFY(image.readFile(write(bytes), ErrPoints()));
    QCOMPARE(image.pixelType, type);
    QCOMPARE(image.width, 7);
    QCOMPARE(image.height, 5);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x)
            QCOMPARE(float(image.pixel(x, y)), float(factor * ramp(x, y)));
    }
    QCOMPARE(float(image.minVal), float(factor * ramp(0, 0)));
    QCOMPARE(float(image.maxVal), float(factor * ramp(6, 4)));
    QCOMPARE(image.pixel(7, 0), 0.0);
    QCOMPARE(image.pixel(0, -1), 0.0);
}

void TestImageReaders::exposureOfImgComments_data()
{
    QTest::addColumn<QByteArray>("comment");
    QTest::addColumn<double>("ms");
    QTest::newRow("milliseconds") << QByteArray("ExposureTime=200 ms,") << 200.0;
    QTest::newRow("seconds") << QByteArray("ExposureTime=0.2 s,") << 200.0;
    QTest::newRow("microseconds") << QByteArray("ExposureTime=200000 us,") << 200.0;
    QTest::newRow("no unit is seconds") << QByteArray("ExposureTime=0.2,") << 200.0;
    QTest::newRow("unknown unit stays as it is") << QByteArray("ExposureTime=7 ticks,") << 7.0;
    QTest::newRow("missing") << QByteArray("Other=1,") << 100.0;
    QTest::newRow("up to the end of the comment") << QByteArray("a=1,ExposureTime=3 ms") << 3.0;
    QTest::newRow("up to a zero byte") << QByteArray("ExposureTime=4 ms\0junk", 22) << 4.0;
}

void TestImageReaders::exposureOfImgComments()
{
    QFETCH(QByteArray, comment);
    QFETCH(double, ms);
    TiffData image;
    QVERIFY(image.readFile(write(imgBytes(2, 2, comment, 2, ramp)), ErrPoints()));
    QCOMPARE(image.exposureMs, ms);
}

void TestImageReaders::tiffExposureComesFromExif()
{
    TiffData with;
    QVERIFY(with.readFile(write(tiffBytes(3, 2, ramp, 250)), ErrPoints()));
    QVERIFY(qAbs(with.exposureMs - 250.0) < 1e-4);
    TiffData without;
    QVERIFY(without.readFile(write(tiffBytes(3, 2, ramp)), ErrPoints()));
    QCOMPARE(without.exposureMs, 100.0);
}

void TestImageReaders::imgHeaderGivesTheOriginOnTheDetector()
{
    TiffData image;
    QVERIFY(image.readFile(write(imgBytes(2, 3, "", 2, ramp, 40000, 12)), ErrPoints()));
    QCOMPARE(image.x0, 40000);
    QCOMPARE(image.y0, 12);
}

void TestImageReaders::negativeBrnxValuesReadAsZero()
{
    TiffData image;
    QVERIFY(image.readFile(write(brnxBytes(2, 1, [](int x, int) { return x == 0 ? -0.1 : 1.0; })),
                           ErrPoints()));
    QCOMPARE(image.pixel(0, 0), 0.0);
    QCOMPARE(image.pixel(1, 0), 500.0);
}

void TestImageReaders::missingBrnxLinesReadAsZeroWithOneLogLine()
{
    QByteArray bytes = brnxBytes(3, 3, [](int, int) { return 1.0; });
    bytes.truncate(bytes.indexOf("0 2 "));
    LogCapture log;
    TiffData image;
    QVERIFY(image.readFile(write(bytes), ErrPoints()));
    QCOMPARE(image.pixel(2, 1), 500.0);
    QCOMPARE(image.pixel(0, 2), 0.0);
    QCOMPARE(log.linesWith(QStringLiteral("Missing pixel lines")), 1);
}

void TestImageReaders::badPixelsAreCorrectedButNotInBrnx()
{
    ErrPoints bad;
    bad.add(11, 21); // detector coordinates; the image's origin is (10, 20)
    bad.add(12, 21); // a bad neighbour, left out of the mean
    bad.add(99, 99); // outside
    bad.active = true;
    TiffData img;
    QVERIFY(img.readFile(write(imgBytes(3, 3, "", 2, ramp, 10, 20)), bad));
    // Mean of the seven good neighbours of (1, 1), cut to the pixel's type.
    const double sum =
        ramp(0, 0) + ramp(0, 1) + ramp(0, 2) + ramp(1, 0) + ramp(1, 2) + ramp(2, 0) + ramp(2, 2);
    QCOMPARE(img.pixel(1, 1), std::floor(sum / 7));

    ErrPoints first;
    first.add(0, 0);
    first.active = true;
    TiffData brnx;
    QVERIFY(brnx.readFile(write(brnxBytes(2, 2, [](int, int) { return 2.0; })), first));
    QCOMPARE(brnx.pixel(0, 0), 1000.0);
}

void TestImageReaders::brokenFilesAreRefusedWithOneLogLine_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("line");
    const QByteArray img = imgBytes(50, 40, "", 2, ramp);
    QByteArray hugeTiff = tiffBytes(2, 2, ramp);
    // The count of columns stands in the value field of the first directory entry.
    hugeTiff.replace(16 + 2 + 8, 4, QByteArray("\xff\xff\xff\x0f", 4));
    QTest::newRow("empty") << QByteArray() << "Error on reading file (1)";
    QTest::newRow("ten bytes") << QByteArray("IIIIIIIIII") << "Error on reading file (1)";
    QTest::newRow("wrong magic") << QByteArray("GIF89a and some more") << "Not an image file";
    QTest::newRow("tiff magic alone")
        << QByteArray("II*\0 nothing of a tiff", 23) << "Can not open tiff";
    QTest::newRow("tiff of 8 bit") << tiffBytes(4, 4, ramp, 0, 8) << "16 bit";
    QTest::newRow("tiff with a huge header") << hugeTiff << "Image size";
    QTest::newRow("img cut short") << img.left(img.size() - 1) << "Error on reading (3)";
    QTest::newRow("img header alone") << img.left(20) << "Error on reading (3)";
    QTest::newRow("img of 32 bit cut short")
        << imgBytes(3, 3, "BytesPerPixel=4,", 2, ramp) << "Error on reading (2)";
    QTest::newRow("brnx without size")
        << QByteArray("#BRNX-CTImg\n1 2 3\n4 5 6\n") << "No image size";
    QTest::newRow("brnx with a huge header")
        << QByteArray("#BRNX-CTImg\n# RANGE_X1 = 16384\n# RANGE_Y1 = 16384\n1 1 1\n")
        << "Image size exceeds";
    QTest::newRow("brnx with sizes that are no numbers")
        << QByteArray("#BRNX-CTImg\n# RANGE_X1 = nan\n# RANGE_Y1 = 1e300\n1 1 1\n")
        << "No image size";
}

void TestImageReaders::brokenFilesAreRefusedWithOneLogLine()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, line);
    const QString name = write(bytes);
    LogCapture log;
    TiffData image;
    QVERIFY(!image.readFile(name, ErrPoints()));
    QCOMPARE(log.linesWith(line), 1);
    QCOMPARE(log.linesWith(name), 1);
}

void TestImageReaders::pipeIsRefusedAtOnce()
{
#ifdef Q_OS_UNIX
    const QTemporaryDir dir;
    const QString pipe = dir.filePath("pipe.tif");
    QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
    const LogCapture log;
    TiffData image;
    QVERIFY(!image.readFile(pipe, ErrPoints())); // opening it would wait for a writer
    QCOMPARE(log.linesWith(pipe), 1);
#else
    QSKIP("pipes are no files here");
#endif
}

void TestImageReaders::truncatedTiffRowsReadAsZero()
{
    // A strip that starts in the file and ends outside: libtiff reads what it can.
    QByteArray bytes = tiffBytes(4, 4, ramp);
    const int offsetEntry = 8 + 4 * 4 * 2 + 2 + 12 * 5 + 8;
    bytes.replace(offsetEntry, 4, QByteArray("\xf0\xff\xff\x00", 4));
    LogCapture log;
    TiffData image;
    QVERIFY(image.readFile(write(bytes), ErrPoints()));
    QCOMPARE(image.blockSum(2, 2, 2, 2), 0.0);
    QCOMPARE(log.linesWith(QStringLiteral("Unreadable rows")), 1);
}

void TestImageReaders::everyTruncationIsSurvived_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("tiff") << tiffBytes(6, 4, ramp, 100);
    QTest::newRow("img") << imgBytes(6, 4, "BytesPerPixel=4,ExposureTime=1 s,", 4, ramp);
    QTest::newRow("brnx") << brnxBytes(6, 4, ramp);
}

void TestImageReaders::everyTruncationIsSurvived()
{
    QFETCH(QByteArray, bytes);
    std::mt19937 random(7);
    for (int length = 0; length < bytes.size(); length += 1 + length / 40) {
        TiffData cut;
        cut.readFile(write(bytes.left(length)), ErrPoints());
        QVERIFY(cut.width <= 70000 && cut.height <= 70000);

        QByteArray damaged = bytes;
        for (int i = 0; i < 4; ++i)
            damaged[int(random() % unsigned(qMin(bytes.size(), 240)))] = char(random());
        TiffData other;
        if (other.readFile(write(damaged), ErrPoints()))
            QVERIFY(other.pixel(0, 0) >= 0.0 || std::isnan(other.pixel(0, 0)));
    }
}

void TestImageReaders::stopEndsTheReading()
{
    const std::atomic<bool> stop{true};
    LogCapture log;
    for (const QByteArray& bytes :
         {tiffBytes(2, 2, ramp), imgBytes(2, 2, "", 2, ramp), brnxBytes(2, 2, ramp)}) {
        TiffData image;
        QVERIFY(!image.readFile(write(bytes), ErrPoints(), &stop));
    }
    QCOMPARE(log.linesWith(QStringLiteral("Error")), 0);
}

QTEST_GUILESS_MAIN(TestImageReaders)
#include "test_image_readers.moc"
