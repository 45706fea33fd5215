#pragma once

#include "batch/CmdLine.h"

#include <QFileDialog>
#include <QMainWindow>
#include <QPointer>
#include <QVector>

#include <memory>

class BatchDispatcher;
class LateDialog;
class Ui_BatchCtrl;

/// The batch window: editor and log in two tabs, and the buttons that load, save, run and stop the
/// text. It holds no state of a run; its buttons stay enabled during one. GUI thread.
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

    /// The dialogs that load and save batch files, for a group that shares a folder.

Q_SIGNALS:
    void doDispatchCmds(QStringList cmdLines);
    void batchStop();

public Q_SLOTS:
    /// Gives the editor's text to the dispatcher, line by line with empty lines kept.
    void execCmdsSlot();

    void clear();
    void clearLog();

    /// Writes the editor's text as UTF-8. A file that can't be written keeps its old contents and
    /// costs one log line.
    void save(const QString& fname);

    /// Puts the file's lines into the editor, each with a line end. A file that can't be opened,
    /// is over 16 MB, or has more lines or longer ones than the editor can show costs one log line
    /// and leaves the text as it was.
    void load(const QString& fname);

    /// Shows a text, with line ends of its own, in the log.
    void Log(const QString& LogMsg);

    /// The batch file that the command line names: as load().
    void setBatchFile(const QString& fname);

    /// Unattended start: once the run of the configuration's own lines has come to its end, the
    /// editor's text is started by what amounts to "Stop", then "Exec.". "Stop" before that calls
    /// the start off.
    void execBatchSlot();

    /// Shows a command that is none in the log.
    void showCmdErr(const CmdLine& cmd);

private:
    QFileDialog* newDialog(QFileDialog::AcceptMode mode);
    void firstRunEnded();
    void startUnattended();

    std::unique_ptr<Ui_BatchCtrl> ui_;
    QPointer<BatchDispatcher> dispatcher_;
    QStringList cmdLines_; ///< the last text given to the dispatcher
    LateDialog* saveDialog_;
    LateDialog* loadDialog_;
    bool firstRunEnded_ = false;
    bool startPending_ = false; ///< execBatchSlot() waits for the end of the first run
};
