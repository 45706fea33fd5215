#include "support/ImageFiles.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// The program as a user starts it without a display: options, configuration, batch, exit code.
class TestProgram : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        // Places of windows go into this folder instead of the user's.
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(dir_.path()));
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

    void configurationLinesRunWithoutABatchFile()
    {
        const QString cfg = write("x.cfg", "batch :echo alive\nbatch quit\n");
        const QString log = run({"-c", "/no/such.cfg", "-config", cfg, "-x"});
        QCOMPARE(exitCode_, 0);
        QVERIFY(log.contains("alive"));
    }

    void brokenFilesLeaveTheProgramAlive_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("zeros") << QByteArray(100000, '\0');
        QTest::newRow("no line ends") << QByteArray(3000000, 'x');
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
        QCOMPARE(exitCode_, 0);
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

    QTemporaryDir dir_;
    int exitCode_ = -1;
};

QTEST_GUILESS_MAIN(TestProgram)
#include "test_program.moc"
