#pragma once

#include <QString>

/// Saves a window of the program as a picture, as it stands, shown or hidden. `window` is the
/// window's object name ("Body", "Analyzer", "BatchCtrl" ...) or its title, in any case; a shown
/// window goes before a hidden one of the same name. An unknown window costs one log line that
/// names those there are.
void saveScreenshot(const QString& window, const QString& fname);
