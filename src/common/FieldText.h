#pragma once

#include "common/ShortestText.h"

#include <QString>

/// A number as line edits show it: at most six significant digits.
inline QString fieldText(double v)
{
    return QString::number(v, 'g', 6);
}

/// The same for narrow fields: at most `digits` significant ones, and three where an exponent is
/// needed, which must not be cut off.
inline QString narrowText(double v, int digits)
{
    const QString text = QString::number(v, 'g', digits);
    return text.contains(QLatin1Char('e')) ? QString::number(v, 'g', 3) : text;
}

/// The shortest text that reads back the same number, for what is kept in files.
inline QString shortestText(double v)
{
    char text[shortestTextSize];
    return QString::fromLatin1(text, static_cast<int>(writeShortest(v, text) - text));
}

/// An energy [eV] as fields and files hold it.
inline QString energyText(double eV)
{
    return shortestText(eV);
}
