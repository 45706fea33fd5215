#include "display/CoveringPage.h"

#include <QEvent>

CoveringPage::CoveringPage(QWidget* parent)
    : QWidget(parent)
{
    setAutoFillBackground(true);
    hide();
    if (parent)
        parent->installEventFilter(this);
}

void CoveringPage::cover()
{
    if (parentWidget())
        setGeometry(parentWidget()->rect());
    show();
    raise();
}

bool CoveringPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && watched == parent())
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}
