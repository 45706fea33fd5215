#include "image/ImageReaders.h"
#include "image/TiffData.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

#include <random>
#include <vector>

#include <sys/stat.h>
#include <tiffio.h>

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

    const QTemporaryDir dir_;
    const QString name_ = dir_.filePath("image");

    bool read(TiffData& image, const QByteArray& bytes, const ErrPoints& bad = ErrPoints(),
              const std::atomic<bool>* stop = nullptr)
    {
        return writeBytes(name_, bytes) && image.readFile(name_, bad, stop);
    }

    /// A TIFF whose entry of the directory is a 16-bit tag with this value. The last of the nine,
    /// the strip's length, is one that libtiff can do without.
    static QByteArray withEntry(int entry, quint32 id, quint32 value)
    {
        QByteArray bytes = tiffBytes(4, 4, ramp);
        QByteArray tag;
        for (const auto& [number, size] :
             {std::pair<quint32, int>{id, 2}, {3, 2}, {1, 4}, {value, 4}})
            appendWord(tag, number, size);
        return bytes.replace(8 + 4 * 4 * 2 + 2 + 12 * entry, 12, tag);
    }

    static QByteArray withSampleFormat(quint32 format)
    {
        return withEntry(8, TIFFTAG_SAMPLEFORMAT, format);
    }

    /// A few bytes that claim columns and rows by the thousand, packed by this codec.
    static QByteArray claimOf(quint32 codec)
    {
        QByteArray bytes = withEntry(3, TIFFTAG_COMPRESSION, codec);
        for (const int entry : {0, 1})
            bytes.replace(8 + 4 * 4 * 2 + 2 + 12 * entry + 8, 4, QByteArray("\xff\xff\0\0", 4));
        return bytes;
    }

