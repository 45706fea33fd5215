#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "batch/BatchCtrl.h"
#include "batch/BatchDispatcher.h"
#include "calibration/CalibCtrl.h"
#include "common/Cfg.h"
#include "common/Settings.h"
#include "display/ColorBar.h"
#include "display/FileDialogs.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "output/SaveBox.h"
#include "output/SaveDataCfg.h"
#include "selection/DataBox.h"
#include "selection/SelectDataFiles.h"
#include "selection/SpectrumBox.h"
#include "ui_Body.h"

#include <QCloseEvent>
#include <QDebug>
#include <QPainter>

namespace {

constexpr double shiftMapDeglitchRange = 0.9;
constexpr double shiftMapDeglitchFactor = 2.0;

void registerTypes()
{
    qRegisterMetaType<XafsSpectrum>("XafsSpectrum");
    qRegisterMetaType<SuggestElm>("SuggestElm");
    qRegisterMetaType<AnalysisRequest>("AnalysisRequest");
    qRegisterMetaType<AnalysisResult>("AnalysisResult");
    qRegisterMetaType<LoadJob>("LoadJob");
    qRegisterMetaType<CmdLine>("CmdLine");
    qRegisterMetaType<EX_CMD_ID>("EX_CMD_ID");
}

} // namespace

Body::Body(QWidget* parent)
    : QMainWindow(parent)
    , ui_(std::make_unique<Ui_Body>())
    , energyShiftMap_(QStringLiteral("a2d esm"))
{
    energyShiftMap_.setDeglitchConds(shiftMapDeglitchFactor, shiftMapDeglitchRange);
    registerTypes();
    ui_->setupUi(this);
    dataBox_ = ui_->DataGroup;
    spectrumBox_ = ui_->SpectrumGroup;
    saveBox_ = ui_->SaveGroup;
    imageBox_ = ui_->ImageGroup;
    theColorBar = imageBox_->bar();
    calibCtrl_ = new CalibCtrl;
    reader_ = std::make_unique<SourceReader>(
        SourceReader::Parts{data_, shiftMap_, *dataBox_, *spectrumBox_, *imageBox_, *calibCtrl_});
    i1_.data = &data_.i1;
    i1_.row = dataBox_->i1Row();
    i0_.data = &data_.i0;
    i0_.row = dataBox_->i0Row();

    setupBatch();
    setupStacks();
    setupDark();
    setupImageView();
    setupAnalyzer();
    setupSpectrumViews();
    setupCalibration();
    setupSaving();
    disableMissingWindows();
    setupShell();
    loadDefaultErrPoints();
    passSuggestion();
    startConfigBatch();
}

Body::~Body()
{
    closing_ = true;
    i1Loader_->requestStop();
    i0Loader_->requestStop();
    dispatcher_->requestStop();
    for (QThread* thread : {&i1LoadThread_, &i0LoadThread_, &batchThread_}) {
        thread->quit();
        thread->wait();
    }
    // Images on their way in a queued signal would have no owner otherwise.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    // A field that loses its focus with the window says so to slots whose objects are gone by then.
    for (QObject* child : findChildren<QObject*>())
        child->disconnect(this);
    qDeleteAll(windows_);
    theColorBar = nullptr;
}

void Body::closeEvent(QCloseEvent* event)
{
    saveWindows();
    closing_ = true;
    i1Loader_->requestStop();
    i0Loader_->requestStop();
    dispatcher_->requestStop();
    stop2DAnalysis();
    stopCalibration();
    for (QWidget* window : qAsConst(windows_))
        window->close();
    event->accept();
}

void Body::setupBatch()
{
    dispatcher_ = std::make_unique<BatchDispatcher>();
    dispatcher_->moveToThread(&batchThread_);
    batchThread_.start();
    batchCtrl_ = new BatchCtrl;
    windows_.append(batchCtrl_);
    batchCtrl_->setDispatcher(dispatcher_.get());
    connect(dispatcher_.get(), &BatchDispatcher::execCmdSig, this, &Body::execCmdSlot);
    connect(this, &Body::finishBatchExec, dispatcher_.get(), &BatchDispatcher::finishBatchExec);
    connect(batchCtrl_, &BatchCtrl::unattendedRunEnded, this, &Body::finishWhenIdle);
    connect(this, &Body::commandStarted, &batchCtrl_->watch(), &RunWatch::commandStarted);
    connect(this, &Body::finishBatchExec, &batchCtrl_->watch(), &RunWatch::commandEnded);
}

void Body::startLoader(QThread& thread, LoadTiff& loader)
{
    loader.moveToThread(&thread);
    // The stack's own slot is connected before this, so a waiting batch goes on behind it.
    connect(&loader, &LoadTiff::finishLoadFiles, this,
            [this](EX_CMD_ID id, int ticket, int, const QStringList& faults) {
                endCommand(id, ticket, faults);
            });
    connect(&loader, &LoadTiff::progressed, &batchCtrl_->watch(), &RunWatch::progressed);
    thread.start();
}

