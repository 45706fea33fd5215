#include "batch/BatchCtrl.h"

#include "batch/BatchCheck.h"
#include "batch/BatchDispatcher.h"
#include "batch/BatchFile.h"
#include "batch/FindBar.h"
#include "common/Fault.h"
#include "common/FileNames.h"
#include "common/SafeFile.h"
#include "common/Settings.h"
#include "common/TextItems.h"
#include "display/FileDialogs.h"
#include "display/PanelForm.h"
#include "ui_BatchCtrl.h"

#include <QDebug>
#include <QFontDatabase>
#include <QShortcut>

namespace {

// A run that never ends must not fill the memory with its log.
constexpr int mostLogLines = 100000;
constexpr int mostEditedLines = 100000;
constexpr int followMs = 100;
// The window stands still meanwhile.
constexpr int longestCheckMs = 2000;

} // namespace

BatchCtrl::BatchCtrl(QWidget* parent)
    : QMainWindow(parent)
    , ui_(std::make_unique<Ui_BatchCtrl>())
    , saveDialog_(new LateDialog([this] { return newDialog(QFileDialog::AcceptSave); }, this))
    , loadDialog_(new LateDialog([this] { return newDialog(QFileDialog::AcceptOpen); }, this))
{
    ui_->setupUi(this);
    // Two lines whatever they say: a text that is cut off is no help.
    ui_->RunState->setMinimumHeight(2 * fontMetrics().lineSpacing() + 4);
    const QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    ui_->BatchCmds->setFont(font);
    ui_->BatchLogs->setFont(font);
    ui_->BatchLogs->setMaximumBlockCount(mostLogLines);
    setupEditor();
    fitButtons(*this);
    connectButtons();
    connect(&watch_, &RunWatch::waits, this, &BatchCtrl::showWait);
    connect(&watch_, &RunWatch::waitEnded, this, [this] {
        wait_.clear();
        showState();
    });
    connect(&watch_, &RunWatch::timedOut, this, &BatchCtrl::giveUp);
    showState();
}

void BatchCtrl::setupEditor()
{
    auto* const hint = new QLabel;
    hint->setObjectName(QStringLiteral("Hint"));
    hint->setTextFormat(Qt::RichText);
    // A long one is cut off, and stands in the tool tip too: the window must not grow for it.
    hint->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    hint->hide();
    auto* const find = new FindBar(*ui_->BatchCmds);
    ui_->cmdsLayout->addWidget(hint);
    ui_->cmdsLayout->addWidget(find);
    connect(ui_->BatchCmds, &BatchEdit::hintChanged, hint, [hint](const QString& text) {
        hint->setText(text);
        hint->setToolTip(text);
        hint->setVisible(!text.isEmpty());
    });
    const std::pair<QKeySequence, void (FindBar::*)()> keys[] = {
        {QKeySequence::Find, &FindBar::open},
        {Qt::Key_F3, &FindBar::findNext},
        {Qt::SHIFT + Qt::Key_F3, &FindBar::findPrevious}};
    for (const auto& [key, act] : keys) {
        auto* const shortcut = new QShortcut(key, ui_->cmdsTab);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, find, act);
    }
    connect(ui_->BatchCmds->document(), &QTextDocument::contentsChange, this,
            [this](int, int removed, int added) {
                // Colours change nothing.
                if (removed > 0 || added > 0)
                    runsEditorsText_ = false;
            });
    follow_.setInterval(followMs);
    connect(&follow_, &QTimer::timeout, this, &BatchCtrl::followRun);
}

void BatchCtrl::followRun()
{
    const int line = dispatcher_ ? dispatcher_->currentLine() : 0;
    if (line != runningLine_) {
        runningLine_ = line;
        showState();
    }
    showRunningLine();
}

void BatchCtrl::showRunningLine()
{
    const bool known = runsEditorsText_ && runState_ == RunState::Running;
    ui_->BatchCmds->setRunningLine(known ? runningLine_ : 0);
}

