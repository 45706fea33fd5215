#include "app/BodyFixture.h"

#include <QDirIterator>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QtTest>

/// Batches run from their text to their end. A case is a folder:
///   batch.bat    the text, run in a folder of its own
///   inputs.py    makes the files that it reads there (may be missing)
///   config.cfg   then the program itself runs both, with -b and -x; so it does a text with "quit"
///   stop         when "Stop" is pressed: "line <text of the log>", "image <number of loaded ones>"
///                or "walk", at its start; after.bat is run then
///   expected/    log.txt, and all files that are written into out/ or by their fixed names
/// MORVENKITE_UPDATE_GOLDEN=1 writes expected/ anew: to be read before it is committed.
class TestGoldenBatches : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(home_.path()));
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
    }

    void aBatchLogsAndWritesWhatItShould_data()
    {
        QTest::addColumn<QString>("folder");
        const QDir golden(GOLDEN_FOLDER);
        for (const QString& name : golden.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            QTest::newRow(qPrintable(name)) << golden.filePath(name);
    }

    void aBatchLogsAndWritesWhatItShould()
    {
        QFETCH(const QString, folder);
        const QTemporaryDir place;
        QVERIFY(QDir::setCurrent(place.path()) && QDir().mkdir("out"));
        makeInputs(folder);
        if (QTest::currentTestFailed())
            return;
        QString log;
        if (QFile::exists(folder + "/config.cfg") ||
            bytesOf(folder + "/batch.bat").contains("quit"))
            runProgram(folder, log);
        else
            runWindow(folder, log);
        if (QTest::currentTestFailed())
            return;
        QVERIFY(writeBytes("log.txt", log.toUtf8()));
        const QMap<QString, QByteArray> files = written();
        if (qEnvironmentVariableIsSet("MORVENKITE_UPDATE_GOLDEN"))
            renew(folder, files);
        const QDir expected(folder + "/expected");
        QCOMPARE(QStringList(files.keys()), expected.entryList(QDir::Files, QDir::Name));
        for (auto file = files.begin(); file != files.end(); ++file) {
            const QByteArray should = bytesOf(expected.filePath(file.key()));
            QVERIFY2(file.value() == should, file.key().endsWith(".txt") ? file.value().constData()
                                                                         : qPrintable(file.key()));
        }
    }

private:
    static void makeInputs(const QString& folder)
    {
        if (!QFile::exists(folder + "/inputs.py"))
            return;
        QProcess maker;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PYTHONPATH", GOLDEN_FOLDER);
        environment.insert("PYTHONDONTWRITEBYTECODE", "1");
        maker.setProcessEnvironment(environment);
        maker.start("python3", {folder + "/inputs.py"});
        QVERIFY2(maker.waitForFinished(-1) && maker.exitCode() == 0,
                 maker.readAllStandardError().constData());
    }

    /// The program's log, as far as the batch wrote it, without times.
    static void runProgram(const QString& folder, QString& log)
    {
        QProcess program;
        program.setProcessChannelMode(QProcess::MergedChannels);
        const QString config = folder + "/config.cfg";
        QStringList options{"-e", "-v", "-x", "-b", folder + "/batch.bat"};
        if (QFile::exists(config))
            options << "-c" << config;
        program.start(MORVENKITE_PROGRAM, options);
        QVERIFY(program.waitForFinished(60000));
        const QRegularExpression ofBatch("(?:batch line|line|echo) .*");
        const QRegularExpression seconds(": [0-9.]+ s$");
        for (const QString& line : QString::fromUtf8(program.readAll()).split('\n')) {
            if (ofBatch.match(line).capturedStart() == 0)
                log += QString(line).remove(seconds) + '\n';
        }
        log += QString("exit code %1\n").arg(program.exitCode());
    }

    void runWindow(const QString& folder, QString& log)
    {
        DrivenBody body;
        BatchCtrl& window = *body.batchCtrl();
        endFirstRun(window);
        pressStopAsTold(body, folder + "/stop");
        runText(body, folder + "/batch.bat");
        if (stopped_) {
            QTRY_COMPARE_WITH_TIMEOUT(ended_, begun_, 60000);
            runText(body, folder + "/after.bat");
        }
        log = window.findChild<QPlainTextEdit*>("BatchLogs")->toPlainText();
    }

    /// That of the configuration, which has no lines here.
    static void endFirstRun(const BatchCtrl& window)
    {
        QTRY_VERIFY(!window.findChild<QPushButton*>("Exec")->isEnabled());
        window.findChild<QPushButton*>("Stop")->click();
    }

    /// Until the run is through or stopped.
    static void runText(Body& body, const QString& file)
    {
        BatchCtrl& window = *body.batchCtrl();
        if (!QFile::exists(file))
            return;
        window.load(file);
        QSignalSpy stops(&window, &BatchCtrl::batchStop);
        QSignalSpy ends(&body.batch(), &BatchConductor::runThrough);
        window.findChild<QPushButton*>("Exec")->click();
        QTRY_VERIFY_WITH_TIMEOUT(!stops.isEmpty() || !ends.isEmpty(), 60000);
        if (stops.isEmpty())
            window.findChild<QPushButton*>("Stop")->click();
    }

    void pressStopAsTold(DrivenBody& body, const QString& file)
    {
        stopped_ = false;
        begun_ = ended_ = 0;
        connect(&body.batch(), &BatchConductor::commandStarted, this, [this] { ++begun_; });
        connect(&body.batch(), &BatchConductor::finishBatchExec, this, [this] { ++ended_; });
        const QString when = QString::fromUtf8(bytesOf(file)).trimmed();
        const QString what = when.section(' ', 1);
        const auto press = [this, &body] {
            if (!std::exchange(stopped_, true))
                body.batchCtrl()->findChild<QPushButton*>("Stop")->click();
        };
        if (when.startsWith("line ")) {
            const auto* log = body.batchCtrl()->findChild<QPlainTextEdit*>("BatchLogs");
            connect(log, &QPlainTextEdit::textChanged, this, [log, what, press] {
                if (log->toPlainText().contains(what + '\n'))
                    press();
            });
        } else if (when.startsWith("image ")) {
            connect(&body.stacks(), &StackConductor::imageCame, this, [&body, what, press] {
                if (body.i1Stack().size() == what.toInt())
                    press();
            });
        } else if (when == "walk") {
            connect(&body.analysis(), &AnalysisConductor::runningChanged, this, press);
        }
    }

    /// What stands in out/, and what has its fixed name.
    static QMap<QString, QByteArray> written()
    {
        QMap<QString, QByteArray> files;
        QStringList names{"log.txt", "flat.dat", "dark.dat"};
        for (const QString& name : QDir("out").entryList(QDir::Files))
            names << "out/" + name;
        for (const QString& name : names) {
            if (QFile::exists(name))
                files[QFileInfo(name).fileName()] = bytesOf(name);
        }
        return files;
    }

    static void renew(const QString& folder, const QMap<QString, QByteArray>& files)
    {
        const QDir expected(folder + "/expected");
        QVERIFY(expected.mkpath("."));
        for (const QString& old : expected.entryList(QDir::Files))
            QFile::remove(expected.filePath(old));
        for (auto file = files.begin(); file != files.end(); ++file)
            QVERIFY(writeBytes(expected.filePath(file.key()), file.value()));
    }

    const QTemporaryDir home_;
    bool stopped_ = false;
    int begun_ = 0;
    int ended_ = 0;
};

QTEST_MAIN(TestGoldenBatches)
#include "test_golden_batches.moc"
