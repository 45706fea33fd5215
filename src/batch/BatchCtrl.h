#pragma once

#include "batch/CmdLine.h"
#include "batch/CommandFailure.h"
#include "batch/RunWatch.h"

#include <QFileDialog>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <QVector>

#include <memory>

class BatchDispatcher;
class LateDialog;
class Ui_BatchCtrl;

/// The batch window: editor and log in two tabs, the buttons that load, save, run and stop the
/// text, and below them what a run does or waits for. Its buttons stay enabled during a run, whose
/// rest "Exec." replaces; behind its end "Exec." is disabled, and says so, until "Stop". GUI
/// thread.
class BatchCtrl : public QMainWindow
{
    Q_OBJECT
    Q_DISABLE_COPY(BatchCtrl)

public:
    explicit BatchCtrl(QWidget* parent = nullptr);
    ~BatchCtrl() override;

    /// Connects the window with the dispatcher (not owned) in place of an earlier one. To be
    /// called before the configuration's own lines are given to the dispatcher: execBatchSlot()
    /// waits for the end of that first run.
    void setDispatcher(BatchDispatcher* dispatcher);

    /// Told of the start, the progress and the end of each command by whoever executes them.
    RunWatch& watch() { return watch_; }

    /// Nobody is there to press a button: execBatchSlot() was called, and its run has not ended.
    bool isUnattended() const { return startPending_ || unattendedRuns_; }

    /// Failures of all runs so far.
    const FailureCount& failures() const { return failures_; }

    /// Records what a command did not do, one failure a reason, and shows it in the log. The log
    /// lines are written already; see common/Fault.h.
    void commandFailed(const CmdLine& cmd, const QStringList& reasons);

    /// The text that "Exec." runs.
    QString text() const;
    /// Puts a text into the editor. One of too many lines is only told there, and kept as it is: an
    /// editor takes some 150 bytes for each line.
    void setText(const QString& text);

Q_SIGNALS:
    void doDispatchCmds(const QString& cmdLines);
    void doDispatchConfigCmds(const QString& cmdLines);
    void batchStop();
    /// A command made no progress for longer than the watch's limit, and the run is stopped.
    void gaveUp();
    /// The run that execBatchSlot() started has come to the end of its text.
    void unattendedRunEnded();

public Q_SLOTS:
    /// Gives the text to the dispatcher.
    void execCmdsSlot();

    /// Tells in the log what the text would stumble over, without running it. Takes some seconds at
    /// most; of a longer text the log says where the check ended.
    void checkSlot();

    void clear();
    void clearLog();

    /// Writes the text as UTF-8. A file that can't be written keeps its old contents and
    /// costs one log line.
    void save(const QString& fname);

    /// Puts the file's lines into the editor, each with a line end. A file that readBatchFile()
    /// refuses costs one log line and leaves the text as it was.
    void load(const QString& fname);

    /// Shows a text, with line ends of its own, in the log.
    void Log(const QString& LogMsg);

    /// The batch file that the command line names: as load().
    void setBatchFile(const QString& fname);

    /// Runs a text that is not the editor's, in place of what runs. Behind its end "Exec." needs no
    /// "Stop".
    void runText(const QString& text);

    /// Unattended start: once the run of the configuration's own lines has come to its end, the
    /// editor's text is started by what amounts to "Stop", then "Exec.". "Stop" before that calls
    /// the start off.
    void execBatchSlot();

    /// Shows a command that is none in the log.
    void showCmdErr(const CmdLine& cmd);

private:
    QFileDialog* newDialog(QFileDialog::AcceptMode mode);
    /// What the dispatcher has told of itself.
    enum class RunState
    {
        Idle,
        Running,
        Ended ///< needs "Stop" before the next
    };

    void connectButtons();
    void setupEditor();
    void followRun();
    void showRunningLine();
    void logFaults(const QStringList& faults);
    void setRunState(RunState state);
    void showState();
    void takeRunEnd();
    void startUnattended();
    void stopRun();
    void showWait(const CmdLine& cmd, const QDateTime& since);
    void giveUp(const CmdLine& cmd);

    std::unique_ptr<Ui_BatchCtrl> ui_;
    QPointer<BatchDispatcher> dispatcher_;
    LateDialog* saveDialog_;
    LateDialog* loadDialog_;
    QString keptText_; ///< in place of the editor's
    RunWatch watch_;
    FailureCount failures_;
    RunState runState_ = RunState::Idle;
    QTimer follow_; ///< looks where the run is, while one is under way
    int runningLine_ = 0;
    bool runsEditorsText_ = false; ///< and it was not changed since
    QString wait_;                 ///< what the run waits for, in people's words
    bool firstRunEnded_ = false;
    bool startPending_ = false;   ///< execBatchSlot() waits for the end of the first run
    bool otherTextRuns_ = false;  ///< what runText() was given runs
    bool unattendedRuns_ = false; ///< what execBatchSlot() started runs
};
