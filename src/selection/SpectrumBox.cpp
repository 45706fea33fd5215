#include "selection/SpectrumBox.h"

#include "common/Fault.h"
#include "common/FieldText.h"
#include "common/TextItems.h"
#include "spectrum/ElementTable.h"
#include "ui_SpectrumBox.h"

SpectrumBox::SpectrumBox(QWidget* parent)
    : QGroupBox(parent)
    , ui_(std::make_unique<Ui_SpectrumBox>())
{
    ui_->setupUi(this);
    refreshEdgeEnergy();

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
}

SpectrumBox::~SpectrumBox() = default;

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

void SpectrumBox::setHalfX(int pixels)
{
    ui_->HWidth->setText(QString::number(pixels));
}

void SpectrumBox::setHalfY(int pixels)
{
    ui_->VWidth->setText(QString::number(pixels));
}

void SpectrumBox::setUseI0(bool f)
{
    ui_->UseI0->setChecked(f);
}

void SpectrumBox::setFluorescence(bool f)
{
    ui_->FluoType->setChecked(f);
}

void SpectrumBox::setUseSuggestion(bool f)
{
    ui_->UseSuggestElm->setChecked(f);
    refreshEdgeEnergy();
}

void SpectrumBox::setElement(const QString& symbol)
{
    ui_->SuggestingElm->setText(symbol);
    newElmSuggested();
}

bool SpectrumBox::setEdge(int edge)
{
    if (edge < 0 || edge >= ui_->SuggestingEdge->count())
        return false;
    ui_->SuggestingEdge->setCurrentIndex(edge);
    // The energy may have been overruled while the edge was the same.
    refreshEdgeEnergy();
    return true;
}

void SpectrumBox::setEdgeEnergy(const QString& eV)
{
    ui_->SuggestingEeV->setText(eV);
}

void SpectrumBox::setPreEnd(const QString& eV)
{
    ui_->DPreE->setText(eV);
}

void SpectrumBox::setPostStart(const QString& eV)
{
    ui_->DPostS->setText(eV);
}

void SpectrumBox::setThJump(double sigmas)
{
    ui_->ThJumpSigma->setText(fieldText(sigmas));
}

void SpectrumBox::setSuggestForRefs(bool f)
{
    ui_->SuggestForRefs->setChecked(f);
}

void SpectrumBox::setHoldGap(bool f)
{
    ui_->HoldGap->setChecked(f);
}
