#pragma once

#include "spectrum/Remark.h"
#include "spectrum/SuggestElm.h"

#include <QVector>

class XafsSpectrum;

/// What the form's suggested edge means for a spectrum from a file.
struct EdgeHint
{
    SuggestElm elm;       ///< as the form stands; elm.use tells whether a suggestion is on
    bool applied = false; ///< the spectrum is normalised by it, and not over the whole file

    bool inForce() const { return applied && elm.use; }
    /// The element to normalise by. Its threshold is 0: a file is never thrown away for noise.
    SuggestElm element() const;
    /// Whether both mean the same for normalising and for doubts.
    bool isLike(const EdgeHint& other) const;
};

/// Raw energies [eV] at which the smoothed curve rises most; nan for a curve that never does.
struct SteepestRises
{
    double perStep; ///< from one point to the next: what the search for the edge goes by
    double perEV;   ///< by its slope, which uneven steps do not mislead
};

/// Looks over the whole curve of a spectrum that has been normalised, whatever its window.
SteepestRises steepestRises(const XafsSpectrum& s);

/// What speaks against the edge that the search takes.
QVector<Remark> edgeDoubts(const SteepestRises& rises, const EdgeHint& hint);
