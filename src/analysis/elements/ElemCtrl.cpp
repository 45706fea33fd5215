#include "analysis/elements/ElemCtrl.h"

#include "batch/BatchLine.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "display/FieldWidth.h"
#include "display/NumberFields.h"
#include "ui_ElemCtrl.h"

#include <QAbstractButton>

namespace {

constexpr int arrowWidth = 18; ///< [pixels]

/// Width in which a field shows a text whole, with its frame, margins and cursor. [pixels]
int widthFor(const QLineEdit& field, const char* text)
{
    constexpr int frame = 11;
    return field.fontMetrics().horizontalAdvance(QLatin1String(text)) + frame;
}

void showValue(QLineEdit* field, double v)
{
    field->setText(fieldText(v));
    field->setCursorPosition(0); // of a long one the front counts most
}

} // namespace

ElemCtrl::ElemCtrl(const ListedElement& element, QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_ElemCtrl>())
    , element_(element)
{
    ui_->setupUi(this);
    ui_->No->setText(QString::number(element.atomicNo));
    ui_->Name->setText(element.symbol);
    ui_->Name->setToolTip(tr("Element and edge: %1").arg(element.name));
    showValue(ui_->Eng, element.energy);
    setupLine();
    connectFields();
}

ElemCtrl::~ElemCtrl() = default;

/// Captions stand above the rows.
void ElemCtrl::setupLine()
{
    for (QAbstractButton* button :
         QVector<QAbstractButton*>{ui_->Show, ui_->MainTarget, ui_->Use}) {
        button->setAccessibleName(button->text() + QLatin1Char(' ') + element_.name);
        button->setText(QString());
    }
    // The buttons are exclusive among all rows, not within one.
    ui_->Show->setAutoExclusive(false);
    ui_->MainTarget->setAutoExclusive(false);
    ui_->No->setFixedWidth(widthFor(*ui_->No, "109"));
    ui_->Name->setFixedWidth(widthFor(*ui_->Name, "Mm"));
    for (QLineEdit* field : {ui_->DMuT, ui_->Ratio})
        field->setFixedWidth(widthFor(*field, "-0.0304776"));
    for (QLineEdit* field : ui_->Rest->findChildren<QLineEdit*>())
        fitDigitsAtLeast(field, 7);
    ui_->More->setFixedWidth(arrowWidth);
    unfold(false);
}

QVector<QLineEdit*> ElemCtrl::conditionFields() const
{
    return {ui_->Eng, ui_->PrePostDE, ui_->ThDMut, ui_->ROIs, ui_->ROIe};
}

void ElemCtrl::connectFields()
{
    for (const QLineEdit* field : conditionFields()) {
        connect(field, &QLineEdit::textChanged, this, &ElemCtrl::changed);
        connect(field, &QLineEdit::editingFinished, this, &ElemCtrl::edited);
    }
    connect(ui_->StdRatio, &QLineEdit::editingFinished, this, &ElemCtrl::newStdRatio);
    for (const QCheckBox* box : {ui_->NoNeg, ui_->Use}) {
        connect(box, &QCheckBox::toggled, this, &ElemCtrl::changed);
        connect(box, &QCheckBox::toggled, this, &ElemCtrl::edited);
    }
    connect(ui_->More, &QToolButton::toggled, this, &ElemCtrl::unfold);
}

void ElemCtrl::unfold(bool f)
{
    ui_->More->setArrowType(f ? Qt::DownArrow : Qt::RightArrow);
    ui_->Rest->setVisible(f);
}

void ElemCtrl::watchFields(NumberFields& numbers) const
{
    const QString& name = element_.name;
    numbers.watch(ui_->Eng, tr("Edge energy of %1").arg(name));
    numbers.watch(ui_->PrePostDE, tr("Pre/Post dE of %1").arg(name));
    numbers.watch(ui_->ThDMut, tr("Th dmut of %1").arg(name));
    numbers.watch(ui_->StdRatio, tr("Std. Ratio of %1").arg(name));
    numbers.watch(ui_->ROIs, tr("Start of the ROI of %1").arg(name));
    numbers.watch(ui_->ROIe, tr("End of the ROI of %1").arg(name));
}

