#pragma once

#include "common/Constants.h"
#include "maps/AnalyzeCond.h"
#include "spectrum/XafsSpectrum.h"

#include <QPoint>

#include <vector>

class Analyzed2DRes;

/// How the energy of a block is compared with the standard's.
enum class CalibMethod
{
    MidPoint,    ///< difference of the edge mid points
    InnerProduct ///< greatest normalised inner product over shifts round that difference
};

/// Conditions of a calibration. Energies in eV.
struct CalibConditions
{
    CalibMethod method = CalibMethod::MidPoint;
    double range = 20.0;                     ///< search of the inner product: first half range,
    double step = 1.0;                       ///< its step,
    double minStep = 0.1;                    ///< and the finest step
    int backgroundMode = VictLine::Straight; ///< of the blocks' spectra
    /// The inner product compares curves that are continued by the step where their lines come too
    /// close; otherwise curves as they are.
    bool holdGap = true;
    SuggestElm sElm;
};

/// What a calibration finds at a position.
struct BlockShift
{
    double shift = 0.0; ///< [eV]; 0 unless fitted
    Outcome outcome = Outcome::NoPoints;
    bool gapHeld = false; ///< measured on values that were continued by the step

    bool fitted() const { return outcome == Outcome::Fitted; }
};

/// Energy [eV] by which a block's spectrum lies above the standard, which must be normalised. A
/// search whose step is below the finest one gives 0. Not finite where the standard's mid point
/// isn't.
BlockShift blockShift(const Spectrum& raw, const XafsSpectrum& standard,
                      const CalibConditions& conditions);

/// The same of a block that is normalised by the conditions' background and suggested edge.
BlockShift shiftOfNormalized(XafsSpectrum block, const XafsSpectrum& standard,
                             const CalibConditions& conditions);

/// The standard as a calibration compares it: its curve continued by the step where its lines come
/// too close, and one log line about that. An unsound one is taken as it is.
XafsSpectrum comparedStandard(const XafsSpectrum& standard, const CalibConditions& conditions);

/// Statistics of the shifts of a calibration, gathered position by position. [eV]
struct CalibStatistics
{
    int count = 0; ///< shifts that count; without any the rest is nan after close()
    double min = runningMinStart;
    double max = runningMaxStart;
    double mean = 0.0;
    double sigma = 0.0;  ///< standard deviation, set by close()
    double median = 0.0; ///< set by close(), as is
    double mad = 0.0;    ///< the median of the distances from the median
    OutcomeCounts outcomes;

    /// Takes what was found at a position of the walk, in the walk's order. True when its shift
    /// counts: the position is fitted and the shift finite. Others have no shift; the map holds 0
    /// there, which no number takes in.
    bool take(const QPoint& position, const BlockShift& found);

    /// Works out sigma from what the map holds at the positions of the walk that count (0 outside
    /// the map), the medians from the shifts taken, and logs how many fitted shifts were not
    /// finite, if any. Once: the single shifts are forgotten by it.
    void close(const AnalyzeCond& walk, const Analyzed2DRes& map);

private:
    bool wasLeftOut(const QPoint& position) const;

    double sum_ = 0.0;
    int notFinite_ = 0;
    std::vector<double> taken_;   ///< shifts that count
    std::vector<QPoint> leftOut_; ///< by row, then column: the walk's order
};
