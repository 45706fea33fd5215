#include "batch/FindBar.h"

#include "batch/BatchEdit.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

FindBar::FindBar(BatchEdit& editor, QWidget* parent)
    : QWidget(parent)
    , editor_(editor)
    , field_(new QLineEdit)
    , told_(new QLabel)
{
    setObjectName(QStringLiteral("FindBar"));
    field_->setObjectName(QStringLiteral("FindText"));
    field_->setPlaceholderText(tr("Find"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(3);
    row->addWidget(field_, 1);
    const auto add = [&](const QString& text, const QString& tip, auto slot) {
        auto* const button = new QToolButton;
        button->setText(text);
        button->setToolTip(tip);
        button->setAutoRaise(true);
        row->addWidget(button);
        connect(button, &QToolButton::clicked, this, slot);
    };
    add(tr("Previous"), tr("Go back (Shift+F3)"), &FindBar::findPrevious);
    add(tr("Next"), tr("Go on (F3)"), &FindBar::findNext);
    row->addWidget(told_);
    add(tr("Close"), tr("Close (Esc)"), &FindBar::hide);
    connect(field_, &QLineEdit::textEdited, told_, &QLabel::clear);
    hide();
}

void FindBar::open()
{
    const QString selected = editor_.textCursor().selectedText();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
        field_->setText(selected);
    told_->clear();
    show();
    field_->setFocus();
    field_->selectAll();
}

void FindBar::find(bool backward)
{
    if (isHidden() && field_->text().isEmpty()) {
        open();
        return;
    }
    const bool found = editor_.findText(field_->text(), backward);
    told_->setText(found || field_->text().isEmpty() ? QString() : tr("not found"));
    if (!found && isHidden())
        show();
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        find(event->modifiers().testFlag(Qt::ShiftModifier));
        break;
    case Qt::Key_Escape:
        hide();
        editor_.setFocus();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}