void ElemCtrl::forgetFields(NumberFields& numbers) const
{
    for (const QLineEdit* field : conditionFields() + QVector<QLineEdit*>{ui_->StdRatio})
        numbers.forget(field);
}

ElemCtrl::Columns ElemCtrl::columns() const
{
    return {ui_->DMuT->width(), arrowWidth, ui_->Line->spacing()};
}

double ElemCtrl::energy() const
{
    return fieldValue(ui_->Eng);
}

ElementRow ElemCtrl::data() const
{
    return {element_.name,
            energy(),
            fieldValue(ui_->PrePostDE),
            fieldValue(ui_->ThDMut),
            fieldValue(ui_->ROIs),
            fieldValue(ui_->ROIe),
            ui_->NoNeg->isChecked(),
            ui_->Use->isChecked(),
            stdRatio_};
}

QAbstractButton* ElemCtrl::targetButton() const
{
    return ui_->MainTarget;
}

QAbstractButton* ElemCtrl::showButton() const
{
    return ui_->Show;
}

void ElemCtrl::setPrePostDE(double eV)
{
    showValue(ui_->PrePostDE, eV);
    Q_EMIT edited();
}

void ElemCtrl::setThreshold(double jump)
{
    showValue(ui_->ThDMut, jump);
    Q_EMIT edited();
}

void ElemCtrl::setRoi(double from, double to)
{
    ui_->ROIs->setText(energyText(from));
    ui_->ROIe->setText(energyText(to));
    Q_EMIT edited();
}

void ElemCtrl::setNoNeg(bool f)
{
    ui_->NoNeg->setChecked(f);
}

void ElemCtrl::setUse(bool f)
{
    ui_->Use->setChecked(f);
}

void ElemCtrl::setStdRatio(double ratio)
{
    ui_->StdRatio->setText(fieldText(ratio));
    newStdRatio();
}

QVector<ElemCtrl::NamedField> ElemCtrl::namedFields() const
{
    return {{QStringLiteral("E0"), ui_->Eng},    {QStringLiteral("dE"), ui_->PrePostDE},
            {QStringLiteral("Th"), ui_->ThDMut}, {QStringLiteral("Std"), ui_->StdRatio},
            {QStringLiteral("ROIs"), ui_->ROIs}, {QStringLiteral("ROIe"), ui_->ROIe}};
}

void ElemCtrl::enter(const QString& field, const QString& text)
{
    for (const NamedField& known : namedFields()) {
        if (known.name.compare(field, Qt::CaseInsensitive) != 0)
            continue;
        known.field->setText(text);
        Q_EMIT known.field->editingFinished();
        return;
    }
    fault(QStringLiteral("An element has no field \"%1\"").arg(field));
}

QStringList ElemCtrl::conditionLines() const
{
    const QString flags[] = {QStringLiteral("0"), QStringLiteral("1")};
    QStringList lines{batchLine(ExCmdAnalyzerElemsSetUse, {name(), flags[ui_->Use->isChecked()]}),
                      batchLine(ExCmdAnalyzerElemsNoNeg, {name(), flags[ui_->NoNeg->isChecked()]})};
    for (const NamedField& known : namedFields())
        lines << batchLine(ExCmdAnalyzerElemsEnter,
                           {name(), known.name, energyText(fieldValue(known.field))});
    return lines;
}

void ElemCtrl::newStdRatio()
{
    bool isNumber = false;
    const double entered = ui_->StdRatio->text().toDouble(&isNumber);
    // A text that is no number counts as 0 and stays, for its owner to see and mend.
    if (isNumber)
        showValue(ui_->StdRatio, entered);
    if (entered == stdRatio_)
        return;
    stdRatio_ = entered;
    Q_EMIT changed();
    Q_EMIT edited();
}

void ElemCtrl::setResult(const ElementValues& result)
{
    result_ = result;
    showValue(ui_->DMuT, result.jump);
    showValue(ui_->Ratio, result.jumpRatio);
    showValue(ui_->DE, result.shift);
    showValue(ui_->ROI, result.roi);
    showValue(ui_->NROI, result.roiRatio);
}
