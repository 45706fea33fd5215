#include "analysis/lcf/LCFReference.h"

#include "common/Fault.h"
#include "common/FieldText.h"
#include "display/FileDrop.h"
#include "ui_LCFReference.h"

#include <QPushButton>

namespace {

constexpr int arrowWidth = 18; ///< [pixels]

/// Width in which a field shows a text whole, with its frame, margins and cursor. [pixels]
int widthFor(const QLineEdit& field, const char* text)
{
    constexpr int frame = 11;
    return field.fontMetrics().horizontalAdvance(QLatin1String(text)) + frame;
}

} // namespace

LCFReference::LCFReference(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_LCFReference>())
{
    ui_->setupUi(this);
    setupLine();
    forgetSpectrum();
    connect(ui_->XFS, &XafsFileSelect::newFile, this, &LCFReference::newFile);
    connect(ui_->XFS, &XafsFileSelect::cleared, this, &LCFReference::clearedFile);
    connect(ui_->XFS, &XafsFileSelect::changedUse, this, &LCFReference::changedUse);
    connect(ui_->DeltaE, &QLineEdit::editingFinished, this, &LCFReference::editedDeltaE);
    connect(ui_->IsVictreen, &QCheckBox::toggled, this, &LCFReference::toggledIsVictreen);
    connect(ui_->More, &QToolButton::toggled, this, &LCFReference::unfold);
    // In front of the file's own, which takes a single one.
    connect(new FileDrop(this, FileDrop::Files), &FileDrop::dropped, this,
            &LCFReference::filesDropped);
}

LCFReference::~LCFReference() = default;

/// Captions stand above the rows, and numbers must show their signs whole.
void LCFReference::setupLine()
{
    ui_->Show->setAccessibleName(ui_->Show->text());
    ui_->Show->setText(QString());
    ui_->XFS->hideUseText();
    ui_->FileRow->insertWidget(0, ui_->XFS->buttons());
    ui_->R->setFixedWidth(widthFor(*ui_->R, "-12.34"));
    ui_->T->setFixedWidth(widthFor(*ui_->T, "-0.30478"));
    ui_->DeltaE->setFixedWidth(widthFor(*ui_->DeltaE, "-12.5"));
    ui_->DMut->setMinimumWidth(widthFor(*ui_->DMut, "0.304776"));
    ui_->MidE->setMinimumWidth(widthFor(*ui_->MidE, "28984.4"));
    ui_->More->setFixedWidth(arrowWidth);
    unfold(false);
}

void LCFReference::unfold(bool f)
{
    ui_->More->setArrowType(f ? Qt::DownArrow : Qt::RightArrow);
    ui_->Rest->setVisible(f);
}

QVector<QWidget*> LCFReference::tabChain() const
{
    QVector<QWidget*> chain{ui_->Show};
    chain += ui_->XFS->tabChain();
    chain += {ui_->DeltaE, ui_->More};
    for (QPushButton* button : ui_->XFS->buttons()->findChildren<QPushButton*>())
        chain.append(button);
    chain.append(ui_->IsVictreen);
    return chain;
}

LCFReference::Columns LCFReference::columns() const
{
    return {ui_->T->width(), ui_->DeltaE->width(), arrowWidth, ui_->Line->spacing()};
}

LcfReferenceData LCFReference::data() const
{
    return {spectrum(), isActive(), weight_};
}

QString LCFReference::fileName() const
{
    return ui_->XFS->fileName();
}

void LCFReference::clearFile()
{
    ui_->XFS->clear();
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

QLineEdit* LCFReference::shiftField() const
{
    return ui_->DeltaE;
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

void LCFReference::load(const QString& fname)
{
    ui_->XFS->fileSelected(fname);
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
    ui_->R->setCursorPosition(0);
}

void LCFReference::setResult(double v)
{
    ui_->T->setText(narrowText(v, 5));
    ui_->T->setCursorPosition(0);
}
