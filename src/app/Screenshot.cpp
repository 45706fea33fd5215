#include "app/Screenshot.h"

#include "common/Fault.h"
#include "common/FileNames.h"
#include "output/PictureFile.h"

#include <QApplication>
#include <QWidget>

namespace {

bool isCalled(const QWidget* window, const QString& name)
{
    return window->objectName().compare(name, Qt::CaseInsensitive) == 0 ||
           window->windowTitle().compare(name, Qt::CaseInsensitive) == 0;
}

/// Panels, and windows with a name; pop-ups and the like have none.
QWidgetList namedWindows(const QVector<QWidget*>& panels)
{
    QWidgetList windows = panels.toList();
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (!widget->objectName().isEmpty() && !widget->windowTitle().isEmpty() &&
            !windows.contains(widget))
            windows.append(widget);
    }
    return windows;
}

QWidget* findWindow(const QWidgetList& windows, const QString& name)
{
    QWidget* found = nullptr;
    for (QWidget* window : windows) {
        if (isCalled(window, name) && (!found || window->isVisible()))
            found = window;
    }
    return found;
}

} // namespace

void saveScreenshot(const QVector<QWidget*>& panels, const QString& window, const QString& fname)
{
    const QWidgetList windows = namedWindows(panels);
    if (QWidget* found = findWindow(windows, window)) {
        // A panel whose dock was never shown has had no size yet.
        if (!found->isVisible())
            found->resize(found->size().expandedTo(found->sizeHint()));
        savePicture(found->grab().toImage(), withExtension(fname, QStringLiteral("png")));
        return;
    }
    QStringList names;
    for (const QWidget* known : windows)
        names << known->objectName();
    names.removeDuplicates();
    names.sort();
    fault(QStringLiteral("No window %1 to save; windows: %2")
              .arg(window, names.join(QLatin1String(", "))));
}
