#include "calibration/CalibCtrl.h"

#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Crystals.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "display/FileDialogs.h"
#include "display/NumberFields.h"
#include "display/PanelDock.h"
#include "display/PanelForm.h"
#include "display/WheelGuard.h"
#include "ui_CalibCtrl.h"

#include <algorithm>

namespace {

int modeOf(const QRadioButton* victoreen)
{
    return victoreen->isChecked() ? VictLine::Victoreen : VictLine::Straight;
}

double value(const QLineEdit* field)
{
    return field->text().toDouble();
}

QFileDialog* newLoadDialog(QWidget* parent)
{
    auto* const dialog = new EShiftMapDialog(parent);
    dialog->setFileMode(QFileDialog::ExistingFile);
    return dialog;
}

QFileDialog* newSaveDialog(QWidget* parent)
{
    auto* const dialog = new EShiftMapDialog(parent);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("emp"));
    return dialog;
}

/// Breaks a caption that is far longer than another of its column, or the numbers beside them had
/// no room.
void narrowLongCaption(QLabel* caption, const QLabel* other)
{
    constexpr double shareOfFirstLine = 0.72;
    caption->setWordWrap(true);
    const int whole = caption->fontMetrics().horizontalAdvance(caption->text());
    const int width = std::max(other->sizeHint().width(), int(shareOfFirstLine * whole));
    caption->setFixedSize(width, caption->heightForWidth(width));
}

/// Enables a button, or disables it for a reason that becomes its tool tip.
void setReason(QAbstractButton* button, const QString& reason, const QString& toolTip)
{
    button->setEnabled(reason.isEmpty());
    button->setToolTip(reason.isEmpty() ? toolTip : reason);
}

} // namespace

CalibCtrl::CalibCtrl(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_CalibCtrl>())
    , loadDialog_(new LateDialog([this] { return newLoadDialog(this); }, this))
    , saveDialog_(new LateDialog([this] { return newSaveDialog(this); }, this))
    , numbers_(new NumberFields(this))
{
    ui_->setupUi(this);
    loadDialog_->setTitle(tr("Load Energy Shift Map"));
    saveDialog_->setTitle(tr("Save Energy Shift Map"));
    ui_->SelectStd->dialog()->setTitle(tr("Select Standard"));
    fillCrystals();
    ui_->SelectStd->setCaption(tr("Select Std."));
    ui_->SelectStd->showUse(false);
    fitButtons(*this);
    narrowLongCaption(ui_->DEMinLabel, ui_->XOffsetLabel);
    guardWheel(this);
    watchFields();
    setRunning(false);
    setFormerMap(false);
    showStatistics({}, {});
    const QString noMap = tr("No shift map");
    setMapReasons(noMap, noMap);
    connectForm();
}

CalibCtrl::~CalibCtrl() = default;

void CalibCtrl::watchFields()
{
    connect(numbers_, &NumberFields::changed, this, &CalibCtrl::fieldsChanged);
    numbers_->watch(ui_->EdgeEeV, tr("Edge energy of the standard"));
    numbers_->watch(ui_->DEw, tr("Initial E-range"));
    numbers_->watch(ui_->DEs, tr("E-step"));
    numbers_->watch(ui_->MinDEs, tr("Min. E-step"));
}

QStringList CalibCtrl::unreadable() const
{
    return numbers_->unreadable();
}

void CalibCtrl::fillCrystals()
{
    for (const Crystal& crystal : crystals)
        ui_->SelCrystal->addItem(QLatin1String(crystal.name), crystal.spacing);
}

