#pragma once

#include "display/AxisTicks.h"
#include "display/BrokenLine.h"
#include "display/ChCoord.h"
#include "display/PlotLegend.h"
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
    QString name = {};       ///< in the legend; one without a name is not in it
};

/// A text beside a plot.
struct PlotLabel
{
    QRect box; ///< that the text fills [pixels]
    QString text;
    bool upright = false; ///< it reads upward
};

/// The plot of a spectrum over the energy, with its lines, a standard, further spectra and marks:
/// what is shown, and the painting of it. It paints straight from the spectra at each move of the
/// mouse over an image.
///
/// Each curve has the height of the plot for its own values; the axis, and the mapping `coord`,
/// belong to the main spectrum. Normalised curves share one axis, so that they can be compared: it
/// spans what is in view of all curves that are shown. All ranges have air at their ends.
/// Without points of the main spectrum nothing is painted. Numbers that are none break a curve.
///
/// Colours are made for white paper, and every pen is set: the palette has no part in a plot.
///
/// The raw curve runs over the same energies. Its frequencies run over their index, an axis with a
/// visible range of its own and without marks of energies.
class XafsPlot
{
public:
    ChCoord coord;      ///< x and value of what is shown, commonly the main spectrum; by prepare()
    VisibleRange range; ///< energies [eV]
    QString name;       ///< of the main spectrum, in the legend
    XafsSpectrum stdSpectrum; ///< the standard; may have no points
    QString stdName;
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

    /// Lays the axes out for an area of this size [pixels] and texts in this font.
    void prepare(const QSize& area, const QFont& font);
    void paint(QPainter* p, const QSize& area, const QFont& font);

    /// Numbers and titles as they were laid out last: inside the area, and none upon another.
    const QVector<PlotLabel>& labels() const { return labels_; }
    /// Where the legend was painted last; empty when it was left out.
    const QRect& legendBox() const { return legend_.box(); }

    /// Index of the frequency, or of the main spectrum's point, that is nearest to a place of the x
    /// axis.
    int nearestPoint(double x) const;

private:
    struct CurvePens;
    struct RawCurve;

    /// What the axes and the curves in view are.
    enum Mode
    {
        Absorption,
        Normalised,
        RawValues,
        Frequencies
    };

    Mode mode() const;
    int shownFrequencies() const;
    PlotRange valueAxis();
    PlotRange normalizedAxis() const;
    RawCurve rawCurve();
    RawCurve frequencyCurve();
    void paintCurves(QPainter* p);
    void paintCurve(QPainter* p, const XafsSpectrum& s, const CurvePens& pens, const PlotRange& y,
                    double correction, double gap);
    void paintLine(QPainter* p, const QPen& pen, const ChCoord& axes, const double* energies,
                   const double* values, int n, double gap);
    void paintRaw(QPainter* p);
    void fillLegend(const QRect& window);

    void setFont(const QFont& font);
    void setTitles();
    void layOutWindow(const QSize& area);
    void layOutEnergyLabels(const QSize& area);
    void layOutValueLabels(const QSize& area);
    void addLabel(const QRect& box, const QString& text, bool upright);
    QRect window() const;
    bool inView(double screenX) const;
    void paintUpright(QPainter* p, double x) const;
    void paintGrid(QPainter* p) const;
    void paintMarks(QPainter* p) const;
    void paintEdgeNames(QPainter* p);
    void paintLabels(QPainter* p) const;
    void paintText(QPainter* p, const PlotLabel& label) const;

    XafsSpectrum spectrum_;
    Spectrum rawSpectrum_;
    VisibleRange frequencies_;
    PlotRange values_{0.0, 1.0}; ///< of the main spectrum
    Fourier fourier_;
    BrokenLine line_;

    struct Title
    {
        QString text;
        int width = 0; ///< [pixels]
    };

    QFont font_;
    QFontMetrics metrics_{font_};
    int titledMode_ = -1; ///< that the titles are for
    Title xTitle_;
    Title yTitle_;
    AxisTicks xTicks_;
    AxisTicks yTicks_;
    QVector<PlotLabel> labels_;
    PlotLegend legend_;
};
