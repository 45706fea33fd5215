#include "conduct/Desk.h"

#include "analysis/diagnostics/Analyzer2.h"
#include "analysis/diagnostics/DarkCheckFiles.h"
#include "conduct/DiagnosticsConductor.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"
#include "support/RandomStack.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <limits>

namespace {

constexpr int width = 37;
constexpr int height = 101; // more than a band, and not a multiple of it
constexpr int images = 5;
constexpr double threshold = 500.0;

/// Pixels that stay dark, row by row, and others that are dark for a while.
const QVector<QPoint> planted{{0, 0}, {36, 0}, {17, 31}, {18, 31}, {3, 32}, {36, 100}};
const QVector<QPoint> darkAtFirst{{5, 5}, {20, 64}, {0, 100}};

bool isDark(int image, const QPoint& p)
{
    return planted.contains(p) || (darkAtFirst.contains(p) && image < 2);
}

double countsOf(int image, int x, int y)
{
    if (isDark(image, {x, y}))
        return x % 2 == 0 ? threshold : 0.0; // the threshold itself is dark
    return threshold + 1.0 + (x * 131 + y * 977 + image * 53) % 60000;
}

TiffStack plantedStack(TiffData::PixelType type)
{
    TiffStack stack;
    for (int i = 0; i < images; ++i)
        addImage(stack,
                 makeImage(width, height, type, [i](int x, int y) { return countsOf(i, x, y); }),
                 9000.0 + i);
    return stack;
}

DarkCheckResult check(const TiffStack& stack, const DarkCheckSettings& settings, int threads = 2)
{
    const std::atomic<bool> stop = false;
    return *checkDark(stack, settings, threads, stop, [](double) {});
}

/// The told rule, pixel by pixel.
std::vector<quint64> plainCounts(const TiffStack& stack, const DarkCheckSettings& settings)
{
    std::vector<quint64> counts(std::size_t(settings.bins) + 1, 0);
    for (const SharedImage& image : stack) {
        for (int y = 0; y < image->height; ++y) {
            for (int x = 0; x < image->width; ++x) {
                const double at = image->pixel(x, y) / settings.histogramMax * settings.bins;
                ++counts[std::size_t(std::min(int(at), settings.bins))];
            }
        }
    }
    return counts;
}

} // namespace

