#pragma once

#include <QLocale>
#include <QString>

/// A number as line edits show it: at most six significant digits.
inline QString fieldText(double v)
{
    return QString::number(v, 'g', 6);
}

/// An energy [eV] as fields and files hold it: the shortest text that reads back the same number.
inline QString energyText(double eV)
{
    return QString::number(eV, 'g', QLocale::FloatingPointShortest);
}
