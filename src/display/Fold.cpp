#include "display/Fold.h"

#include <QToolButton>
#include <QVBoxLayout>

Fold::Fold(const QString& title, QWidget* content, QWidget* parent)
    : QWidget(parent)
    , heading_(new QToolButton(this))
    , content_(content)
{
    heading_->setText(title);
    heading_->setCheckable(true);
    heading_->setAutoRaise(true);
    heading_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    heading_->setArrowType(Qt::RightArrow);
    heading_->setFocusPolicy(Qt::StrongFocus);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(heading_);
    layout->addWidget(content_);
    content_->hide();
    connect(heading_, &QToolButton::toggled, this, [this](bool open) {
        heading_->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
        content_->setVisible(open);
        Q_EMIT toggled(open);
    });
}

bool Fold::isOpen() const
{
    return heading_->isChecked();
}

void Fold::setReason(const QString& reason)
{
    if (!reason.isEmpty())
        setOpen(false);
    heading_->setEnabled(reason.isEmpty());
    heading_->setToolTip(reason);
}

void Fold::setOpen(bool open)
{
    heading_->setChecked(open);
}
