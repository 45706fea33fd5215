#include "analysis/Analyzer.h"

#include "analysis/lcf/LCFReference.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "display/FileDialogs.h"
#include "display/NumberFields.h"
#include "display/PanelDock.h"
#include "display/PanelForm.h"
#include "display/XafsView.h"
#include "ui_Analyzer.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDebug>

namespace {

constexpr int rowsAtStart = 4;

/// Places of the fixed buttons in the image group, counted behind the rows that exist at start.
constexpr int showZId = rowsAtStart + 3;

constexpr int captionAir = 4; ///< between captions that no field holds apart [pixels]

double value(const QLineEdit* field)
{
    return field->text().toDouble();
}

void setValue(QLineEdit* field, double v)
{
    field->setText(fieldText(v));
}

QFileDialog* newLoadDialog(QWidget* parent)
{
    auto* const dialog = new FileDialog(parent);
    dialog->setWindowTitle(Analyzer::tr("Load References"));
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setNameFilters(
        {Analyzer::tr("XAFS Data File (*.dat)"), Analyzer::tr("Any Files (* *.*)")});
    return dialog;
}

} // namespace

Analyzer::Analyzer(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_Analyzer>())
    , view_(std::make_unique<XafsView>())
    , refGroup_(new QButtonGroup(this))
    , numbers_(new NumberFields(this))
    , loadDialog_(new LateDialog([this] { return newLoadDialog(this); }, this))
{
    ui_->setupUi(this);
    view_->setObjectName(QStringLiteral("AnalyzerView"));
    view_->setWindowTitle(tr("Analyzing Spectrum"));
    view_->setOthers({ViewCurve()});
    showFitCurve(false);
    for (int i = 0; i < rowsAtStart; ++i)
        addNewRef();
    refGroup_->addButton(ui_->ShowZ, showZId);
    auto* const kindGroup = new QButtonGroup(this);
    kindGroup->addButton(ui_->SelDMut);
    kindGroup->addButton(ui_->SelRatio);
    watchFields();
    placeCaptions();
    fitButtons(*this);
    showReadiness();
    connectForm();
    connectConditions();
}

Analyzer::~Analyzer() = default;

void Analyzer::closeEvent(QCloseEvent* event)
{
    view_->close();
    QFrame::closeEvent(event);
}

void Analyzer::connectForm()
{
    connect(ui_->ShowView, &QPushButton::clicked, this, [this] { raisePanel(view_.get()); });
    connect(ui_->AddRef, &QPushButton::clicked, this, &Analyzer::addNewRef);
    connect(ui_->LoadRefs, &QPushButton::clicked, loadDialog_, &LateDialog::show);
    connect(loadDialog_, &LateDialog::filesSelected, this, &Analyzer::loadReferences);
    connect(ui_->AskAnalyze, &QPushButton::clicked, this, &Analyzer::askAnalyze);
    connect(refGroup_, &QButtonGroup::idClicked, this, &Analyzer::selectedNewRef);
    connect(ui_->SelDMut, &QRadioButton::toggled, this, &Analyzer::selectedImgChanged);
    connect(ui_->SelRatio, &QRadioButton::toggled, this, &Analyzer::selectedImgChanged);
    connect(ui_->FixedScale, &QCheckBox::toggled, this, &Analyzer::scalePolicyChanged);
    for (const QLineEdit* field : {ui_->LCFRange1, ui_->LCFRange2})
        connect(field, &QLineEdit::editingFinished, this, &Analyzer::reAnalyzeSpectrum);
    for (const QLineEdit* field :
         {ui_->DMutScaleMin, ui_->DMutScaleMax, ui_->RatioScaleMin, ui_->RatioScaleMax})
        connect(field, &QLineEdit::editingFinished, this, &Analyzer::scaleChanged);
}

/// All that a walk goes by and that is the panel's; rows add theirs when they are made.
void Analyzer::connectConditions()
{
    for (const QLineEdit* field : {ui_->LCFRange1, ui_->LCFRange2})
        connect(field, &QLineEdit::textChanged, this, &Analyzer::conditionsChanged);
    for (const QCheckBox* box : {ui_->SelMLCFAnal, ui_->OwnWeights})
        connect(box, &QCheckBox::toggled, this, &Analyzer::conditionsChanged);
}

