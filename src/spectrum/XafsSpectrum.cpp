#include "spectrum/XafsSpectrum.h"

#include "common/TwoPointLine.h"
#include "spectrum/EdgeRules.h"
#include "spectrum/ShiftSearch.h"

#include <algorithm>
#include <cmath>

/// Energies and both lines at every point: read once by the search for the mid point and once by
/// the normalised curves, and kept off the heap for the usual number of energies.
struct XafsSpectrum::LineSamples
{
    QVarLengthArray<double, 512> energies;
    QVarLengthArray<double, 512> pre;
    QVarLengthArray<double, 512> post;

    LineSamples(const XafsSpectrum& s, const Wavelengths& lambdas)
        : energies(s.size())
        , pre(s.size())
        , post(s.size())
    {
        const QPointF* p = s.points.constData();
        const double shift = s.shift();
        double* e = energies.data();
        for (int i = 0; i < s.size(); ++i)
            e[i] = p[i].x() - shift;
        s.pre.valuesAt(e, lambdas, s.size(), pre.data());
        s.post.valuesAt(e, lambdas, s.size(), post.data());
    }
};

XafsSpectrum::XafsSpectrum()
{
    init(name, sElm);
}

XafsSpectrum::XafsSpectrum(const Spectrum& s, const QString& spectrumName, int backgroundMode,
                           double energyOffset, const SuggestElm& elm)
    : Spectrum(s)
{
    init(spectrumName, elm);
    mode = backgroundMode;
    eOffset = energyOffset;
    normalizeIfData(backgroundMode);
}

XafsSpectrum XafsSpectrum::unnormalized(const Spectrum& s, const QString& spectrumName,
                                        int backgroundMode, double energyOffset,
                                        const SuggestElm& elm)
{
    XafsSpectrum result;
    static_cast<Spectrum&>(result) = s;
    result.init(spectrumName, elm);
    result.mode = backgroundMode;
    result.eOffset = energyOffset;
    return result;
}

void XafsSpectrum::init(const QString& spectrumName, const SuggestElm& elm)
{
    name = spectrumName;
    sElm = elm;
    isMute = 1;
    mode = VictLine::Straight;
    dPreS = -1000.0;
    dPostE = 1000.0;
    dPreE = elm.use ? elm.preEnd : -10.0;
    dPostS = elm.use ? elm.postStart : 10.0;
    midx = dMut = eOffset = 0.0;
    outOfRangeMidx = noisyMidx = linesClose = false;
    outcome = Outcome::NoPoints;
    edgeIndex = 0;
}

void XafsSpectrum::normalizeIfData(int backgroundMode, Curves curves)
{
    if (!isEmpty())
        normalize(backgroundMode, curves);
}

void XafsSpectrum::normalize(int backgroundMode, Curves curves)
{
    genSmoothed(edgeSmoothing);
    edgeIndex = steepestIndex();
    midx = x(edgeIndex);
    const Wavelengths lambdas =
        backgroundMode == VictLine::Victoreen ? wavelengthsOf(*this) : Wavelengths();
    fitLines(midx, backgroundMode, lambdas);
    const LineSamples samples(*this, lambdas);
    midx = midPoint(samples);
    dMut = postAt(midx) - preAt(midx);
    makeNormalizedCurves(samples, curves);
    guardEdge();
}

XafsSpectrum::RiseWindow XafsSpectrum::riseWindow() const
{
    const int n = size();
    if (n < 2)
        return {0, 0};
    if (!sElm.use)
        return {0, n - 1};
    const QPointF* p = points.constData();
    const auto middle = [p](int i) { return (p[i].x() + p[i + 1].x()) * 0.5; };
    const double low = sElm.edgeE + sElm.preEnd + shift();
    const double high = sElm.edgeE + sElm.postStart + shift();
    const auto firstAbove = [&](double limit) {
        int i = 1;
        while (i < n - 1 && !(middle(i) > limit))
            ++i;
        return std::min(i, n - 1);
    };
    if (middle(0) > high)
        return {0, 0};
    return {middle(0) > low ? 0 : firstAbove(low), firstAbove(high)};
}

/// Index of the steepest rise of the smoothed curve, within the window of the suggested edge if one
/// is in use; 0 where nothing rises.
int XafsSpectrum::steepestIndex() const
{
    const RiseWindow window = riseWindow();
    const double* values = smoothed.constData();
    int steepest = 0;
    double best = 0.0;
    for (int i = window.first; i < window.end; ++i) {
        const double rise = values[i + 1] - values[i];
        if (rise > best) {
            best = rise;
            steepest = i;
        }
    }
    return steepest;
}

