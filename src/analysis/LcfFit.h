#pragma once

#include "spectrum/XafsSpectrum.h"

#include <QMetaType>
#include <QVector>

/// What the fit needs of one reference row, copied when a request is made: workers never see rows.
struct LcfReferenceData {
    XafsSpectrum spectrum; ///< isShifted on; eShift is the row's dE
    bool active = false;   ///< its use box is checked and it holds a valid file
    double weight = 0.0;   ///< the weight that the row shows
};

/// Conditions of a linear combination fit.
struct LcfRequest {
    QVector<LcfReferenceData> rows; ///< all rows of the panel, active or not
    double rangeStart = 0.0;        ///< fitting range [eV]
    double rangeEnd = 30000.0;
    /// During a walk the rows keep the weights of the last single fit, and the fit curve (and the
    /// residual that stands on it) is formed with those.
    bool inWalk = false;
    SuggestElm sElm;
};

/// Outcome of a linear combination fit of one spectrum.
struct LcfResult {
    bool analysed = false; ///< false: no points, or fewer than two rows; nothing else is set
    bool fitted = false;   ///< false: no edge step; ratios and dMuts are zero, one a row
    QVector<int> activeRows; ///< row of each entry of ratios and dMuts when fitted
    QVector<double> ratios;  ///< fitted weight of each active reference, not limited
    QVector<double> dMuts;   ///< weight times the edge step of the spectrum
    double zansa = 0.0;      ///< residual; only when fitted
    XafsSpectrum fit;        ///< the fit curve; normalised only outside a walk
};

Q_DECLARE_METATYPE(LcfRequest)
Q_DECLARE_METATYPE(LcfResult)
