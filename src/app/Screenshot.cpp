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

/// Windows with a name; pop-ups and the like have none.
QWidgetList namedWindows()
{
    QWidgetList windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (!widget->objectName().isEmpty() && !widget->windowTitle().isEmpty())
            windows.append(widget);
    }
    return windows;
}

QWidget* findWindow(const QString& name)
{
    QWidget* found = nullptr;
    for (QWidget* window : namedWindows()) {
        if (isCalled(window, name) && (!found || window->isVisible()))
            found = window;
    }
    return found;
}

} // namespace

void saveScreenshot(const QString& window, const QString& fname)
{
    if (QWidget* found = findWindow(window)) {
        savePicture(found->grab().toImage(), withExtension(fname, QStringLiteral("png")));
        return;
    }
    QStringList names;
    for (const QWidget* known : namedWindows())
        names << known->objectName();
    names.removeDuplicates();
    names.sort();
    fault(QStringLiteral("No window %1 to save; windows: %2")
              .arg(window, names.join(QLatin1String(", "))));
}
