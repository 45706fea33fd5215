#include "Compare.h"
#include "CompareAnalyses.h"
#include "CompareHard.h"
#include "CountRandom.h"
#include "DemoFiles.h"
#include "MapFiles.h"
#include "PlainAnalysis.h"
#include "ReferenceText.h"
#include "Truth.h"
#include "support/ImageFiles.h"

#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace {
constexpr int columns = 24;
constexpr int hardSize = 60;

/// A fault of the hard experiment's maps: every so manieth position with or without an edge has
/// this weight for all species.
struct HardFault
{
    QString kind;
    bool ofEdges;
    int every;
    double weight;
};

/// Writes the text form of a map.
void saveText(const QString& fname, const QVector<double>& values)
{
    QFile file(fname);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QTextStream out(&file);
    for (int i = 0; i < values.size(); ++i)
        out << i % columns * 5 + 2 << ' ' << i / columns * 5 + 2 << ' '
            << QString::number(values[i], 'g', 6) << '\n';
}

/// Writes a map under the names and in the forms in which the program saves it.
void saveMap(const QString& folder, const QString& kind, int species, const QVector<double>& values)
{
    saveText(demoFiles::mapText(folder, kind, species), values);
    QVector<quint16> scaled;
    for (const double value : values) {
        const double level = (value - mapScaleMin) / (mapScaleMax - mapScaleMin);
        // The program saves what is no number as 0.
        const bool number = std::isfinite(level);
        scaled.append(number ? quint16(65535.0 * std::clamp(level, 0.0, 1.0)) : quint16(0));
    }
    const QString tiff = demoFiles::mapTiff(folder, kind, species);
    QVERIFY(writeImage(ImageFormat::Tiff, tiff, columns, columns, scaled));
}

/// Writes an energy shift map, as differences of the Bragg angle, with the lines that are needed.
void saveShift(const QString& folder, const QVector<double>& shifts)
{
    QFile file(demoFiles::shiftMap(folder));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QTextStream out(&file);
    out << "###Morvenkite::MVKT\nStd Edge Energy [eV]    : 8982.4\n"
           "Spacing [nm]            : 3.13553\n##-----------------\n";
    const auto angle = [](double E) {
        return std::asin(12398.424360387684 / (2.0 * 3.13553 * E)) * 180.0 / M_PI;
    };
    for (int i = 0; i < 25 * shifts.size(); ++i) {
        const int column = i % (5 * columns) / 5;
        const double shift = shifts[i / (25 * columns) * columns + column];
        out << angle(8982.4 - shift) - angle(8982.4)
            << ((i + 1) % (5 * columns) == 0 ? " \n" : " ");
    }
}

/// What the analyses behind the fits find where the fits find these weights and edge steps.
void saveAnalyses(const QString& folder, const plain::Maps& maps)
{
    QVector<double> shifts;
    QVector<double> jumps;
    for (int i = 0; i < columns * columns; ++i) {
        std::array<double, speciesCount> fractions{};
        double jump = 0.0;
        for (int s = 0; s < speciesCount; ++s) {
            fractions[std::size_t(s)] = maps[{"ratio", s}][i];
            jump += maps[{"dmut", s}][i];
        }
        shifts << mixtureShift(fractions);
        jumps << jump;
    }
    saveText(demoFiles::analysisMap(folder, "dEdge"), shifts);
    saveText(demoFiles::analysisMap(folder, "DMut"), jumps);
    saveText(demoFiles::analysisMap(folder, "Cu-K-0"), jumps);
}

void saveMaps(const QString& folder, const plain::Maps& maps)
{
    saveAnalyses(folder, maps);
    for (auto map = maps.begin(); map != maps.end(); ++map) {
        if (map.key().first == "shift")
            saveShift(folder, map.value());
        else
            saveMap(folder, map.key().first, map.key().second, map.value());
    }
}

Truth truthOf(const QString& folder)
{
    QFile file(demoFiles::truthFile(folder));
    Truth truth;
    QString error;
    QTextStream in(&file);
    if (!file.open(QIODevice::ReadOnly) || !readTruth(in, &truth, &error))
        qFatal("no truth in %s", qPrintable(folder));
    return truth;
}

