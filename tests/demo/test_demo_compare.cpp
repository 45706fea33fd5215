#include "Compare.h"
#include "Experiment.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace {
/// Writes maps under the names and in the forms in which the program saves them.
void saveMap(const QString& folder, const QString& kind, int species, int size, int halfWidth,
             const QVector<double>& values)
{
    const int step = 2 * halfWidth + 1;
    const int columns = (size - halfWidth - 1) / step + 1;
    QFile file(demoFiles::mapText(folder, kind, species));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QTextStream out(&file);
    QVector<quint16> scaled;
    for (int i = 0; i < values.size(); ++i) {
        out << i % columns * step + halfWidth << ' ' << i / columns * step + halfWidth << ' '
            << QString::number(values[i], 'g', 6) << '\n';
        const double level = (values[i] - mapScaleMin) / (mapScaleMax - mapScaleMin);
        scaled.append(static_cast<quint16>(65535.0 * std::clamp(level, 0.0, 1.0)));
    }
    QVERIFY(writeImage(ImageFormat::Tiff, demoFiles::mapTiff(folder, kind, species), columns,
                       columns, scaled));
}

void saveMaps(const QString& folder, const ExperimentConditions& conditions,
              const plain::Maps& maps)
{
    for (int s = 0; s < speciesCount; ++s) {
        saveMap(folder, QStringLiteral("ratio"), s, conditions.size, conditions.halfWidth,
                maps.ratio[s]);
        saveMap(folder, QStringLiteral("dmut"), s, conditions.size, conditions.halfWidth,
                maps.dmut[s]);
    }
}

CompareResult compared(const QString& folder, QString* text)
{
    text->clear();
    QTextStream out(text);
    return compareWithTruth(folder, -1, out);
}
} // namespace

class TestDemoCompare : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void aPlainAnalysisOfTheImagesFindsThePlantedFields();
    void aFaultyMapIsOutside_data();
    void aFaultyMapIsOutside();
    void aMissingOrShortFileIsNamed_data();
    void aMissingOrShortFileIsNamed();
    void blocksOfBadPixelsDoNotCount();
    void twoFoldersAreHeldAgainstEachOther();

private:
    ExperimentConditions conditions_;
    QTemporaryDir dir_;
    plain::Maps maps_;
};

void TestDemoCompare::initTestCase()
{
    conditions_.size = 120;
    QString error;
    QVERIFY2(writeExperiment(dir_.path(), conditions_, ImageFormat::Tiff, &error),
             qPrintable(error));
    maps_ = plainMaps(dir_.path(), conditions_, ImageFormat::Tiff);
}

void TestDemoCompare::init()
{
    saveMaps(dir_.path(), conditions_, maps_);
}

void TestDemoCompare::aPlainAnalysisOfTheImagesFindsThePlantedFields()
{
    // The experiment itself allows the goal: plain code that shares nothing with the program gets
    // from the image files to weights within the limits.
    QString text;
    const CompareResult result = compared(dir_.path(), &text);
    qInfo().noquote() << text;
    QCOMPARE(result, compareWithin);
    QCOMPARE(text.count(QStringLiteral(" ok\n")), 2 * speciesCount);
    QVERIFY(QFileInfo::exists(dir_.filePath(QStringLiteral("pictures/truth-result-2.png"))));
}

void TestDemoCompare::aFaultyMapIsOutside_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<double>("shift");
    QTest::addColumn<double>("ripple");
    QTest::newRow("biased fractions") << QStringLiteral("ratio") << 0.04 << 0.0;
    QTest::newRow("noisy fractions") << QStringLiteral("ratio") << 0.0 << 0.1;
    QTest::newRow("biased edge steps") << QStringLiteral("dmut") << -0.04 << 0.0;
    QTest::newRow("failed fits") << QStringLiteral("ratio") << std::nan("") << 0.0;
}

void TestDemoCompare::aFaultyMapIsOutside()
{
    QFETCH(QString, kind);
    QFETCH(double, shift);
    QFETCH(double, ripple);
    QVector<double> values = kind == QLatin1String("ratio") ? maps_.ratio[1] : maps_.dmut[1];
    for (int i = 0; i < values.size(); ++i) {
        values[i] += shift + (i % 2 == 0 ? ripple : -ripple);
    }
    saveMap(dir_.path(), kind, 1, conditions_.size, conditions_.halfWidth, values);
    QString text;
    QCOMPARE(compared(dir_.path(), &text), compareOutside);
    QCOMPARE(text.count(QStringLiteral(" OUTSIDE\n")), 1);
}

void TestDemoCompare::aMissingOrShortFileIsNamed_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("remove");
    for (const char* name : {"truth.dat", "maps/ratio-ref2-0.dat", "maps/dmut-ref0-0.tif"}) {
        QTest::addRow("no %s", name) << QString::fromLatin1(name) << true;
        QTest::addRow("half of %s", name) << QString::fromLatin1(name) << false;
    }
}

void TestDemoCompare::aMissingOrShortFileIsNamed()
{
    QFETCH(QString, file);
    QFETCH(bool, remove);
    const QString path = dir_.filePath(file);
    const QString kept = path + QStringLiteral(".kept");
    QVERIFY(QFile::copy(path, kept));
    if (remove) {
        QVERIFY(QFile::remove(path));
    } else {
        QVERIFY(QFile::resize(path, QFileInfo(path).size() / 2));
    }
    QString text;
    QCOMPARE(compared(dir_.path(), &text), compareFailed);
    QVERIFY2(text.contains(path), qPrintable(text));
    QFile::remove(path);
    QVERIFY(QFile::rename(kept, path));
}

void TestDemoCompare::blocksOfBadPixelsDoNotCount()
{
    const Phantom phantom = makePhantom(conditions_);
    QVector<double> values = maps_.ratio[0];
    const int columns = conditions_.size / 5;
    for (const QPoint& p : phantom.hot + phantom.dead) {
        values[p.y() / 5 * columns + p.x() / 5] = 1000.0;
    }
    values[0] = 1000.0; // in the corner without beam
    saveMap(dir_.path(), QStringLiteral("ratio"), 0, conditions_.size, conditions_.halfWidth,
            values);
    QString text;
    QCOMPARE(compared(dir_.path(), &text), compareWithin);
}

void TestDemoCompare::twoFoldersAreHeldAgainstEachOther()
{
    QTemporaryDir other;
    QVERIFY(QDir(other.path()).mkpath(QStringLiteral("maps")));
    saveMaps(other.path(), conditions_, maps_);
    QString text;
    QTextStream out(&text);
    QCOMPARE(compareFolders(dir_.path(), other.path(), -1, out), compareWithin);

    plain::Maps changed = maps_;
    const int middle = changed.dmut[2].size() / 2 + 5;
    changed.dmut[2][middle] += 0.001;
    saveMaps(other.path(), conditions_, changed);
    QCOMPARE(compareFolders(dir_.path(), other.path(), -1, out), compareOutside);
    QVERIFY(QFile::remove(demoFiles::mapText(other.path(), QStringLiteral("ratio"), 1)));
    QCOMPARE(compareFolders(dir_.path(), other.path(), -1, out), compareFailed);
}

QTEST_GUILESS_MAIN(TestDemoCompare)
#include "test_demo_compare.moc"
