#include "batch/CommandTable.h"
#include "support/ImageFiles.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

/// The program as a user starts it without a display: options, configuration, batch, exit code.
class TestProgram : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        // Places of windows go into this folder instead of the user's.
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(dir_.path()));
        // The sanitizer's own account would be the last line on the error stream.
        qputenv("LSAN_OPTIONS", qgetenv("LSAN_OPTIONS") + ":print_suppressions=0");
    }

    void batchFileIsRunAndQuits()
    {
        const QString batch = write("a.bat", ":echo \"in the batch\"\nquit\n:echo never\n");
        const QString log = run({"-e", "-b", batch, "-x"});
        QCOMPARE(exitCode_, 0);
        QVERIFY(log.contains("in the batch"));
        QVERIFY(!log.contains("never"));
    }

    void batchWaitsForTheConfigurationsOwnLines()
    {
        const QString cfg = write("c.cfg", "DataRoot /tmp\n"
                                           "batch :for L %i% 1 300\n"
                                           "Batch set_band_w %i%\n"
                                           "batch :next L\n"
                                           "batch :echo configured\n");
        const QString batch = write("b.bat", ":echo started\nquit\n");
        const QString log = run({"-config", cfg, "-b", batch, "-x"});
        QCOMPARE(exitCode_, 0);
        QVERIFY(log.indexOf("configured") >= 0);
        QVERIFY(log.indexOf("configured") < log.indexOf("started"));
        QVERIFY(log.contains("Batchs in Config"));
    }

    void unattendedRunsTellByTheirExitCodes_data()
    {
        QTest::addColumn<QByteArray>("config");
        QTest::addColumn<QByteArray>("batch");
        QTest::addColumn<QString>("options");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("lastLine");

        // "@" is the folder of both files.
        const QString both = "-c @/x.cfg -b @/x.bat";
        QTest::newRow("configuration alone")
            << QByteArray("batch :echo x\nbatch quit\n") << QByteArray()
            << "-c /no/such.cfg -config @/x.cfg" << 0 << "";
        QTest::newRow("warnings") << QByteArray() << QByteArray("calib_inner_range 1 2 3\nquit\n")
                                  << both << 0 << "";
        QTest::newRow("no configuration") << QByteArray() << QByteArray("quit\n")
                                          << "-c /none.cfg -b @/x.bat" << 2 << "/none.cfg";
        QTest::newRow("no included file") << QByteArray("INCLUDE /none.cfg\nbatch quit\n")
                                          << QByteArray("quit\n") << both << 2 << "/none.cfg";
        QTest::newRow("no batch file") << QByteArray("batch quit\n") << QByteArray()
                                       << "-c @/x.cfg -b /none.bat" << 2 << "/none.bat";
        QTest::newRow("nothing to run")
            << QByteArray() << QByteArray("\n") << both << 2 << "neither a batch text";
        QTest::newRow("no limit") << QByteArray() << QByteArray("quit\n") << both + " -timeout 0x"
                                  << 2 << "-timeout";
        QTest::newRow("unknown word of the configuration")
            << QByteArray("batch :echo x\nbatch foo\nbatch quit\n") << QByteArray("quit\n") << both
            << 1
            << "Batch failures: 1, the first: batch line 2 of the configuration, foo: unknown word";
        QTest::newRow("image in a loop")
            << QByteArray()
            << QByteArray(":for L %n% 1 2\nload_I1_files new \\\n/none-%n%\n"
                          ":next L\nload_I0_files_of_pattern new /none *\nquit\n")
            << both << 1
            << "Batch failures: 3, the first: line 2, load_I1_files: Can not open (1) \"/none-1";
        QTest::newRow("latin-1 and no standard")
            << QByteArray()
            << QByteArray(":echo \xb5\nSuggesting_Elm Xx\ncalib_exec\ncalib_wait\nquit") << both
            << 1 << "Batch failures: 2, the first: line 2, Suggesting_Elm: Unknown element \"Xx\"";
        QTest::newRow("nothing to wait for, and no end told")
            << QByteArray("batch load_I1_files new\n") << QByteArray("load_I0_files new\n") << both
            << 1
            << "Batch failures: 2, the first: batch line 1 of the configuration, load_I1_files";
        const QString image =
            write("long.img", imgBytes(3000, 3000, "", 2, [](int x, int y) { return x + y; }));
        QTest::newRow("a longer wait than allowed")
            << QByteArray() << QByteArray("load_I1_files new " + image.toUtf8() + "\n")
            << both + " -timeout 0.001" << 3
            << "the first: line 1, load_I1_files: no progress for as long as -timeout allows";
    }

    void unattendedRunsTellByTheirExitCodes()
    {
        QFETCH(QByteArray, config);
        QFETCH(QByteArray, batch);
        QFETCH(QString, options);
        QFETCH(int, code);
        QFETCH(QString, lastLine);
        write("x.cfg", config);
        write("x.bat", batch);
        const QString log = run(("-e -x " + options.replace('@', dir_.path())).split(' '));
        const QString last = log.trimmed().section('\n', -1);
        QVERIFY2(exitCode_ == code && last.contains(lastLine), qPrintable(log));
    }

    void variablesAndProgressOfUnattendedRuns()
    {
        write("v.cfg", "batch :echo $a$\n");
        write("v.bat", "# a comment\nset_band_w $b$\n:echo $b$\n");
        const QString batch = dir_.filePath("v.bat");
        const QStringList options{"-e", "-x", "-v", "-b", batch, "-c", dir_.filePath("v.cfg")};
        const QString log = run(options + QStringList{"-let", "a=1 and 2", "-let", "b=-3"});
        QCOMPARE(exitCode_, 0);
        QVERIFY2(log.contains("echo 1 and 2") && log.contains("echo -3"), qPrintable(log));
        QVERIFY2(log.contains(QRegularExpression("line 2, set_band_w: 0\\.0\\d s\n")),
                 qPrintable(log));
        const QString last = run(options + QStringList{"-let", "=1"}).trimmed();
        QVERIFY(exitCode_ == 2 &&
                last.endsWith("-let needs a name, \"=\" and a value, not \"=1\""));
    }

    void checksTellByTheirExitCodes_data()
    {
        QTest::addColumn<QString>("options");
        QTest::addColumn<QByteArray>("batch");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("output");

        // "@" is the folder; the configuration has a variable and its data root.
        QTest::newRow("sound") << "--check @/c.bat -c @/c.cfg"
                               << QByteArray("load_I1_files new $x$/c.bat $DataRoot$/c.cfg") << 0
                               << "0 findings; 2 images to load\n";
        QTest::newRow("unsound") << "-c @/c.cfg --check @/c.bat" << QByteArray("\nfoo x") << 1
                                 << "@/c.bat:2: foo: unknown word, the line is skipped\n"
                                    "1 finding; 0 images to load\n";
        QTest::newRow("no file") << "--check @/none.bat" << QByteArray() << 2
                                 << "Not checked: Can't open batch file \"@/none.bat\"\n";
        QTest::newRow("no name") << "--check" << QByteArray() << 2
                                 << "Not checked: --check needs the name of a batch file\n";
        QTest::newRow("no configuration") << "--check @/c.bat -c @/none.cfg" << QByteArray() << 2
                                          << "Not checked: Can't open config file : "
                                             "\"@/none.cfg\"\n";
    }

    void checksTellByTheirExitCodes()
    {
        QFETCH(QString, options);
        QFETCH(QByteArray, batch);
        QFETCH(QString, output);
        const QByteArray folder = dir_.path().toUtf8();
        write("c.bat", batch);
        write("c.cfg", "DataRoot " + folder + "\nbatch :let x " + folder + "\n");
        const QString log = runWithoutDisplay(options.replace('@', dir_.path()).split(' '));
        QTEST(exitCode_, "code");
        QCOMPARE(log, output.replace('@', dir_.path()));
    }

    void helpAndVersionNeedNoDisplay()
    {
        const QString help = runWithoutDisplay({"--help-commands"});
        QCOMPARE(exitCode_, 0);
        for (const KeywordRow& row : keywordTable())
            QVERIFY2(help.contains(row.usage() + '\n'), qPrintable(row.word));
        for (const ExCmdRow& row : exCmdTable() + extensionTable())
            QVERIFY2(row.id == ExCmdNone || help.contains('\n' + row.usage() + "\n    "),
                     qPrintable(row.word));
        QVERIFY(help.contains("\nquit\n    Ends the program; no line behind it runs\n"));
        QVERIFY(runWithoutDisplay({"--version"}).contains(QString("\nQt ") + qVersion()));
        QCOMPARE(exitCode_, 0);
        const QString options = runWithoutDisplay({"--help"});
        QVERIFY(exitCode_ == 0 && options.contains("\n-timeout <seconds>\n    with -x: "));
    }

    /// A text of commands, unattended and with a window, ended while it waits.
    void signalsEndTheProgramLikeAClose()
    {
        const QString batch = write("s.bat", ":echo waiting\n:for L %i% 1 100000000\n"
                                             "set_band_w 1\n:next L\n");
        for (const QStringList& arguments : {QStringList{"-e", "-b", batch, "-x"}, {"-e"}}) {
            for (const int number : {SIGTERM, SIGINT}) {
                QProcess program;
                program.setProcessChannelMode(QProcess::MergedChannels);
                program.start(QStringLiteral(MORVENKITE_PROGRAM), arguments);
                QByteArray log;
                while (!log.contains(arguments.size() > 1 ? "echo waiting" : "Batchs in Config")) {
                    QVERIFY2(program.waitForReadyRead(20000), log);
                    log += program.readAll();
                }
                QCOMPARE(kill(pid_t(program.processId()), number), 0);
                QVERIFY(program.waitForFinished(20000));
                QCOMPARE(program.exitStatus(), QProcess::NormalExit);
                QCOMPARE(program.exitCode(), 128 + number);
            }
        }
    }

    void brokenFilesLeaveTheProgramAlive_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("zeros") << QByteArray(100000, '\0');
        QTest::newRow("no line ends") << QByteArray(900000, 'x');
        QTest::newRow("quotes") << QByteArray("\"\"\"\"\"").repeated(5000);
        QTest::newRow("tiff magic")
            << QByteArray("II*\0\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff", 16);
        QTest::newRow("brnx magic")
            << QByteArray("#BRNX-CTImg\n# RANGE_X1 = 99999\n# RANGE_Y1 = 99999\n");
    }

    /// The same junk as configuration, image, reference, bad-pixel list and batch file.
    void brokenFilesLeaveTheProgramAlive()
    {
        QFETCH(QByteArray, bytes);
        const QString junk = write("junk", bytes);
        const QString cfg =
            write("junk.cfg", "INCLUDE " + junk.toUtf8() + "\nErrPoints " + junk.toUtf8() + "\n");
        const QString batch =
            write("junk.bat", "load_I1_files new " + junk.toUtf8() + "\nload_I0_files new " +
                                  junk.toUtf8() + "\nanalyzer_set_LCF_std 0 0 0 " + junk.toUtf8() +
                                  "\neng_by_ref_i1 " + junk.toUtf8() +
                                  "\nanalyzer_exec_LCF\n:echo alive\nquit\n");
        QString log = run({"-c", cfg, "-b", batch, "-x"});
        QCOMPARE(exitCode_, 1);
        QVERIFY(log.contains("alive"));

        const QString last = write("last.cfg", "batch :echo alive\nbatch quit\n");
        log = run({"-c", last, "-b", junk});
        QCOMPARE(exitCode_, 0);
    }

private:
    QString write(const QString& name, const QByteArray& bytes)
    {
        const QString path = dir_.filePath(name);
        return writeBytes(path, bytes) ? path : QString();
    }

    /// Runs to the end and gives the log; the exit code goes to exitCode_, -1 when it did not end.
    QString run(const QStringList& arguments, int waitMs = 60000)
    {
        QProcess program;
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QStringLiteral(MORVENKITE_PROGRAM), arguments);
        const bool ended = program.waitForFinished(waitMs);
        exitCode_ = ended && program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
        if (!ended)
            program.kill();
        program.waitForFinished();
        return QString::fromUtf8(program.readAll());
    }

    /// As run(), where nothing could show a window.
    QString runWithoutDisplay(const QStringList& arguments)
    {
        const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
        qputenv("QT_QPA_PLATFORM", "none-such");
        const QString log = run(arguments);
        qputenv("QT_QPA_PLATFORM", platform);
        return log;
    }

    QTemporaryDir dir_;
    int exitCode_ = -1;
};

QTEST_GUILESS_MAIN(TestProgram)
#include "test_program.moc"
