#include "analysis/Analyzer.h"

#include "analysis/arithmetic/ArithmeticSection.h"
#include "analysis/dedge/DEdgeSection.h"
#include "analysis/elements/ElementsSection.h"
#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfSection.h"
#include "analysis/residual/ResidualSection.h"
#include "analysis/sumup/SumUpSection.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "display/NumberFields.h"
#include "display/PanelDock.h"
#include "display/PanelForm.h"
#include "display/ReadingOrder.h"
#include "display/RunRow.h"
#include "display/XafsView.h"
#include "ui_Analyzer.h"

#include <QButtonGroup>
#include <QCloseEvent>

#include <algorithm>

namespace {

/// The fixed buttons' ids begin here, above any row's.
constexpr int fixedIds = 1000;

int idOf(FixedImage image)
{
    return fixedIds + int(image);
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

Analyzer::Analyzer(MapBook& book, QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_Analyzer>())
    , view_(std::make_unique<XafsView>())
    , refGroup_(new QButtonGroup(this))
    , numbers_(new NumberFields(this))
{
    ui_->setupUi(this);
    view_->setObjectName(QStringLiteral("AnalyzerView"));
    view_->setWindowTitle(tr("Analyzing Spectrum"));
    lcf_ = new LcfSection(*view_, this);
    dEdge_ = new DEdgeSection(this);
    residual_ = new ResidualSection(this);
    elements_ = new ElementsSection(book, this);
    sumUp_ = new SumUpSection(this);
    arithmetic_ = new ArithmeticSection(this);
    placeSections();
    for (AnalysisSection* section : qAsConst(sections_))
        connectSection(section);
    for (int row = 0; row < lcf_->refs().size(); ++row)
        refGroup_->addButton(lcf_->refs().at(row)->showButton(), row);
    refGroup_->addButton(ui_->ShowOutcomes, idOf(FixedImage::Outcomes));
    auto* const kindGroup = new QButtonGroup(this);
    kindGroup->addButton(ui_->SelDMut);
    kindGroup->addButton(ui_->SelRatio);
    watchFields();
    fitButtons(*this);
    tabInReadingOrder(this);
    connectForm();
}

Analyzer::~Analyzer() = default;

/// Sections of the same walk stand above its line.
void Analyzer::placeSections()
{
    sections_ = {lcf_, dEdge_, residual_, elements_, sumUp_};
    for (AnalysisSection* section : qAsConst(sections_)) {
        const bool isFit = section->walk() == AnalysisWalk::Fits;
        (isFit ? ui_->FitSections : ui_->OtherSections)->addWidget(section);
    }
    ui_->OtherSections->addWidget(arithmetic_);
    ui_->FitsRun->setNames(QStringLiteral("AskAnalyze"), QStringLiteral("Progress"));
    ui_->FitsRun->setTips({tr("Analyse each block of the selected area"),
                           tr("Stop the analysis; the maps keep what is done")});
}

void Analyzer::connectSection(AnalysisSection* section)
{
    for (const ImageButton& image : section->imageButtons())
        refGroup_->addButton(image.button, idOf(image.image));
    connect(section, &AnalysisSection::changed, this, &Analyzer::conditionsChanged);
    connect(section, &AnalysisSection::askReanalyze, this, &Analyzer::reAnalyzeSpectrum);
    connect(section, &AnalysisSection::changedSelection, this, &Analyzer::changedSelection);
    connect(section->numbers(), &NumberFields::changed, this, &Analyzer::fieldsChanged);
    if (RunRow* const row = section->runRow()) {
        connect(row, &RunRow::pressed, this,
                [this, walk = section->walk()] { Q_EMIT askAnalyze(walk); });
    }
}

void Analyzer::closeEvent(QCloseEvent* event)
{
    view_->close();
    QFrame::closeEvent(event);
}

void Analyzer::connectForm()
{
    connect(lcf_, &LcfSection::viewAsked, this, [this] { raisePanel(view_.get()); });
    connect(lcf_, &LcfSection::rowAdded, this, &Analyzer::addRowButton);
    connect(elements_, &AnalysisSection::changed, view_.get(),
            [this] { view_->setEdgeMarks(elements_->edgeMarks()); });
    connect(arithmetic_, &ArithmeticSection::changedSelection, this, &Analyzer::changedSelection);
    connect(ui_->FitsRun, &RunRow::pressed, this,
            [this] { Q_EMIT askAnalyze(AnalysisWalk::Fits); });
    connect(refGroup_, &QButtonGroup::idClicked, this, &Analyzer::pressedImage);
    connect(ui_->SelDMut, &QRadioButton::toggled, this, &Analyzer::selectedImgChanged);
    connect(ui_->SelRatio, &QRadioButton::toggled, this, &Analyzer::selectedImgChanged);
    connect(ui_->FixedScale, &QCheckBox::toggled, this, &Analyzer::scalePolicyChanged);
    for (const QLineEdit* field :
         {ui_->DMutScaleMin, ui_->DMutScaleMax, ui_->RatioScaleMin, ui_->RatioScaleMax})
        connect(field, &QLineEdit::editingFinished, this, &Analyzer::scaleChanged);
}

void Analyzer::watchFields()
{
    connect(numbers_, &NumberFields::changed, this, &Analyzer::fieldsChanged);
    numbers_->watch(ui_->DMutScaleMin, tr("Least DMut of the fixed scale"));
    numbers_->watch(ui_->DMutScaleMax, tr("Greatest DMut of the fixed scale"));
    numbers_->watch(ui_->RatioScaleMin, tr("Least ratio of the fixed scale"));
    numbers_->watch(ui_->RatioScaleMax, tr("Greatest ratio of the fixed scale"));
}

QStringList Analyzer::unreadable() const
{
    QStringList names;
    for (const AnalysisSection* section : sections_)
        names += section->numbers()->unreadable();
    return names + numbers_->unreadable();
}

QVector<AnalysisSection*> Analyzer::sectionsOf(AnalysisWalk walk) const
{
    QVector<AnalysisSection*> found;
    std::copy_if(sections_.begin(), sections_.end(), std::back_inserter(found),
                 [walk](const AnalysisSection* s) { return s->walk() == walk; });
    return found;
}

QVector<AnalysisSection*> Analyzer::chosenOf(AnalysisWalk walk) const
{
    QVector<AnalysisSection*> found = sectionsOf(walk);
    found.erase(std::remove_if(found.begin(), found.end(),
                               [](const AnalysisSection* s) { return !s->joinsWalk(); }),
                found.end());
    return found;
}

RunRow& Analyzer::runRow(AnalysisWalk walk) const
{
    for (const AnalysisSection* section : sections_) {
        if (section->walk() == walk && section->runRow())
            return *section->runRow();
    }
    return *ui_->FitsRun;
}

bool Analyzer::displaysOnTime(AnalysisWalk walk) const
{
    switch (walk) {
    case AnalysisWalk::Fits:
        return ui_->DispOnTime->isChecked();
    case AnalysisWalk::Elements:
        return elements_->displaysOnTime();
    case AnalysisWalk::Residual: // its third map is made at the end
    case AnalysisWalk::SumUp:
        break;
    }
    return false;
}

void Analyzer::addRowButton()
{
    const int row = lcf_->refs().size() - 1;
    refGroup_->addButton(lcf_->refs().at(row)->showButton(), row);
    tabInReadingOrder(this);
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
    const int id = refGroup_->checkedId();
    if (id >= fixedIds)
        choice.fixed = FixedImage(id - fixedIds);
    else
        choice.row = id;
    choice.rows = lcf_->refs().size();
    choice.kindIndex = mapKindIndex();
    choice.elements = elements_->isChosen();
    choice.elementRow = elements_->elementRow();
    choice.elementRows = elements_->elementRows();
    choice.arithmetic = arithmetic_->isChosen();
    choice.operand = arithmetic_->shownOperand();
    return choice;
}

void Analyzer::chooseMap(const MapKey& key)
{
    if (traitsOf(key.kind).rows == RowsOf::References) {
        setMapKind(key.kind == MapKind::LcfWeight ? 0 : 1);
        selectRow(key.row);
        return;
    }
    if (traitsOf(key.kind).rows == RowsOf::Elements)
        elements_->showRow(key.row);
    if (const auto image = fixedImageOf(key.kind))
        checkImage(refGroup_->button(idOf(*image)));
}

void Analyzer::setMode(int m)
{
    const QVector<Fold*> folds = foldsByNumber();
    if (m < 0 || m >= folds.size()) {
        fault(QStringLiteral("No analysis has the number %1").arg(m));
        return;
    }
    // The button of the sum stays checked until another map is chosen.
    for (Fold* fold : folds)
        fold->chooser()->setChecked(fold == folds[m]);
}

/// Fits of the map, residual absorption, elements, sum of images, map arithmetic, edge position.
QVector<Fold*> Analyzer::foldsByNumber() const
{
    return {lcf_, residual_, elements_, sumUp_, arithmetic_, dEdge_};
}

void Analyzer::useAnalysis(int number, bool f)
{
    Fold* const fold = foldsByNumber().value(number, nullptr);
    if (fold == nullptr) {
        fault(QStringLiteral("No analysis has the number %1").arg(number));
        return;
    }
    // That of the sum is one of the buttons of maps, of which none may be checked.
    refGroup_->setExclusive(f);
    fold->chooser()->setChecked(f);
    refGroup_->setExclusive(true);
}

void Analyzer::setMapsInterrupted(AnalysisWalk walk, bool f)
{
    runRow(walk).setMark(
        f ? tr("The analysis of these maps was stopped: positions not reached are 0") : QString());
}

void Analyzer::setNormalize(bool f)
{
    view_->setNormalize(f);
}

void Analyzer::setEnergyCorrection(bool f)
{
    view_->setEnergyCorrection(f);
}

void Analyzer::setHint(const EdgeHint& hint)
{
    for (AnalysisSection* section : qAsConst(sections_))
        section->setHint(hint);
}

void Analyzer::setContAccess(bool f, AnalysisWalk walk)
{
    contAccess_ = f;
    elements_->setRunning(f && walk == AnalysisWalk::Elements);
    for (int i = 0; i < analysisWalks; ++i) {
        const auto other = AnalysisWalk(i);
        if (other == walk)
            runRow(other).setRunning(f);
        else
            runRow(other).setHeldBack(f);
    }
    Q_EMIT contAccessChanged(f);
}

void Analyzer::setProgress(AnalysisWalk walk, double perCent)
{
    runRow(walk).setProgress(perCent);
    Q_EMIT progressChanged(perCent);
}

void Analyzer::analyzeSpectrum(const XafsSpectrum& s, const SuggestElm& sElm)
{
    lastSElm_ = sElm;
    if (contAccess_)
        return;
    const SpectraInfo info{sElm, energiesOf(s)};
    AnalysisRequest request{s, {}};
    for (int i = 0; i < sections_.size(); ++i) {
        const AnalysisSection* const section = sections_.at(i);
        if (!section->isChosen())
            continue;
        // One that can't be made is answered in its turn too, by nothing.
        const bool ready = !s.isEmpty() && section->notReady(info).isEmpty();
        request.tasks.append({i, ready ? section->kernel(info) : nullptr});
    }
    if (lcf_->isChosen() && !s.isEmpty())
        lcf_->markLeftOut(info);
    if (!request.tasks.isEmpty())
        Q_EMIT analyzeSpectrum0(request);
}

void Analyzer::analyzeAndShowSpectrum(const XafsSpectrum& s, const SuggestElm& sElm)
{
    spectrum_ = s;
    view_->setSpectrum(spectrum_, lcf_->gapNote(spectrum_));
    if (!lcf_->isChosen())
        lcf_->showFitCurve(false);
    analyzeSpectrum(spectrum_, sElm);
}

void Analyzer::reAnalyzeSpectrum()
{
    if (!spectrum_.isEmpty())
        analyzeSpectrum(spectrum_, lastSElm_);
}

void Analyzer::analyzeSpectrumFinished(const AnalysisResult& result)
{
    // The sections keep their results during a walk. Answers come in the order of the requests, and
    // each is taken: which of them is shown must not depend on when a newer was asked for.
    for (const AnalysisResult::Answer& answer : result.answers) {
        if (!contAccess_)
            sections_.at(answer.section)->show(answer.result);
    }
    Q_EMIT finished(result);
}

/// A map of the arithmetic stands above all others: it makes room for the one that is asked for.
void Analyzer::pressedImage()
{
    arithmetic_->clearShown();
    Q_EMIT changedSelection();
    Q_EMIT scaleAsked();
}

void Analyzer::selectedImgChanged(bool f)
{
    // Of the two buttons that a choice changes, the one that goes on tells it.
    if (f)
        Q_EMIT changedSelection();
}

bool Analyzer::checkImage(QAbstractButton* button)
{
    if (button == nullptr)
        return false;
    button->setChecked(true);
    pressedImage();
    return true;
}

void Analyzer::selectImageById(int id)
{
    if (!checkImage(refGroup_->button(id < rowsAtStart ? id : fixedIds + id - rowsAtStart)))
        fault(QStringLiteral("No map has the number %1").arg(id));
}

void Analyzer::selectRow(int row)
{
    if (row >= fixedIds || !checkImage(refGroup_->button(row)))
        fault(QStringLiteral("No reference row has the number %1").arg(row));
}

void Analyzer::scalePolicyChanged(bool /*f*/)
{
    scaleChanged();
}

MapScales Analyzer::scales() const
{
    return {ui_->FixedScale->isChecked(),
            {fieldValue(ui_->DMutScaleMin), fieldValue(ui_->DMutScaleMax)},
            {fieldValue(ui_->RatioScaleMin), fieldValue(ui_->RatioScaleMax)}};
}

void Analyzer::scaleChanged()
{
    Q_EMIT scalesChanged();
}

void Analyzer::bindFields(CommandBook& book)
{
    book.onOff(ExCmdAnalyzerDispOnTime, ui_->DispOnTime);
    book.onOff(ExCmdAnalyzerSetFixedScale, ui_->FixedScale);
    book.number(ExCmdAnalyzerSetDMutScaleMax, ui_->DMutScaleMax);
    book.number(ExCmdAnalyzerSetDMutScaleMin, ui_->DMutScaleMin);
    book.number(ExCmdAnalyzerSetRatioScaleMax, ui_->RatioScaleMax);
    book.number(ExCmdAnalyzerSetRatioScaleMin, ui_->RatioScaleMin);
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
