#include "common/FieldText.h"
#include "display/DrawText.h"
#include "display/XafsPlot.h"

#include <QCoreApplication>
#include <QPainter>

namespace {

constexpr QRgb markerColour = qRgb(0, 224, 0);
constexpr QRgb gridColour = qRgb(192, 192, 192);

constexpr double labelPoint = 12.0;
constexpr int labelGap = 3; ///< between plot and labels [pixels]

/// Ticks of an axis as multiples of a step.
struct Ticks
{
    double step = 1.0;
    double first = 0.0; ///< multiple of the step
    int count = 0;

    double value(int i) const { return (first + i) * step; }
};

/// None for a range that can't be divided.
Ticks ticksOf(double min, double max)
{
    constexpr int most = 100;
    if (!(max > min) || !std::isfinite(max - min))
        return {};
    Ticks ticks;
    double first = 0.0;
    double last = 0.0;
    ChCoord::autoTicks(min, max, ticks.step, first, last);
    ticks.first = std::round(first / ticks.step);
    const double count = std::round(last / ticks.step) - ticks.first + 1.0;
    ticks.count = count >= 1.0 && count <= most ? truncatedInt(count) : 0;
    return ticks;
}

} // namespace

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
    p->setPen(QPen(Qt::black, 2));
    paintUpright(p, spectrum_.midx);
}

void XafsPlot::paintAxes(QPainter* p) const
{
    const double w = coord.plotX1 - coord.plotX0;
    const double h = coord.plotY0 - coord.plotY1;
    const QSizeF label(std::trunc(std::trunc(w / coord.labelDivX) * coord.labelFraction) * 5,
                       std::trunc(h / coord.labelDivY));
    p->setPen(QPen(QColor(gridColour), 2));
    p->drawRect(QRectF(coord.plotX0, coord.plotY1, w, h));
    paintXTicks(p, label);
    paintValueTicks(p, label);
    paintEdgeNames(p, label);
}

void XafsPlot::paintXTicks(QPainter* p, const QSizeF& label) const
{
    const Ticks ticks = ticksOf(coord.realX0, coord.realX1);
    const double y = coord.plotY0 + labelGap;
    for (int i = 0; i < ticks.count; ++i) {
        const double x = ticks.value(i);
        p->setPen(QColor(gridColour));
        paintUpright(p, x);
        if (i != 0 && i != ticks.count - 1)
            continue;
        p->setPen(Qt::black);
        QRectF box(QPointF(coord.realToScreenX(x) - label.width() / 2, y), label);
        DrawText::drawFitted(p, box, p->font(), Qt::AlignCenter, DrawText::Fitted, fieldText(x),
                             labelPoint);
    }
    const double captionY = y + label.height();
    if (captionY + label.height() > coord.screenY0)
        return;
    p->setPen(Qt::black);
    QRectF box(coord.plotX0, captionY, coord.plotX1 - coord.plotX0, label.height());
    DrawText::drawFitted(p, box, p->font(), Qt::AlignCenter, DrawText::Fitted,
                         showsFrequencies()
                             ? QCoreApplication::translate("XafsView", "Frequency no.")
                             : QCoreApplication::translate("XafsView", "Energy [eV]"),
                         labelPoint);
}

void XafsPlot::paintValueTicks(QPainter* p, const QSizeF& label) const
{
    const Ticks ticks = ticksOf(coord.realY0, coord.realY1);
    const double right = coord.plotX0 - labelGap;
    const QSizeF size(std::min(label.width(), right - coord.screenX0), label.height());
    for (int i = 0; i < ticks.count; ++i) {
        const double value = ticks.value(i);
        const double y = coord.realToScreenY(value);
        p->setPen(QColor(gridColour));
        p->drawLine(plotPixel(coord.plotX0), plotPixel(y), plotPixel(coord.plotX1), plotPixel(y));
        if (i != 0 && i != ticks.count - 1)
            continue;
        p->setPen(Qt::black);
        QRectF box(QPointF(right - size.width(), y - size.height() / 2), size);
        DrawText::drawFitted(p, box, p->font(), Qt::AlignRight | Qt::AlignVCenter, DrawText::Fitted,
                             fieldText(value), labelPoint);
    }
}

/// Names stand upright beside the lines of their edges.
void XafsPlot::paintEdgeNames(QPainter* p, const QSizeF& label) const
{
    if (showsFrequencies())
        return;
    p->setPen(Qt::red);
    for (const EdgeMark& mark : edgeMarks) {
        const double x = coord.realToScreenX(mark.energy);
        if (!inView(x))
            continue;
        QRectF box(QPointF(x - label.height() / 2, coord.plotY1 + label.width() / 2), label);
        DrawText::drawRotated(p, 270.0, box, p->font(), Qt::AlignHCenter | Qt::AlignVCenter,
                              DrawText::Fitted, mark.name, labelPoint, false, QBrush());
    }
}
