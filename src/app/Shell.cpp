#include "app/Shell.h"

#include "analysis/Analyzer.h"
#include "analysis/arithmetic/ArithmeticSection.h"
#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfSection.h"
#include "app/Messages.h"
#include "app/NoticeBar.h"
#include "app/Panels.h"
#include "app/ProgressSum.h"
#include "app/Screenshot.h"
#include "batch/BatchCtrl.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "calibration/CalibCtrl.h"
#include "common/Fault.h"
#include "common/SafeInt.h"
#include "common/Settings.h"
#include "conduct/AnalysisConductor.h"
#include "conduct/BatchConductor.h"
#include "conduct/CalibConductor.h"
#include "conduct/DiagnosticsConductor.h"
#include "conduct/ExportConductor.h"
#include "conduct/FolderConductor.h"
#include "conduct/RegistrationConductor.h"
#include "conduct/SaveConductor.h"
#include "conduct/StackConductor.h"
#include "display/FileDialogs.h"
#include "display/PanelDock.h"
#include "display/XafsFileSelect.h"
#include "display/XafsView.h"
#include "image/Measurement.h"
#include "selection/SelectDataFilesAdditionalSetup.h"

#include <QFileInfo>
#include <QMainWindow>
#include <QPushButton>
#include <QStatusBar>

namespace {

const auto batchKind = QStringLiteral("batches"); ///< of files, see fileKind()

constexpr int progressBarWidth = 220; ///< [pixels]
constexpr int finePercent = 100;      ///< steps of the bar in 1 % of a walk
constexpr int blinkMs = 200;          ///< what is over sooner is not worth a Stop

} // namespace

Shell::Shell(const Parts& parts)
    : parts_(parts)
{
    setupStatusBar();
    connectNotices();
    connectProgress();
    connectProgressOfWalks();
    connectExport();
    connectDarkCheck();
    nameReferenceDialogs();
    connect(parts_.panels.analyzer.get(), &Analyzer::rowAdded, this, &Shell::takeReferenceRow);
}

void Shell::bindCommands(CommandBook& book)
{
    book.action(ExCmdScreenshot, [this](const CmdLine& c) {
        saveScreenshot(parts_.panels.all(), c.arg(0), c.arg(1));
    });
}

void Shell::setupStatusBar()
{
    QStatusBar* const bar = parts_.window.statusBar();
    bar->setSizeGripEnabled(false);
    notices_ = new NoticeBar;
    bar->addWidget(notices_, 1);
    connect(notices_, &NoticeBar::clicked, this,
            [this] { raisePanel(parts_.panels.messages.get()); });
    progress_ = new ProgressSum;
    progress_->setObjectName(QStringLiteral("Progress"));
    progress_->setFixedWidth(progressBarWidth);
    bar->addPermanentWidget(progress_);
    stop_ = new QPushButton(tr("Stop"));
    stop_->setObjectName(QStringLiteral("StopAll"));
    stop_->setToolTip(tr("Stops all that runs: loading, analyses, calibration, batch"));
    stop_->hide();
    bar->addPermanentWidget(stop_);
    connect(stop_, &QPushButton::clicked, this, &Shell::stopAll);
    stopShown_.setSingleShot(true);
    stopShown_.setInterval(blinkMs);
    connect(&stopShown_, &QTimer::timeout, this, &Shell::showStop);
}

void Shell::notice(const QString& text, Mark mark)
{
    notices_->notice(text, mark);
}

