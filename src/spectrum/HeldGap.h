#pragma once

#include "spectrum/XafsSpectrum.h"

// A normalised value is a distance from the pre-edge line over the gap between both lines. Where
// the lines cross it has a pole, and a fit that reads one point next to the pole follows it. A
// Victoreen line, fitted over some 70 eV and read up to 320 eV beyond, crosses often.

/// Energies [eV], shift and offset taken off, that a comparison reads; ends included.
struct ReadRange
{
    double from = -1e300;
    double to = 1e300;

    /// True for nan too, which every sum takes in.
    bool contains(double E) const { return !(E < from || E > to); }
};

/// What a comparison is to read of doubleNormalizedPreBase of a spectrum whose lines may come too
/// close. Where a point that is read has a gap below a tenth of the step, the value is continued
/// by the step itself, from the edge outwards. Between the ranges of the two lines that would hide
/// the edge, and the spectrum is unsound.
class HeldGap
{
public:
    enum State
    {
        Sound,  ///< every value stands as it is
        Held,   ///< values beyond the edge are continued
        Unsound ///< nothing can be compared
    };

    /// Looks at a spectrum that is normalised; one without an edge is taken as it is (Sound).
    HeldGap(const XafsSpectrum& s, const ReadRange& read);

    State state() const { return state_; }

    /// Writes the continued values over those of the curve, one a point; nothing unless Held.
    void continueOver(double* values) const;
    /// The curve with the continued values.
    Spectrum curve() const;

    /// "Gap held above 9093.0 eV", "Gap unsound", or nothing: for people, translated.
    QString words() const;
    /// The same in English and without the capital, for the log.
    QString logText() const;

private:
    void sampleLines();
    bool isInside(int i) const;
    State judge(const ReadRange& read) const;
    void findEnds();
    bool isHeldAbove() const { return firstAbove_ < energies_.size(); }
    bool isHeldBelow() const { return lastBelow_ >= 0; }
    const char* sentence() const;
    QString withEnergies(QString text) const;

    const XafsSpectrum& s_; ///< outlives this object
    State state_ = Sound;
    double step_ = 0.0;
    int firstAbove_ = 0;                    ///< continued from this point upwards
    int lastBelow_ = -1;                    ///< and from this one downwards
    QVarLengthArray<double, 512> energies_; ///< of the curve, at which the lines were read
    QVarLengthArray<double, 512> pre_;
    QVarLengthArray<double, 512> post_;
};
