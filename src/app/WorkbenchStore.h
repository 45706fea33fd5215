#pragma once

#include <QByteArray>
#include <QSize>
#include <QStringList>

class ImageBox;
class QMainWindow;
class Workbench;

/// Which colours the program has.
enum class Colours
{
    Desktop, ///< as the desktop says
    Light,
    Dark
};

/// Gives the program these colours, at any time.
void applyColours(Colours colours);

// What is kept of the workbench between sessions. An unattended run neither reads nor writes it.

/// Places the window: as it was kept, or maximised on screens up to 1920 pixels wide, else 1600 x
/// 1000. What is kept of another version, or does not fit the screen any more, counts as nothing.
void restoreWorkbench(QMainWindow& window, Workbench& workbench, ImageBox& imageBox);
void saveWorkbench(const QMainWindow& window, const Workbench& workbench, const ImageBox& imageBox);
/// The place of a window that nothing is kept of.
void placeNewWindow(QMainWindow& window);

Colours keptColours();
void keepColours(Colours colours);

/// Folders that were opened, the last one first.
QStringList recentFolders();
void addRecentFolder(const QString& path);
/// The same of files of sessions.
QStringList recentSessions();
void addRecentSession(const QString& file);