void Shell::connectNotices()
{
    connect(new FaultTap(this), &FaultTap::told, this,
            [this](const QString& text) { notice(text, Mark::LookHere); });
    connect(&parts_.stacks, &StackConductor::loaded, this, &Shell::tellLoaded);
    connect(&parts_.folders, &FolderConductor::notice, this,
            [this](const QString& text) { notice(text, Mark::LookHere); });
    connect(&parts_.analysis, &AnalysisConductor::ended, this, &Shell::tellAnalysis);
    connect(&parts_.calibration, &CalibConductor::runningChanged, this, &Shell::tellCalibration);
    connect(&parts_.registration, &RegistrationConductor::ended, this, &Shell::tellRegistration);
    connect(&parts_.saving, &SaveConductor::saved, this, [this](const QString& file) {
        notice(tr("Saved: %1").arg(QFileInfo(file).fileName()));
    });
    connect(&parts_.panels.batchCtrl->watch(), &RunWatch::waits, this, [this](const CmdLine& cmd) {
        notice(tr("The batch is at: %1").arg(cmd.simplified), Mark::Running);
    });
}

void Shell::tellLoaded()
{
    const ImageStack& i1 = parts_.data.i1;
    const ImageStack& i0 = parts_.data.i0;
    if (parts_.stacks.isLoading(i1) || parts_.stacks.isLoading(i0))
        return;
    const int failed = parts_.stacks.failedFiles(i1) + parts_.stacks.failedFiles(i0);
    const QString text =
        tr("%1 + %2 images are loaded").arg(i1.images.size()).arg(i0.images.size());
    if (failed == 0)
        notice(text);
    else
        notice(tr("%1, and %2 files could not be read").arg(text).arg(failed), Mark::LookHere);
}

void Shell::tellAnalysis(bool whole)
{
    if (!whole)
        notice(tr("The analysis was stopped: the maps are in part"), Mark::LookHere);
    else if (parts_.analysis.rowsOfMaps() == 0)
        notice(tr("The maps are ready"));
    else if (parts_.analysis.rowsOfMaps() == 1)
        notice(tr("Maps of 1 reference are ready"));
    else
        notice(tr("Maps of %1 references are ready").arg(parts_.analysis.rowsOfMaps()));
}

void Shell::tellCalibration(bool running)
{
    if (running)
        return;
    if (parts_.calibration.mapWhole())
        notice(tr("The energy shift map is ready, and in force"));
    else
        notice(tr("The calibration was stopped"), Mark::LookHere);
}

void Shell::tellRegistration(bool whole)
{
    if (whole)
        notice(tr("The images of the stack are moved to where they agree"));
    else
        notice(tr("The registration was stopped: no image is moved"), Mark::LookHere);
}

void Shell::connectProgress()
{
    connect(&parts_.stacks, &StackConductor::progressed, progress_,
            [this](const ImageStack* stack, int done, int total) {
                progress_->setPart(stack == &parts_.data.i1 ? ProgressPart::LoadingI1
                                                            : ProgressPart::LoadingI0,
                                   done, total);
                stopShown_.start();
            });
    const auto look = [this] {
        if (!stopShown_.isActive())
            stopShown_.start();
    };
    connect(&parts_.batch, &BatchConductor::commandStarted, this, look);
    connect(&parts_.batch, &BatchConductor::finishBatchExec, this, look);
    connect(&parts_.analysis, &AnalysisConductor::runningChanged, this, look);
    connect(&parts_.calibration, &CalibConductor::runningChanged, this, look);
    connect(&parts_.registration, &RegistrationConductor::runningChanged, this, look);
    connect(&parts_.registration, &RegistrationConductor::progressed, progress_,
            [this](int done, int total) {
                progress_->setPart(ProgressPart::Registering, done, total);
            });
    connect(&parts_.registration, &RegistrationConductor::runningChanged, this,
            [this](bool running) {
                if (!running)
                    progress_->setPart(ProgressPart::Registering, 0, 0);
            });
}

void Shell::connectProgressOfWalks()
{
    connect(parts_.panels.analyzer.get(), &Analyzer::progressChanged, this, [this](double perCent) {
        if (parts_.analysis.isWalking())
            progress_->setPart(ProgressPart::Walking, truncatedInt(finePercent * perCent),
                               100 * finePercent);
    });
    connect(&parts_.analysis, &AnalysisConductor::runningChanged, this, [this](bool running) {
        if (!running)
            progress_->setPart(ProgressPart::Walking, 0, 0);
    });
    connect(&parts_.calibration, &CalibConductor::calibProgress, this, [this](double perCent) {
        if (parts_.calibration.isRunning())
            progress_->setPart(ProgressPart::Calibrating, truncatedInt(finePercent * perCent),
                               100 * finePercent);
    });
    connect(&parts_.calibration, &CalibConductor::runningChanged, this, [this](bool running) {
        if (!running)
            progress_->setPart(ProgressPart::Calibrating, 0, 0);
    });
}

