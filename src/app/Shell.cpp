#include "app/Shell.h"

#include "analysis/Analyzer.h"
#include "analysis/LCFReference.h"
#include "app/Messages.h"
#include "app/ProgressSum.h"
#include "app/Screenshot.h"
#include "app/Windows.h"
#include "batch/BatchCtrl.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "calibration/CalibCtrl.h"
#include "common/SafeInt.h"
#include "common/Settings.h"
#include "common/WindowState.h"
#include "conduct/AnalysisConductor.h"
#include "conduct/StackConductor.h"
#include "display/ElidedLabel.h"
#include "display/FileDialogs.h"
#include "display/XafsFileSelect.h"
#include "display/XafsView.h"
#include "image/Measurement.h"
#include "selection/SelectDataFilesAdditionalSetup.h"

#include <QMainWindow>
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

Shell::Shell(QMainWindow& window, Windows& windows, const Measurement& data,
             const StackConductor& stacks, const AnalysisConductor& analysis)
    : window_(window)
    , windows_(windows)
{
    ProgressSum* const bar = setupStatusBar();
    showProgressOfLoads(bar, data, stacks);
    showProgressOfWalk(bar, analysis);
    nameReferenceDialogs();
    groupDialogs();
    connect(windows_.analyzer.get(), &Analyzer::rowAdded, this, &Shell::takeReferenceRow);
}

void Shell::bindCommands(CommandBook& book)
{
    book.action(ExCmdScreenshot, [](const CmdLine& c) { saveScreenshot(c.arg(0), c.arg(1)); });
}

/// The windows whose place is kept, by the names of their groups in the store; the main one first,
/// so that it does not come up over the others.
QVector<std::pair<QString, QWidget*>> Shell::keptWindows() const
{
    QVector<std::pair<QString, QWidget*>> kept{{QStringLiteral("Body"), &window_}};
    QMap<QString, int> numbers;
    const QVector<QWidget*> others = windows_.all() + QVector<QWidget*>{windows_.analyzer->view()};
    for (QWidget* window : others) {
        // Two windows of one class differ by their order in the list, which is always the same.
        const QString name = window->objectName();
        const int number = ++numbers[name];
        kept.append({number == 1 ? name : name + QString::number(number), window});
    }
    return kept;
}

void Shell::restoreWindows()
{
    keepsWindows_ = true;
    for (const auto& [group, window] : keptWindows()) {
        bool popUp = false; // no window has such a mode
        if (isWindowStateStored(group))
            loadWindowState(window, group, &popUp);
    }
}

void Shell::saveWindows()
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

void Shell::nameReferenceDialogs()
{
    int no = 0;
    for (LCFReference* row : windows_.analyzer->refs()) {
        for (XafsFileSelect* file : row->findChildren<XafsFileSelect*>())
            file->dialog()->setTitle(tr("Select Reference %1").arg(++no));
    }
}

/// The kind of file that a dialog is for, by the name under which its folder is kept. Pictures and
/// tables are made of maps, and saved spectra become references.
QString Shell::fileKind(const LateDialog& dialog) const
{
    const QObject* const owner = dialog.parent();
    if (qobject_cast<const XafsFileSelect*>(owner) || qobject_cast<const XafsView*>(owner) ||
        owner == windows_.analyzer.get())
        return QStringLiteral("references");
    if (qobject_cast<const SelectDataFilesAdditionalSetup*>(owner))
        return QStringLiteral("badPixels");
    if (owner == windows_.batchCtrl.get())
        return batchKind;
    const bool ofMaps = owner == windows_.calibCtrl.get() || owner == &window_;
    return ofMaps ? QStringLiteral("maps") : QStringLiteral("data");
}

/// Every dialog of files follows the folder of its kind of file.
void Shell::groupDialogs()
{
    const QVector<QWidget*> all =
        windows_.all() + QVector<QWidget*>{&window_, windows_.analyzer->view()};
    for (const QWidget* window : all) {
        for (LateDialog* dialog : window->findChildren<LateDialog*>())
            groupDialog(dialog);
    }
}

void Shell::groupDialog(LateDialog* dialog)
{
    const QString kind = fileKind(*dialog);
    FDGroup*& group = dialogGroups_[kind];
    if (!group)
        group = new FDGroup(kind, kind == batchKind ? BatchRoot : DataRoot, this);
    group->add(dialog);
}

/// The dialog of the row that was added last is named and placed like those of the others.
void Shell::takeReferenceRow()
{
    nameReferenceDialogs();
    const LCFReference* const row = windows_.analyzer->refs().last();
    for (const XafsFileSelect* file : row->findChildren<XafsFileSelect*>())
        groupDialog(file->dialog());
}

/// Gives the bar of the progress.
ProgressSum* Shell::setupStatusBar()
{
    QStatusBar* const statusBar = window_.statusBar();
    auto* latest = new ElidedLabel;
    latest->setObjectName(QStringLiteral("LatestMessage"));
    latest->setContentsMargins(6, 0, 6, 0);
    statusBar->addWidget(latest, 1);
    connect(windows_.messages.get(), &Messages::latest, latest, &ElidedLabel::setLine);

    auto* bar = new ProgressSum;
    bar->setObjectName(QStringLiteral("Progress"));
    bar->setFixedWidth(progressBarWidth);
    statusBar->addPermanentWidget(bar);
    return bar;
}

void Shell::showProgressOfLoads(ProgressSum* bar, const Measurement& data,
                                const StackConductor& stacks)
{
    connect(&stacks, &StackConductor::progressed, bar,
            [bar, i1 = &data.i1](const ImageStack* stack, int done, int total) {
                bar->setPart(stack == i1 ? LoadingI1 : LoadingI0, done, total);
            });
}

void Shell::showProgressOfWalk(ProgressSum* bar, const AnalysisConductor& analysis)
{
    const Analyzer* const panel = windows_.analyzer.get();
    connect(panel, &Analyzer::progressChanged, bar, [&analysis, bar](double perCent) {
        if (analysis.isWalking())
            bar->setPart(Walking, truncatedInt(perCent), 100);
    });
    connect(panel, &Analyzer::contAccessChanged, bar, [bar](bool on) {
        if (!on)
            bar->setPart(Walking, 0, 0);
    });
}
