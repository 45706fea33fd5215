#pragma once

#include "batch/CmdLine.h"
#include "batch/CommandBook.h"

#include <QObject>
#include <QThread>

#include <memory>

class BatchCtrl;
class BatchDispatcher;

/// Executes the commands of a batch: takes them from the dispatcher, which runs in a thread of its
/// own, looks them up in the book, records what they did not do, and reports their ends.
class BatchConductor : public QObject
{
    Q_OBJECT
public:
    /// The window outlives it.
    explicit BatchConductor(BatchCtrl& window, QObject* parent = nullptr);
    ~BatchConductor() override;

    /// Where whoever carries out commands binds them.
    CommandBook& book() { return book_; }

    /// Runs the batch lines of the configuration.
    void startConfigBatch();
    /// Executes nothing any more: the program ends.
    void close();
    /// Records what could not be done in the place of a command.
    void recordFaults(const CmdLine& cmd, const QStringList& faults);

public Q_SLOTS:
    void execCmdSlot(const CmdLine& cmd, bool inRem);
    /// Work that an unattended run's end waits for is under way, or is through.
    void setBusy(bool busy);

Q_SIGNALS:
    /// A command is about to be executed.
    void commandStarted(const CmdLine& cmd);
    /// A command has come to its end; ticket is its number in the batch.
    void finishBatchExec(int id, int ticket);
    /// A run has come to its end, and faults told now still count in it.
    void runThrough();
    /// The program is to end.
    void finishing();

private:
    CommandEnd endOf(EX_CMD_ID id, const CmdLine& cmd);
    CommandEnd carryOut(EX_CMD_ID id, const CmdLine& cmd);
    void tellThrough();
    void finishWhenIdle();

    BatchCtrl& window_;
    CommandBook book_;
    QThread thread_;
    const std::unique_ptr<BatchDispatcher> dispatcher_; ///< lives in thread_
    bool busy_ = false;
    bool finishesWhenIdle_ = false; ///< an unattended run is through
    bool closing_ = false;
};
