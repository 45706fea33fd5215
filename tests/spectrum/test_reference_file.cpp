#include "common/Bragg.h"
#include "spectrum/ElementTable.h"
#include "spectrum/ReferenceFile.h"
#include "spectrum/XafsSpectrum.h"
#include "support/ImageFiles.h"

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

const QByteArray scanHead = " 9809  XX-10A\nsample D= 3.1 A  other\nMono : D=9.9 D=\n\n";
} // namespace

/// The files that spectra come from, and the tables of the elements.
class TestReferenceFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void filesGiveTheirCurves()
    {
        const ReferenceFile f =
            read(scanHead + "Offset 0 0 D= 7.0\n1 13.5 1.0 40000 20000\r\n"
                            "2 13.4 1.0 40000\n3 13.3 1.0 40000 0\n"
                            "\t4\t13.2  1.0 -10 -20 extra\n5 13.1 1.0 10 oops\n");
        QVERIFY(f.is9809 && f.mu.size() == 4);
        QVERIFY(near(f.mu.x(0), energyAt(13.5, 3.1)) && near(f.mu.y(0), std::log(2.0)));
        QVERIFY(f.mu.y(1) == 1.0 && f.mu.y(3) == 1.0); // no intensity, and no number
        QVERIFY(near(f.mu.y(2), std::log(0.5)));
        QVERIFY(f.i0.y(0) == 40000.0 && f.i1.y(2) == -20.0 && f.i1.x(2) == f.mu.x(2));
        QVERIFY(read("9809\n1 13.5 1.0 40000 20000\n").mu.isEmpty()); // no "Offset"
        QVERIFY(near(read("9809\nOffset\n1 13.5 1 2 1\n").mu.x(0), energyAt(13.5, 3.13553)));

        const ReferenceFile simple = read("# E mu\n8970 0.25 7\n8975\n\n8980\t0.5\n#8985 9\nx 1\n");
        QVERIFY(!simple.is9809 && simple.i0.isEmpty());
        QCOMPARE(simple.mu.points, QVector<QPointF>({{8970, 0.25}, {8980, 0.5}, {0, 1}}));
        QVERIFY(near(angleOfEnergy(energyAt(12.7, 3.13553), 3.13553), 12.7));
        QCOMPARE(angleOfEnergy(1500.0, 3.13553), -1.0); // below the crystal's lowest energy
    }

    void hostileFilesAreSurvived()
    {
        const QByteArray rows[] = {"\n \r\n\t",
                                   "98",
                                   QByteArray(100000, '\0'),
                                   QByteArray::fromHex("0001fffe0a80c3280d0a39383039"),
                                   scanHead + "Offset\n1 13.5 1 2 1\n2 13.",
                                   "9809\nD= 0\nOffset\n1 0 1 2 1\n",
                                   "1e999 nan\n-inf 1e-999\n"};
        const int points[] = {0, 0, 0, 0, 1, 1, 2};
        for (int i = 0; i < 7; ++i) {
            const ReferenceFile f = read(rows[i]);
            QCOMPARE(f.mu.size(), points[i]);
            for (const int mode : {VictLine::Straight, VictLine::Victoreen})
                QCOMPARE(XafsSpectrum(f.mu, "", mode, 0.0, SuggestElm()).normalizedPreBase.size(),
                         points[i]);
        }
        // The later parts of overlong lines must not pass for lines of their own.
        for (const int length : {65535, 65536, 65537, 131072, 1000000}) {
            const ReferenceFile f = read("1 2\n5 6 " + QByteArray(length - 8, 'x') + " 7 8\n3 4\n");
            QCOMPARE(f.mu.size(), length < 65536 ? 3 : 2);
            QCOMPARE(f.mu.points.last(), QPointF(3, 4));
        }
    }

    void loadingLeavesNothingOfAnEarlierFile()
    {
        const QTemporaryDir dir;
        QByteArray lines = scanHead + "Offset\n";
        for (int i = 0; i < 60; ++i)
            lines += "1 " + QByteArray::number(13.6 - 0.02 * i) + " 1 100 " +
                     QByteArray::number(i < 30 ? 90 - i / 10.0 : 30 - i / 5.0) + "\n";
        QVERIFY(writeBytes(dir.filePath("scan"), lines));
        QVERIFY(writeBytes(dir.filePath("simple"), "8970 0.5\n8980 0.6\n"));
        QVERIFY(writeBytes(dir.filePath("empty"), ""));
        XafsSpectrum s;
        QVERIFY(s.loadAndNormalize(dir.filePath("scan")));
        QVERIFY(s.isMute == 0 && s.i0Spectrum.size() == 60 && s.dMut > 0.5);
        QVERIFY(s.load(dir.filePath("simple")));
        QVERIFY(s.isMute == 1 && s.size() == 2 && s.xMax == 8980.0 && s.dMut == 0.0);
        QVERIFY(s.i0Spectrum.isEmpty() && s.i1Spectrum.isEmpty() && s.smoothed.isEmpty());
        QVERIFY(s.normalizedPreBase.isEmpty() && s.pre.isEmpty() && !s.pre.ok);
        for (const QString& name :
             {dir.filePath("none"), dir.path(), dir.filePath("empty"), QString("/dev/zero")}) {
            s.append(1.0, 2.0);
            s.isMute = 0;
            QVERIFY(!s.loadAndNormalize(name) && s.isEmpty() && s.isMute == 1);
        }
    }

    void elementTablesAreThoseOfTheProgram()
    {
        QVERIFY(edgeEnergy(29, 0) == 1000.0 * 8.98436029 && edgeEnergy(92, 3) == 17168.0);
        for (const auto& [z, edge] :
             {std::pair(1, 1), {95, 0}, {100, 0}, {-1, 0}, {29, 5}, {29, -1}})
            QCOMPARE(edgeEnergy(z, edge), 0.0);
        for (size_t z = 1; z <= 92; ++z) {
            const AbsorptionRecord& row = absorptionTable[z];
            QCOMPARE(row.z, int(z));
            // Inner shells are bound tighter, and the K edge rises with the atomic number.
            QVERIFY(row.edge[0] > absorptionTable[z - 1].edge[0]);
            for (size_t shell = 1; shell < 5; ++shell)
                QVERIFY(row.edge[shell] <= row.edge[shell - 1]);
        }
        QVERIFY(atomicNumber("Cu") == 29 && atomicNumber("cu") == -1 && atomicNumber("") == -1);
        QVERIFY(edgeNo("K") == 0 && edgeNo("lI") == 1 && edgeNo("LII") == 2 && edgeNo("") == 0);
        QString text = QString("Xx 0 1.5 - -2 3 =\n") + QString("A 1 1\n").repeated(1000);
        QTextStream longTable(&text);
        QCOMPARE(readAbsorptionTable(longTable), 100);
        QVERIFY(absorptionTable[0].edge[0] == 1.5 && absorptionTable[0].edge[1] == 0.0); // "="
        QVERIFY(absorptionTable[0].c[0] == 0.0 && absorptionTable[0].d[0] == 3.0);       // negative
    }
};

QTEST_APPLESS_MAIN(TestReferenceFile)
#include "test_reference_file.moc"
