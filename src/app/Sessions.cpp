#include "app/Sessions.h"

#include "app/WorkbenchStore.h"
#include "batch/BatchCtrl.h"
#include "batch/BatchFile.h"
#include "batch/History.h"
#include "common/Fault.h"
#include "common/FileNames.h"
#include "common/SafeFile.h"
#include "display/FileDialogs.h"

namespace {

const auto suffix = QStringLiteral("session");

QFileDialog* newDialog(QWidget* parent, QFileDialog::AcceptMode mode)
{
    auto* const dialog = new FileDialog(parent);
    dialog->setAcceptMode(mode);
    if (mode == QFileDialog::AcceptOpen)
        dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setDefaultSuffix(suffix);
    dialog->setNameFilters(
        {Sessions::tr("Session (*.session)"), Sessions::tr("Any Files (* *.*)")});
    return dialog;
}

} // namespace

Sessions::Sessions(History& history, BatchCtrl& batch, QWidget& window)
    : QObject(&window)
    , history_(history)
    , batch_(batch)
    , saveDialog_(new LateDialog([&window] { return newDialog(&window, QFileDialog::AcceptSave); },
                                 &window))
    , openDialog_(new LateDialog([&window] { return newDialog(&window, QFileDialog::AcceptOpen); },
                                 &window))
{
    saveDialog_->setTitle(tr("Save Session"));
    openDialog_->setTitle(tr("Open Session"));
    connect(saveDialog_, &LateDialog::fileSelected, this, &Sessions::save);
    connect(openDialog_, &LateDialog::fileSelected, this, &Sessions::open);
}

void Sessions::chooseToSave()
{
    saveDialog_->show();
}

void Sessions::chooseToOpen()
{
    openDialog_->show();
}

void Sessions::save(const QString& fname)
{
    const QString file = withExtension(fname, suffix);
    QStringList lines{QStringLiteral(
        "# A session of Morvenkite, to be opened by File > Open Session or run as a batch")};
    lines += history_.state();
    if (!writeFile(file, (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8()))
        return;
    addRecentSession(file);
    Q_EMIT used(file);
}

void Sessions::open(const QString& fname)
{
    QString text;
    const QString why = readBatchFile(fname, text);
    if (!why.isEmpty()) {
        fault(why);
        return;
    }
    const QString wayBack = history_.wayBack().join(QLatin1Char('\n'));
    batch_.runText(wayBack + QLatin1Char('\n') + text);
    addRecentSession(fname);
    Q_EMIT used(fname);
}
