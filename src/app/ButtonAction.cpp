#include "app/ButtonAction.h"

#include <QAbstractButton>
#include <QEvent>

ButtonAction::ButtonAction(const QString& text, QAbstractButton* button, QObject* parent)
    : QAction(text, parent)
    , button_(button)
{
    button_->installEventFilter(this);
    connect(this, &QAction::triggered, button_, &QAbstractButton::click);
    follow();
}

bool ButtonAction::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::EnabledChange:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        follow();
        break;
    default:
        break;
    }
    return QAction::eventFilter(watched, event);
}

void ButtonAction::follow()
{
    setEnabled(button_->isEnabled());
    // Hidden itself, not merely on a page or in a window that is not shown.
    setVisible(!button_->isHidden());
}
