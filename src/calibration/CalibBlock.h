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
    SuggestElm sElm;
};

/// Energy [eV] by which a block's spectrum lies above the standard, which must be normalised. An
/// empty spectrum, outside the image, gives nan; a search whose step is below the finest one gives
/// 0. Not finite where an edge's mid point isn't.
double blockShift(const Spectrum& raw, const XafsSpectrum& standard,
                  const CalibConditions& conditions);

/// Statistics of the shifts of a calibration, gathered position by position. [eV]
struct CalibStatistics
{
    int count = 0; ///< finite shifts; without any the rest is nan after close()
    double min = runningMinStart;
    double max = runningMaxStart;
    double mean = 0.0;
    double sigma = 0.0; ///< standard deviation, set by close()

    /// Takes the shift measured at a position of the walk, in the walk's order. Returns what the
    /// map is to hold: the shift, or 0 for one that is not finite, which no other number counts.
    double take(const QPoint& position, double shift);

    /// Works out sigma from what the map holds at the positions of the walk (0 outside the map),
    /// and logs how many shifts were not finite, if any.
    void close(const AnalyzeCond& walk, const Analyzed2DRes& map);

    int notFiniteCount() const { return static_cast<int>(notFinite_.size()); }

private:
    bool wasNotFinite(const QPoint& position) const;

    double sum_ = 0.0;
    std::vector<QPoint> notFinite_; ///< by row, then column: the walk's order
};