void CalibCtrl::connectForm()
{
    connect(ui_->CalibTypeInnerP, &QRadioButton::toggled, ui_->InnerPCtrl, &QWidget::setEnabled);
    connect(ui_->StdBGVictreen, &QRadioButton::toggled, this, &CalibCtrl::stdBGToggled);
    connect(ui_->TargetBGVictreen, &QRadioButton::toggled, this,
            &CalibCtrl::targetBackgroundChanged);
    connect(ui_->SelectStd, &XafsFileSelect::newFile, this, &CalibCtrl::newFile);
    connect(ui_->SelectStd, &XafsFileSelect::cleared, this, &CalibCtrl::clearedStd);
    connect(ui_->StdUseHint, &QCheckBox::toggled, this, &CalibCtrl::useHint);
    connect(ui_->EdgeEeV, &QLineEdit::textChanged, this, &CalibCtrl::edgeEVChanged);
    connect(ui_->ExecCalib, &QPushButton::clicked, this, &CalibCtrl::execCalibration);
    connect(ui_->ClearMap, &QPushButton::clicked, this, &CalibCtrl::clearMap);
    connect(ui_->FormerMap, &QPushButton::clicked, this, &CalibCtrl::formerMap);
    connect(ui_->NES, &QPushButton::clicked, this, &CalibCtrl::normalizeEShift);
    connect(ui_->LoadMap, &QPushButton::clicked, loadDialog_, &LateDialog::show);
    connect(ui_->SaveMap, &QPushButton::clicked, saveDialog_, &LateDialog::show);
    connect(loadDialog_, &LateDialog::fileSelected, this, &CalibCtrl::loadEMap);
    connect(saveDialog_, &LateDialog::fileSelected, this, &CalibCtrl::saveEMap);
}

QString CalibCtrl::stdFileName() const
{
    return ui_->SelectStd->fileName();
}

CalibConditions CalibCtrl::conditions(const SuggestElm& sElm) const
{
    CalibConditions c;
    c.method =
        ui_->CalibTypeInnerP->isChecked() ? CalibMethod::InnerProduct : CalibMethod::MidPoint;
    c.range = value(ui_->DEw);
    c.step = value(ui_->DEs);
    c.minStep = value(ui_->MinDEs);
    c.backgroundMode = targetBackgroundMode();
    c.sElm = sElm;
    return c;
}

int CalibCtrl::targetBackgroundMode() const
{
    return modeOf(ui_->TargetBGVictreen);
}

int CalibCtrl::stdBackgroundMode() const
{
    return modeOf(ui_->StdBGVictreen);
}

double CalibCtrl::crystalSpacing() const
{
    return ui_->SelCrystal->currentData().toDouble();
}

QString CalibCtrl::crystalName() const
{
    return ui_->SelCrystal->currentText();
}

double CalibCtrl::edgeEV() const
{
    return value(ui_->EdgeEeV);
}

bool CalibCtrl::checksSize() const
{
    return ui_->CheckSize->isChecked();
}

void CalibCtrl::setType(int type)
{
    (type == 1 ? ui_->CalibTypeInnerP : ui_->CalibTypeDMidX)->setChecked(true);
}

void CalibCtrl::setInnerRange(double range, double step, double minStep)
{
    ui_->DEw->setText(energyText(range));
    ui_->DEs->setText(energyText(step));
    ui_->MinDEs->setText(energyText(minStep));
}

void CalibCtrl::setCrystal(int index)
{
    if (index >= 0 && index < ui_->SelCrystal->count())
        ui_->SelCrystal->setCurrentIndex(index);
    else
        fault(QStringLiteral("No crystal has the number %1").arg(index));
}

void CalibCtrl::setCheckSize(bool f)
{
    ui_->CheckSize->setChecked(f);
}

void CalibCtrl::setTargetBackground(int mode)
{
    (mode == VictLine::Victoreen ? ui_->TargetBGVictreen : ui_->TargetBGSimple)->setChecked(true);
}

void CalibCtrl::setStdBackground(int mode)
{
    (mode == VictLine::Victoreen ? ui_->StdBGVictreen : ui_->StdBGSimple)->setChecked(true);
}

void CalibCtrl::setUseHint(bool f)
{
    ui_->StdUseHint->setChecked(f);
}

void CalibCtrl::setSuggestion(const SuggestElm& elm)
{
    suggestion_ = elm;
    useHint();
}

