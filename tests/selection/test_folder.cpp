#include "selection/FolderContents.h"
#include "selection/FolderGuess.h"
#include "selection/SeriesNames.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

/// What a measurement's folder holds, and what its series are taken for.
class TestFolder : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void namesMakeSeries_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QStringList>("patterns");
        QTest::addColumn<QStringList>("first"); // the names of the first series, in their order
        using L = QStringList;
        QTest::newRow("numbers") << L{"a_10.tif", "a_9.tif", "b_1.tif", "b_2.tif"}
                                 << L{"a_*.tif", "b_*.tif"} << L{"a_9.tif", "a_10.tif"};
        QTest::newRow("alone") << L{"dark.tif", "flat_3.tif"} << L{"dark.tif", "flat_3.tif"}
                               << L{"dark.tif"};
        QTest::newRow("decimals, by value")
            << L{"i1_8948.5.tif", "i1_8948.25.tif", "i1_8948.tif", "i1_8947.75.tif"}
            << L{"i1_*.tif"}
            << L{"i1_8947.75.tif", "i1_8948.tif", "i1_8948.25.tif", "i1_8948.5.tif"};
        QTest::newRow("decimals behind a line")
            << L{"i1_8949_00.tif", "i1_8948_50.tif", "i0_8949_00.tif", "i0_8948_50.tif"}
            << L{"i0_*.tif", "i1_*.tif"} << L{"i0_8948_50.tif", "i0_8949_00.tif"};
        QTest::newRow("sets behind a point")
            << L{"s.1.001.tif", "s.1.002.tif", "s.1.003.tif", "s.1.004.tif", "s.2.001.tif"}
            << L{"s.1.*.tif", "s.2.001.tif"}
            << L{"s.1.001.tif", "s.1.002.tif", "s.1.003.tif", "s.1.004.tif"};
    }

    void namesMakeSeries()
    {
        QFETCH(QStringList, names);
        const QVector<NamedSeries> series = seriesOfNames(names);
        QStringList patterns;
        for (const NamedSeries& one : series)
            patterns.append(one.pattern);
        QTEST(patterns, "patterns");
        QTEST(series.first().names, "first");
    }

    void aMeasurementIsFoundInItsFolders()
    {
        const LogCapture log;
        const Folder f;
        for (int i = 8; i < 12; ++i) {
            f.image("images/i1_" + QString::number(i) + ".tif", 6);
            f.image("images/i0_" + QString::number(i) + ".tif", 6);
            f.image("images/std_" + QString::number(i) + ".tif", 6);
        }
        f.image("dark.tif", 6);
        f.image("maps/far/too_1.tif", 6);
        f.text("references/b10.dat", "# E mu\n8900 1\n8901 2\n8902 3\n8903 2\n8904 1\n");
        f.text("references/b9.dat", "8904,1\n8903,2\n8902,3\n8901,2\n8900,1\n");
        f.text("result.dat", "8900 1\n8901 2\n8902 3\n8903 2\n8904 1\n"); // has its place elsewhere
        f.text("truth.dat", "# Size 6 4\n0 0 0 1\n0 1 0 1\n");
        f.text("bad-pixels.txt", "# Size 6 4\n3 1\n5 2 # hot\n");
        f.text("notes.txt", "1 2\n3 4\n");
        f.text("broken_1.tif", "II*");
        f.text("huge_1.img", QByteArray("IM\0\0\xff\xff\xff\xff", 8) + QByteArray(90, '\0'));
        QFile::link(f.path(), f.path("again"));
        ::mkfifo(qPrintable(f.path("pipe_1.tif")), 0600);

        const FolderContents found = readFolder(f.path());
        QCOMPARE(texts(found), QStringList({"dark.tif 1 6 dark", "images/i0_*.tif 4 6 I0",
                                            "images/i1_*.tif 4 6 I1", "images/std_*.tif 4 6 -"}));
        QCOMPARE(found.series[2].files.first(), f.path("images/i1_8.tif"));
        QCOMPARE(found.references,
                 QStringList({f.path("references/b9.dat"), f.path("references/b10.dat")}));
        QCOMPARE(found.badPixels, QStringList(f.path("bad-pixels.txt")));
        QCOMPARE(found.remarks,
                 QStringList("No images that can be read: broken_1.tif, huge_1.img"));
        QCOMPARE(log.all(), QStringList());
        QVERIFY(readFolder(f.path("none")).fault.contains("none"));
        QVERIFY(readFolder(f.path("dark.tif")).fault.contains("dark.tif"));
    }

    void usesAreGuessed_data()
    {
        QTest::addColumn<QString>("series"); // name, files, pixels
        QTest::addColumn<QString>("uses");
        QTest::newRow("words in names") << "blank_*.tif 3 5, dark_*.tif 9 5, sampleA_*.tif 3 5"
                                        << "I0 dark I1";
        QTest::newRow("of folders") << "I0/x_*.tif 3 5, I1/x_*.tif 3 5, std/x_*.tif 3 5"
                                    << "I0 I1 -";
        QTest::newRow("two of a length") << "a_*.tif 9 5, b_*.tif 4 5, c_*.tif 4 5"
                                         << "- I1 I0";
        QTest::newRow("what fits I0") << "a_*.tif 9 5, b_*.tif 4 5, flat_*.tif 4 5"
                                      << "- I1 I0";
        QTest::newRow("what fits I1") << "a_*.tif 4 7, b_*.tif 4 5, i1_*.tif 4 5"
                                      << "- I0 I1";
        QTest::newRow("one alone") << "a_*.tif 9 5, b.tif 1 5"
                                   << "I1 -";
        QTest::newRow("of a standard alone") << "std_*.tif 9 5"
                                             << "I1";
        QTest::newRow("a dark image of another camera") << "dark.tif 1 7, i1_*.tif 9 5"
                                                        << "- I1";
    }

    void usesAreGuessed()
    {
        QFETCH(QString, series);
        QVector<ImageSeries> all;
        for (const QString& text : series.split(", ")) {
            ImageSeries one;
            one.folder = text.contains('/') ? text.section('/', 0, 0) : QString();
            one.pattern = text.section('/', -1).section(' ', 0, 0);
            for (int i = 0; i < text.section(' ', 1, 1).toInt(); ++i)
                one.files.append(QString(one.pattern).replace('*', QString::number(i)));
            one.pixels = QSize(text.section(' ', 2, 2).toInt(), 4);
            all.append(one);
        }
        guessUses(all);
        QStringList uses;
        for (const ImageSeries& one : qAsConst(all))
            uses.append(useText(one.use));
        QTEST(uses.join(' '), "uses");
    }

    void energiesStandInNames_data()
    {
        QTest::addColumn<QString>("names"); // "/" between stacks
        QTest::addColumn<QString>("energies");
        const auto row = [](const char* names, const char* energies) {
            QTest::newRow(names) << names << energies;
        };
        row("i1_8948.5.tif i1_8949.tif i1_8950.25.tif", "8948.5 8949 8950.25");
        row("i1_8948.5.tif i1_8950.0.tif / i0_8948.5.tif i0_8949.5.tif", "8948.5 8950");
        row("i1_8948.5.tif i1_8949.5.tif / i0_1.tif i0_2.tif", "");
        row("i1_8948_50.tif i1_8949_75.tif", "8948.5 8949.75");
        row("i1_8948eV.tif i1_8950eV.tif", "8948 8950");
        row("r1_8948_5eV.tif r1_8949_5eV.tif", "8948.5 8949.5");
        row("r1_8948_500eV.tif r1_8949_750eV.tif", "8948.5 8949.75");
        row("run2023_8948eV.tif run2023_8950eV.tif", "8948 8950");
        row("i1_8keV.tif i1_9keV.tif", "8000 9000");
        row("i0_9.0keV.tif i0_9.012keV.tif", "9000 9012");
        row("run2023_0001_7112.tif run2023_0002_7115.tif", "7112 7115");
        row("i1_0000.tif i1_0001.tif", "");
        row("i1_0100.tif i1_0101.tif", "");
        row("i1_1001.tif i1_1002.tif", "");
        row("s_2023_0001.tif s_2023_0002.tif", "");
        row("s100.001.tif s100.002.tif", "");
        row("i1_7000eV.tif i1_7001eV.tif", "7000 7001");
        row("i1_8950.tif i1_8948.tif", "");
    }

    void energiesStandInNames()
    {
        QFETCH(QString, names);
        QVector<QStringList> stacks;
        for (const QString& stack : names.split(" / "))
            stacks.append(stack.split(' '));
        const EnergyRule rule = energiesInNames(stacks);
        QStringList energies;
        for (const double eV : energiesOf(rule, stacks.first()))
            energies.append(QString::number(eV, 'g', 12));
        QTEST(rule.pattern.isEmpty() ? QString() : energies.join(' '), "energies");
    }

    void aFolderOfTooMuchIsCutShort()
    {
        const Folder f;
        for (int i = 0; i < 3; ++i)
            f.image("x_" + QString::number(i) + ".tif", 6);
        const QByteArray image = bytesOf(f.path("x_0.tif"));
        // Names without a number between them: each a series of its own.
        for (int i = 0; i < 500; ++i) {
            const QString name = QString::number(i, 26).replace(QRegularExpression("\\d"), "z");
            f.text(name + "_" + QString(i % 40 + 1, 'q') + ".tif", i % 9 == 0 ? image : "none");
        }
        for (int i = 0; i < 250; ++i)
            f.text("t" + QString::number(i) + ".txt", "nothing\n");
        QElapsedTimer timer;
        timer.start();
        const FolderContents found = readFolder(f.path());
        QVERIFY(timer.elapsed() < 1000);
        QVERIFY(found.series.size() <= 50);
        QCOMPARE(found.series.last().pattern, QString("x_*.tif"));
        QCOMPARE(found.series.last().use, SeriesUse::I1);
        QVERIFY(found.remarks.size() >= 2 && found.remarks.size() <= 3);
    }

private:
    /// A folder to fill.
    class Folder
    {
    public:
        QString path(const QString& name = {}) const { return dir_.filePath(name); }
        void text(const QString& name, const QByteArray& bytes) const
        {
            QDir().mkpath(QFileInfo(path(name)).path());
            QVERIFY(writeBytes(path(name), bytes));
        }
        void image(const QString& name, int width) const
        {
            text(name, tiffBytes(width, 4, [](int x, int) { return x; }));
        }

    private:
        const QTemporaryDir dir_;
    };

    static QString useText(SeriesUse use)
    {
        return QStringList{"-", "I1", "I0", "dark"}.at(int(use));
    }

    static QStringList texts(const FolderContents& found)
    {
        QStringList all;
        for (const ImageSeries& s : found.series)
            all.append(QString("%1 %2 %3 %4")
                           .arg(s.folder.isEmpty() ? s.pattern : s.folder + '/' + s.pattern)
                           .arg(s.files.size())
                           .arg(s.pixels.width())
                           .arg(useText(s.use)));
        return all;
    }
};

QTEST_GUILESS_MAIN(TestFolder)
#include "test_folder.moc"
