#include "spectrum/XafsSpectrum.h"

#include "spectrum/ShiftSearch.h"

#include <QDebug>
#include <QVarLengthArray>

#include <algorithm>

namespace {
// A search with a step far too fine for its range ends here instead of blocking the program.
constexpr int mostShiftsTried = 100000;
} // namespace

/// Energies and both lines at every point: read once by the search for the mid point and once by
/// the normalised curves, and kept off the heap for the usual number of energies.
struct XafsSpectrum::LineSamples
{
    QVarLengthArray<double, 512> energies;
    QVarLengthArray<double, 512> pre;
    QVarLengthArray<double, 512> post;

    explicit LineSamples(const XafsSpectrum& s)
        : energies(s.size())
        , pre(s.size())
        , post(s.size())
    {
        const QPointF* p = s.points.constData();
        const double shift = s.shift();
        double* e = energies.data();
        for (int i = 0; i < s.size(); ++i)
            e[i] = p[i].x() - shift;
        s.pre.valuesAt(e, s.size(), pre.data());
        s.post.valuesAt(e, s.size(), post.data());
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
    outOfRangeMidx = noisyMidx = false;
}

void XafsSpectrum::normalizeIfData(int backgroundMode)
{
    if (!isEmpty())
        normalize(backgroundMode);
}

void XafsSpectrum::normalize(int backgroundMode)
{
    genSmoothed(2);
    midx = x(steepestIndex());
    fitLines(midx, backgroundMode);
    const LineSamples samples(*this);
    midx = midPoint(samples);
    dMut = postAt(midx) - preAt(midx);
    makeNormalizedCurves(samples);
    guardEdge();
}

/// Index of the steepest rise of the smoothed curve, within the window of the suggested edge if one
/// is in use; 0 where nothing rises.
int XafsSpectrum::steepestIndex() const
{
    const int n = size();
    if (n < 2)
        return 0;
    int first = 0;
    int last = n - 1;
    if (sElm.use) {
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
            return 0;
        first = middle(0) > low ? 0 : firstAbove(low);
        last = firstAbove(high);
    }
    const double* values = smoothed.constData();
    int steepest = 0;
    double best = 0.0;
    for (int i = first; i < last; ++i) {
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
    const bool preFitted = pre.fit(*this, x(0), edgeE + dPreE, backgroundMode);
    const bool postFitted = post.fit(*this, edgeE + dPostS, x(size() - 1), backgroundMode);
    const double gap = postAt(edgeE) - preAt(edgeE);
    if (gap < 0.0) {
        // Pushed past each other, so that a tenth of the gap is left with the right sign.
        pre.raise(-0.55 * gap);
        post.raise(0.55 * gap);
    }
    pre.genCorrectedInPost(post);
    post.genCorrectedInPre(pre);
    return preFitted && postFitted;
}

double XafsSpectrum::findMidx() const
{
    return midPoint(LineSamples(*this));
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
    // Counted from xm and not from x0: deliberate, as all calibrated maps depend on it.
    const double b = (xp - x0) / (d0 - dp) * d0 + xm;
    const double c = (xp - xm) / (dm - dp) * dm + xm;
    return (a + b + c) / 3.0;
}

/// Index of the steepest rise of the smoothed curve through the middle of the two lines; 0 for
/// none.
int XafsSpectrum::crossingIndex(const LineSamples& samples) const
{
    const int n = size();
    if (n < 3)
        return 0;
    QVarLengthArray<double, 512> curve(n);
    smoothedAtOwnEnergies(samples.energies.constData(), curve.data());
    const double* s = curve.constData();
    const double* preLine = samples.pre.constData();
    const double* postLine = samples.post.constData();
    int best = 0;
    double steepest = 0.0;
    for (int i = 1; i < n - 1; ++i) {
        const double middle = (preLine[i] + postLine[i]) * 0.5;
        if (!(middle > s[i - 1]) || !(s[i + 1] > middle))
            continue;
        const double rise = s[i + 1] - s[i - 1];
        if (rise > steepest) {
            steepest = rise;
            best = i;
        }
    }
    return best;
}

/// smoothedAt(energy + shift) of every own energy, n >= 2. The query is the raw energy while the
/// grid is the shifted one, for shifted spectra too: deliberate.
void XafsSpectrum::smoothedAtOwnEnergies(const double* energies, double* values) const
{
    const int n = size();
    const double s = shift();
    bool onGrid = s == 0.0 && smoothed.size() >= n;
    for (int i = 1; onGrid && i < n; ++i)
        onGrid = energies[i - 1] < energies[i];
    if (!onGrid) {
        SpectrumCursor cursor(*this);
        for (int i = 0; i < n; ++i)
            values[i] = cursor.smoothedAt(energies[i] + s);
        return;
    }
    // Every query falls on the left end of its segment, the last one on the right end. The slope's
    // term is kept: where it is not finite the value is not either.
    const double* y = smoothed.constData();
    for (int i = 0; i < n - 1; ++i)
        values[i] = (y[i + 1] - y[i]) / (energies[i + 1] - energies[i]) * 0.0 + y[i];
    values[n - 1] = smoothedAt(energies[n - 1]);
}

void XafsSpectrum::makeNormalizedCurves(const LineSamples& samples)
{
    const int n = size();
    QVector<QPointF> preBase(n);
    QVector<QPointF> doublePreBase(n);
    QVector<QPointF> postBase(n);
    QVector<QPointF> doublePostBase(n);
    QPointF* b = preBase.data();
    QPointF* db = doublePreBase.data();
    QPointF* p = postBase.data();
    QPointF* dp = doublePostBase.data();
    const QPointF* mu = points.constData();
    const double* energies = samples.energies.constData();
    const double* preLine = samples.pre.constData();
    const double* postLine = samples.post.constData();
    const double step = dMut;
    for (int i = 0; i < n; ++i) {
        const double E = energies[i];
        const double overPost = mu[i].y() - postLine[i];
        const double gap = postLine[i] - preLine[i];
        const double base = overPost / step;
        b[i] = QPointF(E, base + 1);
        db[i] = QPointF(E, (mu[i].y() - preLine[i]) / gap);
        p[i] = QPointF(E, base);
        dp[i] = QPointF(E, overPost / gap);
    }
    normalizedPreBase.setPoints(preBase);
    doubleNormalizedPreBase.setPoints(doublePreBase);
    normalizedPostBase.setPoints(postBase);
    doubleNormalizedPostBase.setPoints(doublePostBase);
}

/// Marks an edge that left the window of the suggested element or drowns in the noise of both lines
/// as failed (dMut 0). The curves stay as they are.
void XafsSpectrum::guardEdge()
{
    outOfRangeMidx = noisyMidx = false;
    if (!sElm.use)
        return;
    outOfRangeMidx = midx < sElm.edgeE + sElm.preEnd || midx > sElm.edgeE + sElm.postStart;
    noisyMidx = pre.rms * sElm.thJump > dMut && post.rms * sElm.thJump > dMut;
    if (outOfRangeMidx || noisyMidx) {
        midx = sElm.edgeE;
        dMut = 0.0;
    }
}

double XafsSpectrum::innerProduct(double shift, const XafsSpectrum& ref) const
{
    return ShiftSearch(*this, ref).innerProduct(shift);
}

double XafsSpectrum::findBestShift(const XafsSpectrum& ref, double range, double step,
                                   double minStep) const
{
    if (step < minStep)
        return 0.0;
    ShiftSearch search(*this, ref);
    // All levels share this centre and the best value, so a finer level does not refine round the
    // best shift of a coarser one: deliberate.
    const double centre = midx - ref.midx;
    double best = -1e300;
    double bestShift = 0.0;
    int tried = 0;
    for (; step >= minStep && step > 0.0; step *= 0.1, range *= 0.1) {
        for (double d = -range; d <= range; d += step) {
            if (++tried > mostShiftsTried) {
                qDebug() << "shift search given up: range" << range << "is too wide for step"
                         << step;
                return bestShift;
            }
            const double product = search.innerProduct(centre + d);
            if (product > best) {
                best = product;
                bestShift = centre + d;
            }
        }
    }
    return bestShift;
}
