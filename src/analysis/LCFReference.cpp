#include "analysis/LCFReference.h"

#include "common/Fault.h"
#include "common/FieldText.h"
#include "ui_LCFReference.h"

LCFReference::LCFReference(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_LCFReference>())
{
    ui_->setupUi(this);
    forgetSpectrum();
    connect(ui_->XFS, &XafsFileSelect::newFile, this, &LCFReference::newFile);
    connect(ui_->XFS, &XafsFileSelect::cleared, this, &LCFReference::clearedFile);
    connect(ui_->XFS, &XafsFileSelect::changedUse, this, &LCFReference::changedUse);
    connect(ui_->DeltaE, &QLineEdit::editingFinished, this, &LCFReference::editedDeltaE);
    connect(ui_->IsVictreen, &QCheckBox::toggled, this, &LCFReference::toggledIsVictreen);
}

LCFReference::~LCFReference() = default;

LcfReferenceData LCFReference::data() const
{
    return {spectrum(), isActive(), weight_};
}

QString LCFReference::fileName() const
{
    return ui_->XFS->fileName();
}

bool LCFReference::isUsed() const
{
    return ui_->XFS->isUsed();
}

bool LCFReference::isActive() const
{
    return isUsed() && ui_->XFS->isFileValid();
}

QAbstractButton* LCFReference::showButton() const
{
    return ui_->Show;
}

int LCFReference::backgroundMode() const
{
    return ui_->IsVictreen->isChecked() ? VictLine::Victoreen : VictLine::Straight;
}

void LCFReference::forgetSpectrum()
{
    reference_.clear();
    leftOut_.clear();
    reference_.setShift(ui_->DeltaE->text().toDouble());
    reference_.setShown(isUsed());
    ui_->DMut->clear();
    ui_->MidE->clear();
    showMark();
}

void LCFReference::showEdge()
{
    if (!reference_.isEmpty()) {
        ui_->DMut->setText(fieldText(spectrum().dMut));
        ui_->MidE->setText(fieldText(spectrum().midx));
    }
    showMark();
}

void LCFReference::showMark()
{
    QStringList reasons = reference_.doubts();
    if (!leftOut_.isEmpty())
        reasons.append(leftOut_);
    ui_->XFS->setMark(reasons.join(QLatin1Char('\n')));
}

void LCFReference::newFile(const QString& fname)
{
    forgetSpectrum();
    const QString why = reference_.load(fname, backgroundMode());
    if (!why.isEmpty()) {
        fault(QStringLiteral("Can't read reference file \"%1\": %2").arg(fname, why));
        ui_->XFS->fileNameValid(false);
        ui_->XFS->clear();
        return;
    }
    ui_->XFS->fileNameValid(true);
    changedUse(isUsed());
    showEdge();
    Q_EMIT changed();
    Q_EMIT newFileSelected();
}

void LCFReference::clearedFile()
{
    forgetSpectrum();
    Q_EMIT changed();
}

void LCFReference::changedUse(bool f)
{
    reference_.setShown(f);
    Q_EMIT changed();
}

void LCFReference::editedDeltaE()
{
    reference_.setShift(ui_->DeltaE->text().toDouble());
    Q_EMIT changed();
    Q_EMIT newDeltaE();
}

void LCFReference::toggledIsVictreen(bool /*f*/)
{
    reference_.setMode(backgroundMode());
    showEdge();
    Q_EMIT changed();
}

void LCFReference::setHint(const EdgeHint& hint)
{
    const bool otherCurve = reference_.setHint(hint);
    showEdge();
    if (otherCurve)
        Q_EMIT changed();
}

void LCFReference::setLeftOut(const QString& why)
{
    if (why == leftOut_)
        return;
    leftOut_ = why;
    showMark();
}

void LCFReference::setStd(bool use, double dE, const QString& fname, const QString& isVic)
{
    const bool victoreen =
        isVic.isEmpty() || isVic.toUpper() == QLatin1String("VIC") || isVic.toDouble() > 0;
    ui_->IsVictreen->setChecked(victoreen);
    ui_->XFS->load(fname);
    ui_->XFS->setUse(use);
    ui_->DeltaE->setText(energyText(dE));
    ui_->DeltaE->setCursorPosition(0); // of a long one the front counts most
    reference_.setShift(dE);
    Q_EMIT changed();
    Q_EMIT newDeltaE();
}

void LCFReference::setWeight(double w)
{
    weight_ = w;
    ui_->R->setText(QString::asprintf("%5.2f", w * 100.0));
}

void LCFReference::setResult(double v)
{
    ui_->T->setText(fieldText(v));
}
