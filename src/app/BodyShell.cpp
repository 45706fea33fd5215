#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "analysis/LCFReference.h"
#include "app/Messages.h"
#include "app/ProgressSum.h"
#include "batch/BatchCtrl.h"
#include "calibration/CalibCtrl.h"
#include "common/SafeInt.h"
#include "common/Settings.h"
#include "common/WindowState.h"
#include "display/ElidedLabel.h"
#include "display/FileDialogs.h"
#include "display/XafsFileSelect.h"
#include "display/XafsView.h"
#include "selection/SelectDataFilesAdditionalSetup.h"

#include <QMap>
#include <QStatusBar>

namespace {

/// Pieces of work that the progress bar adds up.
enum Work
{
    LoadingI1,
    LoadingI0,
    Walking
};

const auto batchKind = QStringLiteral("batches"); ///< of files, see fileKind()

constexpr int progressBarWidth = 220; ///< [pixels]

} // namespace

void Body::setupShell()
{
    setupMessages();
    setupStatusBar();
    setupMenuBar();
    nameReferenceDialogs();
    groupDialogs();
    connect(analyzer_, &Analyzer::rowAdded, this, &Body::takeReferenceRow);
    connect(this, &Body::finishing, this, &Body::saveWindows);
}

/// The windows whose place is kept, by the names of their groups in the store; the main one first,
/// so that it does not come up over the others.
QVector<std::pair<QString, QWidget*>> Body::keptWindows()
{
    QVector<std::pair<QString, QWidget*>> kept{{QStringLiteral("Body"), this}};
    QMap<QString, int> numbers;
    const QVector<QWidget*> others = windows_ + QVector<QWidget*>{analyzer_->view()};
    for (QWidget* window : others) {
        // Two windows of one class differ by their order in the list, which is always the same.
        const QString name = window->objectName();
        const int number = ++numbers[name];
        kept.append({number == 1 ? name : name + QString::number(number), window});
    }
    return kept;
}

void Body::restoreWindows()
{
    keepsWindows_ = true;
    for (const auto& [group, window] : keptWindows()) {
        bool popUp = false; // no window has such a mode
        if (isWindowStateStored(group))
            loadWindowState(window, group, &popUp);
    }
}

void Body::saveWindows()
{
    // Once: the windows are closed one after the other, and count as hidden then.
    if (!keepsWindows_)
        return;
    keepsWindows_ = false;
    for (const auto& [group, window] : keptWindows()) {
        // A window that was never shown has no place yet.
        if (window->windowHandle())
            saveWindowState(window, group, true);
    }
}

void Body::nameReferenceDialogs()
{
    int no = 0;
    for (LCFReference* row : analyzer_->refs()) {
        for (XafsFileSelect* file : row->findChildren<XafsFileSelect*>())
            file->dialog()->setTitle(tr("Select Reference %1").arg(++no));
    }
}

/// The kind of file that a dialog is for, by the name under which its folder is kept. Pictures and
/// tables are made of maps, and saved spectra become references.
QString Body::fileKind(const LateDialog& dialog) const
{
    const QObject* const owner = dialog.parent();
    if (qobject_cast<const XafsFileSelect*>(owner) || qobject_cast<const XafsView*>(owner))
        return QStringLiteral("references");
    if (qobject_cast<const SelectDataFilesAdditionalSetup*>(owner))
        return QStringLiteral("badPixels");
    if (owner == batchCtrl_)
        return batchKind;
    return owner == calibCtrl_ || owner == this ? QStringLiteral("maps") : QStringLiteral("data");
}

/// Every dialog of files follows the folder of its kind of file.
void Body::groupDialogs()
{
    const QVector<QWidget*> windows = windows_ + QVector<QWidget*>{this, analyzer_->view()};
    for (const QWidget* window : windows) {
        for (LateDialog* dialog : window->findChildren<LateDialog*>())
            groupDialog(dialog);
    }
}

void Body::groupDialog(LateDialog* dialog)
{
    const QString kind = fileKind(*dialog);
    FDGroup*& group = dialogGroups_[kind];
    if (!group)
        group = new FDGroup(kind, kind == batchKind ? BatchRoot : DataRoot, this);
    group->add(dialog);
}

/// The dialog of the row that was added last is named and placed like those of the others.
void Body::takeReferenceRow()
{
    nameReferenceDialogs();
    for (const XafsFileSelect* file : analyzer_->refs().last()->findChildren<XafsFileSelect*>())
        groupDialog(file->dialog());
}

void Body::setupMessages()
{
    messages_ = new Messages;
    windows_.append(messages_);
}

void Body::setupStatusBar()
{
    auto* latest = new ElidedLabel;
    latest->setObjectName(QStringLiteral("LatestMessage"));
    latest->setContentsMargins(6, 0, 6, 0);
    statusBar()->addWidget(latest, 1);
    connect(messages_, &Messages::latest, latest, &ElidedLabel::setLine);

    auto* bar = new ProgressSum;
    bar->setObjectName(QStringLiteral("Progress"));
    bar->setFixedWidth(progressBarWidth);
    statusBar()->addPermanentWidget(bar);
    showProgressOf(bar);
}

void Body::showProgressOf(ProgressSum* bar)
{
    connect(i1Loader_.get(), &LoadTiff::progressed, bar,
            [bar](int done, int total) { bar->setPart(LoadingI1, done, total); });
    connect(i0Loader_.get(), &LoadTiff::progressed, bar,
            [bar](int done, int total) { bar->setPart(LoadingI0, done, total); });
    connect(analyzer_, &Analyzer::progressChanged, bar, [this, bar](double perCent) {
        if (walk_.running)
            bar->setPart(Walking, truncatedInt(perCent), 100);
    });
    connect(analyzer_, &Analyzer::contAccessChanged, bar, [bar](bool on) {
        if (!on)
            bar->setPart(Walking, 0, 0);
    });
}
