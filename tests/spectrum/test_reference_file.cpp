#include "common/Bragg.h"
#include "spectrum/ReferenceFile.h"
#include "spectrum/XafsSpectrum.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

#include <cmath>

namespace {
ReferenceFile read(QByteArray bytes)
{
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream in(&device);
    return readReferenceFile(in);
}

double energyAt(double degrees, double spacing)
{
    return 12398.424360387684 / (2 * spacing * std::sin(degrees * 3.1415926535 / 180));
}

bool near(double a, double b)
{
    return std::abs(a - b) < 1e-9 * std::abs(b);
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

const QByteArray scanHead = " 9809  XX-10A\nsample D= 3.1 A  other\nMono : D=9.9 D=\n\n";
} // namespace

class TestReferenceFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void scanFilesGiveEnergyAndAbsorption();
    void scanFilesWithoutDataOrSpacing();
    void simpleFilesGiveTheirTwoColumns();
    void hostileFilesAreSurvived_data();
    void hostileFilesAreSurvived();
    void overlongLinesAreSkippedWhole();
    void loadingLeavesNothingOfAnEarlierFile();
    void missingFilesAndDevicesAreRefused();
    void anglesAndEnergiesAreInverse();
};

void TestReferenceFile::scanFilesGiveEnergyAndAbsorption()
{
    const ReferenceFile f = read(scanHead + "Offset 0 0 D= 7.0\n"
                                            "1 13.5 1.0 40000 20000\r\n"
                                            "2 13.4 1.0 40000\n"
                                            "3 13.3 1.0 40000 0\n"
                                            "\t4\t13.2  1.0 -10 -20 extra\n"
                                            "5 13.1 1.0 10 oops\n");
    QVERIFY(f.is9809);
    QCOMPARE(f.mu.size(), 4);
    QCOMPARE(f.i0.size(), 4);
    QVERIFY(near(f.mu.x(0), energyAt(13.5, 3.1)));
    QVERIFY(near(f.mu.y(0), std::log(2.0)));
    QCOMPARE(f.mu.y(1), 1.0); // no intensity behind the sample
    QVERIFY(near(f.mu.y(2), std::log(0.5)));
    QCOMPARE(f.mu.y(3), 1.0); // no number
    QCOMPARE(f.i0.y(0), 40000.0);
    QCOMPARE(f.i1.y(2), -20.0);
    QCOMPARE(f.i1.x(2), f.mu.x(2));
    QCOMPARE(f.mu.yMax, 1.0);
}

void TestReferenceFile::scanFilesWithoutDataOrSpacing()
{
    QVERIFY(read("9809\n1 13.5 1.0 40000 20000\n").mu.isEmpty()); // no "Offset"
    const ReferenceFile f = read("9809\nOffset\n1 13.5 1 2 1\n");
    QVERIFY(near(f.mu.x(0), energyAt(13.5, 3.13553)));
}

void TestReferenceFile::simpleFilesGiveTheirTwoColumns()
{
    const ReferenceFile f =
        read("# E mu\n  # more\n8970 0.25 7\n8975\n\n8980\t0.5\n#8985 9\nx 1\n");
    QVERIFY(!f.is9809);
    QCOMPARE(f.mu.points,
             QVector<QPointF>({QPointF(8970, 0.25), QPointF(8980, 0.5), QPointF(0, 1)}));
    QVERIFY(f.i0.isEmpty());
}

void TestReferenceFile::hostileFilesAreSurvived_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("points");
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("blank lines") << QByteArray("\n \r\n\t") << 0;
    QTest::newRow("cut within the first word") << QByteArray("98") << 0;
    QTest::newRow("cut within a data line") << scanHead + "Offset\n1 13.5 1 2 1\n2 13." << 1;
    QTest::newRow("zero bytes") << QByteArray(100000, '\0') << 0;
    QTest::newRow("binary") << QByteArray::fromHex("0001fffe0a80c3280d0a39383039") << 0;
    QTest::newRow("numbers out of range") << QByteArray("1e999 nan\n-inf 1e-999\n") << 2;
    QTest::newRow("zero spacing and angle") << QByteArray("9809\nD= 0\nOffset\n1 0 1 2 1\n") << 1;
}