bool XafsSpectrum::fitLines(double edgeE, int backgroundMode)
{
    return fitLines(edgeE, backgroundMode, wavelengthsOf(*this));
}

bool XafsSpectrum::fitLines(double edgeE, int backgroundMode, const Wavelengths& lambdas)
{
    const bool preFitted = pre.fit(*this, lambdas, x(0), edgeE + dPreE, backgroundMode);
    const bool postFitted = post.fit(*this, lambdas, edgeE + dPostS, x(size() - 1), backgroundMode);
    const double gap = postAt(edgeE) - preAt(edgeE);
    if (gap < 0.0) {
        // Moved further apart and not past each other, deliberately: the step stays below 0, and a
        // misplaced edge is told instead of turning into a small step.
        pre.raise(-edgeRules::apartShare * gap);
        post.raise(edgeRules::apartShare * gap);
    }
    pre.genCorrectedInPost(post);
    post.genCorrectedInPre(pre);
    return preFitted && postFitted;
}

double XafsSpectrum::findMidx() const
{
    return midPoint(LineSamples(*this, wavelengthsOf(*this)));
}

double XafsSpectrum::midPoint(const LineSamples& samples) const
{
    const int i = crossingIndex(samples);
    const auto distance = [this](double E) {
        return (preAt(E) + postAt(E)) * 0.5 - smoothedAt(E + shift());
    };
    const double xm = x(i - 1);
    const double x0 = x(i);
    const double xp = x(i + 1);
    const double dm = distance(xm);
    const double d0 = distance(x0);
    const double dp = distance(xp);
    const double a = (x0 - xm) / (dm - d0) * dm + xm;
    // Counted from xm and not from x0: deliberate, part of the definition of the mid point.
    const double b = (xp - x0) / (d0 - dp) * d0 + xm;
    const double c = (xp - xm) / (dm - dp) * dm + xm;
    return (a + b + c) / 3.0;
}

/// Index of the steepest rise of the smoothed curve through the middle of the two lines; 0 for
/// none.
///
/// The smoothed curve is read at x(i) + shift: the query is the raw energy while the grid is the
/// shifted one, for shifted spectra too, which is deliberate. Without a shift the query falls on
/// the grid and the answer is the smoothed value itself, but where its slope is not finite (then
/// nan) and at the last point (then rounded otherwise): so most points are sorted out without
/// interpolation.
int XafsSpectrum::crossingIndex(const LineSamples& samples) const
{
    const int n = size();
    if (n < 3)
        return 0;
    const bool onGrid = readsOwnGrid(samples);
    QVarLengthArray<double, 512> offGrid;
    if (!onGrid)
        smoothedAtRawEnergies(offGrid);
    const double* curve = onGrid ? smoothed.constData() : offGrid.constData();
    const auto exactAt = [&](int i) { return onGrid ? smoothedOnGrid(samples, i) : curve[i]; };
    const double* preLine = samples.pre.constData();
    const double* postLine = samples.post.constData();
    int best = 0;
    double steepest = 0.0;
    for (int i = 1; i < n - 1; ++i) {
        const double middle = (preLine[i] + postLine[i]) * 0.5;
        if (i < n - 2 && !(middle > curve[i - 1] && curve[i + 1] > middle))
            continue;
        const double before = exactAt(i - 1);
        const double after = exactAt(i + 1);
        if (middle > before && after > middle && after - before > steepest) {
            steepest = after - before;
            best = i;
        }
    }
    return best;
}

/// True when smoothedAt(x(i) + shift) of every point falls on the point itself.
bool XafsSpectrum::readsOwnGrid(const LineSamples& samples) const
{
    if (shift() != 0.0 || smoothed.size() != size())
        return false;
    const double* E = samples.energies.constData();
    for (int i = 1; i < size(); ++i) {
        if (!(E[i - 1] < E[i]))
            return false;
    }
    return true;
}

/// smoothedAt of point i, without a search, where readsOwnGrid() holds.
double XafsSpectrum::smoothedOnGrid(const LineSamples& samples, int i) const
{
    const double* E = samples.energies.constData();
    if (i == size() - 1)
        return twoPointLine(E[i - 1], smoothed[i - 1], E[i], smoothed[i], E[i]);
    return twoPointLine(E[i], smoothed[i], E[i + 1], smoothed[i + 1], E[i]);
}

