#include "spectrum/EdgeDoubt.h"

#include "spectrum/XafsSpectrum.h"

#include <QCoreApplication>

#include <cmath>
#include <limits>

namespace {

constexpr double apartLimit = 5.0;       ///< between both steepest rises [eV]
constexpr double suggestionLimit = 20.0; ///< between the steepest slope and the suggested edge [eV]

constexpr const char* unevenText = QT_TRANSLATE_NOOP(
    "Remark", "edge at %1 eV; the steepest slope is at %2 eV; uneven steps: use Suggest Elm.");
constexpr const char* elsewhereText =
    QT_TRANSLATE_NOOP("Remark", "the suggested edge is at %1 eV; the steepest slope is at %2 eV");

/// The same number, or both none: nan must not look like a change for ever.
bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

QString energy(double eV)
{
    return QString::number(eV, 'f', 1);
}

} // namespace

SuggestElm EdgeHint::element() const
{
    SuggestElm told = elm;
    told.use = inForce();
    told.thJump = 0.0;
    return told;
}

bool EdgeHint::isLike(const EdgeHint& other) const
{
    if (!elm.use || !other.elm.use)
        return elm.use == other.elm.use;
    return applied == other.applied && same(elm.edgeE, other.elm.edgeE) &&
           same(elm.preEnd, other.elm.preEnd) && same(elm.postStart, other.elm.postStart);
}

/// A slope is counted between means of energies over the window of the smoothing: over single steps
/// it would grow without bounds where two points nearly share their energy.
SteepestRises steepestRises(const XafsSpectrum& s)
{
    Spectrum energies;
    for (const QPointF& p : s.points)
        energies.append(p.x(), p.x());
    energies.genSmoothed(XafsSpectrum::edgeSmoothing);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    SteepestRises at{nan, nan};
    double bestRise = 0.0;
    double bestSlope = 0.0;
    for (int i = 0; i + 1 < s.smoothed.size(); ++i) {
        const double rise = s.smoothed[i + 1] - s.smoothed[i];
        const double slope = rise / (energies.smoothed[i + 1] - energies.smoothed[i]);
        if (rise > bestRise) {
            bestRise = rise;
            at.perStep = s.points[i].x();
        }
        if (slope > bestSlope) {
            bestSlope = slope;
            at.perEV = s.points[i].x();
        }
    }
    return at;
}

QVector<Remark> edgeDoubts(const SteepestRises& rises, const EdgeHint& hint)
{
    QVector<Remark> doubts;
    // With the hint in force the edge is searched near it, and uneven steps elsewhere do no harm.
    if (!hint.inForce() && std::abs(rises.perStep - rises.perEV) > apartLimit)
        doubts.append({unevenText, {energy(rises.perStep), energy(rises.perEV)}});
    if (hint.elm.use && std::abs(rises.perEV - hint.elm.edgeE) > suggestionLimit)
        doubts.append({elsewhereText, {energy(hint.elm.edgeE), energy(rises.perEV)}});
    return doubts;
}
