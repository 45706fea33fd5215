#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "analysis/diagnostics/Analyzer2.h"
#include "analysis/lcf/LcfSection.h"
#include "app/CoverPages.h"
#include "app/MenuBar.h"
#include "app/Messages.h"
#include "app/Panels.h"
#include "app/Sessions.h"
#include "app/Shell.h"
#include "app/StepBar.h"
#include "app/StepWatch.h"
#include "app/Workbench.h"
#include "app/WorkbenchStore.h"
#include "batch/BatchCtrl.h"
#include "batch/CommandFailure.h"
#include "batch/HistoryPanel.h"
#include "calibration/CalibCtrl.h"
#include "common/Settings.h"
#include "conduct/AnalysisConductor.h"
#include "conduct/ArithmeticConductor.h"
#include "conduct/BatchConductor.h"
#include "conduct/CalibConductor.h"
#include "conduct/CursorConductor.h"
#include "conduct/DarkConductor.h"
#include "conduct/DiagnosticsConductor.h"
#include "conduct/ExplainConductor.h"
#include "conduct/ExportConductor.h"
#include "conduct/FolderConductor.h"
#include "conduct/RegistrationConductor.h"
#include "conduct/SaveConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "conduct/ViewConductor.h"
#include "conduct/WalkConductor.h"
#include "display/ColorBar.h"
#include "display/FileDialogs.h"
#include "display/FolderDrop.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/WelcomePage.h"
#include "display/XafsView.h"
#include "output/SaveBox.h"
#include "output/SaveDataCfg.h"
#include "registration/ImgProc.h"
#include "selection/DataBox.h"
#include "selection/RowCommands.h"
#include "selection/SelectDataFiles.h"
#include "selection/SpectrumBox.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const auto programName = QStringLiteral("Morvenkite");
constexpr QSize firstSize(1280, 800); ///< of a window that nobody has placed

/// What the docks lie round: the image, with room for the pages that cover it.
QWidget* newCentre(ImageBox& box)
{
    auto* const centre = new QWidget;
    centre->setObjectName(QStringLiteral("ImagePanel"));
    auto* const layout = new QVBoxLayout(centre);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(&box);
    return centre;
}

} // namespace

Body::Body(QWidget* parent)
    : QMainWindow(parent)
{
    setObjectName(QStringLiteral("Body"));
    setWindowTitle(programName);
    resize(firstSize);
    panels_ = std::make_unique<Panels>(book_);
    theColorBar = panels_->imageBox->bar();
    workbench_ = new Workbench(*this, *panels_, *newCentre(*panels_->imageBox));
    coverPages_ = new CoverPages(*centralWidget());
    makeConductors();
    makeWorkConductors();
    wireBatch();
    makeShell();
    wireSteps();
    loadDefaultErrPoints();
    bindCommands(batch_->book());
    batch_->startConfigBatch();
}

Body::~Body()
{
    // Nothing is painted any more, and the bar goes behind the members.
    theColorBar = nullptr;
}

void Body::makeConductors()
{
    Panels& p = *panels_;
    reader_ = std::make_unique<SourceReader>(SourceReader::Parts{
        data_, shiftMap_, *p.dataBox, *p.spectrumBox, *p.imageBox, *p.calibCtrl});
    stacks_ = std::make_unique<StackConductor>(data_, *p.dataBox, *p.batchCtrl);
    dark_ = std::make_unique<DarkConductor>(data_, *reader_, *p.dataBox, *p.imageBox, *p.bgView,
                                            *stacks_);
    view_ = std::make_unique<ViewConductor>(data_, book_, *reader_, *p.imageBox, *p.saveBox,
                                            *p.analyzer, *stacks_);
    cursor_ = std::make_unique<CursorConductor>(
        CursorConductor::Parts{data_, *reader_, *p.spectrumBox, *p.imageBox, *p.analyzer,
                               *p.calibCtrl, *p.xafsView},
        *stacks_, *dark_, *view_);
    folders_ = std::make_unique<FolderConductor>(
        FolderConductor::Parts{data_, *p.dataBox, *p.spectrumBox, *p.imageBox, *p.analyzer,
                               coverPages_->question()},
        *stacks_, *dark_, *view_, *cursor_);
}

