#include "display/XafsPlot.h"

#include <QCoreApplication>
#include <QPainter>

namespace {

constexpr QRgb markerColour = qRgb(0, 224, 0);
constexpr QRgb frameColour = qRgb(192, 192, 192);
constexpr QRgb gridColour = qRgb(232, 232, 232);

constexpr int edgeGap = 2;   ///< between texts and the edge of the area [pixels]
constexpr int labelGap = 4;  ///< between the plot and its numbers, and between title and numbers
constexpr int labelRoom = 6; ///< between neighbouring numbers

/// Numbers as wide as this one leave the plot window where it is.
const auto commonNumber = QStringLiteral("-0.88");

/// Greatest part of the area that a margin takes for its texts.
constexpr double greatestMargin = 0.4;

QString translated(const char* text)
{
    return QCoreApplication::translate("XafsView", text);
}

} // namespace

void XafsPlot::setFont(const QFont& font)
{
    if (font == font_)
        return;
    font_ = font;
    metrics_ = QFontMetrics(font);
    titledMode_ = -1;
    xTicks_.clear();
    yTicks_.clear();
}

void XafsPlot::setTitles()
{
    static const char* const valueTitles[] = {
        QT_TRANSLATE_NOOP("XafsView", "mu t"), QT_TRANSLATE_NOOP("XafsView", "normalised mu t"),
        QT_TRANSLATE_NOOP("XafsView", "counts"), QT_TRANSLATE_NOOP("XafsView", "power")};
    const Mode now = mode();
    if (titledMode_ == now)
        return;
    titledMode_ = now;
    xTitle_.text = now == Frequencies ? translated(QT_TRANSLATE_NOOP("XafsView", "Frequency no."))
                                      : translated(QT_TRANSLATE_NOOP("XafsView", "Energy [eV]"));
    yTitle_.text = translated(valueTitles[now]);
    for (Title* const title : {&xTitle_, &yTitle_})
        title->width = metrics_.horizontalAdvance(title->text);
}

/// Margins are parts of the area, and more where the texts beside the window need it.
void XafsPlot::layOutWindow(const QSize& area)
{
    xTicks_.setRange(coord.realX0, coord.realX1, metrics_);
    yTicks_.setRange(coord.realY0, coord.realY1, metrics_);
    const int line = metrics_.height();
    const int numbers = std::max(metrics_.horizontalAdvance(commonNumber), yTicks_.widest());
    const double left = edgeGap + line + labelGap + numbers + labelGap;
    const double below = labelGap + line + line + edgeGap;
    const double right = xTicks_.widest() / 2 + edgeGap + 1;
    const double above = line / 2 + edgeGap;
    // The y of the plot grows upward, and that of the screen downward.
    coord.setScreenArea(0, area.height(), area.width(), 0);
    coord.applyMargins();
    const double wide = std::trunc(greatestMargin * area.width());
    const double high = std::trunc(greatestMargin * area.height());
    coord.plotX0 = std::max(coord.plotX0, std::min(left, wide));
    coord.plotX1 = std::min(coord.plotX1, area.width() - std::min(right, wide));
    coord.plotY0 = std::min(coord.plotY0, area.height() - std::min(below, high));
    coord.plotY1 = std::max(coord.plotY1, std::min(above, high));
    labels_.resize(0);
    layOutEnergyLabels(area);
    layOutValueLabels(area);
}

/// Adds a text, unless it would be clipped or lie upon another.
void XafsPlot::addLabel(const QRect& box, const QString& text, bool upright)
{
    const QRect area(0, 0, int(coord.screenX1), int(coord.screenY0));
    if (!area.contains(box))
        return;
    for (const PlotLabel& label : qAsConst(labels_)) {
        if (label.box.intersects(box))
            return;
    }
    labels_.append({box, text, upright});
}

void XafsPlot::layOutEnergyLabels(const QSize& area)
{
    const int line = metrics_.height();
    const int top = plotPixel(coord.plotY0) + labelGap;
    const QVector<AxisTicks::Tick>& ticks = xTicks_.ticks();
    const int stride = AxisTicks::stride(
        ticks.size() > 1 ? coord.realToScreenDX(ticks.at(1).value - ticks.at(0).value) : 0.0,
        xTicks_.widest() + labelRoom);
    for (int i = 0; i < ticks.size(); ++i) {
        const AxisTicks::Tick& tick = ticks.at(i);
        const int centre = plotPixel(coord.realToScreenX(tick.value));
        if (xTicks_.isLabelled(i, stride))
            addLabel({centre - tick.width / 2, top, tick.width, line}, tick.label, false);
    }
    const int middle = plotPixel((coord.plotX0 + coord.plotX1) / 2);
    const int left = std::min(middle - xTitle_.width / 2, area.width() - xTitle_.width);
    addLabel({left, top + line, xTitle_.width, line}, xTitle_.text, false);
}

