#include "selection/SpectrumBox.h"

#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "common/TextItems.h"
#include "display/FieldWidth.h"
#include "display/NumberFields.h"
#include "display/ReadingOrder.h"
#include "display/WheelGuard.h"
#include "spectrum/ElementTable.h"
#include "ui_SpectrumBox.h"

SpectrumBox::SpectrumBox(QWidget* parent)
    : QGroupBox(parent)
    , ui_(std::make_unique<Ui_SpectrumBox>())
    , numbers_(new NumberFields(this))
{
    ui_->setupUi(this);
    refreshEdgeEnergy();
    connectFields();
    watchNumbers();
    layOut();
}

SpectrumBox::~SpectrumBox() = default;

void SpectrumBox::connectFields()
{
    // Before changed(), which tells of settings that hang together.
    const auto edgeIndexChanged = qOverload<int>(&QComboBox::currentIndexChanged);
    connect(ui_->SuggestingElm, &QLineEdit::editingFinished, this, &SpectrumBox::newElmSuggested);
    connect(ui_->SuggestingEdge, edgeIndexChanged, this, &SpectrumBox::newEdgeSuggested);
    connect(ui_->HoldGap, &QCheckBox::toggled, this, &SpectrumBox::holdGapChanged);

    for (const QLineEdit* field : {ui_->HWidth, ui_->VWidth, ui_->DPreE, ui_->DPostS,
                                   ui_->ThJumpSigma, ui_->SuggestingElm, ui_->SuggestingEeV})
        connect(field, &QLineEdit::editingFinished, this, &SpectrumBox::changed);
    for (const QCheckBox* box :
         {ui_->UseI0, ui_->FluoType, ui_->UseSuggestElm, ui_->SuggestForRefs, ui_->HoldGap})
        connect(box, &QCheckBox::toggled, this, &SpectrumBox::changed);
    connect(ui_->SuggestingEdge, edgeIndexChanged, this, &SpectrumBox::changed);
    connect(ui_->UseI0, &QCheckBox::toggled, this, &SpectrumBox::useI0Changed);
}

void SpectrumBox::watchNumbers()
{
    numbers_->watch(ui_->HWidth, ui_->WidthCaption->text(), NumberFields::Whole);
    numbers_->watch(ui_->VWidth, ui_->HeightCaption->text(), NumberFields::Whole);
    const std::pair<QLineEdit*, const QLabel*> fields[] = {
        {ui_->DPreE, ui_->DPreECaption},
        {ui_->DPostS, ui_->DPostSCaption},
        {ui_->SuggestingEeV, ui_->SuggestingCaption},
        {ui_->ThJumpSigma, ui_->ThJumpCaption}};
    for (const auto& [field, caption] : fields)
        numbers_->watch(field, caption->text());
    connect(numbers_, &NumberFields::changed, this, &SpectrumBox::fieldsChanged);
}

void SpectrumBox::layOut()
{
    for (QLineEdit* field : {ui_->HWidth, ui_->VWidth, ui_->DPreE, ui_->DPostS, ui_->ThJumpSigma})
        fitDigits(field, 5);
    fitDigits(ui_->SuggestingElm, 3);
    fitDigits(ui_->SuggestingEeV, 10);
    guardWheel(this);
    tabInReadingOrder(this);
}

QStringList SpectrumBox::unreadable() const
{
    return numbers_->unreadable();
}

void SpectrumBox::setUseI0(bool f)
{
    ui_->UseI0->setChecked(f);
}

SpectrumSettings SpectrumBox::settings() const
{
    SpectrumSettings settings;
    settings.halfX = ui_->HWidth->text().toInt();
    settings.halfY = ui_->VWidth->text().toInt();
    settings.useI0 = ui_->UseI0->isChecked();
    settings.fluorescence = ui_->FluoType->isChecked();
    settings.elm = suggestElm();
    settings.suggestForRefs = ui_->SuggestForRefs->isChecked();
    settings.holdGap = ui_->HoldGap->isChecked();
    return settings;
}

