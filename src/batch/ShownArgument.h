#pragma once

#include "common/TextItems.h"

/// An argument in the words of a finding: in quotes, and cut where it would fill a page.
inline QString shown(const QString& argument)
{
    constexpr int longest = 300;
    return argument.size() > longest ? quoted(argument.left(longest) + QLatin1String("..."))
                                     : quoted(argument);
}
