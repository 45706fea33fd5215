#pragma once

#include "batch/BatchInterpreter.h"

#include <QObject>

#include <atomic>

/// Runs a batch text in a thread of its own: takes lines from the interpreter, hands each external
/// command out by a signal, and goes on when its end is reported.
///
/// A run that has come to the end of its text, or to ":end", still counts as running: a new text
/// starts only after batchStopSlot(). Deliberate: the order is "Stop", then "Exec.".
class BatchDispatcher : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(BatchDispatcher)

public:
    explicit BatchDispatcher(QObject* parent = nullptr);

    /// Takes no further line, for good: the program ends. Any thread.
    void requestStop() { stopRequested_ = true; }

    /// While on, a run pauses as long as more than some 64,000 characters of log are on their way,
    /// so that a loop without commands can't flood the window that shows them. That window tells
    /// with logShown() how much it has taken. Any thread.
    void setLogPaced(bool on) { logPaced_ = on; }
    void logShown(int size) { logAhead_ -= size; }

    /// Line of the text that is taken, counted from 1; 0 while none is, and for lines of the
    /// configuration. Any thread.
    int currentLine() const { return currentLine_; }

Q_SIGNALS:
    /// Asks for the next line; always answered by way of the event loop.
    void execNextLineSig();
    /// `cmd` is to be executed (or to be passed over when `inRem` is set), and its end reported to
    /// finishBatchExec() with the ticket of `cmd`.
    void execCmdSig(CmdLine cmd, bool inRem);
    /// Text for the batch log with line ends of its own; the texts of several lines may be joined.
    void Log(QString Log);
    /// The run takes no more lines, since its text has ended or ":end" came.
    void runEnded();
    /// Lines of the text that could not be run. Their texts are in the log.
    void failed(const FailureCount& failures);
    /// A run has begun, or was stopped: another may start.
    void runStarted();
    void runStopped();
    /// A text came after a run had ended, and nothing starts.
    void notStarted();

public Q_SLOTS:
    void execNextLineSlot();

    /// Starts a text of lines, or, while one is running, puts it in place of the rest of that one.
    void doDispatchCmds(const QString& text) { dispatch(text, false); }
    /// The same with the configuration's batch lines.
    void doDispatchConfigCmds(const QString& text) { dispatch(text, true); }

    /// Ends the run at the next line. A command in progress is not interrupted; its report will
    /// be ignored.
    void batchStopSlot();

    /// A command with this id has ended. Only the report whose ticket is that of the command which
    /// the run waits for takes the next line; `id` is not looked at.
    void finishBatchExec(int id, int ticket);

private:
    enum State
    {
        Idle,
        TakingLines,
        Waiting, ///< for the report of the command with waitingTicket_
        Finished,
    };

    void dispatch(const QString& text, bool ofConfig);
    void askForNextLine();
    static void tell(const BatchOutcome& outcome, FailureCount& failures);
    void send(CmdLine command, bool inRem);
    void flush(QString& text, FailureCount& failures);
    bool takeSlice();

    BatchInterpreter interpreter_;
    State state_ = Idle;
    bool lineAsked_ = false; ///< an execNextLineSig is on its way
    int lastTicket_ = 0;
    int waitingTicket_ = 0;
    std::atomic<bool> stopRequested_{false};
    std::atomic<int> currentLine_{0};
    std::atomic<bool> logPaced_{false};
    std::atomic<qint64> logAhead_{0};
};
