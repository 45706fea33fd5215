#include "analysis/Analyzer.h"

#include "analysis/LCFReference.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "display/XafsView.h"
#include "ui_Analyzer.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDebug>
#include <QScrollBar>

namespace {

constexpr int rowsAtStart = 4;
constexpr int maxRows = 100;

/// Places of the fixed buttons in the image group, counted behind the rows that exist at start.
constexpr int showZId = rowsAtStart + 3;

constexpr QRgb fitColour = qRgb(255, 0, 255);

double value(const QLineEdit* field)
{
    return field->text().toDouble();
}

void setValue(QLineEdit* field, double v)
{
    field->setText(fieldText(v));
}

/// Energies that a spectrum with points spans.
ReadRange energiesOf(const Spectrum& s)
{
    return {s.xMin - s.shift(), s.xMax - s.shift()};
}

} // namespace

Analyzer::Analyzer(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_Analyzer>())
    , view_(std::make_unique<XafsView>())
    , refGroup_(new QButtonGroup(this))
{
    ui_->setupUi(this);
    view_->setObjectName(QStringLiteral("AnalyzerView"));
    view_->setWindowTitle(tr("Analyzing Spectrum"));
    view_->setOthers({ViewCurve()});
    showFitCurve(false);
    for (int i = 0; i < rowsAtStart; ++i)
        addNewRef();
    // Rows scroll up and down only, so they must fit in width.
    ui_->RefScroll->setMinimumWidth(refs_.first()->minimumSizeHint().width() +
                                    ui_->RefScroll->verticalScrollBar()->sizeHint().width());
    refGroup_->addButton(ui_->ShowZ, showZId);
    auto* const kindGroup = new QButtonGroup(this);
    kindGroup->addButton(ui_->SelDMut);
    kindGroup->addButton(ui_->SelRatio);
    connectForm();
}

Analyzer::~Analyzer() = default;

void Analyzer::show()
{
    QFrame::show();
    view_->show();
}

void Analyzer::closeEvent(QCloseEvent* event)
{
    view_->close();
    QFrame::closeEvent(event);
}