/// Writes planted fractions with a fault as a map of the hard experiment.
void savePlanted(const QString& fname, const Truth& truth, int species, int halfWidth,
                 const HardFault& fault)
{
    QFile map(fname);
    QVERIFY(map.open(QIODevice::WriteOnly));
    QTextStream out(&map);
    int seen = 0;
    for (const QPoint& p : blockCentres(truth.size, halfWidth)) {
        const BlockTruth block = blockTruth(truth, p.x(), p.y(), halfWidth);
        const bool edge = block.leastStep >= hardEdgeStep;
        const bool faulty = edge == fault.ofEdges && seen++ % fault.every == 0;
        const double weight = edge ? block.fractions[std::size_t(species)] : 0.0;
        out << p.x() << ' ' << p.y() << ' ' << (faulty ? fault.weight : weight) << '\n';
    }
}
} // namespace

Q_DECLARE_METATYPE(Difficulty)
Q_DECLARE_METATYPE(HardFault)

class TestDemoExperiment : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(write(dir_.path(), 5 * columns, 1));
        ExperimentConditions hard = usualConditions(Difficulty::Hard);
        hard.size = hardSize;
        QString error;
        QVERIFY(writeExperiment(hard_.path(), hard, ImageFormat::Tiff, &error));
        maps_ = plain::analyse(dir_.path(), scanOf(ExperimentConditions()), darkCornerOf(120), 5);
    }

    void init() { saveMaps(dir_.path(), maps_); }

    void theGeneratorsHaveTheirMeanAndVariance()
    {
        for (const double mean : {3.5, 12.0, 30000.0}) { // products, rejection of few and many
            CountRandom random(7, 3);
            constexpr int samples = 40000;
            double sum = 0.0;
            double squares = 0.0;
            double normalSquares = 0.0;
            for (int i = 0; i < samples; ++i) {
                const double difference = random.poisson(mean) - mean;
                sum += difference;
                squares += difference * difference;
                normalSquares += std::pow(random.normal(), 2);
            }
            // Four standard deviations of each estimate.
            const double spread = 4.0 * std::sqrt((2.0 + 1.0 / mean) / samples);
            QVERIFY(std::fabs(sum / samples) < 4.0 * std::sqrt(mean / samples));
            QVERIFY(std::fabs(squares / samples / mean - 1.0) < spread);
            QVERIFY(std::fabs(normalSquares / samples - 1.0) < spread);
        }
    }

    void everyReferenceHasTheSameLinesAndStep_data()
    {
        QTest::addColumn<Difficulty>("difficulty");
        QTest::newRow("easy") << Difficulty::Easy;
        QTest::newRow("hard") << Difficulty::Hard;
    }

    void everyReferenceHasTheSameLinesAndStep()
    {
        QFETCH(Difficulty, difficulty);
        const bool easy = difficulty == Difficulty::Easy;
        const plain::EdgeRange around{demoEdgeEnergy - 20.0, demoEdgeEnergy + 20.0, 20.0};
        for (int s = 0; s < speciesCount; ++s) {
            double edgeStep = 0.0;
            const QString name = demoFiles::referenceFile((easy ? dir_ : hard_).path(), s);
            const plain::Curve curve = plain::normalised(plain::readReference(name), &edgeStep,
                                                         easy ? plain::EdgeRange() : around);
            QVERIFY(curve.size() > 120 && std::fabs(edgeStep - referenceStep) < 2e-4);
            // The file gives back the shape at every energy, through angles or not.
            for (const QPointF& p : curve)
                QVERIFY(std::fabs(p.y() - speciesShape(difficulty, s, p.x())) < 5e-4);
        }
    }

    void theHardReferencesAreHard()
    {
        // Without the suggested edge an oscillation of the foil is taken for it.
        double edgeStep = 0.0;
        plain::normalised(plain::readReference(demoFiles::referenceFile(hard_.path(), 1)),
                          &edgeStep);
        QVERIFY(std::fabs(edgeStep - referenceStep) > 0.2);
        const auto firstEnergy = [](const QByteArray& text, int line) {
            return text.split('\n').value(line).split(' ').value(0).toDouble();
        };
        const QByteArray descending = bytesOf(demoFiles::referenceFile(hard_.path(), 2));
        QVERIFY(firstEnergy(descending, 2) > firstEnergy(descending, 3));
        QCOMPARE(int(firstEnergy(bytesOf(demoFiles::kevReference(hard_.path())), 2)), 8);
    }

    void theSeedFixesEveryFile()
    {
        QTemporaryDir dirs[3];
        for (const int i : {0, 1, 2})
            QVERIFY(write(dirs[i].path(), 60, i / 2 + 1));
        for (const char* name : {"/images/i1_0000.tif", "/images/i0_0040.tif",
                                 "/images/std_0050.tif", "/bad-pixels.txt"}) {
            const QByteArray bytes = bytesOf(dirs[0].path() + name);
            QVERIFY(!bytes.isEmpty() && bytesOf(dirs[1].path() + name) == bytes);
            QVERIFY(bytesOf(dirs[2].path() + name) != bytes);
        }
        QVERIFY(!write(dirs[0].filePath("bad-pixels.txt"), 60, 1)); // not a folder
    }

    void theDetectorHasItsFaults()
    {
        const Phantom phantom = makePhantom(conditions(60, 1));
        const QVector<quint16> i0 = exposure(phantom, Stack::I0, 40);
        QVERIFY(!phantom.hot.isEmpty() && !phantom.dead.isEmpty());
        for (const QPoint& p : phantom.hot + phantom.dead)
            QCOMPARE(i0[p.y() * 60 + p.x()], phantom.hot.contains(p) ? hotCount : quint16(0));
        // The corner reads the dark level alone, whatever the beam does.
        QVERIFY(std::fabs(i0[61] - darkLevel) < 20.0 && i0[30 * 60 + 30] > 20000);
    }

    /// Plain code that shares nothing with the program gets from the images to the planted weights.
    void aPlainAnalysisOfTheImagesFindsThePlantedFields()
    {
        QCOMPARE(compared(), compareWithin);
        QCOMPARE(text_.count(" ok\n"), 2 * speciesCount + 1 + 3);
        QVERIFY(QFile::exists(dir_.filePath("pictures/truth-result-2.png")));
    }

    void aFaultyMapIsOutside()
    {
        const struct
        {
            const char* kind;
            double shift, ripple;
        } rows[] = {
            {"ratio", 0.04, 0.0}, {"ratio", 0.0, 0.1}, {"dmut", -0.04, 0.0}, {"ratio", NAN, 0.0}};
        for (const auto& row : rows) {
            QVector<double> values = maps_[{row.kind, 1}];
            for (int i = 0; i < values.size(); ++i)
                values[i] += row.shift + (i % 2 == 0 ? row.ripple : -row.ripple);
            saveMap(dir_.path(), row.kind, 1, values);
            QVERIFY(compared() == compareOutside && text_.count(" OUTSIDE\n") == 1);
            saveMaps(dir_.path(), maps_);
        }
        QVector<double> shifts = maps_[{"shift", 0}];
        for (int i = 0; i < shifts.size(); ++i)
            shifts[i] += i % 2 == 0 ? 0.5 : -0.5; // its spread has no limit
        saveShift(dir_.path(), shifts);
        QCOMPARE(compared(), compareWithin);
        for (double& shift : shifts)
            shift += 0.07;
        saveShift(dir_.path(), shifts);
        QVERIFY(compared() == compareOutside && text_.count(" OUTSIDE\n") == 1);
    }

    void aMissingOrShortFileIsNamed()
    {
        for (const char* name : {"maps/ratio-ref2-2.dat", "maps/dmut-ref0-0.tif", "maps/shift.emp",
                                 "maps/raw-ref0-0.dat", "maps/map-dEdge.dat", "truth.dat"}) {
            const QString path = dir_.filePath(name);
            QVERIFY(QFile::copy(path, path + ".kept"));
            QVERIFY(QFile::resize(path, QFileInfo(path).size() / 2));
            QVERIFY(compared() == compareFailed && text_.contains(path));
            QVERIFY(QFile::remove(path));
            QVERIFY(compared() == compareFailed && text_.contains(path));
            QVERIFY(QFile::rename(path + ".kept", path));
        }
    }

    void aHardMapIsJudgedByWhatItRejectsAndByItsWeights_data()
    {
        QTest::addColumn<HardFault>("fault");
        QTest::addColumn<int>("outside");
        const QString straight = straightRun.ratio;
        const QString pixels = victoreenRun.ratio;
        QTest::newRow("as planted") << HardFault{straight, false, 1, 0.0} << 0;
        QTest::newRow("few edges lost") << HardFault{straight, true, 25, 0.0} << 0;
        QTest::newRow("many edges lost") << HardFault{pixels, true, 16, 0.0} << 1;
        QTest::newRow("no edge, kept") << HardFault{straight, false, 10, 0.3} << 1;
        QTest::newRow("no edge, nan") << HardFault{pixels, false, 16, NAN} << 1;
        QTest::newRow("a large weight") << HardFault{pixels, true, 700, -2.1} << 1;
        // Nan is no sound weight, and no bias is within its limit.
        QTest::newRow("edges of nan") << HardFault{straight, true, 100, NAN} << 4;
        QTest::newRow("spread") << HardFault{pixels, true, 10, 1.0} << 3;
    }

    void aHardMapIsJudgedByWhatItRejectsAndByItsWeights()
    {
        QFETCH(HardFault, fault);
        QFETCH(int, outside);
        const Truth truth = truthOf(hard_.path());
        for (const HardRun& run : {straightRun, victoreenRun}) {
            HardFault here = fault;
            if (fault.kind != run.ratio)
                here = {run.ratio, false, 1, 0.0};
            const int halfWidth = here.kind == straightRun.ratio ? truth.halfWidth : 0;
            for (int s = 0; s < speciesCount; ++s)
                savePlanted(demoFiles::mapText(hard_.path(), here.kind, s), truth, s, halfWidth,
                            here);
        }
        text_.clear();
        QTextStream out(&text_);
        QCOMPARE(compareWithTruth(hard_.path(), -1, out),
                 outside > 0 ? compareOutside : compareWithin);
        QVERIFY2(text_.count("OUTSIDE\n") == outside, qPrintable(text_));
        QVERIFY(QFile::remove(demoFiles::mapText(hard_.path(), fault.kind, 1)));
        QCOMPARE(compareWithTruth(hard_.path(), -1, out), compareFailed);
    }

    void blocksOfBadPixelsDoNotCount()
    {
        const Phantom phantom = makePhantom(conditions(5 * columns, 1));
        QVector<double> values = maps_[{"ratio", 0}];
        for (const QPoint& p : phantom.hot + phantom.dead)
            values[p.y() / 5 * columns + p.x() / 5] = 1000.0;
        values[0] = 1000.0; // in the corner without beam
        saveMap(dir_.path(), "ratio", 0, values);
        QCOMPARE(compared(), compareWithin);
    }

    void twoFoldersAreHeldAgainstEachOther()
    {
        QTemporaryDir other;
        QVERIFY(QDir(other.path()).mkpath("maps"));
        QTextStream out(&text_);
        plain::Maps changed = maps_;
        saveMaps(other.path(), changed);
        QCOMPARE(compareFolders(dir_.path(), other.path(), -1, out), compareWithin);
        changed[{"dmut", 2}][columns * columns / 2 + 5] += 0.001;
        saveMaps(other.path(), changed);
        QCOMPARE(compareFolders(dir_.path(), other.path(), -1, out), compareOutside);
        QVERIFY(QFile::remove(demoFiles::mapText(other.path(), "ratio", 1)));
        QCOMPARE(compareFolders(dir_.path(), other.path(), -1, out), compareFailed);
    }

private:
    static ExperimentConditions conditions(int size, quint64 seed)
    {
        ExperimentConditions c;
        c.size = size;
        c.seed = seed;
        return c;
    }
    static bool write(const QString& folder, int size, quint64 seed)
    {
        QString error;
        return writeExperiment(folder, conditions(size, seed), ImageFormat::Tiff, &error);
    }

    CompareResult compared()
    {
        text_.clear();
        QTextStream out(&text_);
        return compareWithTruth(dir_.path(), -1, out);
    }

    QTemporaryDir dir_;
    QTemporaryDir hard_;
    plain::Maps maps_;
    QString text_;
};

QTEST_GUILESS_MAIN(TestDemoExperiment)
#include "test_demo_experiment.moc"
