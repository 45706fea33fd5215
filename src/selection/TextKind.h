#pragma once

#include <QString>

enum class TextKind
{
    Other,
    Reference, ///< a spectrum over energies
    BadPixels  ///< a list of bad pixels
};

/// What a text file holds, as its first lines and, for a list of pixels without its size, its name
/// tell.
TextKind textKindOf(const QString& path);