void Shell::connectExport()
{
    const ExportConductor* const exporting = &parts_.exporting;
    connect(exporting, &ExportConductor::progressed, this, [this](double perCent) {
        progress_->setPart(ProgressPart::Exporting, truncatedInt(finePercent * perCent),
                           100 * finePercent);
    });
    connect(exporting, &ExportConductor::runningChanged, this, [this](bool running) {
        stopShown_.start();
        if (!running)
            progress_->setPart(ProgressPart::Exporting, 0, 0);
    });
    connect(exporting, &ExportConductor::saved, this, [this](const QString& file) {
        notice(tr("Saved: %1").arg(QFileInfo(file).fileName()));
    });
}

void Shell::connectDarkCheck()
{
    const DiagnosticsConductor* const diagnostics = &parts_.diagnostics;
    connect(diagnostics, &DiagnosticsConductor::progressed, this, [this](double perCent) {
        progress_->setPart(ProgressPart::CheckingDark, truncatedInt(finePercent * perCent),
                           100 * finePercent);
    });
    connect(diagnostics, &DiagnosticsConductor::runningChanged, this, [this](bool running) {
        stopShown_.start();
        if (running)
            return;
        progress_->setPart(ProgressPart::CheckingDark, 0, 0);
        if (!parts_.diagnostics.outcome().isEmpty())
            notice(parts_.diagnostics.outcome());
    });
}

bool Shell::isBusy() const
{
    return parts_.stacks.isLoading(parts_.data.i1) || parts_.stacks.isLoading(parts_.data.i0) ||
           parts_.analysis.isWalking() || parts_.calibration.isRunning() ||
           parts_.exporting.isRunning() || parts_.diagnostics.isChecking() ||
           parts_.registration.isRunning() || parts_.panels.batchCtrl->watch().isWaiting();
}

void Shell::showStop()
{
    stop_->setVisible(isBusy());
}

/// The batch first: it would go on with its next line.
void Shell::stopAll()
{
    if (parts_.panels.batchCtrl->watch().isWaiting())
        parts_.panels.batchCtrl->findChild<QPushButton*>(QStringLiteral("Stop"))->click();
    parts_.stacks.stopLoads();
    parts_.analysis.stop2DAnalysis();
    parts_.calibration.stop();
    parts_.diagnostics.stop();
    parts_.exporting.stop();
    parts_.registration.stop();
    stopShown_.start();
}

void Shell::nameReferenceDialogs()
{
    int no = 0;
    for (LCFReference* row : parts_.panels.analyzer->lcf().refs()) {
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
        owner == &parts_.panels.analyzer->lcf())
        return QStringLiteral("references");
    if (qobject_cast<const SelectDataFilesAdditionalSetup*>(owner))
        return QStringLiteral("badPixels");
    if (owner == parts_.panels.batchCtrl.get())
        return batchKind;
    const bool ofMaps = owner == parts_.panels.calibCtrl.get() || owner == &parts_.window ||
                        owner == &parts_.panels.analyzer->arithmetic();
    return ofMaps ? QStringLiteral("maps") : QStringLiteral("data");
}

void Shell::groupDialogs()
{
    for (LateDialog* dialog : parts_.window.findChildren<LateDialog*>())
        groupDialog(dialog);
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
    if (dialogGroups_.isEmpty())
        return;
    const LCFReference* const row = parts_.panels.analyzer->lcf().refs().last();
    for (const XafsFileSelect* file : row->findChildren<XafsFileSelect*>())
        groupDialog(file->dialog());
}