void XafsPlot::layOutValueLabels(const QSize& area)
{
    const int line = metrics_.height();
    const int right = plotPixel(coord.plotX0) - labelGap;
    const QVector<AxisTicks::Tick>& ticks = yTicks_.ticks();
    const int stride = AxisTicks::stride(
        ticks.size() > 1 ? -coord.realToScreenDY(ticks.at(1).value - ticks.at(0).value) : 0.0,
        line);
    int widest = 0;
    for (int i = 0; i < ticks.size(); ++i) {
        const AxisTicks::Tick& tick = ticks.at(i);
        const int centre = plotPixel(coord.realToScreenY(tick.value));
        if (!yTicks_.isLabelled(i, stride))
            continue;
        addLabel({right - tick.width, centre - line / 2, tick.width, line}, tick.label, false);
        widest = std::max(widest, tick.width);
    }
    widest = std::max(widest, metrics_.horizontalAdvance(commonNumber));
    const int middle = plotPixel((coord.plotY0 + coord.plotY1) / 2);
    const int top = std::min(middle - yTitle_.width / 2, area.height() - yTitle_.width);
    addLabel({right - widest - labelGap - line, std::max(top, 0), line, yTitle_.width},
             yTitle_.text, true);
}

QRect XafsPlot::window() const
{
    return {QPoint(plotPixel(coord.plotX0), plotPixel(coord.plotY1)),
            QPoint(plotPixel(coord.plotX1), plotPixel(coord.plotY0))};
}

bool XafsPlot::inView(double screenX) const
{
    return screenX >= coord.plotX0 && screenX <= coord.plotX1;
}

void XafsPlot::paintUpright(QPainter* p, double x) const
{
    const double at = coord.realToScreenX(x);
    if (inView(at))
        p->drawLine(plotPixel(at), plotPixel(coord.plotY0), plotPixel(at), plotPixel(coord.plotY1));
}

void XafsPlot::paintGrid(QPainter* p) const
{
    p->setPen(QColor(gridColour));
    for (const AxisTicks::Tick& tick : xTicks_.ticks())
        paintUpright(p, tick.value);
    for (const AxisTicks::Tick& tick : yTicks_.ticks()) {
        const int y = plotPixel(coord.realToScreenY(tick.value));
        p->drawLine(plotPixel(coord.plotX0), y, plotPixel(coord.plotX1), y);
    }
    p->setPen(QColor(frameColour));
    p->drawRect(window().adjusted(0, 0, -1, -1));
}

void XafsPlot::paintMarks(QPainter* p) const
{
    if (showsFrequencies())
        return;
    if (markerEnergy > 0.0) {
        p->setPen(QColor(markerColour));
        paintUpright(p, markerEnergy);
    }
    p->setPen(Qt::red);
    for (const EdgeMark& mark : edgeMarks)
        paintUpright(p, mark.energy);
    p->setPen(QPen(Qt::black, 1, Qt::DotLine));
    paintUpright(p, spectrum_.midx);
}

void XafsPlot::paintLabels(QPainter* p) const
{
    p->setPen(Qt::black);
    for (const PlotLabel& label : labels_)
        paintText(p, label);
}

void XafsPlot::paintText(QPainter* p, const PlotLabel& label) const
{
    if (!label.upright) {
        p->drawText(label.box.left(), label.box.top() + metrics_.ascent(), label.text);
        return;
    }
    const QTransform before = p->transform();
    p->translate(label.box.left(), label.box.top() + label.box.height());
    p->rotate(-90.0);
    p->drawText(0, metrics_.ascent(), label.text);
    p->setTransform(before);
}

/// Names stand upright before the lines of their edges, or behind them at the left end. The legend
/// keeps off them.
void XafsPlot::paintEdgeNames(QPainter* p)
{
    if (showsFrequencies())
        return;
    p->setPen(Qt::red);
    for (const EdgeMark& mark : edgeMarks) {
        const double x = coord.realToScreenX(mark.energy);
        if (!inView(x))
            continue;
        const QSize size(metrics_.height(), metrics_.horizontalAdvance(mark.name));
        const int at = plotPixel(x);
        const int before = at - 1 - size.width();
        const QPoint corner(before > coord.plotX0 ? before : at + 2,
                            plotPixel(coord.plotY1) + labelGap);
        const QRect box(corner, size);
        paintText(p, {box, mark.name, true});
        legend_.free().take(QPolygon(box, true));
    }
}
