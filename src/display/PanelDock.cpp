#include "display/PanelDock.h"

#include "common/WindowState.h"

PanelDock::PanelDock(const QString& name, const QString& title, QWidget* parent)
    : QDockWidget(title, parent)
{
    setObjectName(name);
}

void PanelDock::bringUp()
{
    show();
    // Shown first and the others hidden then: a place whose last dock is hidden would be given
    // away.
    Q_EMIT comesUp();
    raise();
    if (isFloating())
        activateWindow();
}

void raisePanel(QWidget* panel)
{
    for (QWidget* w = panel; w; w = w->parentWidget()) {
        if (auto* const dock = qobject_cast<PanelDock*>(w)) {
            dock->bringUp();
            return;
        }
    }
    if (panel)
        bringToFront(panel->window());
}
