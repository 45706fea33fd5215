#pragma once

#include <QString>
#include <QStringList>

/// What of a folder is to be loaded, and how.
struct FolderChoice
{
    QStringList i1;       ///< paths, in the order of loading
    QStringList i0;       ///< empty for none
    QString dark;         ///< empty for none
    bool byNames = false; ///< the energies stand in the names
    QString pattern;      ///< where in the names, see EnergyRule
    double factor = 1.0;
    double start = 0.0; ///< else they are even steps from here [eV]
    double step = 0.0;
    QStringList references;
    QString badPixels; ///< file of the list; empty for none
};
