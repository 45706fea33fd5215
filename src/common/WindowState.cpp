#include "common/WindowState.h"

#include <QPoint>
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

void loadWindowState(QWidget* w, const QString& group, bool* popUp)
{
    QSettings store(organisation, application);
    store.beginGroup(group);
    w->resize(store.value(sizeKey, QSize(400, 400)).toSize());
    w->move(store.value(posKey, QPoint(200, 200)).toPoint());
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