void XafsSpectrum::smoothedAtRawEnergies(QVarLengthArray<double, 512>& values) const
{
    values.resize(size());
    SpectrumCursor cursor(*this);
    for (int i = 0; i < size(); ++i)
        values[i] = cursor.smoothedAt(x(i) + shift());
}

void XafsSpectrum::makeNormalizedCurves(const LineSamples& samples, Curves curves)
{
    const int n = size();
    QVarLengthArray<double, 1024> scratch(4 * n);
    double* __restrict value = scratch.data();
    double* __restrict overPre = value + n;
    double* __restrict overPost = overPre + n;
    double* __restrict gap = overPost + n;
    const QPointF* mu = points.constData();
    const double* E = samples.energies.constData();
    const double* preLine = samples.pre.constData();
    const double* postLine = samples.post.constData();
    const double step = dMut;
    for (int i = 0; i < n; ++i) {
        overPre[i] = mu[i].y() - preLine[i];
        overPost[i] = mu[i].y() - postLine[i];
        gap[i] = postLine[i] - preLine[i];
    }
    linesClose = comeClose(gap, n);
    for (int i = 0; i < n; ++i)
        value[i] = overPre[i] / gap[i];
    if (curves == FittedCurve) {
        doubleNormalizedPreBase.setPointsOnly(E, value, n);
        return;
    }
    const Extremes range = extremesOf(E, n);
    doubleNormalizedPreBase.setPoints(E, range, value, n);
    for (int i = 0; i < n; ++i)
        value[i] = overPost[i] / gap[i];
    doubleNormalizedPostBase.setPoints(E, range, value, n);
    for (int i = 0; i < n; ++i)
        value[i] = overPost[i] / step;
    normalizedPostBase.setPoints(E, range, value, n);
    for (int i = 0; i < n; ++i)
        value[i] += 1;
    normalizedPreBase.setPoints(E, range, value, n);
}

/// Whether the gap between the lines falls below what a comparison can stand, at any point.
bool XafsSpectrum::comeClose(const double* gap, int n) const
{
    const double least = edgeRules::lowGap * heldStep(gap[edgeIndex]);
    // Counts what is wide enough, two at a time: nan is not.
    using Pair = double __attribute__((vector_size(2 * sizeof(double))));
    using PairMask = decltype(Pair() >= Pair());
    PairMask wide = {};
    int i = 0;
    for (; i + 1 < n; i += 2)
        wide -= Pair{gap[i], gap[i + 1]} >= Pair{least, least};
    return wide[0] + wide[1] + (i < n && gap[i] >= least ? 1 : 0) != n;
}

double XafsSpectrum::heldStep(double gapAtSteepest) const
{
    return gapAtSteepest > dMut ? gapAtSteepest : dMut;
}

/// The first reason why there is no edge, in the order of the outcomes.
Outcome XafsSpectrum::judgeEdge() const
{
    if (!pre.ok)
        return Outcome::NoPreEdge;
    if (!post.ok)
        return Outcome::NoPostEdge;
    if (!(dMut > 0.0) || !std::isfinite(dMut))
        return Outcome::NoStep;
    if (outOfRangeMidx)
        return Outcome::OutsideWindow;
    if (!(midx >= xMin - shift() && midx <= xMax - shift()))
        return Outcome::OutsideScan;
    return noisyMidx ? Outcome::TooNoisy : Outcome::Fitted;
}

/// Marks an edge that left the window of the suggested element, drowns in the noise of both lines,
/// or is none, as failed. The curves stay as they are. Without a suggestion a step that is not
/// above 0 stays too, to be seen.
void XafsSpectrum::guardEdge()
{
    outOfRangeMidx = noisyMidx = false;
    if (sElm.use) {
        outOfRangeMidx = midx < sElm.edgeE + sElm.preEnd || midx > sElm.edgeE + sElm.postStart;
        noisyMidx = pre.rms * sElm.thJump > dMut && post.rms * sElm.thJump > dMut;
    }
    outcome = judgeEdge();
    if (outcome == Outcome::Fitted)
        return;
    if (sElm.use)
        midx = sElm.edgeE;
    if (sElm.use || outcome != Outcome::NoStep)
        dMut = 0.0;
}

double XafsSpectrum::innerProduct(double shift, const XafsSpectrum& ref) const
{
    return ShiftSearch(*this, ref).innerProduct(shift);
}

double XafsSpectrum::findBestShift(const XafsSpectrum& ref, double range, double step,
                                   double minStep) const
{
    return ShiftSearch(*this, ref).find(midx - ref.midx, range, step, minStep);
}