void BatchCtrl::connectButtons()
{
    connect(ui_->Save, &QPushButton::clicked, saveDialog_, &LateDialog::show);
    connect(ui_->Load, &QPushButton::clicked, loadDialog_, &LateDialog::show);
    connect(saveDialog_, &LateDialog::fileSelected, this, &BatchCtrl::save);
    connect(loadDialog_, &LateDialog::fileSelected, this, &BatchCtrl::load);
    connect(ui_->Exec, &QPushButton::clicked, this, &BatchCtrl::execCmdsSlot);
    connect(ui_->Check, &QPushButton::clicked, this, &BatchCtrl::checkSlot);
    connect(ui_->Stop, &QPushButton::clicked, this, [this] {
        startPending_ = false;
        stopRun();
    });
    connect(ui_->Clear, &QPushButton::clicked, this, &BatchCtrl::clear);
    connect(ui_->ClearLog, &QPushButton::clicked, this, &BatchCtrl::clearLog);
}

BatchCtrl::~BatchCtrl()
{
    setDispatcher(nullptr);
}

QFileDialog* BatchCtrl::newDialog(QFileDialog::AcceptMode mode)
{
    auto* dialog = new QFileDialog(this);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setAcceptMode(mode);
    dialog->setWindowTitle(mode == QFileDialog::AcceptSave ? tr("Save Batch File")
                                                           : tr("Load Batch File"));
    dialog->setNameFilters({tr("Batch File (*.bat)"), tr("Any Files (* *.*)")});
    dialog->setDirectory(BatchRoot);
    return dialog;
}

void BatchCtrl::setDispatcher(BatchDispatcher* dispatcher)
{
    if (dispatcher_) {
        dispatcher_->setLogPaced(false);
        disconnect(this, nullptr, dispatcher_, nullptr);
        disconnect(dispatcher_, nullptr, this, nullptr);
    }
    dispatcher_ = dispatcher;
    if (!dispatcher_)
        return;
    connect(this, &BatchCtrl::batchStop, dispatcher_, &BatchDispatcher::batchStopSlot);
    connect(this, &BatchCtrl::doDispatchCmds, dispatcher_, &BatchDispatcher::doDispatchCmds);
    connect(dispatcher_, &BatchDispatcher::Log, this, [this](const QString& text) {
        Log(text);
        if (dispatcher_)
            dispatcher_->logShown(text.size());
    });
    connect(this, &BatchCtrl::doDispatchConfigCmds, dispatcher_,
            &BatchDispatcher::doDispatchConfigCmds);
    connect(dispatcher_, &BatchDispatcher::runEnded, this, &BatchCtrl::takeRunEnd);
    connect(dispatcher_, &BatchDispatcher::runStarted, this,
            [this] { setRunState(RunState::Running); });
    connect(dispatcher_, &BatchDispatcher::runStopped, this,
            [this] { setRunState(RunState::Idle); });
    connect(dispatcher_, &BatchDispatcher::notStarted, this,
            [this] { setRunState(RunState::Ended); });
    connect(dispatcher_, &BatchDispatcher::failed, this,
            [this](const FailureCount& failures) { failures_.add(failures); });
    dispatcher_->setLogPaced(true);
}

void BatchCtrl::execCmdsSlot()
{
    runsEditorsText_ = keptText_.isEmpty();
    Q_EMIT doDispatchCmds(text());
}

void BatchCtrl::runText(const QString& text)
{
    startPending_ = false;
    stopRun();
    otherTextRuns_ = true;
    runsEditorsText_ = false;
    Q_EMIT doDispatchCmds(text);
}

void BatchCtrl::checkSlot()
{
    BatchCheckOptions options;
    options.before = configuredBatch(theCfg());
    options.limits.milliseconds = longestCheckMs;
    Log(checkBatch(text(), options).lines(QString()).join(QLatin1Char('\n')) + QLatin1Char('\n'));
    ui_->tabWidget->setCurrentWidget(ui_->logsTab);
}

void BatchCtrl::execBatchSlot()
{
    if (firstRunEnded_ || !dispatcher_)
        startUnattended();
    else
        startPending_ = true;
}

void BatchCtrl::takeRunEnd()
{
    firstRunEnded_ = true;
    setRunState(RunState::Ended);
    if (startPending_) {
        startUnattended();
    } else if (otherTextRuns_) {
        stopRun();
    } else if (unattendedRuns_) {
        unattendedRuns_ = false;
        Q_EMIT unattendedRunEnded();
    }
}

void BatchCtrl::startUnattended()
{
    startPending_ = false;
    stopRun();
    unattendedRuns_ = true;
    execCmdsSlot();
}

