#include "display/Fold.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int air = 4; ///< round the contents [pixels]

QAbstractButton* newChooser(Fold::Head head, const QString& text, QWidget* parent)
{
    if (head == Fold::OneOfMany)
        return new QRadioButton(text, parent);
    return new QCheckBox(text, parent);
}

} // namespace

Fold::Fold(const QString& boxName, const QString& boxText, QWidget* parent, Head head)
    : QFrame(parent)
    , chooser_(newChooser(head, boxText, this))
    , arrow_(new QToolButton(this))
    , body_(new QWidget(this))
{
    setFrameShape(QFrame::StyledPanel);
    arrow_->setObjectName(boxName + QStringLiteral("Arrow"));
    arrow_->setCheckable(true);
    arrow_->setAutoRaise(true);
    chooser_->setObjectName(boxName);
    auto* const header = new QHBoxLayout;
    header->setSpacing(air);
    header->addWidget(chooser_, 1);
    header->addWidget(arrow_);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(air, 2, air, 2);
    column->setSpacing(2);
    column->addLayout(header);
    column->addWidget(body_);
    connect(arrow_, &QToolButton::toggled, this, &Fold::setOpen);
    connect(chooser_, &QAbstractButton::toggled, this, &Fold::setOpen);
    body_->setVisible(true);
    setOpen(false);
}

bool Fold::isChosen() const
{
    return chooser_->isChecked();
}

bool Fold::isOpen() const
{
    return arrow_->isChecked();
}

void Fold::setOpen(bool f)
{
    arrow_->setChecked(f);
    arrow_->setArrowType(f ? Qt::DownArrow : Qt::LeftArrow);
    arrow_->setToolTip(f ? tr("Fold this part away") : tr("Show this part"));
    body_->setVisible(f);
}