void TestReferenceFile::hostileFilesAreSurvived()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, points);
    const ReferenceFile f = read(bytes);
    QCOMPARE(f.mu.size(), points);
    for (const int mode : {VictLine::Straight, VictLine::Victoreen}) {
        const XafsSpectrum x(f.mu, QString(), mode, 0.0, SuggestElm());
        QCOMPARE(x.normalizedPreBase.size(), points);
    }
}

void TestReferenceFile::overlongLinesAreSkippedWhole()
{
    // Their later parts must not pass for lines of their own, whatever the length.
    for (const int length : {65535, 65536, 65537, 131072, 1000000}) {
        QByteArray line(length, 'x');
        line.replace(0, 4, "5 6 ");
        line.replace(line.size() - 4, 4, " 7 8");
        const ReferenceFile f = read("1 2\n" + line + "\n3 4\n");
        const int kept = length < 65536 ? 3 : 2;
        QCOMPARE(f.mu.size(), kept);
        QCOMPARE(f.mu.points.last(), QPointF(3, 4));
    }
}

void TestReferenceFile::loadingLeavesNothingOfAnEarlierFile()
{
    const QTemporaryDir dir;
    const QString scan = dir.filePath(QStringLiteral("scan.dat"));
    const QString simple = dir.filePath(QStringLiteral("simple.dat"));
    QByteArray lines = scanHead + "Offset\n";
    for (int i = 0; i < 60; ++i)
        lines += "1 " + QByteArray::number(13.6 - 0.02 * i) + " 1 100 " +
                 QByteArray::number(i < 30 ? 90 - i / 10.0 : 30 - i / 5.0) + "\n";
    write(scan, lines);
    write(simple, "8970 0.5\n8980 0.6\n");

    XafsSpectrum s;
    s.isShifted = true;
    s.eShift = 0.5;
    QVERIFY(s.loadAndNormalize(scan));
    QCOMPARE(s.isMute, qint64(0));
    QCOMPARE(s.i0Spectrum.size(), 60);
    QVERIFY(s.dMut > 0.5);
    QCOMPARE(s.normalizedPreBase.size(), 60);

    QVERIFY(s.load(simple));
    QCOMPARE(s.isMute, qint64(1));
    QCOMPARE(s.size(), 2);
    QCOMPARE(s.xMax, 8980.0);
    QVERIFY(s.i0Spectrum.isEmpty() && s.i1Spectrum.isEmpty() && s.smoothed.isEmpty());
    QVERIFY(s.normalizedPreBase.isEmpty() && s.doubleNormalizedPostBase.isEmpty());
    QVERIFY(s.pre.isEmpty() && s.post.isEmpty() && !s.pre.ok);
    QCOMPARE(s.dMut, 0.0);
    QCOMPARE(s.eShift, 0.5); // a setting, not the file's
}

void TestReferenceFile::missingFilesAndDevicesAreRefused()
{
    const QTemporaryDir dir;
    const QString empty = dir.filePath(QStringLiteral("empty.dat"));
    write(empty, QByteArray());
    for (const QString& name : {dir.filePath(QStringLiteral("none.dat")), dir.path(), empty,
                                QStringLiteral("/dev/zero"), QString()}) {
        XafsSpectrum s;
        s.append(1.0, 2.0);
        s.isMute = 0;
        QVERIFY(!s.loadAndNormalize(name));
        QVERIFY(s.isEmpty());
        QCOMPARE(s.isMute, qint64(1));
    }
}

void TestReferenceFile::anglesAndEnergiesAreInverse()
{
    QVERIFY(near(energyOfAngle(12.7, 3.13553), energyAt(12.7, 3.13553)));
    QVERIFY(near(angleOfEnergy(energyOfAngle(12.7, 3.13553), 3.13553), 12.7));
    QCOMPARE(angleOfEnergy(1500.0, 3.13553), -1.0); // below the lowest energy of the crystal
    QVERIFY(std::isinf(energyOfAngle(0.0, 3.13553)));
}

QTEST_APPLESS_MAIN(TestReferenceFile)
#include "test_reference_file.moc"
