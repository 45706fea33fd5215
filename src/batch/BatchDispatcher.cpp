#include "batch/BatchDispatcher.h"

#include "common/Fault.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QTimer>

#include <limits>

namespace {

constexpr qint64 sliceMs = 10;
constexpr int logPauseMs = 5;
constexpr int mostLogAhead = 64000;

} // namespace

BatchDispatcher::BatchDispatcher(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<CmdLine>("CmdLine");
    qRegisterMetaType<FailureCount>("FailureCount");
    connect(this, &BatchDispatcher::execNextLineSig, this, &BatchDispatcher::execNextLineSlot,
            Qt::QueuedConnection);
}

void BatchDispatcher::dispatch(const QString& text, bool ofConfig)
{
    if (state_ == Finished) {
        Q_EMIT notStarted();
        return;
    }
    if (state_ != Idle) {
        interpreter_.replaceText(text, ofConfig);
        return;
    }
    interpreter_.start(text, ofConfig);
    state_ = TakingLines;
    Q_EMIT runStarted();
    askForNextLine();
}

void BatchDispatcher::batchStopSlot()
{
    state_ = Idle;
    waitingTicket_ = 0;
    currentLine_ = 0;
    interpreter_.leaveRem();
    Q_EMIT runStopped();
}

void BatchDispatcher::finishBatchExec(int id, int ticket)
{
    Q_UNUSED(id)
    if (state_ != Waiting || ticket != waitingTicket_)
        return;
    state_ = TakingLines;
    askForNextLine();
}

/// Asks once: a run that was stopped and another that was started meanwhile share the request,
/// as two of them would take two lines at a time.
void BatchDispatcher::askForNextLine()
{
    if (lineAsked_)
        return;
    lineAsked_ = true;
    Q_EMIT execNextLineSig();
}

void BatchDispatcher::execNextLineSlot()
{
    lineAsked_ = false;
    if (state_ != TakingLines)
        return;
    if (logPaced_ && logAhead_ > mostLogAhead) {
        lineAsked_ = true;
        QTimer::singleShot(logPauseMs, this, &BatchDispatcher::execNextLineSlot);
        return;
    }
    if (takeSlice())
        askForNextLine();
}

/// Takes lines for some 10 ms, so that a stop is heard in between. True if the run goes on without
/// waiting for anything.
bool BatchDispatcher::takeSlice()
{
    QElapsedTimer timer;
    timer.start();
    QString log;
    FailureCount failures;
    while (!stopRequested_) {
        const BatchOutcome outcome = interpreter_.step();
        currentLine_ = outcome.line.ofConfig ? 0 : outcome.line.lineNo;
        log += outcome.log;
        tell(outcome, failures);
        if (outcome.kind == BatchOutcome::Continue) {
            if (timer.elapsed() < sliceMs && log.size() < mostLogAhead)
                continue;
            flush(log, failures);
            return true;
        }
        flush(log, failures);
        if (outcome.kind == BatchOutcome::Command) {
            send(outcome.line, outcome.inRem);
        } else {
            state_ = Finished;
            currentLine_ = 0;
            Q_EMIT runEnded();
        }
        return false;
    }
    flush(log, failures);
    return false;
}

/// What the program's log and the failures of the run get of a line.
void BatchDispatcher::tell(const BatchOutcome& outcome, FailureCount& failures)
{
    for (const QString& message : outcome.messages)
        qDebug().noquote() << message;
    if (!outcome.failure)
        return;
    fault(outcome.failure->text());
    failures.add(*outcome.failure);
}

void BatchDispatcher::send(CmdLine command, bool inRem)
{
    // 0 is the ticket of commands that no run waits for, so the count skips it.
    lastTicket_ = lastTicket_ == std::numeric_limits<int>::max() ? 1 : lastTicket_ + 1;
    command.ticket = lastTicket_;
    waitingTicket_ = lastTicket_;
    state_ = Waiting;
    Q_EMIT execCmdSig(command, inRem);
}

void BatchDispatcher::flush(QString& text, FailureCount& failures)
{
    if (failures.count > 0)
        Q_EMIT failed(failures);
    if (text.isEmpty())
        return;
    logAhead_ += text.size();
    Q_EMIT Log(text);
}
