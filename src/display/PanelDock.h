#pragma once

#include <QDockWidget>

/// A dock that holds one panel of the workbench. Whoever has the panel brings the dock up by
/// raisePanel(), and needs to know neither the dock nor where it lies.
class PanelDock : public QDockWidget
{
    Q_OBJECT
public:
    /// `name` is its object name, by which its place is kept.
    PanelDock(const QString& name, const QString& title, QWidget* parent);

    /// Shows the dock in front of those that share its place, or its window.
    void bringUp();

Q_SIGNALS:
    /// bringUp() shows the dock now: those that give way to it are to be hidden.
    void comesUp();
};

/// Shows a panel where it lives: in its dock, which comes up, or in a window of its own, which
/// comes to the front. Null changes nothing.
void raisePanel(QWidget* panel);