void Body::makeWorkConductors()
{
    Panels& p = *panels_;
    walks_ = std::make_unique<WalkConductor>(*reader_, *stacks_, WalkThreads);
    calibration_ = std::make_unique<CalibConductor>(
        CalibConductor::Parts{data_, shiftMap_, book_, *reader_, *p.spectrumBox, *p.calibCtrl},
        *cursor_, *walks_);
    analysis_ = std::make_unique<AnalysisConductor>(
        AnalysisConductor::Parts{book_, *reader_, *p.analyzer}, *view_, *cursor_, *walks_);
    arithmetic_ = std::make_unique<ArithmeticConductor>(
        ArithmeticConductor::Parts{book_, *reader_, p.analyzer->arithmetic()}, *view_,
        *calibration_);
    diagnostics_ = std::make_unique<DiagnosticsConductor>(
        DiagnosticsConductor::Parts{data_, *p.analyzer2, WalkThreads}, *stacks_, *dark_);
    explaining_ =
        std::make_unique<ExplainConductor>(book_, *reader_, *p.imageBox, *stacks_, *view_);
    saving_ = std::make_unique<SaveConductor>(
        SaveConductor::Parts{data_, book_, *p.imageBox, *p.saveBox, *p.saveDataCfg, *p.analyzer},
        *view_, *this);
    exporting_ = std::make_unique<ExportConductor>(
        ExportConductor::Parts{data_, *reader_, *p.saveBox}, *stacks_, *walks_, *this);
    registration_ = std::make_unique<RegistrationConductor>(
        RegistrationConductor::Parts{data_, *p.imageBox, *p.imgProc}, *stacks_, *view_, *walks_);
    batch_ = std::make_unique<BatchConductor>(*p.batchCtrl);
    connect(analysis_.get(), &AnalysisConductor::resultsWanted, view_.get(),
            &ViewConductor::showResults);
}

/// The batch watches the progress of those who work, and ends an unattended run behind them.
void Body::wireBatch()
{
    RunWatch* const watch = &panels_->batchCtrl->watch();
    connect(stacks_.get(), &StackConductor::progressed, watch, &RunWatch::progressed);
    connect(analysis_.get(), &AnalysisConductor::progressed, watch, &RunWatch::progressed);
    connect(calibration_.get(), &CalibConductor::progressed, watch, &RunWatch::progressed);
    connect(exporting_.get(), &ExportConductor::progressed, watch, &RunWatch::progressed);
    connect(registration_.get(), &RegistrationConductor::progressed, watch, &RunWatch::progressed);
    connect(diagnostics_.get(), &DiagnosticsConductor::progressed, watch, &RunWatch::progressed);
    connect(calibration_.get(), &CalibConductor::runningChanged, batch_.get(),
            &BatchConductor::setBusy);
    connect(batch_.get(), &BatchConductor::runThrough, calibration_.get(),
            &CalibConductor::tellUnheardStop);
}

void Body::makeShell()
{
    shell_ = std::make_unique<Shell>(Shell::Parts{*this, *panels_, data_, *stacks_, *folders_,
                                                  *calibration_, *analysis_, *diagnostics_,
                                                  *exporting_, *registration_, *saving_, *batch_});
    sessions_ = new Sessions(batch_->book().history(), *panels_->batchCtrl, *this);
    menus_ = std::make_unique<MenuBar>(
        MenuBar::Parts{*this, *panels_, *workbench_, *shell_, *folders_, *saving_, *sessions_});
    connect(batch_.get(), &BatchConductor::finishing, this, &Body::endQuietly);
    connect(new FolderDrop(this), &FolderDrop::dropped, folders_.get(), &FolderConductor::open);
    connect(saving_.get(), &SaveConductor::savedChanged, this, &Body::closeWhenSaved);
    connect(saving_.get(), &SaveConductor::cancelled, this, [this] { closesWhenSaved_ = false; });
    const WelcomePage& welcome = coverPages_->welcome();
    connect(&welcome, &WelcomePage::openI1, panels_->dataBox->i1Row()->dialog(), &LateDialog::show);
    connect(&welcome, &WelcomePage::openI0, panels_->dataBox->i0Row()->dialog(), &LateDialog::show);
    connect(&welcome, &WelcomePage::openSession, sessions_, &Sessions::open);
    connect(&welcome, &WelcomePage::openBatch, menus_.get(), &MenuBar::openBatchFile);
}

/// The states follow the facts, and what a state offers is done.
void Body::wireSteps()
{
    steps_ = std::make_unique<StepWatch>(StepWatch::Parts{
        data_, *panels_, *stacks_, *dark_, *cursor_, *calibration_, *analysis_, *saving_});
    connect(steps_.get(), &StepWatch::changed, workbench_, &Workbench::setStates);
    workbench_->setStates(steps_->states());
    connect(workbench_, &Workbench::mendAsked, this, &Body::mend);
    connect(workbench_, &Workbench::openFolderAsked, folders_.get(),
            &FolderConductor::chooseFolder);
    // The page that goes had the keys, and nobody would have them.
    connect(folders_.get(), &FolderConductor::questionClosed, this,
            [this] { panels_->imageBox->area()->setFocus(Qt::OtherFocusReason); });
    connect(folders_.get(), &FolderConductor::loaded, this, [this] {
        if (steps_->states().front().isDone())
            workbench_->openStep(Step::Analysis);
    });
}