void Analyzer::watchFields()
{
    connect(numbers_, &NumberFields::changed, this, &Analyzer::fieldsChanged);
    numbers_->watch(ui_->LCFRange1, tr("Start of the fitting range"));
    numbers_->watch(ui_->LCFRange2, tr("End of the fitting range"));
    numbers_->watch(ui_->DMutScaleMin, tr("Least DMut of the fixed scale"));
    numbers_->watch(ui_->DMutScaleMax, tr("Greatest DMut of the fixed scale"));
    numbers_->watch(ui_->RatioScaleMin, tr("Least ratio of the fixed scale"));
    numbers_->watch(ui_->RatioScaleMax, tr("Greatest ratio of the fixed scale"));
}

void Analyzer::chooseReferences()
{
    loadDialog_->show();
}

QStringList Analyzer::unreadable() const
{
    return numbers_->unreadable();
}

/// Over the fields of the rows, which are all alike.
void Analyzer::placeCaptions()
{
    const LCFReference::Columns columns = refs_.first()->columns();
    ui_->Captions->setSpacing(columns.gap);
    ui_->Captions->setContentsMargins(0, 0, columns.arrow + columns.gap, 0);
    ui_->ShowUseCaption->setContentsMargins(0, 0, captionAir, 0);
    QFont small = font();
    small.setPointSizeF(0.85 * small.pointSizeF());
    for (QLabel* label : {ui_->ShowUseCaption, ui_->ReferenceCaption, ui_->ShareCaption,
                          ui_->JumpCaption, ui_->ShiftCaption})
        label->setFont(small);
    ui_->JumpCaption->setMinimumWidth(columns.jump);
    ui_->ShiftCaption->setMinimumWidth(columns.shift);
    for (QLabel* label : {ui_->ShareCaption, ui_->JumpCaption, ui_->ShiftCaption})
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void Analyzer::addNewRef()
{
    auto* const row = new LCFReference(ui_->RefBase);
    QWidget* before = refs_.isEmpty() ? ui_->AddRef : refs_.last()->tabChain().last();
    ui_->RefRows->addWidget(row);
    for (QWidget* next : row->tabChain()) {
        setTabOrder(before, next);
        before = next;
    }
    row->setHint(hint_);
    refs_.append(row);
    refGroup_->addButton(row->showButton(), refs_.size() - 1);
    addReferenceCurve();
    numbers_->watch(row->shiftField(), tr("dE of reference %1").arg(refs_.size()));
    connectRow(row);
    Q_EMIT rowAdded();
}

int Analyzer::mapKindIndex() const
{
    return ui_->SelRatio->isChecked() ? 1 : 0;
}

void Analyzer::setMapKind(int k)
{
    if (k == 0)
        ui_->SelRatio->setChecked(true);
    else if (k == 1)
        ui_->SelDMut->setChecked(true);
    else
        fault(QStringLiteral("No kind of map has the number %1").arg(k));
}

MapChoice Analyzer::mapChoice() const
{
    MapChoice choice;
    choice.rows = refs_.size();
    if (ui_->ShowZ->isChecked())
        choice.fixed = FixedImage::Zansa;
    else
        choice.row = refGroup_->checkedId();
    choice.kindIndex = mapKindIndex();
    return choice;
}

void Analyzer::setMode(int m)
{
    // By number: fits of the map, residual absorption, elements, sum of images, map arithmetic,
    // edge position.
    QCheckBox* const boxes[] = {ui_->SelMLCFAnal, nullptr, nullptr, nullptr, nullptr, nullptr};
    if (m < 0 || m >= static_cast<int>(std::size(boxes))) {
        fault(QStringLiteral("No analysis has the number %1").arg(m));
        return;
    }
    if (boxes[m] == nullptr)
        fault(QStringLiteral("Analysis not available in this version: %1").arg(m));
    for (QCheckBox* box : boxes) {
        if (box != nullptr)
            box->setChecked(box == boxes[m]);
    }
}

bool Analyzer::walkAnalysisSelected() const
{
    return ui_->SelMLCFAnal->isChecked();
}

void Analyzer::setMapsInterrupted(bool f)
{
    ui_->MapsMark->setReasons(
        f ? tr("The analysis of these maps was stopped: positions not reached are 0") : QString());
}

bool Analyzer::displaysOnTime() const
{
    return ui_->DispOnTime->isChecked();
}

void Analyzer::setOwnWeights(bool f)
{
    ui_->OwnWeights->setChecked(f);
}

void Analyzer::setHoldGap(bool f)
{
    holdGap_ = f;
}

LcfRequest Analyzer::lcfRequest(const SuggestElm& sElm, const ReadRange& scan) const
{
    LcfRequest request;
    request.rows.reserve(refs_.size());
    for (const LCFReference* row : refs_)
        request.rows.append(row->data());
    request.rangeStart = value(ui_->LCFRange1);
    request.rangeEnd = value(ui_->LCFRange2);
    request.scan = scan;
    request.holdGap = holdGap_;
    request.inWalk = contAccess_;
    request.sElm = sElm;
    return request;
}

LcfRequest Analyzer::walkRequest(const SuggestElm& sElm, const ReadRange& scan) const
{
    LcfRequest request = lcfRequest(sElm, scan);
    request.ownWeights = ui_->OwnWeights->isChecked();
    return request;
}

LcfRequest Analyzer::beginWalk(const SuggestElm& sElm, const ReadRange& scan)
{
    const LcfRequest request = walkRequest(sElm, scan);
    markLeftOut(request);
    const LcfPlan plan(request);
    for (const LcfNote& note : plan.notes()) {
        qDebug().noquote() << QStringLiteral("Reference %1 (%2): %3")
                                  .arg(note.row)
                                  .arg(refs_.at(note.row)->fileName(), note.text);
    }
    return request;
}

void Analyzer::setNormalize(bool f)
{
    view_->setNormalize(f);
}

void Analyzer::setEnergyCorrection(bool f)
{
    view_->setEnergyCorrection(f);
}

void Analyzer::setContAccess(bool f)
{
    contAccess_ = f;
    showReadiness();
    Q_EMIT contAccessChanged(f);
}

void Analyzer::setReadiness(const QString& reason, const QString& walkText)
{
    notReady_ = reason;
    walkText_ = walkText;
    showReadiness();
}

void Analyzer::showReadiness()
{
    const bool ready = contAccess_ || notReady_.isEmpty();
    ui_->AskAnalyze->setText(contAccess_ ? tr("Stop") : tr("Analyze"));
    ui_->AskAnalyze->setEnabled(ready);
    if (contAccess_)
        ui_->AskAnalyze->setToolTip(tr("Stop the analysis; the maps keep what is done"));
    else
        ui_->AskAnalyze->setToolTip(ready ? tr("Analyse each block of the selected area")
                                          : notReady_);
    ui_->WalkText->setText(ready ? walkText_ : notReady_);
}

void Analyzer::setStoppedAt(double perCent)
{
    // Cut, not rounded: a walk that was stopped never reads 100.
    ui_->Progress->setText(tr("stopped at %1 %").arg(int(perCent)));
}

bool Analyzer::isMapShown() const
{
    return refGroup_->checkedButton() != nullptr;
}

void Analyzer::showRatioOf(int row)
{
    ui_->SelRatio->setChecked(true);
    selectImageById(row);
}

void Analyzer::setProgress(double perCent)
{
    ui_->Progress->setText(QString::asprintf("%5.2f", perCent));
    Q_EMIT progressChanged(perCent);
}

void Analyzer::noticedNewZ(double z)
{
    ui_->DispZansa->setText(fieldText(z));
}

void Analyzer::selectedNewRef(int /*i*/)
{
    Q_EMIT changedSelection();
    Q_EMIT scaleAsked();
}

void Analyzer::selectedImgChanged(bool f)
{
    // Of the two buttons that a choice changes, the one that goes on tells it.
    if (f)
        Q_EMIT changedSelection();
}

void Analyzer::selectImageById(int id)
{
    QAbstractButton* const button = refGroup_->button(id);
    if (button == nullptr) {
        fault(QStringLiteral("No map has the number %1").arg(id));
        return;
    }
    button->setChecked(true);
    Q_EMIT changedSelection();
}

void Analyzer::scalePolicyChanged(bool /*f*/)
{
    scaleChanged();
}

MapScales Analyzer::scales() const
{
    return {ui_->FixedScale->isChecked(),
            {value(ui_->DMutScaleMin), value(ui_->DMutScaleMax)},
            {value(ui_->RatioScaleMin), value(ui_->RatioScaleMax)}};
}

void Analyzer::scaleChanged()
{
    Q_EMIT scalesChanged();
}

void Analyzer::setFixedScale(bool f)
{
    ui_->FixedScale->setChecked(f);
}

void Analyzer::setDMutScaleMax(double max)
{
    setValue(ui_->DMutScaleMax, max);
    scaleChanged();
}

void Analyzer::setDMutScaleMin(double min)
{
    setValue(ui_->DMutScaleMin, min);
    scaleChanged();
}

void Analyzer::setRatioScaleMax(double max)
{
    setValue(ui_->RatioScaleMax, max);
    scaleChanged();
}

void Analyzer::setRatioScaleMin(double min)
{
    setValue(ui_->RatioScaleMin, min);
    scaleChanged();
}
