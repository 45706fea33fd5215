#include "batch/BatchCtrl.h"

#include "batch/BatchDispatcher.h"
#include "common/FileNames.h"
#include "common/SafeFile.h"
#include "common/Settings.h"
#include "common/TextFile.h"
#include "display/FileDialogs.h"
#include "ui_BatchCtrl.h"

#include <QDebug>
#include <QFontDatabase>

namespace {

constexpr qint64 longestFile = 16 * 1024 * 1024;
// An editor lays out a line as a whole and keeps a record for each: beyond these the window would
// stand still for minutes.
constexpr int longestLine = 1000000;
constexpr int mostLines = 1000000;
// A run that never ends must not fill the memory with its log.
constexpr int mostLogLines = 100000;

/// One log line's worth of what speaks against showing the text; empty when nothing does.
QString faultOf(const QString& text)
{
    int lines = 1;
    int lineStart = 0;
    for (int i = 0; i <= text.size(); ++i) {
        if (i < text.size() && text[i] != QLatin1Char('\n'))
            continue;
        if (i - lineStart > longestLine)
            return QStringLiteral("has a line that is too long");
        lineStart = i + 1;
        if (++lines > mostLines)
            return QStringLiteral("has too many lines");
    }
    return {};
}

} // namespace

BatchCtrl::BatchCtrl(QWidget* parent)
    : QMainWindow(parent)
    , ui_(std::make_unique<Ui_BatchCtrl>())
    , saveDialog_(new LateDialog([this] { return newDialog(QFileDialog::AcceptSave); }, this))
    , loadDialog_(new LateDialog([this] { return newDialog(QFileDialog::AcceptOpen); }, this))
{
    ui_->setupUi(this);
    const QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    ui_->BatchCmds->setFont(font);
    ui_->BatchLogs->setFont(font);
    ui_->BatchLogs->setMaximumBlockCount(mostLogLines);
    connect(ui_->Save, &QPushButton::clicked, saveDialog_, &LateDialog::show);
    connect(ui_->Load, &QPushButton::clicked, loadDialog_, &LateDialog::show);
    connect(saveDialog_, &LateDialog::fileSelected, this, &BatchCtrl::save);
    connect(loadDialog_, &LateDialog::fileSelected, this, &BatchCtrl::load);
    connect(ui_->Exec, &QPushButton::clicked, this, &BatchCtrl::execCmdsSlot);
    connect(ui_->Stop, &QPushButton::clicked, this, [this] {
        startPending_ = false;
        Q_EMIT batchStop();
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
    connect(dispatcher_, &BatchDispatcher::runEnded, this, &BatchCtrl::firstRunEnded);
    dispatcher_->setLogPaced(true);
}

void BatchCtrl::execCmdsSlot()
{
    cmdLines_ = ui_->BatchCmds->toPlainText().split(QLatin1Char('\n'));
    Q_EMIT doDispatchCmds(cmdLines_);
}

void BatchCtrl::execBatchSlot()
{
    if (firstRunEnded_ || !dispatcher_)
        startUnattended();
    else
        startPending_ = true;
}

void BatchCtrl::firstRunEnded()
{
    firstRunEnded_ = true;
    if (startPending_)
        startUnattended();
}

void BatchCtrl::startUnattended()
{
    startPending_ = false;
    Q_EMIT batchStop();
    execCmdsSlot();
}

void BatchCtrl::clear()
{
    ui_->BatchCmds->clear();
}

void BatchCtrl::clearLog()
{
    ui_->BatchLogs->clear();
}

void BatchCtrl::save(const QString& fname)
{
    writeFile(withExtension(fname, QStringLiteral("bat")), ui_->BatchCmds->toPlainText().toUtf8());
}

void BatchCtrl::load(const QString& fname)
{
    QString text;
    const TextFileResult result = readTextFile(fname, longestFile, text);
    if (result == TextFileResult::CantOpen) {
        qDebug() << "Can't open batch file" << fname;
        return;
    }
    const QString fault =
        result == TextFileResult::TooLong ? QStringLiteral("is too long") : faultOf(text);
    if (!fault.isEmpty()) {
        qDebug().noquote() << "Batch file" << fname << fault << "and is not loaded";
        return;
    }
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    ui_->BatchCmds->setPlainText(text);
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