private Q_SLOTS:
    void readsEveryFormatPixelByPixel()
    {
        const auto large = [](int x, int y) { return 100000.0 * ramp(x, y); };
        const auto small = [](int x, int y) { return ramp(x, y) / 500.0; };
        const std::pair<TiffData::PixelType, QByteArray> rows[] = {
            {TiffData::TiffWords, tiffBytes(7, 5, ramp)},
            {TiffData::ImgWords, imgBytes(7, 5, "ExposureTime=0.1", 2, ramp, 40000, 12)},
            {TiffData::ImgLongs, imgBytes(7, 5, "BytesPerPixel=4,", 4, large)},
            {TiffData::Floats, brnxBytes(7, 5, small)}};
        for (const auto& [type, bytes] : rows) {
            const double factor = type == TiffData::ImgLongs ? 100000.0 : 1.0;
            TiffData image;
            QVERIFY(read(image, bytes));
            QVERIFY(image.pixelType == type && image.width == 7 && image.height == 5);
            for (int i = 0; i < 35; ++i)
                QCOMPARE(float(image.pixel(i % 7, i / 7)), float(factor * ramp(i % 7, i / 7)));
            QVERIFY(image.minVal == image.pixel(0, 0) && image.maxVal == image.pixel(6, 4));
            QVERIFY(image.pixel(7, 0) == 0.0 && image.pixel(0, -1) == 0.0);
            QVERIFY(type != TiffData::ImgWords || (image.x0 == 40000 && image.y0 == 12));
        }
    }

    void exposureComesFromTheFile()
    {
        const std::pair<QByteArray, double> rows[] = {
            {"ExposureTime=200 ms,", 200},
            {"ExposureTime=200000 us,", 200},
            {"ExposureTime=0.2,", 200},
            {"ExposureTime=7 ticks,", 7},
            {"Other=1,", 100},
            {QByteArray("a=1,ExposureTime=4 ms\0junk", 26), 4}};
        TiffData image;
        for (const auto& [comment, ms] : rows) {
            QVERIFY(read(image, imgBytes(2, 2, comment, 2, ramp)));
            QCOMPARE(image.exposureMs, ms);
        }
        QVERIFY(read(image, tiffBytes(3, 2, ramp, 250)) && qAbs(image.exposureMs - 250.0) < 1e-4);
        QVERIFY(read(image, tiffBytes(3, 2, ramp)) && image.exposureMs == 100.0);
    }

    void badPixelsAreCorrectedButNotInBrnx()
    {
        ErrPoints bad;
        bad.add(11, 21); // detector coordinates; the image's origin is (10, 20)
        bad.add(12, 21); // a bad neighbour, left out of the mean
        bad.add(99, 99); // outside
        bad.add(0, 0);
        bad.active = true;
        TiffData image;
        QVERIFY(read(image, imgBytes(3, 3, "", 2, ramp, 10, 20), bad));
        // Mean of the seven good neighbours of (1, 1), cut to the pixel's type.
        QCOMPARE(image.pixel(1, 1), std::floor((1 + 101 + 201 + 2 + 202 + 3 + 203) / 7.0));
        // What stood there counts no more, and neither does a 0 for want of good neighbours.
        const auto hot = [](int x, int y) { return x == 2 && y == 1 ? 60000 : 100 + 10 * y + x; };
        QVERIFY(read(image, imgBytes(3, 3, "", 2, hot, 10, 20), bad));
        QVERIFY(image.minVal == 100 && image.maxVal == 122);
        QVERIFY(read(image, imgBytes(2, 1, "", 2, hot, 11, 21), bad));
        QVERIFY(image.pixel(0, 0) == 0 && image.maxVal < 1);
        QVERIFY(read(image, brnxBytes(2, 1, [](int x, int) { return x == 0 ? 2.0 : -0.1; }), bad));
        QVERIFY(image.pixel(0, 0) == 1000.0 && image.pixel(1, 0) == 0.0); // never negative
    }

    void nanIsNoExtremeWhereverItStands()
    {
        for (int at = 0; at < 9; ++at) {
            TiffData image;
            QVERIFY(image.allocate(3, 3, TiffData::Floats));
            for (int i = 0; i < 9; ++i)
                image.row<float>(i / 3)[i % 3] = i == at ? float(qQNaN()) : float(i + 1);
            for (int y = 0; y < 3; ++y)
                image.noteExtremes(y);
            QCOMPARE(QPointF(image.minVal, image.maxVal),
                     QPointF(at == 0 ? 2 : 1, at == 8 ? 8 : 9));
        }
    }

    void missingRowsReadAsZeroWithOneLogLine()
    {
        QByteArray brnx = brnxBytes(3, 3, [](int, int) { return 1.0; });
        brnx.truncate(brnx.indexOf("0 2 "));
        const LogCapture log;
        TiffData image;
        QVERIFY(read(image, brnx) && image.pixel(2, 1) == 500.0 && image.pixel(0, 2) == 0.0);
        QCOMPARE(log.linesWith("Missing pixel lines"), 1);
        // A strip that starts in the file and ends outside, and holds all rows: no image.
        QByteArray tiff = tiffBytes(4, 4, ramp);
        tiff.replace(8 + 4 * 4 * 2 + 2 + 12 * 5 + 8, 4, QByteArray("\xf0\xff\xff\x00", 4));
        QVERIFY(!read(image, tiff));
        QCOMPARE(log.linesWith("4 of 4 rows can not be read"), 1);
    }

    /// Constant pixels: the codecs at their tightest.
    void compressionPacksAsTightAsItCan()
    {
        constexpr quint32 side = 1000;
        for (const int codec : {COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE, COMPRESSION_PACKBITS,
                                COMPRESSION_LZMA, COMPRESSION_ZSTD, COMPRESSION_LERC}) {
            if (TIFFIsCODECConfigured(uint16_t(codec)) != 1)
                continue;
            TIFF* tiff = TIFFOpen(qPrintable(name_), "w");
            const std::pair<uint32_t, quint32> tags[] = {
                {TIFFTAG_IMAGEWIDTH, side},   {TIFFTAG_IMAGELENGTH, side},
                {TIFFTAG_ROWSPERSTRIP, side}, {TIFFTAG_BITSPERSAMPLE, 16},
                {TIFFTAG_PHOTOMETRIC, 1},     {TIFFTAG_COMPRESSION, quint32(codec)}};
            for (const auto& [tag, value] : tags)
                QCOMPARE(TIFFSetField(tiff, tag, value), 1);
            std::vector<quint16> row(side, 7);
            for (quint32 y = 0; y < side; ++y)
                QCOMPARE(TIFFWriteScanline(tiff, row.data(), y, 0), 1);
            TIFFClose(tiff);
            TiffData image;
            QVERIFY(image.readFile(name_, ErrPoints()));
            QCOMPARE(image.pixel(side - 1, side - 1), 7.0);
        }
    }

    void furtherPagesCostOneLogLine()
    {
        QByteArray tiff = tiffBytes(4, 3, ramp);
        // The directory once more behind the first, which then tells where it is.
        const int at = 8 + 4 * 3 * 2;
        const QByteArray directory = tiff.mid(at);
        for (int i = 0; i < 2; ++i) {
            QByteArray next;
            appendWord(next, quint32(tiff.size()), 4);
            tiff.replace(tiff.size() - 4, 4, next);
            tiff += directory;
        }
        const LogCapture log;
        TiffData image;
        QVERIFY(read(image, tiff) && image.blockSum(1, 1, 9, 9) > 0.0);
        QCOMPARE(log.linesWith("not the 2 pages"), 1);
    }

    void brokenFilesAreRefusedWithOneLogLine()
    {
        const QByteArray img = imgBytes(50, 40, "", 2, ramp);
        const QByteArray brnx = "#BRNX-CTImg\n# ";
        QByteArray hugeTiff = tiffBytes(2, 2, ramp);
        // The count of columns stands in the value field of the first directory entry.
        hugeTiff.replace(16 + 2 + 8, 4, QByteArray("\xff\xff\xff\x0f", 4));
        // Each file with its log line, those that say the same together.
        const QPair<const char*, QByteArrayList> rows[] = {
            {"Error on reading file (1)", {"", "IIIIIIIIII"}},
            {"Not an image file", {"GIF89a and some more"}},
            {"Can not open tiff", {QByteArray("II*\0 nothing of a tiff", 23)}},
            {"16 bit", {tiffBytes(4, 4, ramp, 0, 8)}},
            {"Compression not supported", {claimOf(COMPRESSION_CCITTFAX4), claimOf(65000)}},
            {"Image size exceeds the file", {claimOf(COMPRESSION_ZSTD), claimOf(COMPRESSION_LERC)}},
            {"signed or float", {withSampleFormat(2), withSampleFormat(3)}},
            {"Error on reading (3)", {img.left(img.size() - 1), img.left(20)}},
            {"Error on reading (2)", {imgBytes(3, 3, "BytesPerPixel=4,", 2, ramp)}},
            {"Image size", {hugeTiff, brnx + "RANGE_X1 = 16384\n# RANGE_Y1 = 16384\n1 1 1\n"}},
            {"No image size",
             {brnx + "\n1 2 3\n", brnx + "RANGE_X1 = nan\n# RANGE_Y1 = 1e300\n1 1 1\n"}}};
        TiffData image;
        for (const auto& [line, contents] : rows) {
            for (const QByteArray& bytes : contents) {
                const LogCapture log;
                QVERIFY(!read(image, bytes));
                QVERIFY2(log.linesWith(line) == 1 && log.linesWith(name_) == 1, bytes);
            }
        }
        const LogCapture log;
        const QString pipe = dir_.filePath("pipe.tif");
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        QVERIFY(!image.readFile(pipe, ErrPoints())); // opening it would wait for a writer
        QCOMPARE(log.linesWith(pipe), 1);
    }

    void everyTruncationIsSurvivedAndStopEndsTheReading()
    {
        std::mt19937 random(7);
        const std::atomic<bool> stop{true};
        for (const QByteArray& bytes :
             {tiffBytes(6, 4, ramp, 100), brnxBytes(6, 4, ramp),
              imgBytes(6, 4, "BytesPerPixel=4,ExposureTime=1 s,", 4, ramp)}) {
            const LogCapture log;
            TiffData cut;
            QVERIFY(!read(cut, bytes, ErrPoints(), &stop) && log.linesWith("Error") == 0);
            for (int length = 0; length < bytes.size(); length += 1 + length / 40) {
                read(cut, bytes.left(length));
                QVERIFY(cut.width <= 70000 && cut.height <= 70000);
                QByteArray damaged = bytes;
                for (int i = 0; i < 4; ++i)
                    damaged[int(random() % unsigned(qMin(bytes.size(), 240)))] = char(random());
                if (read(cut, damaged))
                    QVERIFY(cut.pixel(0, 0) >= 0.0 || std::isnan(cut.pixel(0, 0)));
            }
        }
    }

    void badPixelListsAreRead()
    {
        const QByteArray texts[] = {"# Size 10 20\n\n# a comment\n3 4 9 # two\n  5\t6\n",
                                    "1 1\n# Size 10 20\n3 4\n5 6", "3\n3 4\n5 6\n"};
        for (QByteArray text : texts) {
            ErrPoints list;
            QBuffer buffer(&text);
            buffer.open(QIODevice::ReadOnly);
            list.read(buffer);
            QCOMPARE(list.points(), QVector<QPoint>({{3, 4}, {5, 6}}));
        }
        ErrPoints list;
        list.add(1, 2);
        const LogCapture log;
        QVERIFY(!list.readFile("/no/such/list", 0) && list.points().isEmpty());
        QCOMPARE(log.linesWith("/no/such/list"), 1);
    }
};

QTEST_GUILESS_MAIN(TestImageReaders)
#include "test_image_readers.moc"
