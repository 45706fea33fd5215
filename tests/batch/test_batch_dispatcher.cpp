#include "batch/BatchDispatcher.h"

#include <QtTest>

/// The test stands for the main window: takes the commands on this thread, and reports their ends
/// at once or when a test says so.
class TestBatchDispatcher : public QObject
{
    Q_OBJECT

    const QString endlessLoop_ = ":for L n 1 2 -1\n:next L";
    QThread thread_;
    std::unique_ptr<BatchDispatcher> dispatcher_;
    QString commands_, log_;
    int ends_;
    int ticket_;   ///< of the latest command
    bool reports_; ///< reports each command's end at once

    void run(const QString& text) { Q_EMIT start(text); }

    /// Waits until the dispatcher's thread has worked off what was sent to it, and its answers
    /// have arrived here.
    void settle()
    {
        for (int i = 0; i < 2; ++i)
            QMetaObject::invokeMethod(
                dispatcher_.get(), [] {}, Qt::BlockingQueuedConnection);
        QCoreApplication::sendPostedEvents();
    }

Q_SIGNALS:
    void start(const QString& text);
    void stop();
    void finished(int id, int ticket);

private Q_SLOTS:
    void init()
    {
        commands_.clear();
        log_.clear();
        ends_ = 0;
        reports_ = true;
        dispatcher_ = std::make_unique<BatchDispatcher>();
        dispatcher_->moveToThread(&thread_);
        thread_.start();
        using D = BatchDispatcher;
        const D* const d = dispatcher_.get();
        connect(this, &TestBatchDispatcher::start, d, &D::doDispatchCmds);
        connect(this, &TestBatchDispatcher::stop, d, &D::batchStopSlot);
        connect(this, &TestBatchDispatcher::finished, d, &D::finishBatchExec);
        connect(d, &D::runEnded, this, [this] { ++ends_; });
        connect(d, &D::execCmdSig, this, [this](const CmdLine& cmd, bool inRem) {
            commands_ += (inRem ? "~" : "") + cmd.args.join(' ') + ';';
            ticket_ = cmd.ticket;
            if (reports_)
                Q_EMIT finished(56, ticket_);
        });
        connect(d, &D::Log, this, [this](const QString& text) { log_ += text; });
    }

    void cleanup()
    {
        dispatcher_->requestStop(); // ends the thread even out of an endless loop
        thread_.quit();
        QVERIFY(thread_.wait(5000)); // [ms], some 20 on an idle machine
        QCoreApplication::processEvents();
    }

    void onlyTheAwaitedReportTakesTheNextLine()
    {
        reports_ = false;
        run(":rem_start\nzoom_in a\nzoom_in b");
        QTRY_COMPARE(commands_, "~a;");
        const int late = ticket_;
        Q_EMIT finished(56, 0); // a click
        Q_EMIT stop();          // leaves the rem stretch
        run("zoom_in c\nzoom_in d");
        QTRY_COMPARE(commands_, "~a;c;");
        Q_EMIT finished(56, late);
        Q_EMIT finished(56, 0);
        settle();
        QCOMPARE(commands_, "~a;c;");
        const int awaited = ticket_;
        Q_EMIT finished(56, awaited);
        Q_EMIT finished(56, awaited); // told twice
        QTRY_COMPARE(commands_, "~a;c;d;");
        settle();
        QCOMPARE(ends_, 0);
        run("zoom_in x\nzoom_in y\nzoom_in z"); // takes the place of the rest
        Q_EMIT finished(56, ticket_);
        QTRY_COMPARE(commands_, "~a;c;d;z;");
        Q_EMIT finished(56, ticket_);
        QTRY_COMPARE(ends_, 1);
    }

    void loopsWithoutCommandsAreRunAndStopped()
    {
        run(":for L n 1 100000\n:next L\nzoom_in n");
        QTRY_COMPARE_WITH_TIMEOUT(ends_, 1, 30000);
        QCOMPARE(commands_, "100000;");
        QCOMPARE(log_.count('\n'), 100002);

        // Out of an endless loop, stop and start in one go take each line once.
        Q_EMIT stop();
        reports_ = false;
        for (int i = 0; i < 20; ++i) {
            commands_.clear();
            log_.clear();
            run(endlessLoop_);
            QTRY_VERIFY(!log_.isEmpty());
            QElapsedTimer sinceStop;
            sinceStop.start();
            Q_EMIT stop();
            run("zoom_in a\nzoom_in b");
            QTRY_COMPARE(commands_, "a;");
            QVERIFY(sinceStop.elapsed() < 2000); // [ms], ten times what it may take
            settle();
            QCOMPARE(commands_, "a;");
            Q_EMIT stop();
        }
    }

    void unreadLogPausesTheRun()
    {
        dispatcher_->setLogPaced(true);
        run(endlessLoop_);
        QTRY_VERIFY(log_.size() > 64000);
        const int size = log_.size();
        for (int i = 0; i < 5; ++i)
            settle();
        QVERIFY(log_.size() < size + 70000);
        dispatcher_->logShown(log_.size()); // and cleanup() ends an endless loop
        QTRY_VERIFY(log_.size() > size + 64000);
    }
};

QTEST_GUILESS_MAIN(TestBatchDispatcher)
#include "test_batch_dispatcher.moc"
