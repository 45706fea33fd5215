#pragma once

#include "display/BrokenLine.h"
#include "display/ChCoord.h"
#include "display/VisibleRange.h"
#include "spectrum/Fourier.h"
#include "spectrum/XafsSpectrum.h"

#include <QPen>

#include <optional>

class QPainter;

/// The edge of an element to be marked in a plot.
struct EdgeMark
{
    QString name;
    double energy = 0.0; ///< [eV]
};

/// A spectrum plotted beside the main one.
struct ViewCurve
{
    XafsSpectrum spectrum;
    bool show = true;
    std::optional<QPen> pen; ///< without one, the program's curve colour of the curve's place
};

/// The plot of a spectrum over the energy, with its lines, a standard, further spectra and marks:
/// what is shown, and the painting of it. It paints straight from the spectra at each move of the
/// mouse over an image.
///
/// Each curve has the height of the plot for its own values; the axis, and the mapping `coord`,
/// belong to the main spectrum. Normalised curves share one axis, so that they can be compared.
/// Without points of the main spectrum nothing is painted. Numbers that are none break a curve.
///
/// The raw curve runs over the same energies. Its frequencies run over their index, an axis with a
/// visible range of its own and without marks of energies.
class XafsPlot
{
public:
    ChCoord coord;      ///< x and value of what is shown, commonly the main spectrum; by prepare()
    VisibleRange range; ///< energies [eV]
    XafsSpectrum stdSpectrum; ///< the standard; may have no points
    QVector<ViewCurve> others;
    QVector<EdgeMark> edgeMarks;
    double markerEnergy = 0.0; ///< energy of the image shown [eV]; marked when above 0
    bool normalized = false;
    bool energyCorrected = false; ///< the main spectrum is moved down by its edge shift
    bool showRaw = false;         ///< the raw curve in place of all others
    bool showFft = false;         ///< its frequencies in place of the raw curve

    /// Takes the main spectrum and the ranges that it spans. One without points leaves them.
    void setSpectrum(const XafsSpectrum& s);
    const XafsSpectrum& spectrum() const { return spectrum_; }
    void setRawSpectrum(const Spectrum& s);
    bool showsFrequencies() const { return showRaw && showFft; }
    /// The part of the x axis that is shown: of energies, or of indices of frequencies.
    VisibleRange& visible() { return showsFrequencies() ? frequencies_ : range; }
    const VisibleRange& visible() const { return showsFrequencies() ? frequencies_ : range; }

    /// Lays the axes out for an area of this size [pixels].
    void prepare(const QSize& area);
    void paint(QPainter* p, const QSize& area);

    /// Index of the frequency, or of the main spectrum's point, that is nearest to a place of the x
    /// axis.
    int nearestPoint(double x) const;

private:
    struct CurvePens;
    struct RawCurve;

    int shownFrequencies() const;
    PlotRange valueAxis();
    RawCurve rawCurve();
    RawCurve frequencyCurve();
    void paintCurves(QPainter* p);
    void paintCurve(QPainter* p, const XafsSpectrum& s, const CurvePens& pens, const PlotRange& y,
                    double correction, double gap);
    void paintLine(QPainter* p, const QPen& pen, const ChCoord& axes, const double* energies,
                   const double* values, int n, double gap);
    void paintRaw(QPainter* p);
    void paintMarks(QPainter* p) const;
    void paintUpright(QPainter* p, double x) const;
    void paintAxes(QPainter* p) const;
    void paintXTicks(QPainter* p, const QSizeF& label) const;
    void paintValueTicks(QPainter* p, const QSizeF& label) const;
    void paintEdgeNames(QPainter* p, const QSizeF& label) const;
    bool inView(double screenX) const;

    XafsSpectrum spectrum_;
    Spectrum rawSpectrum_;
    VisibleRange frequencies_;
    PlotRange values_{0.0, 1.0};     ///< of the main spectrum
    PlotRange normalized_{0.0, 1.0}; ///< of its normalised curve
    Fourier fourier_;
    BrokenLine line_;
};
