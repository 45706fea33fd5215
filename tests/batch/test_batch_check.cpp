#include "batch/BatchCheck.h"
#include "common/Settings.h"
#include "support/ImageFiles.h"

#include <QtTest>

/// What a check tells of a text, and that it tells nothing of one that would run well.
class TestBatchCheck : public QObject
{
    Q_OBJECT

    const QTemporaryDir dir_;

    /// The lines of the report, where ";" ends a line of the text and "@" is the folder, which
    /// holds a1.tif, a2.tif and an empty folder "sub".
    QString check(QString text, BatchCheckOptions options = {})
    {
        text.replace('@', dir_.path()).replace(';', '\n');
        return checkBatch(text, options).lines(QString()).join('\n').replace(dir_.path(), "@");
    }

private Q_SLOTS:
    void initTestCase()
    {
        DataRoot = dir_.path();
        for (const char* name : {"a1.tif", "a2.tif"})
            QVERIFY(writeBytes(dir_.filePath(name), "x"));
        QVERIFY(QDir(dir_.path()).mkdir("sub"));
    }

    void soundTextsHaveNoFindings_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("images");
        QTest::newRow("images, in loops too")
            << ":for L %n% 1 2;load_I1_files new @/a%n%.tif;:next L;"
               "load_I0_files add $DataRoot$/a1.tif @/a%n%.tif;load_I1_files_of_pattern NEW @/ "
               "*.tif"
            << 6;
        QTest::newRow("behind the end") << ":end;nonsense" << 0;
        QTest::newRow("behind quit") << "quit;nonsense" << 0;
        QTest::newRow("rem") << ":rem_start;nonsense;load_I1_files;:rem_end" << 0;
        QTest::newRow("emptied fields and variables")
            << "calib_set_edge_eV \"\";:let x \"\";eng_by_ref_i0" << 0;
        QTest::newRow("files of earlier lines")
            << "calib_save_map @/s;calib_load_map @/sub/../s.emp;save_spectra @/sub/m.dat;"
               "analyzer_set_LCF_std 0 0 0 @/sub/m-T.dat;save_image_w_num @/p 01;"
               "load_I1_files new @/p-01.png;save_data_as_tiff @/sub/n;"
               "load_I0_files_of_pattern new @/sub/ *.tif"
            << 1;
        QTest::newRow("elements") << "Suggesting_Elm Cu;analyzer_elems_roi Pb-L3 1 2.5e3;"
                                     "analyzer_target_elements Fe,Fe Cu-K;"
                                     "analyzer_elems_set_use Fe-K_2 1;analyzer_elems_set_use Cu 0"
                                  << 0;
        QTest::newRow("continued") << "save_image \\;@/x.png" << 0;
    }

    void soundTextsHaveNoFindings()
    {
        QFETCH(QString, text);
        QFETCH(int, images);
        QCOMPARE(check(text),
                 QString("0 findings; %1 image%2 to load").arg(images).arg(images == 1 ? "" : "s"));
    }

    void faultsAreToldWithTheirLines_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("findings"); // beginnings of lines
        const auto row = [](const char* name, const char* text, const QStringList& findings) {
            QTest::newRow(name) << text << findings;
        };
        row("unknown words, once each", ":for L n 1 3;;save_imge x;:next L;:nxt",
            {"3: save_imge: unknown word", "5: :nxt: unknown word"});
        row("too few and too many", "save_data;set_band_w 1 2;zoom_in # in;:let x;:echo a b;:next",
            {"1: save_data: an argument is missing: save_data <new file>",
             "2: set_band_w: too many arguments: set_band_w <int>",
             "3: zoom_in: too many arguments, a # behind a word begins no comment",
             "4: :let: an argument is missing", "5: :echo: too many", "6: :next: an argument is"});
        row("waits for ever", "load_I0_files new;load_I1_files_of_pattern new",
            {"1: load_I0_files: an argument is missing, the run waits for \"Stop\"",
             "2: load_I1_files_of_pattern: an argument is missing, the run waits for \"Stop\""});
        row("values", "set_band_w 2.5;eng_calc_base_i1 8,9;use_i0 2;analyzer_process 2;use_i0 01",
            {"1: set_band_w: \"2.5\" is no whole number", "2: eng_calc_base_i1: \"8,9\" is no num",
             "3: use_i0: \"2\" is none of 0|1"});
        row("loops", ":for L n 1 $b$;:next M;:for K n 1 9 -1;:next K",
            {"1: :for: \"$b$\" is no whole number", "1: :for: the loop has no :next",
             "2: :next: no loop has the name \"M\"", "3: :for: a loop with a step below 0",
             "4: :next: loops were left after 1000 passes"});
        row("a text in itself", ":let a x$a$;set_i1_energy_pattern $a$",
            {"2: set_i1_energy_pattern: a text that contains itself"});
        row("elements",
            "Suggesting_Elm Xx;analyzer_elems_thdmut Q 1;analyzer_target_elements Fe Z;"
            "analyzer_elems_thdmut Cu 1",
            {"1: Suggesting_Elm: unknown element \"Xx\"", "2: analyzer_elems_thdmut: unknown elem",
             "3: analyzer_target_elements: Unknown element \"Z\"",
             "4: analyzer_elems_thdmut: no element row has the name \"Cu\""});
        row("files to read",
            "load_I1_files new @/a1.tif \\;@/none.tif @/sub;calib_save_map @/s;"
            "calib_load_map @/s",
            {"1: load_I1_files: there is no file \"@/none.tif\"",
             "1: load_I1_files: \"@/sub\" is a folder", "4: calib_load_map: there is no file"});
        row("patterns",
            "load_I1_files_of_pattern new @ *.tif;load_I1_files_of_pattern new @/ *.img *.raw;"
            "load_I0_files_of_pattern new @/none/;load_I0_files_of_pattern new @/sub/",
            {"1: load_I1_files_of_pattern: the folder \"@\" needs a \"/\"",
             "2: load_I1_files_of_pattern: no file of \"@/\" matches \"*.img *.raw\"",
             "3: load_I0_files_of_pattern: there is no folder \"@/none/\"",
             "4: load_I0_files_of_pattern: no file of \"@/sub/\" matches"});
        row("files to write",
            "save_image @/none/x;save_data @/sub/;save_all_data @/a1.tif/x;"
            "explain_position 1 1 @/sub",
            {"1: save_image: there is no folder \"@/none\"", "2: save_data: \"@/sub/\" names no",
             "3: save_all_data: \"@/a1.tif\" is no folder",
             "4: explain_position: \"@/sub\" is a f"});
    }

    void faultsAreToldWithTheirLines()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, findings);
        const QString report = check(text);
        const QStringList lines = report.split('\n');
        QVERIFY2(lines.size() == findings.size() + 1, qPrintable(report));
        for (int i = 0; i < findings.size(); ++i)
            QVERIFY2(lines[i].startsWith(findings[i]), qPrintable(report));
    }

    void theConfigurationsLinesRunInFront()
    {
        BatchCheckOptions options;
        options.before = ":let d " + dir_.path() + "\nfoo\n:rem_start";
        QCOMPARE(check("load_I1_files new $d$/a1.tif;bar", options),
                 "batch line 2 of the configuration: foo: unknown word, the line is skipped\n"
                 "2: bar: unknown word, the line is skipped\n2 findings; 1 image to load");
    }

    void findingsOfALineAndWalksHaveTheirLimits()
    {
        const QString report = check(":for L %n% 1 30;load_I1_files new @/b%n%;:next L;foo");
        QVERIFY2(report.contains("\n2: load_I1_files: and 10 more\n4: foo"), qPrintable(report));
        QVERIFY(report.endsWith("31 findings; 0 images to load"));

        // What stands behind a loop that never ends is walked all the same.
        QVERIFY(check(":for L n 1 2 -1;:for K n 1 2 -1;:next K;:next L;foo").contains("5: foo"));

        BatchCheckOptions options;
        options.limits.steps = 100;
        const QString cut =
            check(":for L %n% 1 60;load_I1_files new @/a1.tif;:next L;foo", options);
        QVERIFY2(cut.contains("rest was not walked\n0 findings; at least "), qPrintable(cut));
    }
};

QTEST_GUILESS_MAIN(TestBatchCheck)
#include "test_batch_check.moc"
