#pragma once

#include <cmath>

/// A monochromator crystal's reflection.
struct Crystal
{
    const char* name;
    double spacing; ///< of its lattice planes [angstrom]
};

/// The crystals to choose from; batches know them by their place in the list.
constexpr Crystal crystals[] = {{"Si(111)", 3.1355316},
                                {"Si(311)", 1.637478},
                                {"Si(333)", 1.0451772},
                                {"Ge(111)", 3.2663822},
                                {"Ge(333)", 1.0887941}};

/// Spacing where none is told: Si(111) as beamlines write it [angstrom].
constexpr double defaultCrystalSpacing = 3.13553;

/// Whether a crystal can have this spacing [angstrom].
inline bool isSpacing(double spacing)
{
    return spacing > 0.0 && std::isfinite(spacing);
}
