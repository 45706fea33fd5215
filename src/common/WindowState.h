#pragma once

#include <QString>

class QWidget;

// Geometry of windows in the settings store, one group for each window. GUI thread.

/// Writes size, position and visibility of the window, whether it is maximised, and `popUp`, under
/// `group`. Of a maximised one size and position are those it had before.
void saveWindowState(QWidget* w, const QString& group, bool popUp);

/// Whether a state has been written under `group`.
bool isWindowStateStored(const QString& group);

/// Resizes, moves, maximises and shows or hides the window as `group` tells, and stores the pop-up
/// mode in `popUp`. An empty store gives 400 by 400 at (200, 200), shown, with pop-up mode on. A
/// window of whose upper edge too little lies on a screen is moved there as a whole, and made
/// smaller if need be.
void loadWindowState(QWidget* w, const QString& group, bool* popUp);

/// Shows the window, minimised or hidden behind others as it may be, and makes it the active one.
void bringToFront(QWidget* w);