void Body::setupStacks()
{
    i1Loader_ = std::make_unique<LoadTiff>();
    i0Loader_ = std::make_unique<LoadTiff>();
    connect(this, &Body::loadI1Files, i1Loader_.get(), &LoadTiff::loadTiffs);
    connect(this, &Body::loadI0Files, i0Loader_.get(), &LoadTiff::loadTiffs);
    connect(i1Loader_.get(), &LoadTiff::loaded, this, &Body::loadedI1);
    connect(i0Loader_.get(), &LoadTiff::loaded, this, &Body::loadedI0);
    connect(i1Loader_.get(), &LoadTiff::finishLoadFiles, this,
            [this](EX_CMD_ID, int, int jobsDone) { finishedLoadI1Files(jobsDone); });
    connect(i0Loader_.get(), &LoadTiff::finishLoadFiles, this,
            [this](EX_CMD_ID, int, int jobsDone) { finishedLoadI0Files(jobsDone); });
    startLoader(i1LoadThread_, *i1Loader_);
    startLoader(i0LoadThread_, *i0Loader_);

    connect(i1_.row, &SelectDataFiles::filesSelected, this, &Body::readI1Files);
    connect(i0_.row, &SelectDataFiles::filesSelected, this, &Body::readI0Files);
    connect(i1_.row, &SelectDataFiles::clear, this, &Body::clearI1Files);
    connect(i0_.row, &SelectDataFiles::clear, this, &Body::clearI0Files);
    for (Stack* stack : {&i1_, &i0_}) {
        connect(stack->row, &SelectDataFiles::energiesApplied, this,
                [this, stack] { applyEnergies(*stack); });
        connect(stack->row, &SelectDataFiles::currentIndexChanged, this, [this, stack](int no) {
            if (stack == &shownStack())
                showData(no);
        });
    }
}

void Body::setupDark()
{
    connect(i1_.row, &SelectDataFiles::setDarkArea, this, &Body::setI1DarkArea);
    connect(i0_.row, &SelectDataFiles::setDarkArea, this, &Body::setI0DarkArea);
    connect(i1_.row, &SelectDataFiles::updateDarkArea, this, &Body::clearUpdateI1DarkArea);
    connect(i0_.row, &SelectDataFiles::updateDarkArea, this, &Body::clearUpdateI0DarkArea);
    connect(i1_.row, &SelectDataFiles::clearDarkArea, this, &Body::clearI1DarkArea);
    connect(i0_.row, &SelectDataFiles::clearDarkArea, this, &Body::clearI0DarkArea);

    connect(dataBox_, &DataBox::darkSelected, this, &Body::selectedDark);
    connect(dataBox_, &DataBox::darkCleared, this, &Body::clearDark);
    connect(dataBox_, &DataBox::bgSelected, this, &Body::selectedBG);
    connect(dataBox_, &DataBox::bgCleared, this, &Body::clearedBG);
    connect(dataBox_, &DataBox::totalI0ofI1Selected, this, &Body::newTotalI0ofI1File);
    connect(dataBox_, &DataBox::totalI0ofI0Selected, this, &Body::newTotalI0ofI0File);
    connect(dataBox_, &DataBox::totalI0ofI1Cleared, this, [this] {
        data_.totalI0ofI1 = XafsSpectrum();
        refreshCursor();
    });
    connect(dataBox_, &DataBox::totalI0ofI0Cleared, this,
            [this] { data_.totalI0ofI0 = XafsSpectrum(); });
}

void Body::setupImageView()
{
    connect(imageBox_, &ImageBox::choiceChanged, this, &Body::dispImgSelected);
    connect(imageBox_, &ImageBox::setAll, this, &Body::cBarUpdated);
    connect(imageBox_->bar(), &ColorBar::cBarUpdating, this, &Body::cBarUpdating);
    connect(imageBox_->bar(), &ColorBar::cBarUpdated, this, &Body::cBarUpdated);
    connect(&energyShiftMap_, &Analyzed2DRes::scaleChanged, imageBox_->bar(), &ColorBar::setRange);
    connect(imageBox_->area(), &ImgDispA::viewChanged, this, &Body::showSectionsInView);
    imageBox_->area()->setEmptyText(emptyText());

    connect(imageBox_, &ImageBox::prev, this, &Body::prev);
    connect(imageBox_, &ImageBox::next, this, &Body::next);
    connect(imageBox_, &ImageBox::sliderMoved, this, &Body::sliderMoved);
    connect(imageBox_, &ImageBox::imageNumberTyped, this, [this](int no) {
        SelectDataFiles& row = *shownStack().row;
        row.select(no);
        imageBox_->showImageNumber(qMax(0, row.currentIndex()));
    });
    connect(imageBox_->area(), &ImgDispA::mouseMoved, this,
            qOverload<double, double>(&Body::showXafsSpectrum));
    connect(imageBox_->area(), &DispA::drawImage2, this, &Body::draw);
    connect(imageBox_->area(), &DispA::mouseMoved0, this, &Body::onMouseMovedInDispA);
}

