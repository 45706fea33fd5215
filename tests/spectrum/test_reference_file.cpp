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
    device.open(QIODevice::ReadOnly);
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

QStringList remarksOf(const ReferenceFile& file)
{
    QStringList texts;
    for (const Remark& remark : file.remarks)
        texts.append(remark.english());
    return texts;
}

using Points = QVector<QPointF>;

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

        const ReferenceFile yield = read("9809 X\nMode 0 Fluorescence( 3) D= 3.1\nOffset\n"
                                         "1 13.5 1 400 100 7\nEnd 0 0 0 0\n3 13.3 1 0 5\n");
        QCOMPARE(QVector<double>({yield.mu.y(0), yield.mu.y(1)}), QVector<double>({0.25, 0.0}));
        QVERIFY(yield.mu.size() == 2 && near(yield.mu.x(0), energyAt(13.5, 3.1)));
        QCOMPARE(remarksOf(yield), QStringList{"fluorescence: mu is I1 / I0"});
        const ReferenceFile simple = read("8970 0.25\n");
        QVERIFY(!simple.is9809 && simple.i0.isEmpty());
        QVERIFY(near(angleOfEnergy(energyAt(12.7, 3.13553), 3.13553), 12.7));
        QCOMPARE(angleOfEnergy(1500.0, 3.13553), -1.0); // below the crystal's lowest energy
    }

    void linesOfNumbersCount_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Points>("points");
        QTest::addColumn<QString>("remark");
        const Points two{{8970, 0.25}, {8980, 0.5}};
        const auto add = [](const char* name, const QByteArray& bytes, const Points& points,
                            const QString& remark = {}) {
            QTest::newRow(name) << bytes << points << remark;
        };
        add("heads of any kind", "E mu\n# 1 2\n% 3 4\n; 5 6\n! 7 8\n//9 10\n8970 0.25\n8980 0.5\n",
            two);
        add("separators", " 8970 ,\t0.25\n8980;0.5\n", two);
        add("exponents", "8.970D+03 2.5d-1\n8.98e3 0.5E0\n", two);
        add("what is no number", "8970 0.25\n8975\n8976 oops\nnan 1\n8977 inf\n,8978\n8980 0.5",
            two);
        add("line ends", "8970 0.25\r8980 0.5\r\n8990 1\n9000 2",
            two + Points{{8990, 1}, {9000, 2}});
        add("byte order mark",
            "\xEF\xBB\xBF"
            "8970 0.25\n8980 0.5\n",
            two);
        add("columns", "8970 0.25 7\n8980 0.5 8\n", two,
            "3 columns: the first two are taken as energy and mu");
        add("labels", "# by me\n# energy, i0, it\n#-----\n8970,0.25,7\n8980,0.5,8\n", two,
            "3 columns (energy, i0, it): the first two are taken as energy and mu");
        add("numbered labels",
            "# Column.1: energy eV\n# Column.2: i0\n# Column.3: %1\n#\n8970 0.25 7\n8980 0.5 8\n",
            two, "3 columns (energy, i0, %1): the first two are taken as energy and mu");
        add("keV", "8.97 0.25\n8.98 0.5\n", {{8.97, 0.25}, {8.98, 0.5}},
            "the largest energy is 8.98 eV: are the energies in keV?");
    }

    /// Points in the file's order, and what a user should know of the reading.
    void linesOfNumbersCount()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, remark);
        const ReferenceFile file = read(bytes);
        QTEST(file.mu.points, "points");
        QCOMPARE(remarksOf(file).join('|'), remark);
    }

    void pointsAreOrderedByEnergy()
    {
        ReferenceFile file = read("9000 4\n8980 2\n8990 3\n8980 9\n8970 1\n8970 8\n");
        QCOMPARE(file.mu.points.first(), QPointF(9000, 4));
        orderByEnergy(file);
        QCOMPARE(file.mu.points, Points({{8970, 1}, {8980, 2}, {8990, 3}, {9000, 4}}));
        QVERIFY(file.mu.xMin == 8970 && file.mu.yMaxIndex == 3);
        QCOMPARE(remarksOf(file), QStringList{"2 points are left out: their energies came before"});
        ReferenceFile scan = read("9809\nOffset\n1 13.4 1 9 3\n2 13.5 1 8 2\n");
        orderByEnergy(scan);
        QVERIFY(scan.i0.y(0) == 8 && scan.i1.y(0) == 2 && scan.i1.x(0) == scan.mu.x(0));
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
        const int points[] = {0, 0, 0, 0, 1, 0, 0};
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
