#include "app/WorkbenchStore.h"

#include "app/Workbench.h"
#include "common/SettingsStore.h"
#include "display/ImageBox.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMainWindow>
#include <QPalette>
#include <QScreen>
#include <QStyle>

namespace {

const auto group = QStringLiteral("Workbench");
const auto geometryKey = QStringLiteral("geometry");
const auto layoutKey = QStringLiteral("layout");
const auto stepKey = QStringLiteral("step");
const auto rampKey = QStringLiteral("ramp");
const auto sectionsKey = QStringLiteral("sections");
const auto squareKey = QStringLiteral("squarePixels");
const auto coloursKey = QStringLiteral("colours");
const auto recentKey = QStringLiteral("recentFolders");
const auto sessionsKey = QStringLiteral("recentSessions");

constexpr int mostRecent = 8;
constexpr int widestMaximised = 1920;
constexpr QSize sizeOnWide(1600, 1000);

/// Of an empty store, the value that the reader names.
QVariant kept(const QString& key, const QVariant& otherwise)
{
    return settingsStore().value(group + QLatin1Char('/') + key, otherwise);
}

/// In front of the others, once.
void addRecent(const QString& key, const QString& path)
{
    const QString place = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    QStringList places = kept(key, {}).toStringList();
    places.removeAll(place);
    places.prepend(place);
    settingsStore().setValue(group + QLatin1Char('/') + key,
                             QStringList(places.mid(0, mostRecent)));
}

QPalette darkPalette()
{
    // Fields and boxes lie lighter than the window: the style outlines them darker than it, which
    // nobody sees here.
    const QColor window(49, 50, 54), base(76, 79, 86), text(232, 232, 232), dim(136, 136, 136);
    QPalette p(window);
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::AlternateBase, window);
    p.setColor(QPalette::Button, QColor(66, 68, 73));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(role, text);
    p.setColor(QPalette::BrightText, Qt::white);
    p.setColor(QPalette::PlaceholderText, QColor(228, 228, 228, 128));
    p.setColor(QPalette::ToolTipBase, base);
    p.setColor(QPalette::ToolTipText, text);
    p.setColor(QPalette::Link, QColor(120, 180, 245));
    p.setColor(QPalette::Highlight, QColor(66, 134, 206));
    p.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, dim);
    return p;
}

} // namespace

void applyColours(Colours colours)
{
    if (colours == Colours::Dark)
        QApplication::setPalette(darkPalette());
    else if (colours == Colours::Light)
        QApplication::setPalette(QApplication::style()->standardPalette());
    else
        QApplication::setPalette(QPalette());
}

void placeNewWindow(QMainWindow& window)
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    window.resize(sizeOnWide.boundedTo(room.size()));
    if (room.width() <= widestMaximised)
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void restoreWorkbench(QMainWindow& window, Workbench& workbench, ImageBox& imageBox)
{
    const QByteArray geometry = kept(geometryKey, {}).toByteArray();
    // It also brings a window back that was kept on a screen that is smaller now, or gone.
    if (geometry.isEmpty() || !window.restoreGeometry(geometry))
        placeNewWindow(window);
    workbench.restoreLayout(kept(layoutKey, {}).toByteArray());
    const int step = kept(stepKey, 0).toInt();
    if (step >= 0 && step < stepCount)
        workbench.openStep(Step(step));
    imageBox.setRamp(kept(rampKey, imageBox.ramp()).toInt());
    imageBox.setSectionsVisible(kept(sectionsKey, true).toBool());
    imageBox.setSquarePixels(kept(squareKey, true).toBool());
}

void saveWorkbench(const QMainWindow& window, const Workbench& workbench, const ImageBox& imageBox)
{
    QSettings store = settingsStore();
    store.beginGroup(group);
    store.setValue(geometryKey, window.saveGeometry());
    store.setValue(layoutKey, workbench.layout());
    store.setValue(stepKey, int(workbench.step()));
    store.setValue(rampKey, imageBox.ramp());
    store.setValue(sectionsKey, imageBox.sectionsVisible());
    store.setValue(squareKey, imageBox.squarePixels());
}

Colours keptColours()
{
    const int number = kept(coloursKey, int(Colours::Desktop)).toInt();
    return number == int(Colours::Light) || number == int(Colours::Dark) ? Colours(number)
                                                                         : Colours::Desktop;
}

void keepColours(Colours colours)
{
    settingsStore().setValue(group + QLatin1Char('/') + coloursKey, int(colours));
}

QStringList recentFolders()
{
    return kept(recentKey, {}).toStringList();
}

void addRecentFolder(const QString& path)
{
    addRecent(recentKey, path);
}

QStringList recentSessions()
{
    return kept(sessionsKey, {}).toStringList();
}

void addRecentSession(const QString& file)
{
    addRecent(sessionsKey, file);
}
