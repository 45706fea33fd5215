#include "maps/Analyzed2DRes.h"
#include "output/MapExport.h"
#include "output/SaveDataCfg.h"
#include "output/TiffWriter.h"
#include "support/LogCapture.h"
#include "support/TiffPixels.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QtTest>

#include <cmath>
#include <csignal>
#include <sys/resource.h>

namespace {
QString description(const QString& fname)
{
    const auto tif = openTiff(fname);
    const char* text = nullptr;
    return tif && TIFFGetField(tif.get(), TIFFTAG_IMAGEDESCRIPTION, &text) == 1 ? text : "";
}

/// Pixels of a float image, of which there must be `count`; empty for another kind.
QVector<float> readFloats(const QString& fname, int count)
{
    const auto tif = openTiff(fname);
    uint16_t format = 0;
    TIFFGetField(tif.get(), TIFFTAG_SAMPLEFORMAT, &format);
    QVector<float> values(count);
    const tmsize_t bytes = count * int(sizeof(float));
    if (format != SAMPLEFORMAT_IEEEFP ||
        TIFFReadEncodedStrip(tif.get(), 0, values.data(), bytes) != bytes)
        return {};
    return values;
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
            QCOMPARE(tiffPixels(fname, tags), data);
            QCOMPARE(tags.mid(3), (Tags{16, 1, 1, 1, 1, 1}));
            QCOMPARE(files(), QStringList(QFileInfo(fname).fileName()));
        }
        QVERIFY(!TiffWriter::writeU16(fname, 3, 3, nullptr)); // the earlier file stays
        Tags tags;
        QCOMPARE(tiffPixels(fname, tags).size(), 30);
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
            QCOMPARE(log.linesWith('"' + fname + "\": "), 1);
            QCOMPARE(log.all().size(), 1);
        }
        Analyzed2DRes map("m");
        map.prepare(AnalyzeCond(9, 9, 0, 0, QRectF(0, 0, 9, 9), -1, -1)); // and given no value
        const QString name = dir_.filePath("m.tif");
        {
            const LogCapture log;
            QVERIFY(!saveMapAsTiff(map, name, {}) && !saveMapAsFloatTiff(map, name, {}) &&
                    !saveMapAsText(map, name, {}));
            QCOMPARE(log.linesWith("Nothing to save in map m"), 3);
        }
        // A limit on the size of files ends a write in its middle, as a full disk does.
        fillDiagonally(map, AnalyzeCond(90, 90, 0, 0, QRectF(0, 0, 90, 90), -1, -1));
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small{5000, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        const bool tiff = saveMapAsTiff(map, name, {});
        const bool floats = saveMapAsFloatTiff(map, name, {});
        const bool text = saveMapAsText(map, name, {});
        setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY(!tiff && !floats && !text && !saveMapAsText(map, dir_.filePath("none/m.tif"), {}));
        QCOMPARE(files(), QStringList());
    }

    void savesOneValueAPixelOrAPosition()
    {
        QCOMPARE(mapFileName("/d.x/50%2.b.dat", "3", MapForm::Tiff16),
                 QString("/d.x/50%2.b-3.tif"));
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
            const QString name = dir_.filePath("m.tif");
            QVERIFY(saveMapAsTiff(map, name, options));
            Tags tags;
            const QVector<quint16> pixels = tiffPixels(name, tags);
            QCOMPARE(tags.mid(0, 2), row.size);
            for (int i = 0; i < pixels.size(); ++i, walk.next()) {
                const QPoint at =
                    row.asAnalyzed ? QPoint(walk.cx, walk.cy) : QPoint(i % 11, i / 11);
                QCOMPARE(int(pixels.at(i)), int(map.valueAt(at.x(), at.y())));
            }
        }
    }

    /// By the description alone the pixels of any scale become the values again.
    void filesTellHowTheirPixelsBecomeValues()
    {
        Analyzed2DRes map("m");
        fillDiagonally(map, AnalyzeCond(11, 7, 0, 0, QRectF(0, 0, 11, 7), -1, -1)); // 0 to 22
        map.setData(4, 4, 0, 0, qQNaN());
        const QString name = dir_.filePath("m.tif");
        const TiffSaveOptions rows[] = {{}, {true, 0.0, 30.0}, {true, 5.0, 10.0, false, true}};
        for (const TiffSaveOptions& options : rows) {
            QVERIFY(saveMapAsTiff(map, name, options));
            Tags tags;
            const QVector<quint16> pixels = tiffPixels(name, tags);
            const QStringList lines = description(name).split('\n');
            const double min = lines.value(1).section("min = ", 1).toDouble();
            const double max = lines.value(2).section("max = ", 1).toDouble();
            for (int i = 0; i < pixels.size(); ++i) {
                const double v = map.valueAt(i % 11, i / 11);
                const double told = min + pixels.at(i) / 65535.0 * (max - min);
                QVERIFY(std::abs(told - (v == v ? qBound(min, v, max) : min)) <=
                        (max - min) / 65535);
            }
        }
        QVERIFY(saveMapAsFloatTiff(map, name, {}));
        const QVector<float> values = readFloats(name, 11 * 7);
        for (int i = 0; i < values.size(); ++i) {
            const double v = map.valueAt(i % 11, i / 11);
            QVERIFY(v == v ? values.at(i) == v : std::isnan(values.at(i)));
        }
    }

    void wrappedValuesAreCounted()
    {
        Analyzed2DRes map("m");
        fillDiagonally(map, AnalyzeCond(4, 1, 0, 0, QRectF(0, 0, 4, 1), -1, -1)); // 0, 1, 2, 3
        for (const auto& [clamp, lines] : {std::pair(false, 1), std::pair(true, 0)}) {
            const LogCapture log;
            QVERIFY(saveMapAsTiff(map, dir_.filePath("w.tif"), {true, 0.5, 2.5, false, clamp}));
            QCOMPARE(log.linesWith("2 of 4 values lie outside the scale 0.5 to 2.5"), lines);
        }
        Tags tags;
        QCOMPARE(tiffPixels(dir_.filePath("w.tif"), tags),
                 (QVector<quint16>{0, 65535 / 4, 3 * 65535 / 4, 65535}));
        QVERIFY(saveMapAsTiff(map, dir_.filePath("w.tif"), {true, 2.5, 0.5, false, true}));
        QCOMPARE(tiffPixels(dir_.filePath("w.tif"), tags),
                 (QVector<quint16>{65535, 3 * 65535 / 4, 65535 / 4, 0})); // a scale downward
    }

    void dialogGivesWhatIsChosenAndTyped()
    {
        SaveDataCfg cfg;
        cfg.setSaveAsText();
        cfg.findChild<QAbstractButton*>("SaveAsTiff")->click();
        const auto enabled = [&cfg](const char* name) {
            return cfg.findChild<QWidget*>(name)->isEnabledTo(&cfg);
        };
        QVERIFY(cfg.form() == MapForm::Tiff16 && !enabled("TextCfg") && enabled("TiffScale"));
        cfg.setSaveAsFloatTiff();
        QVERIFY(cfg.form() == MapForm::FloatTiff && enabled("TiffAsAnalyzed") &&
                !enabled("TiffScale"));
        cfg.setSaveTiffClamp(true);
        QVERIFY(cfg.tiffOptions().clamp);
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
