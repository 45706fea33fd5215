#pragma once

#include "analysis/lcf/LcfFit.h"

#include <cmath>
#include <random>

/// Energies of a scan in three regions round an edge near 9000 eV.
inline QVector<double> scanEnergies(int n)
{
    QVector<double> energies;
    for (int i = 0; i < n; ++i)
        energies.append(8850.0 + 350.0 * i / (n - 1) + 0.3 * std::sin(0.7 * i));
    return energies;
}

/// An edge of the given step and place on a sloping background, with wiggles behind the edge.
inline double edgeShape(double E, double edge, double step, double wiggle)
{
    const double rise = 0.5 + std::atan((E - edge) / 1.5) / 3.141592653589793;
    const double tail = E > edge ? std::sin((E - edge) / wiggle) * std::exp(-(E - edge) / 60) : 0;
    return 0.2 + 1e-4 * (E - 8850.0) + step * rise * (1.0 + 0.2 * tail);
}

inline XafsSpectrum edgeSpectrum(const QVector<double>& energies, double edge, double step,
                                 double wiggle, double eOffset = 0.0)
{
    Spectrum s;
    for (const double E : energies)
        s.append(E, edgeShape(E, edge, step, wiggle));
    return {s, QStringLiteral("test"), VictLine::Straight, eOffset, SuggestElm()};
}

/// Four rows, the third not in use, of different energy spans and shifts.
inline LcfRequest fourRows()
{
    LcfRequest request;
    for (int i = 0; i < 4; ++i) {
        LcfReferenceData row{
            edgeSpectrum(scanEnergies(300 - 65 * i), 8990 + 3 * i, 1.4 - 0.2 * i, 9 + 4 * i),
            i != 2, 0.1 + 0.2 * i};
        row.spectrum.isShifted = true;
        row.spectrum.eShift = 0.7 * (i % 3);
        request.rows.append(row);
    }
    return request;
}
