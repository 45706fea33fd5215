#include "maps/Analyzed2DRes.h"
#include "output/MapExport.h"
#include "output/SaveDataCfg.h"
#include "output/TiffWriter.h"
#include "support/LogCapture.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QtTest>

#include <tiffio.h>

#include <csignal>
#include <memory>
#include <sys/resource.h>

namespace {
/// Width, height and the tags of the form that every reader of 16-bit images takes.
using Tags = QVector<quint32>;

QVector<quint16> readTiff(const QString& fname, Tags& tags)
{
    const std::unique_ptr<TIFF, void (*)(TIFF*)> tif(
        TIFFOpen(QFile::encodeName(fname).constData(), "r"), TIFFClose);
    if (!tif)
        return {};
    for (const quint32 tag : {256U, 257U, 278U, 258U, 259U, 262U, 274U, 277U, 284U}) {
        quint32 v = 0; // tags of 16 bits fill the lower half
        TIFFGetField(tif.get(), tag, &v);
        tags.append(v);
    }
    QVector<quint16> pixels(int(tags[0] * tags[1]));
    for (quint32 y = 0; y < tags[1]; ++y)
        TIFFReadScanline(tif.get(), pixels.data() + y * tags[0], y);
    return pixels;
}

void fillDiagonally(Analyzed2DRes& map, AnalyzeCond walk)
{
    map.prepare(walk);
    do {
        map.setData(walk.cx, walk.cy, walk.halfX, walk.halfY, walk.cx + 2.0 * walk.cy);
    } while (walk.next());
}
} // namespace

class TestMapExport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { TIFFSetErrorHandler(nullptr); }

    void readsBackWhatItWrote()
    {
        // A name of another script than the system's own must reach the disk as it is.
        const QString fname = dir_.filePath(QStringLiteral("\u5730\u56f3 \u00e9.tif"));
        for (const QSize& size : {QSize(1, 1), QSize(20, 20), QSize(7, 45), QSize(1, 30)}) {
            QVector<quint16> data(size.width() * size.height());
            for (int i = 0; i < data.size(); ++i)
                data[i] = quint16(i * 40503 + 7);
            QVERIFY(TiffWriter::writeU16(fname, size.width(), size.height(), data.constData()));
            Tags tags;
            QCOMPARE(readTiff(fname, tags), data);
            QCOMPARE(tags.mid(3), (Tags{16, 1, 1, 1, 1, 1}));
            QCOMPARE(files(), QStringList(QFileInfo(fname).fileName()));
        }
        QVERIFY(!TiffWriter::writeU16(fname, 3, 3, nullptr)); // the earlier file stays
        Tags tags;
        QCOMPARE(readTiff(fname, tags).size(), 30);
        QVERIFY(QFile::remove(fname));
    }

    void leavesNothingWhenItFails()
    {
        QVERIFY(QDir(dir_.path()).mkpath("sub/held"));
        const QVector<QPair<QString, QSize>> rows{{"none/a.tif", {2, 2}},
                                                  {"sub", {2, 2}}, // a folder
                                                  {"a.tif", {0, 2}},
                                                  {"a.tif", {1 << 20, 1 << 20}}};
        for (const auto& row : rows) {
            const LogCapture log;
            const QString fname = dir_.filePath(row.first);
            QVERIFY(!TiffWriter::writeZeros(fname, row.second.width(), row.second.height()));
            QCOMPARE(log.linesWith("Can't write TIFF file \"" + fname + '"'), 1);
        }
        Analyzed2DRes map("m");
        QVERIFY(!saveMapAsTiff(map, dir_.filePath("m.tif"), 0, {})); // without values
        // A limit on the size of files ends a write in its middle, as a full disk does.
        fillDiagonally(map, AnalyzeCond(90, 90, 0, 0, QRectF(0, 0, 90, 90), -1, -1));
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small{5000, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        const bool tiff = saveMapAsTiff(map, dir_.filePath("m.tif"), 0, {});
        const bool text = saveMapAsText(map, dir_.filePath("m.tif"), 0, {});
        setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY(!tiff && !text && !saveMapAsText(map, dir_.filePath("none/m.tif"), 0, {}));
        QCOMPARE(files(), QStringList());
    }

    void savesOneValueAPixelOrAPosition()
    {
        QCOMPARE(mapFileName("/d.x/50%2.b.dat", 3, "tif"), QString("/d.x/50%2.b-3.tif"));
        const QRectF whole(0, 0, 11, 7);
        const struct
        {
            QRectF area;
            int half;
            bool asAnalyzed;
            Tags size;
        } rows[] = {{whole, 1, false, {11, 7}},
                    {whole, 1, true, {4, 2}},
                    {whole, 0, true, {11, 7}}, // steps of 1: the whole image
                    {{2, 1, 6, 4}, 1, true, {2, 1}},
                    {{5, 5, 0, 0}, 2, true, {1, 1}}};
        for (const auto& row : rows) {
            Analyzed2DRes map("m");
            AnalyzeCond walk(11, 7, row.half, row.half, row.area, -1, -1);
            fillDiagonally(map, walk);
            const TiffSaveOptions options{true, 0.0, 65535.0, row.asAnalyzed}; // values as they are
            QVERIFY(saveMapAsTiff(map, dir_.filePath("m.xyz"), 2, options));
            Tags tags;
            const QVector<quint16> pixels = readTiff(dir_.filePath("m-2.tif"), tags);
            QCOMPARE(tags.mid(0, 2), row.size);
            for (int i = 0; i < pixels.size(); ++i, walk.next()) {
                const QPoint at =
                    row.asAnalyzed ? QPoint(walk.cx, walk.cy) : QPoint(i % 11, i / 11);
                QCOMPARE(int(pixels.at(i)), int(map.valueAt(at.x(), at.y())));
            }
        }
    }

    void dialogGivesWhatIsChosenAndTyped()
    {
        SaveDataCfg cfg;
        cfg.setSaveAsText();
        cfg.findChild<QAbstractButton*>("SaveAsTiff")->click();
        QVERIFY(cfg.savesAsTiff() && !cfg.findChild<QWidget*>("TextCfg")->isEnabledTo(&cfg));
        cfg.setSaveTiffScaleMin(-0.123456789);
        cfg.findChild<QLineEdit*>("TiffScaleMax")->setText("wrong");
        QVERIFY(cfg.tiffOptions().scaleMin == -0.123457 && cfg.tiffOptions().scaleMax == 0.0);
        cfg.setSaveTextAsSSV();
        cfg.setSaveTextAsXYVal();
        QVERIFY(!cfg.textOptions().commaSeparated && cfg.textOptions().asXYVal);
        cfg.setSaveTextAsCSV();
        QVERIFY(cfg.textOptions().commaSeparated);
    }

private:
    QStringList files() const { return QDir(dir_.path()).entryList(QDir::Files); }

    QTemporaryDir dir_;
};

QTEST_MAIN(TestMapExport)
#include "test_map_export.moc"
