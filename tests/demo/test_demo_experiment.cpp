#include "CountRandom.h"
#include "Experiment.h"
#include "MapFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <cmath>

namespace {
ExperimentConditions smallExperiment()
{
    ExperimentConditions conditions;
    conditions.size = 60;
    return conditions;
}

QByteArray bytesOf(const QString& fname)
{
    QFile file(fname);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

class TestDemoExperiment : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theGeneratorsHaveTheirMeanAndVariance_data();
    void theGeneratorsHaveTheirMeanAndVariance();
    void everyReferenceHasTheSameLinesAndStep_data();
    void everyReferenceHasTheSameLinesAndStep();
    void everyFormatHoldsTheSameCounts_data();
    void everyFormatHoldsTheSameCounts();
    void theSeedFixesEveryFile();
    void theDetectorHasItsFaults();
    void aNoiselessMixtureGivesItsWeights_data();
    void aNoiselessMixtureGivesItsWeights();
};

void TestDemoExperiment::theGeneratorsHaveTheirMeanAndVariance_data()
{
    QTest::addColumn<double>("mean");
    QTest::newRow("by products") << 3.5;
    QTest::newRow("by rejection, few") << 12.0;
    QTest::newRow("by rejection, many") << 30000.0;
}

void TestDemoExperiment::theGeneratorsHaveTheirMeanAndVariance()
{
    QFETCH(double, mean);
    CountRandom random(7, 3);
    constexpr int samples = 40000;
    double sum = 0.0;
    double squares = 0.0;
    double normalSquares = 0.0;
    for (int i = 0; i < samples; ++i) {
        const double difference = random.poisson(mean) - mean;
        const double normal = random.normal();
        sum += difference;
        squares += difference * difference;
        normalSquares += normal * normal;
    }
    // Four standard deviations of each estimate.
    QVERIFY(std::fabs(sum / samples) < 4.0 * std::sqrt(mean / samples));
    const double spread = std::sqrt((2.0 + 1.0 / mean) / samples);
    QVERIFY(std::fabs(squares / samples / mean - 1.0) < 4.0 * spread);
    QVERIFY(std::fabs(normalSquares / samples - 1.0) < 4.0 * std::sqrt(2.0 / samples));
    QCOMPARE(random.poisson(0.0), 0.0);
}

void TestDemoExperiment::everyReferenceHasTheSameLinesAndStep_data()
{
    QTest::addColumn<int>("species");
    for (int s = 0; s < speciesCount; ++s) {
        QTest::addRow("species %d", s) << s;
    }
}

void TestDemoExperiment::everyReferenceHasTheSameLinesAndStep()
{
    QFETCH(int, species);
    QTemporaryDir dir;
    const QString fname = dir.filePath(QStringLiteral("reference.dat"));
    QFile file(fname);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(referenceText(species).toLatin1());
    file.close();
    double edgeStep = 0.0;
    const plain::Curve curve = plain::normalised(plain::readReference(fname), &edgeStep);
    QVERIFY(curve.size() > 500);
    QVERIFY(std::fabs(edgeStep - referenceStep) < 2e-4);
    // The file gives back the shape at every energy, through angles or not.
    for (const QPointF& p : curve) {
        QVERIFY(std::fabs(p.y() - speciesShape(species, p.x())) < 5e-4);
    }
}

void TestDemoExperiment::everyFormatHoldsTheSameCounts_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"tiff", "img16", "img32", "brnx"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestDemoExperiment::everyFormatHoldsTheSameCounts()
{
    QFETCH(QString, name);
    ImageFormat format = ImageFormat::Tiff;
    QVERIFY(imageFormatOf(name, &format));
    QTemporaryDir dir;
    // Wider than high, and with the extremes, so that swapped sides or a sign show.
    QVector<quint16> counts;
    for (int i = 0; i < 7 * 5; ++i) {
        counts.append(static_cast<quint16>(i * 1927));
    }
    counts[3] = 65535;
    const QString fname = dir.filePath(QStringLiteral("i1_0000.") + imageSuffix(format));
    QVERIFY(writeImage(format, fname, 7, 5, counts));
    QSize size;
    const QVector<double> pixels = plain::readImage(fname, &size);
    QCOMPARE(size, QSize(7, 5));
    QCOMPARE(pixels.size(), counts.size());
    for (int i = 0; i < counts.size(); ++i) {
        QCOMPARE(pixels[i], static_cast<double>(counts[i]));
    }
    QVERIFY(!writeImage(format, dir.filePath(QStringLiteral("none/i1.x")), 7, 5, counts));
}

void TestDemoExperiment::theSeedFixesEveryFile()
{
    ExperimentConditions conditions = smallExperiment();
    conditions.energies = 41;
    QTemporaryDir first;
    QTemporaryDir second;
    QTemporaryDir other;
    QString error;
    QVERIFY(writeExperiment(first.path(), conditions, ImageFormat::Img16, &error));
    QVERIFY(writeExperiment(second.path(), conditions, ImageFormat::Img16, &error));
    conditions.seed = 2;
    QVERIFY(writeExperiment(other.path(), conditions, ImageFormat::Img16, &error));
    for (const char* name : {"images/i1_0000.img", "images/i0_0040.img", "bad-pixels.txt"}) {
        const QString path = QLatin1Char('/') + QString::fromLatin1(name);
        const QByteArray bytes = bytesOf(first.path() + path);
        QVERIFY(!bytes.isEmpty());
        QCOMPARE(bytesOf(second.path() + path), bytes);
        QVERIFY(bytesOf(other.path() + path) != bytes);
    }
}

void TestDemoExperiment::theDetectorHasItsFaults()
{
    const Phantom phantom = makePhantom(smallExperiment());
    const QVector<quint16> i1 = exposure(phantom, Stack::I1, 40);
    const QVector<quint16> i0 = exposure(phantom, Stack::I0, 40);
    QVERIFY(!phantom.hot.isEmpty() && !phantom.dead.isEmpty());
    for (const QPoint& p : phantom.hot) {
        QCOMPARE(i1[p.y() * 60 + p.x()], hotCount);
    }
    for (const QPoint& p : phantom.dead) {
        QCOMPARE(i0[p.y() * 60 + p.x()], quint16(0));
    }
    // The corner reads the dark level alone, whatever the beam does.
    QVERIFY(std::fabs(i0[61] - darkLevel) < 20.0);
    QVERIFY(i0[30 * 60 + 30] > 20000);
}

void TestDemoExperiment::aNoiselessMixtureGivesItsWeights_data()
{
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("second");
    QTest::newRow("pure first") << 1.0 << 0.0;
    QTest::newRow("pure second") << 0.0 << 1.0;
    QTest::newRow("pure third") << 0.0 << 0.0;
    QTest::newRow("all three") << 0.2 << 0.3;
}

void TestDemoExperiment::aNoiselessMixtureGivesItsWeights()
{
    QFETCH(double, first);
    QFETCH(double, second);
    const QVector<double> planted{first, second, 1.0 - first - second};
    QTemporaryDir dir;
    QString error;
    ExperimentConditions conditions = smallExperiment();
    conditions.size = 40;
    QVERIFY(writeExperiment(dir.path(), conditions, ImageFormat::Img16, &error));
    const ScanEnergies scan = scanEnergies(conditions.energies);
    plain::Curve sample;
    for (int i = 0; i < scan.count; ++i) {
        const double energy = scan.at(i);
        double mu = 0.3 * backgroundShape(energy);
        for (int s = 0; s < speciesCount; ++s) {
            mu += 0.7 * planted[s] * speciesShape(s, energy);
        }
        sample.append(QPointF(energy, mu));
    }
    double edgeStep = 0.0;
    const QVector<double> found =
        plain::weights(plain::normalised(sample, &edgeStep), savedReferences(dir.path()));
    for (int s = 0; s < speciesCount; ++s) {
        QVERIFY(std::fabs(found[s] - planted[s]) < 2e-3);
    }
    QVERIFY(std::fabs(edgeStep - 0.7) < 1e-3);
}

QTEST_GUILESS_MAIN(TestDemoExperiment)
#include "test_demo_experiment.moc"