void Analyzer::connectForm()
{
    connect(ui_->ShowView, &QPushButton::clicked, view_.get(), &QWidget::show);
    connect(ui_->AddRef, &QPushButton::clicked, this, &Analyzer::addNewRef);
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

void Analyzer::addNewRef()
{
    auto* const row = new LCFReference(ui_->RefBase);
    ui_->RefRows->addWidget(row);
    row->setHint(hint_);
    refs_.append(row);
    refGroup_->addButton(row->showButton(), refs_.size() - 1);
    addReferenceCurve();
    Q_EMIT rowAdded();
    connect(row, &LCFReference::newFileSelected, this, &Analyzer::reAnalyzeSpectrum);
    connect(row, &LCFReference::newDeltaE, this, &Analyzer::reAnalyzeSpectrum);
}

void Analyzer::setHint(const EdgeHint& hint)
{
    if (hint.isLike(hint_))
        return;
    hint_ = hint;
    for (LCFReference* row : qAsConst(refs_))
        row->setHint(hint);
}

/// Gives the last row its place in the view, in front of the fit.
void Analyzer::addReferenceCurve()
{
    const int row = refs_.size() - 1;
    QVector<ViewCurve> curves = view_->others();
    curves.insert(row, ViewCurve());
    view_->setOthers(curves);
    showReference(row);
    connect(refs_.at(row), &LCFReference::changed, this, [this, row] { showReference(row); });
}

void Analyzer::showReference(int row)
{
    view_->setOther(row, {refs_.at(row)->spectrum(), refs_.at(row)->isUsed(), {}});
}

void Analyzer::showFitCurve(bool f)
{
    view_->setOther(refs_.size(), {fitResult_, f, QPen(QColor(fitColour), 2)});
}

QVector<int> Analyzer::activeRows() const
{
    QVector<int> rows;
    for (int i = 0; i < refs_.size(); ++i) {
        if (refs_.at(i)->isActive())
            rows.append(i);
    }
    return rows;
}

int Analyzer::firstUsedRow() const
{
    for (int i = 0; i < refs_.size(); ++i) {
        if (refs_.at(i)->isUsed())
            return i;
    }
    return 0;
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
    choice.imageId = refGroup_->checkedId();
    choice.rows = refs_.size();
    choice.zansa = ui_->ShowZ->isChecked();
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

QString Analyzer::gapNote(const XafsSpectrum& s) const
{
    if (!holdGap_ || !s.linesClose)
        return {};
    return HeldGap(s, lcfRequest(s.sElm, energiesOf(s)).commonRange()).words();
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

bool Analyzer::canFit(const SuggestElm& sElm, const ReadRange& scan) const
{
    return !lcfRequest(sElm, scan).fittedRows().isEmpty();
}

void Analyzer::markLeftOut(const LcfRequest& request)
{
    const QVector<int> left = request.leftOutRows();
    for (int i = 0; i < refs_.size(); ++i) {
        refs_.at(i)->setLeftOut(left.contains(i) ? tr("No point inside the fitting range: left out")
                                                 : QString());
    }
}

void Analyzer::analyzeSpectrum(const XafsSpectrum& s, const SuggestElm& sElm)
{
    lastSElm_ = sElm;
    if (contAccess_ || !walkAnalysisSelected())
        return;
    AnalysisRequest request;
    request.spectra = {s};
    request.lcf = true;
    request.lcfConditions = lcfRequest(sElm, energiesOf(s));
    if (!s.isEmpty())
        markLeftOut(request.lcfConditions);
    Q_EMIT analyzeSpectrum0(request);
}

LcfRequest Analyzer::beginWalk(const SuggestElm& sElm, const ReadRange& scan)
{
    LcfRequest request = lcfRequest(sElm, scan);
    request.ownWeights = ui_->OwnWeights->isChecked();
    markLeftOut(request);
    const LcfPlan plan(request);
    for (const LcfNote& note : plan.notes()) {
        qDebug().noquote() << QStringLiteral("Reference %1 (%2): %3")
                                  .arg(note.row)
                                  .arg(refs_.at(note.row)->fileName(), note.text);
    }
    return request;
}

void Analyzer::analyzeAndShowSpectrum(const XafsSpectrum& s, const SuggestElm& sElm)
{
    spectrum_ = s;
    view_->setSpectrum(spectrum_, gapNote(spectrum_));
    if (!walkAnalysisSelected())
        showFitCurve(false);
    analyzeSpectrum(spectrum_, sElm);
}

void Analyzer::reAnalyzeSpectrum()
{
    if (!spectrum_.isEmpty())
        analyzeSpectrum(spectrum_, lastSElm_);
}

void Analyzer::analyzeSpectrumFinished(const AnalysisResult& result)
{
    // The rows keep their weights during a walk. Answers come in the order of the requests, and
    // each is taken: which of them the rows show must not depend on when a newer was asked for.
    if (!contAccess_ && !result.lcf.isEmpty())
        showFit(result.lcf.first());
    Q_EMIT finished(result);
}

void Analyzer::showFit(const LcfResult& result)
{
    // The curve of an earlier spectrum must not stay with one that could not be fitted.
    if (!result.fitted()) {
        showFitCurve(false);
        return;
    }
    for (int k = 0; k < result.activeRows.size(); ++k) {
        LCFReference* const row = refs_.at(result.activeRows.at(k));
        row->setWeight(result.ratios.at(k));
        row->setResult(result.dMuts.at(k));
    }
    if (result.fit)
        fitResult_ = *result.fit;
    showFitCurve(true);
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
    ui_->AskAnalyze->setText(f ? tr("Stop") : tr("Analyze"));
    Q_EMIT contAccessChanged(f);
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

void Analyzer::setLCFStd(int no, bool use, double dE, const QString& fname, const QString& isVic)
{
    if (no < 0 || no >= maxRows) {
        fault(QStringLiteral("No reference row %1: rows go from 0 to %2").arg(no).arg(maxRows - 1));
        return;
    }
    while (refs_.size() <= no)
        addNewRef();
    refs_.at(no)->setStd(use, dE, fname, isVic);
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
