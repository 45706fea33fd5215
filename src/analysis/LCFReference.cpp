#include "analysis/LCFReference.h"

#include "common/FieldText.h"
#include "ui_LCFReference.h"

#include <QDebug>

LCFReference::LCFReference(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_LCFReference>())
    , maps_{new Analyzed2DRes(QStringLiteral("LCF Ref 1"), this),
            new Analyzed2DRes(QStringLiteral("LCF Ref 2"), this)}
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
    return {spectrum_, isActive(), weight_};
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

Analyzed2DRes* LCFReference::map(int kind) const
{
    return maps_.value(kind, maps_.first());
}

QAbstractButton* LCFReference::showButton() const
{
    return ui_->Show;
}

void LCFReference::forgetSpectrum()
{
    spectrum_ = XafsSpectrum();
    spectrum_.isShifted = true;
    spectrum_.isMute = isUsed() ? 1 : 0;
    applyShift(ui_->DeltaE->text().toDouble());
    ui_->DMut->clear();
    ui_->MidE->clear();
}

void LCFReference::applyShift(double dE)
{
    spectrum_.eShift = dE;
    spectrum_.eOffset = dE;
}

void LCFReference::normalize()
{
    // Fits read the curves at dE away from where they stand, so they are built without it.
    spectrum_.eShift = 0.0;
    spectrum_.normalizeIfData(ui_->IsVictreen->isChecked() ? VictLine::Victoreen
                                                           : VictLine::Straight);
    applyShift(ui_->DeltaE->text().toDouble());
}

void LCFReference::newFile(const QString& fname)
{
    forgetSpectrum();
    if (!spectrum_.load(fname)) {
        qDebug() << "Can't read reference file" << fname;
        ui_->XFS->fileNameValid(false);
        ui_->XFS->clear();
        return;
    }
    ui_->XFS->fileNameValid(true);
    changedUse(isUsed());
    normalize();
    ui_->DMut->setText(fieldText(spectrum_.dMut));
    ui_->MidE->setText(fieldText(spectrum_.midx));
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
    spectrum_.isMute = f ? 1 : 0;
    Q_EMIT changed();
}

void LCFReference::editedDeltaE()
{
    applyShift(ui_->DeltaE->text().toDouble());
    Q_EMIT changed();
    Q_EMIT newDeltaE();
}

void LCFReference::toggledIsVictreen(bool /*f*/)
{
    normalize();
    Q_EMIT changed();
}

void LCFReference::setStd(bool use, double dE, const QString& fname, const QString& isVic)
{
    const bool victoreen =
        isVic.isEmpty() || isVic.toUpper() == QLatin1String("VIC") || isVic.toDouble() > 0;
    ui_->IsVictreen->setChecked(victoreen);
    ui_->XFS->load(fname);
    ui_->XFS->setUse(use);
    ui_->DeltaE->setText(fieldText(dE));
    applyShift(dE);
    Q_EMIT changed();
    Q_EMIT newDeltaE();
}

void LCFReference::setWeight(double w)
{
    weight_ = w;
    ui_->R->setText(QString::asprintf("%5.2f", w * 100.0));
}

void LCFReference::setLeftOut(const QString& why)
{
    ui_->XFS->setMark(why);
}

void LCFReference::setResult(double v)
{
    ui_->T->setText(fieldText(v));
}