SuggestElm SpectrumBox::suggestElm() const
{
    SuggestElm elm;
    elm.use = ui_->UseSuggestElm->isChecked();
    elm.z = atomicNumber(ui_->SuggestingElm->text());
    elm.edge = ui_->SuggestingEdge->currentIndex();
    elm.edgeE = ui_->SuggestingEeV->text().toDouble();
    elm.preEnd = ui_->DPreE->text().toDouble();
    elm.postStart = ui_->DPostS->text().toDouble();
    elm.thJump = ui_->ThJumpSigma->text().toDouble();
    return elm;
}

/// Shows the table's energy of the suggested edge; an unknown element leaves the field alone.
void SpectrumBox::refreshEdgeEnergy()
{
    const int z = atomicNumber(ui_->SuggestingElm->text());
    if (z > 0) {
        const double energy = edgeEnergy(z, ui_->SuggestingEdge->currentIndex());
        ui_->SuggestingEeV->setText(energyText(energy));
    }
}

void SpectrumBox::newElmSuggested()
{
    const QString element = ui_->SuggestingElm->text();
    if (!element.isEmpty() && atomicNumber(element) < 1)
        fault(QStringLiteral("Unknown element ") + quoted(element));
    refreshEdgeEnergy();
}

void SpectrumBox::newEdgeSuggested()
{
    refreshEdgeEnergy();
}

// The energy of a suggestion comes back with each command that gives a part of it, however it was
// overruled before.
void SpectrumBox::useSuggestion(bool f)
{
    ui_->UseSuggestElm->setChecked(f);
    refreshEdgeEnergy();
    Q_EMIT changed();
}

void SpectrumBox::suggestEdge(const CmdLine& cmd)
{
    const int edge = intArg(cmd, 0);
    if (edge < 0 || edge >= ui_->SuggestingEdge->count()) {
        fault(QStringLiteral("No edge has the number %1: %2").arg(edge).arg(cmd.simplified));
        return;
    }
    ui_->SuggestingEdge->setCurrentIndex(edge);
    refreshEdgeEnergy();
    Q_EMIT changed();
}

/// The energy stands last: each of the others gives it anew.
QStringList SpectrumBox::suggestionLines() const
{
    return {batchLine(ExCmdSuggestElm, ui_->UseSuggestElm->isChecked()),
            batchLine(ExCmdSuggestingElm, {ui_->SuggestingElm->text()}),
            batchLine(ExCmdSuggestingEdge, {QString::number(ui_->SuggestingEdge->currentIndex())}),
            batchLine(ExCmdSuggestingEdgeEV, {ui_->SuggestingEeV->text()})};
}

void SpectrumBox::bindCommands(CommandBook& book)
{
    book.onOff(ExCmdSetFluoType, ui_->FluoType);
    book.whole(ExCmdSetBandW, ui_->HWidth);
    book.whole(ExCmdSetBandH, ui_->VWidth);
    book.onOff(ExCmdUseI0, ui_->UseI0);
    book.action(ExCmdSuggestElm, [this](const CmdLine& c) { useSuggestion(onArg(c, 0)); });
    book.textUnfollowed(ExCmdSuggestingElm, ui_->SuggestingElm);
    book.action(ExCmdSuggestingEdge, [this](const CmdLine& c) { suggestEdge(c); });
    book.textUnfollowed(ExCmdSuggestingEdgeEV, ui_->SuggestingEeV);
    book.history().follow([this] { return suggestionLines(); }, History::AllTogether);
    book.text(ExCmdSuggestingPreEndEV, ui_->DPreE);
    book.text(ExCmdSuggestingPostStartEV, ui_->DPostS);
    book.number(ExCmdSuggestingThJump, ui_->ThJumpSigma);
    book.onOff(ExCmdHoldGap, ui_->HoldGap);
    book.onOff(ExCmdSuggestForRefs, ui_->SuggestForRefs);
}
