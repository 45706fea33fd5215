#include "analysis/elements/AElemsConds.h"

#include "common/FieldText.h"
#include "display/NumberFields.h"
#include "ui_AElemsConds.h"

AElemsConds::AElemsConds(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_AElemsConds>())
{
    ui_->setupUi(this);
    for (const QLineEdit* taken : {ui_->BGVDMut, ui_->BGVDE, ui_->BGVROI}) {
        connect(taken, &QLineEdit::textChanged, this, &AElemsConds::changed);
        connect(taken, &QLineEdit::editingFinished, this, &AElemsConds::edited);
    }
}

AElemsConds::~AElemsConds() = default;

QLineEdit* AElemsConds::field(Field which) const
{
    QLineEdit* const fields[] = {ui_->BGVDMut, ui_->BGVDMutR, ui_->BGVDE, ui_->BGVROI,
                                 ui_->BGVNROI};
    return fields[which];
}

void AElemsConds::setValue(Field which, double v)
{
    field(which)->setText(fieldText(v));
    Q_EMIT edited();
}

void AElemsConds::fill(ElementConditions& conditions) const
{
    conditions.bgJump = fieldValue(ui_->BGVDMut);
    conditions.bgDE = fieldValue(ui_->BGVDE);
    conditions.bgRoi = fieldValue(ui_->BGVROI);
}
