#include "display/XafsPlot.h"

#include "common/ColorScale.h"

#include <QPainter>
#include <QVarLengthArray>

#include <limits>

namespace {

constexpr QRgb preColour = qRgb(0, 192, 220);
constexpr QRgb postColour = qRgb(0, 220, 192);
constexpr QRgb stdLineColour = qRgb(220, 192, 0);
constexpr QRgb rawColour = qRgb(192, 0, 0);
constexpr QRgb fftColour = qRgb(0, 192, 0);

/// Points further apart in energy [eV] belong to different scans.
constexpr double scanGap = 50.0;
constexpr double noGap = std::numeric_limits<double>::infinity();

/// Start values of the raw curve's extremes. No maximum is below the second, so curves of negative
/// values end at zero, and without any value the range is empty: deliberate.
constexpr PlotRange rawStart{std::numeric_limits<double>::max(),
                             std::numeric_limits<double>::min()};

/// Of the frequencies, only this part of the number of points is shown, and the first is left out
/// of their range: it is the sum.
constexpr int shownFrequencies = 10;
constexpr int pointsForFftRange = 30;

using Samples = QVarLengthArray<double, 512>;

QPen dashed(QPen pen, const QVector<qreal>& pattern)
{
    pen.setDashPattern(pattern);
    return pen;
}

/// Range of those values that are numbers.
PlotRange finiteRange(const Spectrum& s)
{
    const PlotRange bounds{s.yMin, s.yMax};
    if (std::isfinite(bounds.max - bounds.min) && bounds.min <= bounds.max)
        return bounds.widened();
    PlotRange range;
    for (const QPointF& point : s.points)
        range.add(point.y());
    return range.widened();
}

PlotRange energyRange(const Spectrum& s)
{
    PlotRange range;
    for (const QPointF& point : s.points)
        range.add(point.x() - s.shift());
    return range.widened();
}

} // namespace

struct XafsPlot::CurvePens
{
    QPen points;
    QPen pre;
    QPen post;
};

/// Values that are plotted in place of the spectra.
struct XafsPlot::RawCurve
{
    Samples values;
    PlotRange y = rawStart;
    double span = 1.0; ///< end of the x axis, which starts at 0
    QRgb colour = rawColour;

    void widenTo(int first, int last)
    {
        for (int i = first; i <= last; ++i)
            y.add(values[i]);
    }
};

void XafsPlot::setSpectrum(const XafsSpectrum& s)
{
    spectrum_ = s;
    if (s.isEmpty())
        return;
    values_ = finiteRange(s);
    normalized_ = finiteRange(s.normalizedPreBase);
    range.setFull(energyRange(s));
}

void XafsPlot::setRawSpectrum(const Spectrum& s)
{
    rawSpectrum_ = s;
}

XafsPlot::RawCurve XafsPlot::rawCurve()
{
    RawCurve curve;
    const int n = rawSpectrum_.size();
    if (!showFft) {
        curve.values.resize(n);
        for (int i = 0; i < n; ++i)
            curve.values[i] = rawSpectrum_.points.at(i).y();
        curve.widenTo(0, n - 1);
        curve.span = n;
        return curve;
    }
    const int m = n / shownFrequencies;
    curve.span = m;
    curve.colour = fftColour;
    fourier_.setSize(n);
    fourier_.forward(rawSpectrum_);
    if (const double* magnitudes = fourier_.magnitudes())
        curve.values.append(magnitudes, m);
    if (n >= pointsForFftRange)
        curve.widenTo(1, std::min(m - 2, curve.values.size() - 1));
    return curve;
}

/// Values at the ends of the axis that is shown.
PlotRange XafsPlot::valueAxis()
{
    if (showRaw) {
        const PlotRange raw = rawCurve().y;
        if (raw.hasExtent())
            return raw;
    }
    return normalized ? normalized_ : values_;
}

void XafsPlot::prepare(const QSize& area)
{
    // The y of the plot grows upward, and that of the screen downward.
    coord.setScreenArea(0, area.height(), area.width(), 0);
    coord.applyMargins();
    const PlotRange y = valueAxis();
    coord.setRealArea(range.min(), y.min, range.max(), y.max);
}

void XafsPlot::paint(QPainter* p, const QSize& area)
{
    if (spectrum_.isEmpty())
        return;
    prepare(area);
    p->save();
    p->setBrush(Qt::NoBrush);
    const QRect window(QPoint(truncatedInt(coord.plotX0), truncatedInt(coord.plotY1)),
                       QPoint(truncatedInt(coord.plotX1), truncatedInt(coord.plotY0)));
    // Normalised curves of other spectra may be higher than the axis, and are let into the margin.
    const bool tall = normalized && !showRaw;
    p->setClipRect(tall ? QRect(window.left(), 0, window.width(), area.height()) : window);
    if (!showRaw)
        paintCurves(p);
    paintMarks(p);
    p->setClipping(false);
    paintAxes(p);
    if (showRaw) {
        p->setClipRect(window);
        paintRaw(p);
    }
    p->restore();
}