/// The check for pixels that stay dark, of planted detectors; its files, its panel and its
/// conductor.
class TestDarkCheck : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(folder_->path()));
    }
    void cleanup() { defaultErrPoints() = ErrPoints(); }

    void plantedPixelsAreFoundInAnyTypeByAnyNumberOfThreads()
    {
        const DarkCheckSettings settings{threshold, 50000.0, 70};
        const int atFirst = planted.size() + darkAtFirst.size();
        const int atEnd = planted.size();
        for (const auto type : {TiffData::TiffWords, TiffData::ImgLongs, TiffData::Floats}) {
            const TiffStack stack = plantedStack(type);
            for (const int threads : {1, 2, 7}) {
                const DarkCheckResult result = check(stack, settings, threads);
                QCOMPARE(result.points, planted);
                QCOMPARE(result.lengths, (QVector<qint64>{atFirst, atFirst, atEnd, atEnd, atEnd}));
                QVERIFY(result.counts == plainCounts(stack, settings));
                QVERIFY(result.counts.back() > 0); // all above the end
            }
        }
        QCOMPARE(check(plantedStack(TiffData::TiffWords).mid(0, 1), settings).points.size(),
                 atFirst);
    }

    void shiftsOriginsAndOddPixelsFollowTheirRules()
    {
        const auto even = [](double v) { return [v](int, int) { return v; }; };
        TiffStack stack;
        auto first = makeImage(6, 4, TiffData::TiffWords, even(900.0));
        first->x0 = 100;
        first->y0 = 50;
        first->shiftX = 2; // columns 0 and 1 read 0
        addImage(stack, std::move(first), 1.0);
        auto second = makeImage(6, 4, TiffData::TiffWords, even(900.0));
        second->shiftY = -3; // only row 0 reads counts
        addImage(stack, std::move(second), 2.0);
        addImage(stack, makeImage(6, 2, TiffData::Floats, even(-7.0)), 3.0);
        const DarkCheckSettings settings{threshold, 1000.0, 10};
        const DarkCheckResult result = check(stack, settings);
        QCOMPARE(
            result.points,
            (QVector<QPoint>{{100, 51}, {101, 51}, {100, 52}, {101, 52}, {100, 53}, {101, 53}}));
        QCOMPARE(result.counts[0], quint64(8 + 18 + 12)); // also those below 0
        QCOMPARE(result.counts[9], quint64(16 + 6));
        auto odd = makeImage(3, 1, TiffData::Floats, even(0.0));
        odd->row<float>(0)[0] = std::numeric_limits<float>::quiet_NaN();
        odd->row<float>(0)[1] = std::numeric_limits<float>::infinity();
        odd->row<float>(0)[2] = -std::numeric_limits<float>::infinity();
        TiffStack odds;
        addImage(odds, std::move(odd), 1.0);
        const DarkCheckResult ofOdds = check(odds, settings);
        QCOMPARE(ofOdds.points, (QVector<QPoint>{{0, 0}, {2, 0}}));
        QVERIFY(ofOdds.counts[0] == 1 && ofOdds.counts[10] == 1);
    }

    void conditionsThatCanNotBeAreNamed()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QVERIFY(DarkCheckSettings().fault().isEmpty());
        for (const double max : {0.0, -1.0, nan, std::numeric_limits<double>::infinity()})
            QVERIFY((DarkCheckSettings{1.0, max, 10}.fault().contains("HistgMax")));
        for (const int bins : {0, -5, 2000000000})
            QVERIFY((DarkCheckSettings{1.0, 10.0, bins}.fault().contains("HistgBins")));
        QVERIFY((DarkCheckSettings{nan, 10.0, 10}.fault().contains("DarkTh")));
    }

    /// Lists of pixels come back by the reader of bad pixels.
    void theFilesHoldWhatWasFound()
    {
        ErrPoints bad;
        bad.add(999, 3);
        for (const QPoint& p : planted.mid(2))
            bad.add(p.x(), p.y());
        const DarkCheckSettings settings{threshold, 60000.0, 7};
        const DarkCheckResult result = check(plantedStack(TiffData::TiffWords), settings);
        QVERIFY(writeDarkCheck(result, settings, differencesOf(result, bad)));
        const std::pair<const char*, QVector<QPoint>> lists[] = {
            {"dark-allDarkPoints.dat", planted},
            {"dark-allDarkPoints-onlyInPs1.dat", planted.mid(0, 2)},
            {"dark-allDarkPoints-onlyInErrPs.dat", {{999, 3}}}};
        for (const auto& [file, pixels] : lists) {
            ErrPoints read;
            QVERIFY(read.readFile(file, 0));
            QCOMPARE(read.points(), pixels);
            QVERIFY(read.sizeX == width && read.sizeY == height);
            QVERIFY(bytesOf(file).startsWith("# Size 37\t101\n"));
        }
        QCOMPARE(bytesOf("dark-allDarkPointNums.dat"), QByteArray("9\t9\t6\t6\t6\n"));
        const QList<QByteArray> lines = bytesOf("dark-hg-all.dat").split('\n');
        QCOMPARE(lines.first(), QByteArray("# min, max = (0, 60000)  bins = 7"));
        QVERIFY(lines.size() == 10 && lines.last().isEmpty());
        QCOMPARE(lines.at(2).split('\t').at(1).toDouble(), 60000.0 / 7);
        quint64 pixels = 0;
        for (int bin = 0; bin <= 7; ++bin) {
            const QList<QByteArray> cells = lines.at(bin + 1).split('\t');
            QCOMPARE(cells.at(0).toInt(), bin);
            pixels += cells.at(2).toULongLong();
        }
        QCOMPARE(pixels, quint64(width * height * images));
    }

    void aCheckReportsOnceAndSaysWhatItFound()
    {
        const Planted p;
        Desk& desk = *p.desk;
        desk.runAll({"analyzer2_dark_threshold 500", "analyzer2_histogram_max 60000",
                     "analyzer2_histogram_bins 16"});
        const LogCapture log;
        QVERIFY(desk.runAll({"analyzer2_dark_check"}) && desk.failures.isEmpty());
        QVERIFY(p.outcome().contains(" 5 images: 6;"));
        QCOMPARE(log.linesWith("Written: \"" + QDir::currentPath() + "/dark-"), 5);
        QVERIFY(p.press()->isEnabled() && p.press()->text() == "Dark Check");
        // Stopped: what was there stays.
        QVERIFY(QFile::remove("dark-hg-all.dat"));
        const auto over = std::make_shared<bool>(false);
        desk.run("analyzer2_dark_check", over);
        QVERIFY(p.conductor->isChecking());
        desk.run("analyzer2_dark_check");
        QVERIFY(log.linesWith("another one runs") == 1);
        p.press()->click();
        QTRY_VERIFY(*over);
        // It may have been through before the press.
        QVERIFY(desk.failures == QStringList("stopped") || QFile::exists("dark-hg-all.dat"));
        QVERIFY(!p.conductor->isChecking());
    }

    void whatCanNotBeCheckedOrWrittenCostsOneLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("word");
        QTest::newRow("no images") << "clear_I1_files"
                                   << "no I1 images";
        QTest::newRow("end of 0") << "analyzer2_histogram_max 0"
                                  << "HistgMax";
        QTest::newRow("no bins") << "analyzer2_histogram_bins 0"
                                 << "HistgBins";
        QTest::newRow("no number") << "enter analyzer2_histogram_max abc"
                                   << "HistgMax";
        QTest::newRow("unwritable") << ""
                                    << "dark-hg-all.dat";
    }

    void whatCanNotBeCheckedOrWrittenCostsOneLine()
    {
        QFETCH(QString, line);
        QFETCH(QString, word);
        const Planted p;
        Desk& desk = *p.desk;
        desk.book.bindEnter();
        if (line.isEmpty())
            QVERIFY(QDir().mkdir("dark-hg-all.dat"));
        else
            QVERIFY(desk.runAll({line}));
        const LogCapture log;
        QVERIFY(desk.runAll({"analyzer2_dark_check"}));
        QVERIFY2(log.all().size() == 1 && log.linesWith(word) == 1,
                 qPrintable(log.all().join('\n')));
        QCOMPARE(QDir().entryList(QDir::Files), QStringList());
        QCOMPARE(p.press()->isEnabled(), !line.startsWith("clear"));
    }

    void theConfigurationsListIsUsedByItsBox()
    {
        QVERIFY(writeBytes("bad.dat", "# Size 8 8\n1 1\n"));
        QVERIFY(writeBytes("dark.tif",
                           tiffBytes(8, 8, [](int x, int y) { return x + y == 2 ? 900.0 : 3.0; })));
        const Planted p;
        auto* const box = p.panel->findChild<QCheckBox*>("UseErrPMask");
        const auto darkPixel = [&] {
            p.desk->dark.selectedDark("dark.tif");
            return p.desk->data.dark->pixel(1, 1);
        };
        p.conductor->showErrPMask();
        QVERIFY(!box->isEnabled() && darkPixel() == 900.0);
        const LogCapture log;
        p.desk->run("analyzer2_use_error_points 1");
        QVERIFY(!box->isChecked() && log.linesWith("ErrPoints") == 1);
        QVERIFY(defaultErrPoints().readFile("bad.dat", 0));
        defaultErrPoints().active = true;
        p.conductor->showErrPMask();
        QVERIFY(box->isEnabled() && box->isChecked() && p.panel->useErrPMask());
        QVERIFY(p.panel->findChild<QLabel*>("ErrPMaskFileName")->text().endsWith("bad.dat"));
        QVERIFY(darkPixel() < 900.0);
        p.desk->run("analyzer2_use_error_points 0");
        QVERIFY(!defaultErrPoints().active && darkPixel() == 900.0);
        box->click();
        QVERIFY(defaultErrPoints().active);
        // Wired, and idle.
        p.panel->findChild<QPushButton*>("CollectQInfo")->click();
        QCOMPARE(log.linesWith("Q Info"), 0);
        Q_EMIT p.conductor->doCollectQInfo({});
        QCOMPARE(log.linesWith("do collect Q Info"), 1);
    }

private:
    /// The panel and its conductor over the planted detector.
    struct Planted
    {
        std::unique_ptr<Desk> desk = std::make_unique<Desk>();
        std::unique_ptr<Analyzer2> panel = std::make_unique<Analyzer2>();
        std::unique_ptr<DiagnosticsConductor> conductor = std::make_unique<DiagnosticsConductor>(
            DiagnosticsConductor::Parts{desk->data, *panel, 2}, desk->stacks, desk->dark);

        Planted()
        {
            panel->bindCommands(desk->book);
            conductor->bindCommands(desk->book);
            const TiffStack stack = plantedStack(TiffData::TiffWords);
            for (int i = 0; i < stack.size(); ++i)
                desk->stacks.loadedI1(makeImage(width, height, TiffData::TiffWords,
                                                [i](int x, int y) { return countsOf(i, x, y); })
                                          .release(),
                                      i);
        }
        QPushButton* press() const { return panel->findChild<QPushButton*>("DarkCheck"); }
        QString outcome() const { return panel->findChild<QLabel*>("DarkOutcome")->text(); }
    };

    std::unique_ptr<QTemporaryDir> folder_;
};

QTEST_MAIN(TestDarkCheck)
#include "test_dark_check.moc"
