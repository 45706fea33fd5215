#include "conduct/BatchConductor.h"

#include "batch/BatchCtrl.h"
#include "batch/BatchDispatcher.h"
#include "batch/CommandFailure.h"
#include "batch/CommandTable.h"
#include "common/Fault.h"
#include "common/Settings.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QPointer>

#include <utility>

namespace {

QString timeText(const QElapsedTimer& begun)
{
    return QStringLiteral("%1 s").arg(double(begun.elapsed()) / 1000.0, 0, 'f', 2);
}

} // namespace

BatchConductor::BatchConductor(BatchCtrl& window, QObject* parent)
    : QObject(parent)
    , window_(window)
    , dispatcher_(std::make_unique<BatchDispatcher>())
{
    dispatcher_->moveToThread(&thread_);
    thread_.start();
    // In front of the window's own slot, behind which an unattended run counts as ended.
    connect(dispatcher_.get(), &BatchDispatcher::runEnded, this, [this] {
        if (!window_.isUnattended())
            tellThrough();
    });
    window_.setDispatcher(dispatcher_.get());
    connect(dispatcher_.get(), &BatchDispatcher::execCmdSig, this, &BatchConductor::execCmdSlot);
    connect(this, &BatchConductor::finishBatchExec, dispatcher_.get(),
            &BatchDispatcher::finishBatchExec);
    connect(this, &BatchConductor::commandStarted, &window_.watch(), &RunWatch::commandStarted);
    connect(this, &BatchConductor::finishBatchExec, &window_.watch(), &RunWatch::commandEnded);
    connect(&window_, &BatchCtrl::unattendedRunEnded, this, &BatchConductor::finishWhenIdle);
    // Nobody reports the end: the program ends.
    book_.later(ExCmdQuit, [this](const CmdLine&, CommandEnd end) {
        end.leaveOpen();
        tellThrough();
        Q_EMIT finishing();
    });
}

BatchConductor::~BatchConductor()
{
    close();
    thread_.quit();
    thread_.wait();
    window_.setDispatcher(nullptr);
}

void BatchConductor::close()
{
    closing_ = true;
    dispatcher_->requestStop();
}

void BatchConductor::startConfigBatch()
{
    const QString text = configuredBatch(theCfg());
    const char* banner = " =========== Batchs in Config ==============";
    qDebug() << banner;
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        qDebug().noquote() << line;
    qDebug() << banner;
    Q_EMIT window_.doDispatchConfigCmds(text);
}

void BatchConductor::execCmdSlot(const CmdLine& cmd, bool inRem)
{
    if (closing_)
        return;
    if (inRem) {
        Q_EMIT finishBatchExec(ExCmdNone, cmd.ticket);
        return;
    }
    const CmdLine word(cmd.word);
    const EX_CMD_ID id = exCmdId(word);
    if (id == ExCmdNone) {
        if (!isKeyword(word))
            window_.showCmdErr(cmd);
        Q_EMIT finishBatchExec(ExCmdNone, cmd.ticket);
        return;
    }
    Q_EMIT commandStarted(cmd);
    carryOut(id, cmd).done();
}

/// Gives the end that is still to be told of a command that has ended.
CommandEnd BatchConductor::carryOut(EX_CMD_ID id, const CmdLine& cmd)
{
    const FaultCollector faults(failurePlace(cmd));
    const History::Hold hold(book_.history());
    CommandEnd end = book_.run(id, cmd, endOf(id, cmd));
    recordFaults(cmd, faults.faults());
    return end;
}

/// The report of the command's end, whenever it comes: its failures are recorded, and the batch
/// that waits for it goes on.
CommandEnd BatchConductor::endOf(EX_CMD_ID id, const CmdLine& cmd)
{
    const QPointer<BatchConductor> self(this);
    QElapsedTimer begun;
    begun.start();
    return CommandEnd([self, id, cmd, begun](const QStringList& failures) {
        if (!self || self->closing_)
            return;
        self->recordFaults(cmd, failures);
        if (VerboseMode)
            qDebug().noquote() << failurePlace(cmd) + timeText(begun);
        Q_EMIT self->finishBatchExec(id, cmd.ticket);
    });
}

void BatchConductor::recordFaults(const CmdLine& cmd, const QStringList& faults)
{
    window_.commandFailed(cmd, faults);
}

void BatchConductor::setBusy(bool busy)
{
    busy_ = busy;
    if (!busy && finishesWhenIdle_)
        finishWhenIdle();
}

/// Ends the program when nothing is under way any more: an unattended run is through.
void BatchConductor::finishWhenIdle()
{
    finishesWhenIdle_ = true;
    if (busy_ || closing_)
        return;
    tellThrough();
    Q_EMIT finishing();
}

void BatchConductor::tellThrough()
{
    const FaultCollector faults;
    Q_EMIT runThrough();
    recordFaults(CmdLine(), faults.faults());
}
