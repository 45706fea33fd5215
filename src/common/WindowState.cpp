#include "common/WindowState.h"

#include <QGuiApplication>
#include <QPoint>
#include <QScreen>
#include <QSettings>
#include <QSize>
#include <QWidget>

namespace {

const auto organisation = QStringLiteral("Tessmoor Lab");
const auto application = QStringLiteral("Morvenkite");
const auto sizeKey = QStringLiteral("size");
const auto posKey = QStringLiteral("pos");
const auto visibleKey = QStringLiteral("visible");
const auto popUpKey = QStringLiteral("popUp");

/// The rectangle moved into the bounds, and cut to their size.
QRect fittedInto(const QRect& bounds, const QRect& asked)
{
    QRect fitted(asked.topLeft(), asked.size().boundedTo(bounds.size()));
    fitted.moveLeft(qBound(bounds.left(), fitted.left(), bounds.right() + 1 - fitted.width()));
    fitted.moveTop(qBound(bounds.top(), fitted.top(), bounds.bottom() + 1 - fitted.height()));
    return fitted;
}

/// Screens come and go between two sessions.
void keepOnScreen(QWidget* w)
{
    const QRect asked(w->pos(), w->size());
    const QScreen* screen = QGuiApplication::screenAt(asked.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect fitted = fittedInto(screen->availableGeometry(), asked);
    w->resize(fitted.size());
    w->move(fitted.topLeft());
}

} // namespace

void saveWindowState(QWidget* w, const QString& group, bool popUp)
{
    QSettings store(organisation, application);
    store.beginGroup(group);
    store.setValue(sizeKey, w->geometry().size());
    store.setValue(posKey, w->pos());
    store.setValue(visibleKey, w->isVisible());
    store.setValue(popUpKey, popUp);
    store.endGroup();
}

bool isWindowStateStored(const QString& group)
{
    return QSettings(organisation, application).childGroups().contains(group);
}

void loadWindowState(QWidget* w, const QString& group, bool* popUp)
{
    QSettings store(organisation, application);
    store.beginGroup(group);
    w->resize(store.value(sizeKey, QSize(400, 400)).toSize());
    w->move(store.value(posKey, QPoint(200, 200)).toPoint());
    keepOnScreen(w);
    w->setVisible(store.value(visibleKey, true).toBool());
    *popUp = store.value(popUpKey, true).toBool();
    store.endGroup();
}

void bringToFront(QWidget* w)
{
    w->setWindowState(w->windowState() & ~Qt::WindowMinimized);
    w->show();
    w->raise();
    w->activateWindow();
}
