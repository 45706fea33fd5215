#include "common/WindowState.h"

#include "common/SettingsStore.h"

#include <QGuiApplication>
#include <QPoint>
#include <QScreen>
#include <QSize>
#include <QWidget>

namespace {

const auto sizeKey = QStringLiteral("size");
const auto posKey = QStringLiteral("pos");
const auto visibleKey = QStringLiteral("visible");
const auto popUpKey = QStringLiteral("popUp");
const auto maximizedKey = QStringLiteral("maximized");

/// A window can be taken hold of by this much of its upper edge [pixels].
constexpr QSize graspSize(80, 20);

/// Some of the upper edge lies on a screen.
bool isInReach(const QRect& window)
{
    const QRect edge(window.topLeft(), QSize(window.width(), graspSize.height()));
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect seen = edge & screen->availableGeometry();
        if (seen.width() >= qMin(graspSize.width(), window.width()) &&
            seen.height() >= graspSize.height() / 2)
            return true;
    }
    return false;
}

/// The rectangle moved into the bounds, and cut to their size.
QRect fittedInto(const QRect& bounds, const QRect& asked)
{
    QRect fitted(asked.topLeft(), asked.size().boundedTo(bounds.size()));
    fitted.moveLeft(qBound(bounds.left(), fitted.left(), bounds.right() + 1 - fitted.width()));
    fitted.moveTop(qBound(bounds.top(), fitted.top(), bounds.bottom() + 1 - fitted.height()));
    return fitted;
}

/// Screens come and go between two sessions: a window out of reach comes back onto one.
QRect reachable(const QRect& asked)
{
    if (isInReach(asked))
        return asked;
    const QScreen* screen = QGuiApplication::screenAt(asked.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return fittedInto(screen->availableGeometry(), asked);
}

} // namespace

void saveWindowState(QWidget* w, const QString& group, bool popUp)
{
    QSettings store = settingsStore();
    store.beginGroup(group);
    // A maximised window's own place is where it goes when it is not; that knows of no frame.
    const bool maximized = w->isMaximized();
    if (!maximized || w->normalGeometry().isValid()) {
        const QRect place = maximized ? w->normalGeometry() : QRect(w->pos(), w->size());
        store.setValue(sizeKey, place.size());
        store.setValue(posKey, place.topLeft());
    }
    store.setValue(maximizedKey, maximized);
    store.setValue(visibleKey, w->isVisible());
    store.setValue(popUpKey, popUp);
    store.endGroup();
}

bool isWindowStateStored(const QString& group)
{
    return settingsStore().childGroups().contains(group);
}

void loadWindowState(QWidget* w, const QString& group, bool* popUp)
{
    QSettings store = settingsStore();
    store.beginGroup(group);
    const QRect place = reachable(QRect(store.value(posKey, QPoint(200, 200)).toPoint(),
                                        store.value(sizeKey, QSize(400, 400)).toSize()));
    if (store.value(maximizedKey, false).toBool()) {
        w->setGeometry(place);
        w->setWindowState(w->windowState() | Qt::WindowMaximized);
    } else {
        w->setWindowState(w->windowState() & ~Qt::WindowMaximized);
        w->resize(place.size());
        w->move(place.topLeft());
    }
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