/// A new window of the spectrum view's kind.
XafsView* Body::newSpectrumWindow(const QString& name, const QString& title)
{
    auto* view = new XafsView;
    view->setObjectName(name);
    view->setWindowTitle(title);
    windows_.append(view);
    return view;
}

void Body::setupSpectrumViews()
{
    xafsView_ = newSpectrumWindow(QStringLiteral("XafsView"), tr("Spectrum at the position"));
    xafsView_->show();
    bgView_ = newSpectrumWindow(QStringLiteral("BGView"), tr("BG Specturm"));

    for (Stack* stack : {&i1_, &i0_}) {
        const auto changed = [this, stack] { newExposure(*stack); };
        connect(stack->row, &SelectDataFiles::exposureChanged, this, changed);
        connect(dataBox_, &DataBox::darkExposureChanged, this, changed);
    }
    connect(spectrumBox_, &SpectrumBox::holdGapChanged, analyzer_, &Analyzer::setHoldGap);
    connect(spectrumBox_, &SpectrumBox::changed, this, &Body::refreshCursor);
}

void Body::setupAnalyzer()
{
    analyzer_ = new Analyzer;
    windows_.append(analyzer_);
    connect(ui_->ShowAnalyzer, &QPushButton::clicked, analyzer_, &Analyzer::show);
    connect(analyzer_, &Analyzer::askAnalyze, this, &Body::start2DAnalysis);
    connect(analyzer_, &Analyzer::finished, this, &Body::analyzeASpectrumFinished);
    connect(analyzer_, &Analyzer::changedSelection, this, &Body::selectedNewRef);
    connect(analyzer_, &Analyzer::scaleShown, imageBox_->bar(), &ColorBar::setRange);

    connect(saveBox_, &SaveBox::deglitch, this, &Body::deglitch);
    connect(saveBox_, &SaveBox::showDeglitchedToggled, this, [this](bool on) {
        if (Analyzed2DRes* map = analyzer_->selectedMap())
            map->selectProcImg(on);
        else if (on)
            qDebug() << "No map is chosen to be shown deglitched";
        tellShowDeglitched();
        showPixel(curX_, curY_);
        imageBox_->area()->update();
    });
    connect(saveBox_, &SaveBox::checkVals, this, &Body::showAnalyzedVals);
}

/// A dialog for files to be saved; without filters its user sets them.
LateDialog* Body::newSaveDialog(const QStringList& filters, const QString& suffix,
                                void (Body::*save)(const QString& fname))
{
    const auto make = [this, filters, suffix] {
        auto* dialog = new FileDialog(this);
        dialog->setAcceptMode(QFileDialog::AcceptSave);
        if (!filters.isEmpty())
            dialog->setNameFilters(filters);
        dialog->setDefaultSuffix(suffix);
        return dialog;
    };
    auto* dialog = new LateDialog(make, this);
    connect(dialog, &LateDialog::fileSelected, this, save);
    return dialog;
}

void Body::setupSaving()
{
    saveDataCfg_ = new SaveDataCfg;
    windows_.append(saveDataCfg_);
    saveDataDialog_ = newSaveDialog({}, {}, &Body::saveData);
    saveDataDialog_->setTitle(tr("Save Data"));
    saveAllDataDialog_ = newSaveDialog({}, {}, &Body::saveAllData);
    saveAllDataDialog_->setTitle(tr("Save All"));
    const QStringList pictures = {tr("Image File (*.png)"), tr("Any Files (* *.*)")};
    const QString png = QStringLiteral("png"); // a picture's format is told by its name
    LateDialog* const image = newSaveDialog(pictures, png, &Body::saveImage);
    image->setTitle(tr("Save Image"));
    connect(saveBox_, &SaveBox::saveImage, image, &LateDialog::show);
    LateDialog* const allImages = newSaveDialog(pictures, png, &Body::saveAllImages);
    allImages->setTitle(tr("Save All Images"));
    connect(saveBox_, &SaveBox::saveAllImages, allImages, &LateDialog::show);
    connect(saveBox_, &SaveBox::saveFlatDark, this, &Body::saveFlatDark);
    connect(saveBox_, &SaveBox::saveData, this, &Body::showSaveDataDialog);
}

/// Buttons of windows that this version does not have yet.
void Body::disableMissingWindows()
{
    ui_->ShowImgProc->setEnabled(false);
    ui_->ShowAnalyzer2->setEnabled(false);
    ui_->ShowAnalyzer2->setVisible(ShowAnalyzer2Button);
}

void Body::startConfigBatch()
{
    const QStringList lines = theCfg().linesOf(QStringLiteral("BATCH"));
    const char* banner = " =========== Batchs in Config ==============";
    qDebug() << banner;
    for (const QString& line : lines)
        qDebug().noquote() << line;
    qDebug() << banner;
    Q_EMIT batchCtrl_->doDispatchConfigCmds(lines.join(QLatin1Char('\n')));
}

/// References and standard are normalised anew when the suggestion is another.
void Body::passSuggestion()
{
    const SpectrumSettings settings = spectrumBox_->settings();
    analyzer_->setHint({settings.elm, settings.suggestForRefs});
    calibCtrl_->setSuggestion(settings.elm);
}
