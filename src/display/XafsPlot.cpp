#include "display/XafsPlot.h"

#include "common/ColorScale.h"
#include "display/CurveRange.h"

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

/// Of the frequencies, one for this many points is shown.
constexpr int pointsPerFrequency = 10;

using Samples = QVarLengthArray<double, 512>;

QPen dashed(QPen pen, const QVector<qreal>& pattern)
{
    pen.setDashPattern(pattern);
    return pen;
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
    Samples x;
    Samples values;
    PlotRange y;
    QRgb colour;

    void add(double atX, double value)
    {
        x.append(atX);
        values.append(value);
        y.add(value);
    }
};

void XafsPlot::setSpectrum(const XafsSpectrum& s)
{
    spectrum_ = s;
    if (s.isEmpty())
        return;
    values_ = valueRange(s);
    range.setFull(energyRange(s));
}

void XafsPlot::setRawSpectrum(const Spectrum& s)
{
    rawSpectrum_ = s;
    frequencies_.setFull({0.0, double(std::max(1, shownFrequencies()))});
}

int XafsPlot::shownFrequencies() const
{
    return rawSpectrum_.size() / pointsPerFrequency;
}

XafsPlot::RawCurve XafsPlot::rawCurve()
{
    if (showFft)
        return frequencyCurve();
    RawCurve curve;
    curve.colour = rawColour;
    for (int i = 0; i < rawSpectrum_.size(); ++i)
        curve.add(rawSpectrum_.x(i) - spectrum_.shift(), rawSpectrum_.points.at(i).y());
    return curve;
}

XafsPlot::RawCurve XafsPlot::frequencyCurve()
{
    RawCurve curve;
    curve.colour = fftColour;
    fourier_.setSize(rawSpectrum_.size());
    fourier_.forward(rawSpectrum_);
    const double* const magnitudes = fourier_.magnitudes();
    const int n = magnitudes ? shownFrequencies() : 0;
    for (int i = 0; i < n; ++i) {
        // The first is the sum of all values, and would flatten the others.
        if (i == 1)
            curve.y = PlotRange();
        curve.add(i, magnitudes[i]);
    }
    return curve;
}

XafsPlot::Mode XafsPlot::mode() const
{
    if (showRaw)
        return showFft ? Frequencies : RawValues;
    return normalized ? Normalised : Absorption;
}

/// Values at the ends of the axis that is shown.
PlotRange XafsPlot::valueAxis()
{
    if (showRaw)
        return rawCurve().y.widened().withAir();
    return normalized ? normalizedAxis() : values_;
}

PlotRange XafsPlot::normalizedAxis() const
{
    PlotRange axis;
    const auto add = [&](const XafsSpectrum& s, double correction, double gap) {
        // Energies of normalised curves have no shift any more.
        addSeen(axis, s.normalizedPreBase.points, range.min() + correction,
                range.max() + correction, gap);
    };
    add(spectrum_, energyCorrected ? spectrum_.eOffset : 0.0, scanGap);
    add(stdSpectrum, 0.0, noGap);
    for (const ViewCurve& other : others) {
        if (other.show)
            add(other.spectrum, 0.0, noGap);
    }
    return axis.widened().withAir();
}

void XafsPlot::prepare(const QSize& area, const QFont& font)
{
    setFont(font);
    setTitles();
    const PlotRange y = valueAxis();
    coord.setRealArea(visible().min(), y.min, visible().max(), y.max);
    layOutWindow(area);
}

void XafsPlot::paint(QPainter* p, const QSize& area, const QFont& font)
{
    if (spectrum_.isEmpty())
        return;
    prepare(area, font);
    p->save();
    p->setFont(font_);
    p->setBrush(Qt::NoBrush);
    paintGrid(p);
    fillLegend(window());
    p->setClipRect(window());
    line_.tell(&legend_.free());
    if (showRaw)
        paintRaw(p);
    else
        paintCurves(p);
    line_.tell(nullptr);
    paintMarks(p);
    paintEdgeNames(p);
    p->setClipping(false);
    paintLabels(p);
    legend_.paint(p);
    p->restore();
}

void XafsPlot::fillLegend(const QRect& window)
{
    legend_.begin(window, font_);
    if (showRaw) {
        legend_.add(name, QColor(showFft ? fftColour : rawColour));
    } else {
        legend_.add(name, QPen(Qt::black, 2));
        if (!stdSpectrum.isEmpty())
            legend_.add(stdName, QColor(Qt::red));
        for (int i = 0; i < others.size(); ++i) {
            const ViewCurve& other = others.at(i);
            if (other.show && !other.spectrum.isEmpty())
                legend_.add(other.name, other.pen.value_or(plotColor(i)));
        }
    }
    legend_.place();
}

void XafsPlot::paintCurves(QPainter* p)
{
    // Normalised curves lie on the axis.
    const PlotRange axis{coord.realY0, coord.realY1};
    const auto own = [&](const XafsSpectrum& s) { return normalized ? axis : valueRange(s); };
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
    paintCurve(p, spectrum_, pens, axis, energyCorrected ? spectrum_.eOffset : 0.0, scanGap);
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
    paintLine(p, QColor(curve.colour), coord, curve.x.constData(), curve.values.constData(),
              curve.x.size(), noGap);
}

int XafsPlot::nearestPoint(double x) const
{
    if (showsFrequencies())
        return qBound(0, truncatedInt(std::round(x)), std::max(0, shownFrequencies() - 1));
    const double E = x + spectrum_.shift();
    const QPointF* const points = spectrum_.points.constData();
    int i = 0;
    while (i < spectrum_.size() - 1 && !((points[i].x() + points[i + 1].x()) / 2 > E))
        ++i;
    return i;
}