void Body::bindCommands(CommandBook& book)
{
    bindRowCommands(book, *panels_->dataBox->i1Row(), *panels_->dataBox->i0Row());
    book.bindEnter();
    panels_->dataBox->bindCommands(book);
    panels_->spectrumBox->bindCommands(book);
    panels_->calibCtrl->bindCommands(book);
    panels_->analyzer->bindCommands(book);
    panels_->analyzer2->bindCommands(book);
    panels_->saveDataCfg->bindCommands(book);
    panels_->imgProc->bindCommands(book);
    stacks_->bindCommands(book);
    dark_->bindCommands(book);
    view_->bindCommands(book);
    cursor_->bindCommands(book);
    calibration_->bindCommands(book);
    analysis_->bindCommands(book);
    arithmetic_->bindCommands(book);
    diagnostics_->bindCommands(book);
    explaining_->bindCommands(book);
    saving_->bindCommands(book);
    exporting_->bindCommands(book);
    registration_->bindCommands(book);
    shell_->bindCommands(book);
    panels_->history->follow(book.history());
    connect(panels_->history.get(), &HistoryPanel::runAsked, panels_->batchCtrl.get(),
            &BatchCtrl::runText);
}

/// The row of the stack whose energies are in doubt.
SelectDataFiles& Body::rowInDoubt() const
{
    const DataBox& box = *panels_->dataBox;
    return steps_->facts().i1.energyDoubt.isEmpty() ? *box.i0Row() : *box.i1Row();
}

void Body::mend(Mend mend)
{
    switch (mend) {
    case Mend::SetEnergies:
        workbench_->openStep(Step::Data);
        rowInDoubt().showEnergySetup();
        break;
    case Mend::UseI0:
        panels_->spectrumBox->setUseI0(true);
        break;
    case Mend::LoadReferences:
        panels_->analyzer->lcf().chooseReferences();
        break;
    case Mend::Analyze:
        analysis_->start(analysis_->walkToStart());
        break;
    case Mend::SaveData:
        workbench_->openStep(Step::Save);
        saving_->showSaveAllDataDialog();
        break;
    case Mend::None:
        break;
    }
}

void Body::loadDefaultErrPoints()
{
    CmdLine key;
    key.word = QStringLiteral("ErrPoints");
    batch_->recordFaults(key, DarkConductor::loadDefaultErrPoints(failurePlace(key)));
    diagnostics_->showErrPMask();
}

BatchCtrl* Body::batchCtrl() const
{
    return panels_->batchCtrl.get();
}

Analyzer* Body::analyzer() const
{
    return panels_->analyzer.get();
}

void Body::attend()
{
    attended_ = true;
    view_->setUnattended(false);
    analysis_->setChoosesMap(true);
    panels_->analyzer->setNormalize(true); // what is compared in fits
    shell_->groupDialogs();
    restoreWorkbench(*this, *workbench_, *panels_->imageBox);
    coverPages_->welcome().setLastSession(recentSessions().value(0));
    coverPages_->follow(data_, *stacks_, *folders_, *view_);
    batch_->book().history().begin();
}

void Body::endQuietly()
{
    endsQuietly_ = true;
    QApplication::closeAllWindows();
}

/// Asks, once, what is to become of maps of which none is saved; false when the window may close.
bool Body::keepsUnsavedMaps()
{
    const bool asks = attended_ && !endsQuietly_ && !analysis_->isWalking() &&
                      analysis_->mapsWhole() && saving_->mapsToSave() > 0 &&
                      saving_->savedMaps() == 0;
    if (!asks)
        return false;
    QMessageBox question(QMessageBox::Warning, tr("Maps Not Saved"),
                         tr("The maps of the last analysis are not saved."),
                         QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    question.setDefaultButton(QMessageBox::Save);
    switch (question.exec()) {
    case QMessageBox::Discard:
        return false;
    case QMessageBox::Save:
        closesWhenSaved_ = true;
        workbench_->openStep(Step::Save);
        saving_->showSaveAllDataDialog();
        return true;
    default:
        return true;
    }
}

void Body::closeWhenSaved()
{
    // Nobody expects the window to close behind an attempt that failed.
    if (!saving_->lastFault().isEmpty())
        closesWhenSaved_ = false;
    if (!closesWhenSaved_ || saving_->savedMaps() < saving_->mapsToSave())
        return;
    closesWhenSaved_ = false;
    QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

void Body::closeEvent(QCloseEvent* event)
{
    if (keepsUnsavedMaps()) {
        event->ignore();
        return;
    }
    if (attended_)
        saveWorkbench(*this, *workbench_, *panels_->imageBox);
    attended_ = false;
    batch_->close();
    stacks_->requestStop();
    analysis_->stop2DAnalysis();
    calibration_->stop();
    exporting_->stop();
    registration_->stop();
    diagnostics_->stop();
    event->accept();
}
