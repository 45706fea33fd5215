#pragma once

#include "analysis/diagnostics/DarkCheck.h"
#include "image/ErrPoints.h"

// The files of a dark check. They have names of their own, and go into the folder that the program
// runs in. Lists of pixels have the form in which bad pixels are defined, so each can be loaded as
// such a list.

/// The dark pixels that are not on a list of bad pixels, and those of the list that are not dark,
/// each in the order of its own list.
struct DarkCheckDifferences
{
    QVector<QPoint> onlyDark;
    QVector<QPoint> onlyListed;
};
DarkCheckDifferences differencesOf(const DarkCheckResult& result, const ErrPoints& badPixels);

/// Writes the five files, and tells the log the path of each. False, with one fault line, at the
/// first that can not be written; those behind it are not written then.
bool writeDarkCheck(const DarkCheckResult& result, const DarkCheckSettings& settings,
                    const DarkCheckDifferences& differences);
