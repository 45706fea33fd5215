#pragma once

#include "image/BlockSpectrum.h"
#include "image/CommonArea.h"
#include "maps/WalkRuns.h"
#include "spectrum/XafsSpectrum.h"
#include "walk/ShiftField.h"

#include <memory>

/// How far a position is worked out; each stage needs those before it.
enum class Stage
{
    Counts, ///< sums of I1, without dark or I0
    Mu,     ///< absorption
    Lines,  ///< pre-edge and post-edge line and the edge
    Curve,  ///< the normalised curve that fits compare
    Shown,  ///< all normalised curves, for the eye
};

/// All that spectra are formed and normalised by, frozen by cheap copies: the images are shared and
/// const, the rest are values. Immutable once it is handed on: any thread reads it, and nothing
/// that a user changes later reaches what works on it.
struct WalkSource
{
    TiffStack i1; ///< with energies and shifts as they stood
    TiffStack i0;
    BlockConditions block; ///< half widths, dark terms, I0, fluorescence, total I0
    ShiftField shifts;     ///< empty for a calibration
    SuggestElm elm;
    int background = VictLine::Straight; ///< of the positions' spectra

    /// The plain form of every spectrum, of the block round (x, y): cursor, walk, calibration and
    /// export alike. Points are (energy [eV], counts or mu); empty outside the image.
    XafsSpectrum spectrum(int x, int y, Stage stage) const;

    /// The curve of a block as spectrum(x, y, Stage::Mu) gives it.
    Spectrum mu(int x, int y) const;

    /// Works a spectrum of Stage::Mu out up to a later stage.
    void workOut(XafsSpectrum& spectrum, Stage stage) const;

    /// Where all images that spectra are formed of have pixels.
    CommonArea commonArea() const;

    /// Least and greatest energy of the I1 images, which there must be. [eV]
    double leastEnergy() const;
    double greatestEnergy() const;

    /// The spectrum of a block's curve, not normalised yet; its offset is as shifts.at() gives it.
    XafsSpectrum unnormalized(const Spectrum& curve, double offset) const;
};

using SharedSource = std::shared_ptr<const WalkSource>;