void XafsPlot::paintCurves(QPainter* p)
{
    const auto own = [this](const XafsSpectrum& s) {
        return normalized ? normalized_ : finiteRange(s);
    };
    if (!stdSpectrum.isEmpty()) {
        static const QPen line = dashed(QColor(stdLineColour), {6, 2});
        paintCurve(p, stdSpectrum, {QColor(Qt::red), line, line}, own(stdSpectrum), 0.0, noGap);
    }
    for (int i = 0; i < others.size(); ++i) {
        const ViewCurve& other = others.at(i);
        if (!other.show || other.spectrum.isEmpty())
            continue;
        const QPen pen = other.pen.value_or(plotColor(i));
        const QPen line = dashed(pen, {6, 2});
        paintCurve(p, other.spectrum, {pen, line, line}, own(other.spectrum), 0.0, noGap);
    }
    static const CurvePens pens{QPen(Qt::black, 2), dashed(QColor(preColour), {8, 3}),
                                dashed(QColor(postColour), {8, 3, 3, 3})};
    paintCurve(p, spectrum_, pens, normalized ? normalized_ : values_,
               energyCorrected ? spectrum_.eOffset : 0.0, scanGap);
}

/// Paints a spectrum moved down in energy by `correction`, over a range y of values of its own:
/// with its lines, or its normalised curve alone.
void XafsPlot::paintCurve(QPainter* p, const XafsSpectrum& s, const CurvePens& pens,
                          const PlotRange& y, double correction, double gap)
{
    const int n = normalized ? std::min(s.size(), s.normalizedPreBase.size()) : s.size();
    const QPointF* const points = s.points.constData();
    const double shift = s.shift();
    Samples energies(n);
    for (int i = 0; i < n; ++i)
        energies[i] = points[i].x() - shift;
    ChCoord axes = coord;
    // The lines are those of the energies measured, so the axis moves and not the points.
    axes.setRealX(coord.realX0 + correction, coord.realX1 + correction);
    axes.setRealY(y.min, y.max);
    Samples values(n);
    if (!normalized) {
        s.pre.valuesAt(energies.constData(), n, values.data());
        paintLine(p, pens.pre, axes, energies.constData(), values.constData(), n, gap);
        s.post.valuesAt(energies.constData(), n, values.data());
        paintLine(p, pens.post, axes, energies.constData(), values.constData(), n, gap);
    }
    const QPointF* const shown = normalized ? s.normalizedPreBase.points.constData() : points;
    for (int i = 0; i < n; ++i)
        values[i] = shown[i].y();
    paintLine(p, pens.points, axes, energies.constData(), values.constData(), n, gap);
}

/// Paints a curve in whole pixels, in pieces where it has no number or its energies are further
/// apart than `gap`.
void XafsPlot::paintLine(QPainter* p, const QPen& pen, const ChCoord& axes, const double* energies,
                         const double* values, int n, double gap)
{
    p->setPen(pen);
    line_.reserve(n);
    for (int i = 0; i < n; ++i) {
        if (i > 0 && std::abs(energies[i] - energies[i - 1]) > gap)
            line_.end(p);
        line_.add(p, axes.realToScreenX(energies[i]), axes.realToScreenY(values[i]));
    }
    line_.end(p);
}

void XafsPlot::paintRaw(QPainter* p)
{
    const RawCurve curve = rawCurve();
    ChCoord axes = coord;
    // The points stand at their energies on an axis that counts points: deliberate.
    axes.setRealX(0.0, curve.span);
    const PlotRange y = curve.y.min == curve.y.max ? curve.y.widened() : curve.y;
    axes.setRealY(y.min, y.max);
    Samples energies(curve.values.size());
    for (int i = 0; i < energies.size(); ++i)
        energies[i] = rawSpectrum_.x(i);
    paintLine(p, QColor(curve.colour), axes, energies.constData(), curve.values.constData(),
              energies.size(), noGap);
}

int XafsPlot::nearestPoint(double energy) const
{
    const double E = energy + spectrum_.shift();
    const QPointF* const points = spectrum_.points.constData();
    int i = 0;
    while (i < spectrum_.size() - 1 && !((points[i].x() + points[i + 1].x()) / 2 > E))
        ++i;
    return i;
}
