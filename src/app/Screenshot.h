#pragma once

#include <QString>
#include <QVector>

class QWidget;

/// Saves a window of the program, or one of the panels, as a picture, as it stands, shown or
/// hidden. `window` is its object name ("Body", "Analyzer", "BatchCtrl" ...) or its title, in any
/// case; a shown window goes before a hidden one of the same name. An unknown window costs one log
/// line that names those there are.
void saveScreenshot(const QVector<QWidget*>& panels, const QString& window, const QString& fname);
