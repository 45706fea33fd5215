// Tests of texts are full of them: plain literals read better here.
#undef QT_NO_CAST_FROM_ASCII

#include "batch/BatchDispatcher.h"

#include <QtTest>

#include <memory>

namespace {

const QString endlessLoop = ":for L n 1 2 -1\n:next L";

} // namespace

/// Stands for the main window: takes the commands on this thread, and reports their ends at once
/// or when the test says so.
class FakeExecutor : public QObject
{
    Q_OBJECT

public:
    FakeExecutor()
    {
        thread_.start();
        dispatcher = new BatchDispatcher;
        dispatcher->moveToThread(&thread_);
        connect(&thread_, &QThread::finished, dispatcher, &QObject::deleteLater);
        connect(dispatcher, &BatchDispatcher::execCmdSig, this, &FakeExecutor::exec);
        connect(dispatcher, &BatchDispatcher::Log, this, [this](const QString& text) {
            log += text;
            longestLog = qMax(longestLog, text.size());
            if (showsLog)
                dispatcher->logShown(text.size());
        });
        connect(dispatcher, &BatchDispatcher::runEnded, this, [this] { ++ends; });
        connect(this, &FakeExecutor::start, dispatcher, &BatchDispatcher::doDispatchCmds);
        connect(this, &FakeExecutor::stop, dispatcher, &BatchDispatcher::batchStopSlot);
        connect(this, &FakeExecutor::finished, dispatcher, &BatchDispatcher::finishBatchExec);
    }

    ~FakeExecutor() override
    {
        dispatcher->requestStop();
        thread_.quit();
        thread_.wait();
    }

    void run(const QString& text) { Q_EMIT start(text.split('\n')); }

    /// Waits until the dispatcher's thread has worked off what was sent to it, and its answers
    /// have arrived here.
    void settle()
    {
        QMetaObject::invokeMethod(
            dispatcher, [] {}, Qt::BlockingQueuedConnection);
        QMetaObject::invokeMethod(
            dispatcher, [] {}, Qt::BlockingQueuedConnection);
        QCoreApplication::sendPostedEvents();
    }

    BatchDispatcher* dispatcher;
    QString commands;
    QString log;
    int ends = 0;
    int longestLog = 0;
    bool reports = true;  ///< reports each command's end at once
    bool showsLog = true; ///< tells that the log was taken
    QVector<int> tickets;

Q_SIGNALS:
    void start(QStringList lines);
    void stop();
    void finished(int id, int ticket);

private:
    void exec(const CmdLine& cmd, bool inRem)
    {
        commands += (inRem ? "~" : "") + cmd.args.join(' ') + ';';
        tickets.append(cmd.ticket);
        if (reports)
            Q_EMIT finished(126, cmd.ticket);
    }

    QThread thread_;
};

class TestBatchDispatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { executor_ = std::make_unique<FakeExecutor>(); }
    void cleanup() { executor_.reset(); }

    void commandsRunInOrderEachAfterTheOtherReport();
    void runEndsOnlyAfterTheLastReport();
    void newTextStartsOnlyAfterStop();
    void newTextDuringARunTakesThePlaceOfTheRest();
    void onlyTheAwaitedReportTakesTheNextLine();
    void stopLeavesARemStretch();
    void longLoopWithoutCommandsIsRun();
    void endlessLoopHearsStop();
    void stopAndStartInOneGoTakesEachLineOnce();
    void unreadLogPausesTheRun();
    void requestedStopEndsTheThread();

private:
    std::unique_ptr<FakeExecutor> executor_;
};

void TestBatchDispatcher::commandsRunInOrderEachAfterTheOtherReport()
{
    executor_->run(":for L n 1 3\nzoom_in n\n:next L\n:rem_start\nquit now\n:rem_end\nquit");
    QTRY_COMPARE(executor_->ends, 1);
    QCOMPARE(executor_->commands, "1;2;3;~now;;");
    QCOMPARE(executor_->log, "for L : n = 1\nzoom_in : 1\nnext L : n = 2\nzoom_in : 2\n"
                             "next L : n = 3\nzoom_in : 3\nnext L : n = 3\nquit : \n");
}

void TestBatchDispatcher::runEndsOnlyAfterTheLastReport()
{
    executor_->reports = false;
    executor_->run("zoom_in a\nzoom_in b");
    QTRY_COMPARE(executor_->commands, "a;");
    executor_->settle();
    QCOMPARE(executor_->commands, "a;");
    Q_EMIT executor_->finished(0, executor_->tickets.last());
    QTRY_COMPARE(executor_->commands, "a;b;");
    executor_->settle();
    QCOMPARE(executor_->ends, 0);
    Q_EMIT executor_->finished(0, executor_->tickets.last());
    QTRY_COMPARE(executor_->ends, 1);
}

