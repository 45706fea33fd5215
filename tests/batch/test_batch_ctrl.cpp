#include "batch/BatchCtrl.h"
#include "batch/BatchDispatcher.h"
#include "support/ImageFiles.h"

#include <QtTest>

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>

/// The batch window: its text, its log, and when it starts a run.
class TestBatchCtrl : public QObject
{
    Q_OBJECT

    const QTemporaryDir dir_;
    const QString file_ = dir_.filePath("x.bat");
    std::unique_ptr<BatchDispatcher> dispatcher_;
    std::unique_ptr<BatchCtrl> ctrl_;
    QString commands_;
    bool reports_ = true;

    void click(const char* name)
    {
        QTest::mouseClick(ctrl_->findChild<QPushButton*>(name), Qt::LeftButton);
    }
    QString state() { return ctrl_->findChild<QLabel*>("RunState")->text(); }
    QString logText() { return ctrl_->findChild<QPlainTextEdit*>("BatchLogs")->toPlainText(); }
    QPlainTextEdit* editor() { return ctrl_->findChild<QPlainTextEdit*>("BatchCmds"); }
    QString write(const QByteArray& bytes) { return writeBytes(file_, bytes) ? file_ : QString(); }

private Q_SLOTS:
    /// All on this thread: the order of queued events is the same as between threads.
    void init()
    {
        ctrl_ = std::make_unique<BatchCtrl>();
        dispatcher_ = std::make_unique<BatchDispatcher>();
        ctrl_->setDispatcher(dispatcher_.get());
        const auto take = [this](const CmdLine& cmd) {
            commands_ += cmd.arg(0) + ' ';
            if (reports_)
                dispatcher_->finishBatchExec(0, cmd.ticket);
        };
        connect(dispatcher_.get(), &BatchDispatcher::execCmdSig, this, take, Qt::QueuedConnection);
        commands_.clear();
        reports_ = true;
    }

    void loadedAndSavedTextsEndWithALineEnd()
    {
        ctrl_->load(write("a\r\n\r\nb\r\n"));
        QCOMPARE(editor()->toPlainText(), "a\n\nb\n");
        const QString text = QString::fromUtf8("save_image \"\u00b5.png\"\n\n  # end");
        editor()->setPlainText(text);
        ctrl_->save(dir_.filePath("out.bat"));
        click("Clear");
        ctrl_->load(dir_.filePath("out.bat"));
        QCOMPARE(editor()->toPlainText(), text + '\n');
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Can't open.*no/such.*: No such"));
        ctrl_->save("/no/such/folder/x.bat");
        QVERIFY(logText().contains("/no/such/folder/x.bat"));
    }

    /// An editor would take 40 times the memory of such a text.
    void aTextOfManyLinesIsRunWithoutTheEditor()
    {
        ctrl_->load(write("zoom_in a\n" + QByteArray("\\\n").repeated(150000) + "\nzoom_in b\n"));
        QVERIFY(editor()->isReadOnly() && editor()->blockCount() == 1);
        click("Exec");
        QTRY_COMPARE(commands_, "a b ");
        ctrl_->save(dir_.filePath("many.bat"));
        QCOMPARE(QFileInfo(dir_.filePath("many.bat")).size(), QFileInfo(file_).size());
        click("Clear");
        QVERIFY(ctrl_->text().isEmpty() && !editor()->isReadOnly());
    }

    void fileThatCantBeShownLeavesTheText()
    {
        const auto refused = [this](const QString& name, const char* message) {
            QTest::ignoreMessage(QtDebugMsg, QRegularExpression(message));
            editor()->setPlainText("old");
            ctrl_->setBatchFile(name);
            QCOMPARE(editor()->toPlainText(), "old");
            QVERIFY(logText().trimmed().section('\n', -1).contains(QRegularExpression(message)));
        };
        refused("/no/such.bat", "Can't open batch file.*such");
        refused(write(QByteArray(17000000, '\n')), "x.bat\" is too long");
        refused(write(QByteArray(2000000, 'x')), "x.bat\" has a line that is too long");
    }

    void stopCallsAWaitingStartOffAndLetsExecRun()
    {
        reports_ = false;
        Q_EMIT ctrl_->doDispatchConfigCmds("zoom_in config");
        ctrl_->execBatchSlot();
        QTRY_COMPARE(commands_, "config ");
        reports_ = true;
        editor()->setPlainText("zoom_in a\nzoom_in b\n");
        click("Stop");
        click("Exec");
        QTRY_COMPARE(commands_, "config a b ");
        // Nothing without Stop, and the waiting start is gone.
        auto* const exec = ctrl_->findChild<QPushButton*>("Exec");
        QTRY_VERIFY(!exec->isEnabled());
        QVERIFY(state().contains("press \"Stop\"") && exec->toolTip() == state());
        QCOMPARE(commands_, "config a b ");
        click("Stop");
        QVERIFY(exec->isEnabled() && state() == "Idle");
        QCOMPARE(logText(), "zoom_in : config\nzoom_in : a\nzoom_in : b\n");
    }

    void checkTellsInTheLogWithoutARun()
    {
        editor()->setPlainText("set_band_w x\nquit\n");
        click("Check");
        const auto* log = ctrl_->findChild<QPlainTextEdit*>("BatchLogs");
        QVERIFY(log->isVisibleTo(ctrl_.get()));
        QCOMPARE(log->toPlainText(), "1: set_band_w: \"x\" is no whole number, it counts as 0\n"
                                     "1 finding; 0 images to load\n");
        QVERIFY(commands_.isEmpty() && ctrl_->failures().count == 0);
    }

    void aLongWaitIsShownAndEndsAtTheLimit()
    {
        RunWatch& watch = ctrl_->watch();
        const auto shown = [this] { return state(); };
        const QSignalSpy gaveUp(ctrl_.get(), &BatchCtrl::gaveUp);
        CmdLine cmd("load_I1_files new");
        cmd.ticket = 5;
        cmd.lineNo = 12;
        watch.commandStarted(cmd);
        QTRY_VERIFY(shown().contains("line 12: load_I1_files"));
        watch.commandEnded(0, 4); // of a run before
        QVERIFY(shown() != "Idle");
        watch.commandEnded(0, 5);
        QCOMPARE(shown(), "Idle");

        // Progress puts the end off, also when its events come late.
        watch.setLimit(0.5);
        watch.commandStarted(cmd);
        QTest::qSleep(600);
        QMetaObject::invokeMethod(&watch, &RunWatch::progressed, Qt::QueuedConnection);
        QTest::qWait(100);
        QCOMPARE(gaveUp.size(), 0);
        QTRY_COMPARE(gaveUp.size(), 1);
        QCOMPARE(ctrl_->failures().first.lineNo, 12);
        QVERIFY(!watch.isWaiting());
    }

    void unattendedStartWaitsForTheFirstRunAndIsForOnce()
    {
        reports_ = false;
        Q_EMIT ctrl_->doDispatchConfigCmds("zoom_in c1\nzoom_in c2");
        ctrl_->setBatchFile(write("zoom_in file"));
        ctrl_->execBatchSlot();
        QTRY_COMPARE(commands_, "c1 ");
        reports_ = true;
        dispatcher_->finishBatchExec(0, 1);
        QTRY_COMPARE(commands_, "c1 c2 file ");
        QTest::qWait(50);
        QCOMPARE(commands_, "c1 c2 file ");
    }
};

QTEST_MAIN(TestBatchCtrl)
#include "test_batch_ctrl.moc"
