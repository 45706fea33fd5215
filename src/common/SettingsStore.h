#pragma once

#include <QSettings>

/// The store of what the program remembers from one session to the next: places of windows, folders
/// of dialogs. Each use opens it anew, so that tests can choose where it lies.
inline QSettings settingsStore()
{
    return QSettings(QStringLiteral("Tessmoor Lab"), QStringLiteral("Morvenkite"));
}
