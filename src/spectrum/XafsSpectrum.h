#pragma once

#include "spectrum/EdgeRules.h"
#include "spectrum/Outcome.h"
#include "spectrum/Spectrum.h"
#include "spectrum/SuggestElm.h"
#include "spectrum/VictLine.h"

#include <QMetaType>
#include <QString>
#include <QVarLengthArray>

class QTextStream;

/// An absorption spectrum with its science: pre-edge and post-edge line, edge mid point, edge step
/// and four normalised curves. A value: passed whole through signals and into worker threads.
class XafsSpectrum : public Spectrum
{
public:
    /// Which normalised curves are made: a walk over a map reads doubleNormalizedPreBase alone,
    /// and not its bounds, which are left out then.
    enum Curves
    {
        AllCurves,
        FittedCurve
    };

    /// Half width of the smoothing behind the search for the edge [points]. Energies that are set
    /// against the smoothed curve are smoothed alike.
    static constexpr int edgeSmoothing = edgeRules::smoothing;

    qint64 isMute = 1; ///< 0 after load() of a "9809" file, else 1
    QString name = QStringLiteral("No Name");
    SuggestElm sElm;
    VictLine pre;                  ///< pre-edge line
    VictLine post;                 ///< post-edge line
    int mode = VictLine::Straight; ///< background model of both lines
    double dPreS = -1000.0; ///< ranges relative to the edge [eV]; dPreS and dPostE are only stored
    double dPreE = -10.0;
    double dPostS = 10.0;
    double dPostE = 1000.0;
    Spectrum i0Spectrum; ///< I0 and I1 against E, filled only by the reference file reader
    Spectrum i1Spectrum;
    Spectrum normalizedPostBase;         ///< (mu - post) / dMut
    Spectrum doubleNormalizedPostBase;   ///< (mu - post) / (post - pre)
    Spectrum normalizedPreBase;          ///< (mu - post) / dMut + 1
    Spectrum doubleNormalizedPreBase;    ///< (mu - pre) / (post - pre)
    double eOffset = 0.0;                ///< shift of this position from the energy shift map [eV]
    bool outOfRangeMidx = false;         ///< the mid point left the window round sElm.edgeE
    bool noisyMidx = false;              ///< both lines are too noisy for the step
    double midx = 0.0;                   ///< edge mid point [eV]
    double dMut = 0.0;                   ///< edge step at midx; not above 0 for a failed edge
    Outcome outcome = Outcome::NoPoints; ///< Fitted for an edge, or why there is none
    int edgeIndex = 0;                   ///< index of the steepest rise, where the edge is sought
    bool linesClose = false; ///< at some point the lines are closer than HeldGap can leave alone

    XafsSpectrum();

    /// Takes the curve s and, when it has points, normalises it at once. backgroundMode: 0
    /// Victoreen, else straight; energyOffset [eV] is kept as eOffset.
    XafsSpectrum(const Spectrum& s, const QString& spectrumName, int backgroundMode,
                 double energyOffset, const SuggestElm& elm);

    /// The same without normalising: for normalizeIfData(mode) later, in another thread.
    static XafsSpectrum unnormalized(const Spectrum& s, const QString& spectrumName,
                                     int backgroundMode, double energyOffset,
                                     const SuggestElm& elm);

    void init(const QString& spectrumName, const SuggestElm& elm);

    /// Fits the lines, finds midx and dMut and makes the normalised curves. n >= 1.
    void normalize(int backgroundMode, Curves curves = AllCurves);
    /// normalize() unless the spectrum is empty.
    void normalizeIfData(int backgroundMode, Curves curves = AllCurves);

    /// Points from which the curve's steepest rise is sought.
    struct RiseWindow
    {
        int first;
        int end;
    };
    /// All, or those round the suggested edge.
    RiseWindow riseWindow() const;

    bool fitLines(double edgeE, int backgroundMode);
    double findMidx() const;

    double preAt(double E) const { return pre.at(E); }
    double postAt(double E) const { return post.at(E); }

    /// The step that a normalised curve is continued by, given the lines' gap at the steepest
    /// rise: the larger of the two, for a mid point may sit where the lines have come close.
    double heldStep(double gapAtSteepest) const;

    /// Normalised inner product of this doubleNormalizedPreBase with that of ref, this one moved
    /// down by `shift` [eV]; 0.0 when either sum of squares is not positive.
    double innerProduct(double shift, const XafsSpectrum& ref) const;

    /// Shift [eV] of this spectrum against ref with the greatest inner product, searched round the
    /// difference of the mid points: +-range by step, then both a tenth, while step >= minStep.
    double findBestShift(const XafsSpectrum& ref, double range, double step, double minStep) const;

    /// Reads a reference file ("9809" or simple layout). False, with points cleared, when it can
    /// not be opened or holds no point.
    bool load(const QString& fname);
    bool loadAndNormalize(const QString& fname);

    /// Writes the spectrum, its lines and its normalised curve as text; withEOffset takes eOffset
    /// off the energies written. False without points, when no file is written, and with one fault
    /// line when the file can't be written.
    bool dump(const QString& fname, bool withEOffset) const;
    /// The text of dump().
    void dumpTo(QTextStream& out, bool withEOffset) const;

private:
    struct LineSamples;

    bool fitLines(double edgeE, int backgroundMode, const Wavelengths& lambdas);
    void forgetCurves();
    int steepestIndex() const;
    double midPoint(const LineSamples& samples) const;
    int crossingIndex(const LineSamples& samples) const;
    bool readsOwnGrid(const LineSamples& samples) const;
    double smoothedOnGrid(const LineSamples& samples, int i) const;
    void smoothedAtRawEnergies(QVarLengthArray<double, 512>& values) const;
    void makeNormalizedCurves(const LineSamples& samples, Curves curves);
    bool comeClose(const double* gap, int n) const;
    Outcome judgeEdge() const;
    void guardEdge();
};

Q_DECLARE_METATYPE(XafsSpectrum)