void TestBatchDispatcher::newTextStartsOnlyAfterStop()
{
    // A run of no lines counts like any other.
    Q_EMIT executor_->start({});
    QTRY_COMPARE(executor_->ends, 1);
    executor_->run("zoom_in a");
    executor_->settle();
    QCOMPARE(executor_->commands, QString());
    Q_EMIT executor_->stop();
    executor_->run("zoom_in b\n:end\nzoom_in c");
    QTRY_COMPARE(executor_->ends, 2);
    QCOMPARE(executor_->commands, "b;");
}

void TestBatchDispatcher::newTextDuringARunTakesThePlaceOfTheRest()
{
    executor_->reports = false;
    executor_->run("zoom_in a\nzoom_in b");
    QTRY_COMPARE(executor_->commands, "a;");
    executor_->run("zoom_in x\nzoom_in y\nzoom_in z");
    executor_->reports = true;
    Q_EMIT executor_->finished(0, executor_->tickets.last());
    QTRY_COMPARE(executor_->ends, 1);
    QCOMPARE(executor_->commands, "a;y;z;");
}

void TestBatchDispatcher::onlyTheAwaitedReportTakesTheNextLine()
{
    executor_->reports = false;
    executor_->run("zoom_in a\nzoom_in b");
    QTRY_COMPARE(executor_->commands, "a;");
    const int late = executor_->tickets.last();
    Q_EMIT executor_->finished(56, 0); // a click
    Q_EMIT executor_->stop();
    executor_->run("zoom_in c\nzoom_in d");
    QTRY_COMPARE(executor_->commands, "a;c;");
    Q_EMIT executor_->finished(56, late);
    Q_EMIT executor_->finished(56, 0);
    executor_->settle();
    QCOMPARE(executor_->commands, "a;c;");
    const int awaited = executor_->tickets.last();
    Q_EMIT executor_->finished(56, awaited);
    Q_EMIT executor_->finished(56, awaited); // told twice
    QTRY_COMPARE(executor_->commands, "a;c;d;");
    executor_->settle();
    QCOMPARE(executor_->ends, 0);
}

void TestBatchDispatcher::stopLeavesARemStretch()
{
    executor_->reports = false;
    executor_->run(":rem_start\nzoom_in a");
    QTRY_COMPARE(executor_->commands, "~a;");
    Q_EMIT executor_->stop();
    executor_->run("zoom_in b");
    QTRY_COMPARE(executor_->commands, "~a;b;");
}

void TestBatchDispatcher::longLoopWithoutCommandsIsRun()
{
    executor_->run(":for L n 1 100000\n:next L\nzoom_in n");
    QTRY_COMPARE_WITH_TIMEOUT(executor_->ends, 1, 30000);
    QCOMPARE(executor_->commands, "100000;");
    QCOMPARE(executor_->log.count('\n'), 100002);
    QVERIFY(executor_->longestLog < 70000);
}

void TestBatchDispatcher::endlessLoopHearsStop()
{
    executor_->run(endlessLoop);
    QTRY_VERIFY(!executor_->log.isEmpty());
    QElapsedTimer timer;
    timer.start();
    Q_EMIT executor_->stop();
    executor_->run(":end");
    QTRY_COMPARE(executor_->ends, 1);
    // Some 20 ms on an idle machine; the rest is for one that is busy.
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
}

void TestBatchDispatcher::stopAndStartInOneGoTakesEachLineOnce()
{
    for (int i = 0; i < 20; ++i) {
        executor_->reports = false;
        executor_->commands.clear();
        executor_->run(endlessLoop);
        QTRY_VERIFY(executor_->log.size() > 0);
        Q_EMIT executor_->stop();
        executor_->run("zoom_in a\nzoom_in b");
        QTRY_COMPARE(executor_->commands, "a;");
        executor_->settle();
        QCOMPARE(executor_->commands, "a;");
        Q_EMIT executor_->stop();
        executor_->log.clear();
    }
}

void TestBatchDispatcher::unreadLogPausesTheRun()
{
    executor_->showsLog = false;
    executor_->dispatcher->setLogPaced(true);
    executor_->run(endlessLoop);
    QTRY_VERIFY(executor_->log.size() > 64000);
    const int size = executor_->log.size();
    for (int i = 0; i < 5; ++i)
        executor_->settle();
    QVERIFY(executor_->log.size() < size + 70000);
    executor_->dispatcher->logShown(executor_->log.size());
    QTRY_VERIFY(executor_->log.size() > size + 64000);
}

void TestBatchDispatcher::requestedStopEndsTheThread()
{
    executor_->run(endlessLoop);
    QTRY_VERIFY(!executor_->log.isEmpty());
    QElapsedTimer timer;
    timer.start();
    executor_.reset();
    QVERIFY(timer.elapsed() < 500);
}

QTEST_GUILESS_MAIN(TestBatchDispatcher)
#include "test_batch_dispatcher.moc"
