#include "analysis/arithmetic/ArithmeticSection.h"

#include "common/Fault.h"
#include "display/FileDialogs.h"
#include "display/PanelForm.h"
#include "ui_ArithmeticSection.h"

#include <QCheckBox>

ArithmeticSection::ArithmeticSection(QWidget* parent)
    : Fold(QStringLiteral("SelProcMaps"), tr("Process Maps"), parent)
    , ui_(std::make_unique<Ui_ArithmeticSection>())
{
    ui_->setupUi(body());
    fitButtons(*this);
    connectOperand(1, ui_->SelMap1, ui_->CaptureAsMap1);
    connectOperand(2, ui_->SelMap2, ui_->CaptureAsMap2);
    connect(ui_->AskProcessMaps, &QPushButton::clicked, this,
            [this] { Q_EMIT processAsked(operation()); });
    for (const QRadioButton* button : {ui_->ShowMap1, ui_->ShowMap2, ui_->ShowProcessedMap})
        connect(button, &QRadioButton::clicked, this, &ArithmeticSection::changedSelection);
    // The maps of the arithmetic are shown only while it is chosen.
    connect(chooser(), &QAbstractButton::toggled, this, &ArithmeticSection::changedSelection);
}

ArithmeticSection::~ArithmeticSection() = default;

void ArithmeticSection::connectOperand(int operand, QAbstractButton* select,
                                       QAbstractButton* capture)
{
    auto* const dialog = new LateDialog(
        [this] {
            auto* const made = new EShiftMapDialog(this);
            made->setFileMode(QFileDialog::ExistingFile);
            return made;
        },
        this);
    dialog->setTitle(tr("Load Map %1").arg(operand));
    connect(select, &QAbstractButton::clicked, dialog, &LateDialog::show);
    connect(dialog, &LateDialog::fileSelected, this,
            [this, operand](const QString& file) { Q_EMIT fileChosen(operand, file); });
    connect(capture, &QAbstractButton::clicked, this,
            [this, operand] { Q_EMIT captureAsked(operand); });
}

void ArithmeticSection::setOperandName(int operand, const QString& name)
{
    QLineEdit* const field = operand == 1 ? ui_->Map1Name : ui_->Map2Name;
    field->setText(name);
    field->setCursorPosition(0);
}

MapOperation ArithmeticSection::operation() const
{
    if (ui_->ProcTypeDiv->isChecked())
        return MapOperation::Div;
    return ui_->ProcTypeMask->isChecked() ? MapOperation::Mask : MapOperation::Sub;
}

void ArithmeticSection::setOperation(MapOperation operation)
{
    QRadioButton* const buttons[] = {ui_->ProcTypeSub, ui_->ProcTypeDiv, ui_->ProcTypeMask};
    buttons[int(operation)]->setChecked(true);
}

std::optional<MapKind> ArithmeticSection::shownOperand() const
{
    if (ui_->ShowMap1->isChecked())
        return MapKind::Operand1;
    if (ui_->ShowMap2->isChecked())
        return MapKind::Operand2;
    if (ui_->ShowProcessedMap->isChecked())
        return MapKind::Processed;
    return std::nullopt;
}

std::optional<int> ArithmeticSection::shownNumber() const
{
    const QRadioButton* const buttons[] = {ui_->ShowProcessedMap, ui_->ShowMap1, ui_->ShowMap2};
    for (int number = 0; number < 3; ++number) {
        if (buttons[number]->isChecked())
            return number;
    }
    return std::nullopt;
}

void ArithmeticSection::showByNumber(int number)
{
    QRadioButton* const buttons[] = {ui_->ShowProcessedMap, ui_->ShowMap1, ui_->ShowMap2};
    if (number >= 0 && number < 3)
        buttons[number]->click();
    else
        fault(QStringLiteral("No map of the arithmetic has the number %1").arg(number));
}

void ArithmeticSection::clearShown()
{
    // An exclusive group keeps one of its buttons checked.
    ui_->ShownMaps->setExclusive(false);
    for (QRadioButton* button : {ui_->ShowMap1, ui_->ShowMap2, ui_->ShowProcessedMap})
        button->setChecked(false);
    ui_->ShownMaps->setExclusive(true);
}

void ArithmeticSection::showProcessed()
{
    ui_->ShowProcessedMap->setChecked(true);
}

void ArithmeticSection::setReadiness(const QString& why)
{
    ui_->AskProcessMaps->setEnabled(why.isEmpty());
    ui_->AskProcessMaps->setToolTip(
        why.isEmpty() ? tr("Process both maps over the selected area, block by block") : why);
}