void CalibCtrl::useHint()
{
    const bool otherCurve = standard_.setHint({suggestion_, ui_->StdUseHint->isChecked()});
    showStdMark();
    if (otherCurve && !standard_.isEmpty())
        tellStandard();
}

void CalibCtrl::showStatistics(const std::optional<CalibStatistics>& statistics,
                               const std::optional<ShiftMap::MedianAndSpread>& ofMap)
{
    const std::pair<QLineEdit*, double CalibStatistics::*> fields[] = {
        {ui_->DEMin, &CalibStatistics::min},
        {ui_->DEMax, &CalibStatistics::max},
        {ui_->DEAvr, &CalibStatistics::mean},
        {ui_->DESigma, &CalibStatistics::sigma},
        {ui_->DEMad, &CalibStatistics::mad}};
    for (const auto& [field, number] : fields)
        field->setText(statistics ? narrowText((*statistics).*number, 6) : QString());
    ui_->DEMedian->setText(ofMap ? narrowText(ofMap->median, 4) : QString());
    ui_->DESpread->setText(ofMap ? narrowText(ofMap->spread, 4) : QString());
    for (QLineEdit* field : ui_->StatisticSection->findChildren<QLineEdit*>())
        field->setCursorPosition(0);
}

void CalibCtrl::setMapReasons(const QString& noMap, const QString& notSaved)
{
    ui_->MapState->setText(noMap);
    ui_->MapState->setVisible(!noMap.isEmpty());
    setReason(ui_->NES, noMap,
              tr("Normalise E shift: take out single outliers of the map, more than 40 eV off"));
    setReason(ui_->ClearMap, noMap,
              tr("Drop the energy shift map: spectra are taken without shifts"));
    setReason(ui_->SaveMap, notSaved, tr("Save the map to a file"));
}

void CalibCtrl::setReadiness(const QString& reason)
{
    notReady_ = reason;
    showReadiness();
}

void CalibCtrl::showReadiness()
{
    const QString reason = running_ ? QString() : notReady_;
    ui_->ExecCalib->setText(running_ ? tr("Stop Calib.") : tr("Exec Calib."));
    setReason(ui_->ExecCalib, reason,
              running_ ? tr("Stop the calibration; the map keeps what is done")
                       : tr("Compare each block of the selected area with the standard"));
    ui_->Readiness->setText(reason);
    ui_->Readiness->setVisible(!reason.isEmpty());
}

void CalibCtrl::showImageGeometry(const QSize& size, const QPoint& offset)
{
    ui_->Width->setText(QString::number(size.width()));
    ui_->Height->setText(QString::number(size.height()));
    ui_->XOffset->setText(QString::number(offset.x()));
    ui_->YOffset->setText(QString::number(offset.y()));
}

void CalibCtrl::showMapFile(const QString& fname)
{
    ui_->EMPFileName->setText(fname); // its end stays in view
    ui_->EMPFileName->setToolTip(fname);
}

void CalibCtrl::setMapInterrupted(bool f)
{
    ui_->MapMark->setReasons(
        f ? tr("The calibration of this map was stopped: positions not reached have no shift")
          : QString());
}

void CalibCtrl::setFormerMap(bool f)
{
    setReason(ui_->FormerMap, f ? QString() : tr("No map was replaced yet"),
              tr("Bring back the map that the last calibration, load or clear replaced; a second "
                 "press undoes that"));
}

void CalibCtrl::setRunning(bool running)
{
    running_ = running;
    showReadiness();
}

void CalibCtrl::newFile(const QString& fname)
{
    const QString why = standard_.load(fname, stdBackgroundMode());
    if (!why.isEmpty()) {
        fault(QStringLiteral("Can't read standard file \"%1\": %2").arg(fname, why));
        ui_->SelectStd->fileNameValid(false);
        ui_->SelectStd->clear();
        return;
    }
    ui_->SelectStd->fileNameValid(true);
    stdEdge_ = fieldText(standard().midx);
    ui_->EdgeEeV->setText(stdEdge_);
    showStdMark();
    Q_EMIT newStdFileLoaded();
}

