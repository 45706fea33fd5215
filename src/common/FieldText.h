#pragma once

#include <QString>

/// A number as line edits show it: at most six significant digits.
inline QString fieldText(double v)
{
    return QString::number(v, 'g', 6);
}
