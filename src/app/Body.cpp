#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "app/MenuBar.h"
#include "app/Messages.h"
#include "app/Shell.h"
#include "app/Windows.h"
#include "batch/BatchCtrl.h"
#include "batch/CommandFailure.h"
#include "calibration/CalibCtrl.h"
#include "common/Settings.h"
#include "conduct/AnalysisConductor.h"
#include "conduct/BatchConductor.h"
#include "conduct/CalibConductor.h"
#include "conduct/CursorConductor.h"
#include "conduct/DarkConductor.h"
#include "conduct/SaveConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "conduct/ViewConductor.h"
#include "conduct/WalkConductor.h"
#include "display/ColorBar.h"
#include "display/ImageBox.h"
#include "display/XafsView.h"
#include "output/SaveBox.h"
#include "output/SaveDataCfg.h"
#include "selection/DataBox.h"
#include "selection/RowCommands.h"
#include "selection/SpectrumBox.h"
#include "ui_Body.h"

#include <QCloseEvent>

Body::Body(QWidget* parent)
    : QMainWindow(parent)
    , ui_(std::make_unique<Ui_Body>())
{
    ui_->setupUi(this);
    theColorBar = ui_->ImageGroup->bar();
    windows_ = std::make_unique<Windows>();
    makeConductors();
    wireBatch();
    makeShell();
    bindCommands(batch_->book());
    disableMissingWindows();
    loadDefaultErrPoints();
    batch_->startConfigBatch();
}

Body::~Body()
{
    // Nothing is painted any more, and the bar goes behind the members.
    theColorBar = nullptr;
}

void Body::makeConductors()
{
    DataBox& dataBox = *ui_->DataGroup;
    SpectrumBox& spectrumBox = *ui_->SpectrumGroup;
    ImageBox& imageBox = *ui_->ImageGroup;
    SaveBox& saveBox = *ui_->SaveGroup;
    Windows& w = *windows_;
    reader_ = std::make_unique<SourceReader>(
        SourceReader::Parts{data_, shiftMap_, dataBox, spectrumBox, imageBox, *w.calibCtrl});
    stacks_ = std::make_unique<StackConductor>(data_, dataBox, *w.batchCtrl);
    dark_ =
        std::make_unique<DarkConductor>(data_, *reader_, dataBox, imageBox, *w.bgView, *stacks_);
    view_ = std::make_unique<ViewConductor>(data_, book_, *reader_, imageBox, saveBox, *w.analyzer,
                                            *stacks_);
    cursor_ = std::make_unique<CursorConductor>(CursorConductor::Parts{data_, *reader_, spectrumBox,
                                                                       imageBox, *w.analyzer,
                                                                       *w.calibCtrl, *w.xafsView},
                                                *stacks_, *dark_, *view_);
    walks_ = std::make_unique<WalkConductor>(*reader_, *stacks_, WalkThreads);
    calibration_ = std::make_unique<CalibConductor>(
        CalibConductor::Parts{data_, shiftMap_, book_, *reader_, spectrumBox, *w.calibCtrl},
        *cursor_, *walks_);
    analysis_ = std::make_unique<AnalysisConductor>(
        AnalysisConductor::Parts{book_, *reader_, *w.analyzer}, *view_, *cursor_, *walks_);
    saving_ = std::make_unique<SaveConductor>(
        SaveConductor::Parts{data_, book_, imageBox, saveBox, *w.saveDataCfg, *w.analyzer}, *view_,
        *this);
    batch_ = std::make_unique<BatchConductor>(*w.batchCtrl);
}

/// The batch watches the progress of those who work, and ends an unattended run behind them.
void Body::wireBatch()
{
    RunWatch* const watch = &windows_->batchCtrl->watch();
    connect(stacks_.get(), &StackConductor::progressed, watch, &RunWatch::progressed);
    connect(analysis_.get(), &AnalysisConductor::progressed, watch, &RunWatch::progressed);
    connect(calibration_.get(), &CalibConductor::progressed, watch, &RunWatch::progressed);
    connect(calibration_.get(), &CalibConductor::runningChanged, batch_.get(),
            &BatchConductor::setBusy);
    connect(batch_.get(), &BatchConductor::runThrough, calibration_.get(),
            &CalibConductor::tellUnheardStop);
}

void Body::makeShell()
{
    shell_ = std::make_unique<Shell>(*this, *windows_, data_, *stacks_, *analysis_);
    menus_ = std::make_unique<MenuBar>(
        MenuBar::Parts{*this, *windows_, *ui_->DataGroup, *ui_->ImageGroup, *saving_});
    connect(batch_.get(), &BatchConductor::finishing, shell_.get(), &Shell::saveWindows);
}

void Body::bindCommands(CommandBook& book)
{
    bindRowCommands(book, *ui_->DataGroup->i1Row(), *ui_->DataGroup->i0Row());
    ui_->SpectrumGroup->bindCommands(book);
    windows_->calibCtrl->bindCommands(book);
    windows_->analyzer->bindCommands(book);
    windows_->saveDataCfg->bindCommands(book);
    stacks_->bindCommands(book);
    dark_->bindCommands(book);
    view_->bindCommands(book);
    cursor_->bindCommands(book);
    calibration_->bindCommands(book);
    analysis_->bindCommands(book);
    saving_->bindCommands(book);
    shell_->bindCommands(book);
}

/// Buttons of windows that this version does not have yet.
void Body::disableMissingWindows()
{
    ui_->ShowImgProc->setEnabled(false);
    ui_->ShowAnalyzer2->setEnabled(false);
    ui_->ShowAnalyzer2->setVisible(ShowAnalyzer2Button);
}

void Body::loadDefaultErrPoints()
{
    CmdLine key;
    key.word = QStringLiteral("ErrPoints");
    batch_->recordFaults(key, DarkConductor::loadDefaultErrPoints(failurePlace(key)));
}

BatchCtrl* Body::batchCtrl() const
{
    return windows_->batchCtrl.get();
}

Analyzer* Body::analyzer() const
{
    return windows_->analyzer.get();
}

void Body::restoreWindows()
{
    shell_->restoreWindows();
}

void Body::closeEvent(QCloseEvent* event)
{
    shell_->saveWindows();
    batch_->close();
    stacks_->requestStop();
    analysis_->stop2DAnalysis();
    calibration_->stop();
    for (QWidget* window : windows_->all())
        window->close();
    event->accept();
}