void CalibCtrl::clearedStd()
{
    standard_.clear();
    showStdMark();
    Q_EMIT standardChanged();
}

void CalibCtrl::stdBGToggled(bool /*f*/)
{
    if (standard_.isEmpty())
        return;
    standard_.setMode(stdBackgroundMode());
    tellStandard();
}

/// The standard was normalised anew: the edge field follows, unless another edge was typed in.
void CalibCtrl::tellStandard()
{
    const bool shown = ui_->EdgeEeV->text() == stdEdge_;
    stdEdge_ = fieldText(standard().midx);
    if (shown)
        ui_->EdgeEeV->setText(stdEdge_);
    showStdMark();
    Q_EMIT standardChanged();
}

void CalibCtrl::showStdMark()
{
    ui_->SelectStd->setMark(standard_.doubts().join(QLatin1Char('\n')));
}

void CalibCtrl::loadStd(const QString& fname)
{
    ui_->SelectStd->load(fname);
}

void CalibCtrl::setEdgeEV(const QString& eV)
{
    ui_->EdgeEeV->setText(eV);
}

void CalibCtrl::loadEShiftMap(const QString& fname)
{
    Q_EMIT loadEMap(fname);
}

void CalibCtrl::progress(double p)
{
    ui_->Progress->setText(QStringLiteral("%1").arg(p, 5, 'f', 1));
}

void CalibCtrl::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdCalibShowWindow, [this](const Cmd&) { raisePanel(this); });
    book.action(ExCmdCalibLoadStd, [this](const Cmd& c) {
        if (c.args.isEmpty())
            ui_->SelectStd->clear();
        else
            loadStd(c.arg(0));
    });
    book.textUnfollowed(ExCmdCalibSetEdgeEV, ui_->EdgeEeV);
    book.action(ExCmdCalibType, [this](const Cmd& c) { setType(intArg(c, 0)); });
    book.action(ExCmdCalibTargetBackground,
                [this](const Cmd& c) { setTargetBackground(intArg(c, 0)); });
    book.action(ExCmdCalibStdBackground, [this](const Cmd& c) { setStdBackground(intArg(c, 0)); });
    book.action(ExCmdCalibInnerRange, [this](const Cmd& c) {
        setInnerRange(doubleArg(c, 0), doubleArg(c, 1), doubleArg(c, 2));
    });
    book.action(ExCmdCalibCrystal, [this](const Cmd& c) { setCrystal(intArg(c, 0)); });
    book.onOff(ExCmdCalibStdHint, ui_->StdUseHint);
    book.onOff(ExCmdCalibCheckSize, ui_->CheckSize);
    tellHistory(book.history());
}

void CalibCtrl::tellHistory(History& history) const
{
    const auto number = [](int n) { return QString::number(n); };
    history.follow(ExCmdCalibStdBackground, [this, number] {
        return number(ui_->StdBGVictreen->isChecked() ? VictLine::Victoreen : VictLine::Straight);
    });
    history.follow(
        [this] {
            return QStringList{batchLine(ExCmdCalibLoadStd, {stdFileName()}),
                               batchLine(ExCmdCalibSetEdgeEV, {ui_->EdgeEeV->text()})};
        },
        History::AllTogether); // the standard brings an edge of its own
    history.follow(ExCmdCalibTargetBackground, [this, number] {
        return number(ui_->TargetBGVictreen->isChecked() ? VictLine::Victoreen
                                                         : VictLine::Straight);
    });
    history.follow(ExCmdCalibType,
                   [this, number] { return number(ui_->CalibTypeInnerP->isChecked() ? 1 : 0); });
    history.follow(ExCmdCalibCrystal,
                   [this, number] { return number(ui_->SelCrystal->currentIndex()); });
    history.follow([this] {
        QStringList numbers;
        for (const QLineEdit* field : {ui_->DEw, ui_->DEs, ui_->MinDEs})
            numbers << energyText(field->text().toDouble());
        return QStringList(batchLine(ExCmdCalibInnerRange, numbers));
    });
}