void BatchCtrl::stopRun()
{
    unattendedRuns_ = otherTextRuns_ = false;
    watch_.leave();
    wait_.clear();
    // At once: who presses "Exec." behind "Stop" must find it enabled.
    setRunState(RunState::Idle);
    Q_EMIT batchStop();
}

void BatchCtrl::setRunState(RunState state)
{
    runState_ = state;
    runningLine_ = 0;
    if (state == RunState::Running)
        follow_.start();
    else
        follow_.stop();
    showState();
    showRunningLine();
}

void BatchCtrl::showState()
{
    const QString texts[] = {
        QString(), tr("A run is under way: \"Exec.\" puts this text in place of its rest"),
        tr("A run has ended: press \"Stop\", then \"Exec.\" starts the next")};
    const QString text = texts[int(runState_)];
    ui_->Exec->setEnabled(runState_ != RunState::Ended);
    ui_->Exec->setToolTip(text.isEmpty() ? tr("Run the commands") : text);
    QString state = text.isEmpty() ? tr("Idle") : text;
    if (runState_ == RunState::Running && runningLine_ > 0)
        state = tr("Running line %1").arg(runningLine_);
    ui_->RunState->setText(wait_.isEmpty() ? state : wait_);
}

void BatchCtrl::showWait(const CmdLine& cmd, const QDateTime& since)
{
    const QString time = since.toString(QStringLiteral("hh:mm:ss"));
    wait_ = cmd.lineNo > 0
                ? tr("Waiting since %1 for line %2: %3").arg(time).arg(cmd.lineNo).arg(cmd.word)
                : tr("Waiting since %1 for %2").arg(time, cmd.word);
    showState();
}

void BatchCtrl::giveUp(const CmdLine& cmd)
{
    {
        FaultCollector faults(failurePlace(cmd));
        fault(QStringLiteral("no progress for as long as -timeout allows, the run is given up"));
        commandFailed(cmd, faults.faults());
    }
    stopRun();
    Q_EMIT gaveUp();
}

void BatchCtrl::commandFailed(const CmdLine& cmd, const QStringList& reasons)
{
    QString lines;
    for (const QString& reason : reasons) {
        const CommandFailure failure(cmd, reason);
        failures_.add(failure);
        lines += batchLogText(failure);
    }
    if (!lines.isEmpty())
        Log(lines);
}

void BatchCtrl::clear()
{
    setText(QString());
}

void BatchCtrl::clearLog()
{
    ui_->BatchLogs->clear();
}

void BatchCtrl::save(const QString& fname)
{
    const FaultCollector faults;
    writeFile(withExtension(fname, QStringLiteral("bat")), text().toUtf8());
    logFaults(faults.faults());
}

void BatchCtrl::load(const QString& fname)
{
    QString text;
    const QString why = readBatchFile(fname, text);
    if (why.isEmpty()) {
        setText(text);
        return;
    }
    fault(why);
    logFaults({why});
}

/// In this window too: that is where who pressed the button looks.
void BatchCtrl::logFaults(const QStringList& faults)
{
    for (const QString& text : faults)
        Log(text + QLatin1Char('\n'));
}

QString BatchCtrl::text() const
{
    return keptText_.isEmpty() ? ui_->BatchCmds->toPlainText() : keptText_;
}

void BatchCtrl::setText(const QString& text)
{
    const int lines = text.count(QLatin1Char('\n'));
    const bool edited = lines <= mostEditedLines;
    keptText_ = edited ? QString() : text;
    ui_->BatchCmds->setReadOnly(!edited);
    ui_->BatchCmds->setPlainText(
        edited ? text
               : tr("These are %1 lines, too many to be shown. They can be run.").arg(lines));
}

void BatchCtrl::setBatchFile(const QString& fname)
{
    load(fname);
}

void BatchCtrl::Log(const QString& LogMsg)
{
    // At the cursor, wherever the user has put it, but never in place of what is selected there.
    QTextCursor cursor = ui_->BatchLogs->textCursor();
    cursor.clearSelection();
    cursor.insertText(LogMsg);
    ui_->BatchLogs->moveCursor(QTextCursor::End);
}

void BatchCtrl::showCmdErr(const CmdLine& cmd)
{
    qDebug() << "cmd" << cmd.simplified;
    Log(QStringLiteral("Err: %1\n").arg(cmd.simplified));
}
