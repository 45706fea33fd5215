#include "display/ImageOverlay.h"

#include "display/ChCoord.h"
#include "display/PlotRange.h"

#include <QPainter>

#include <cstdlib>

namespace {

constexpr QRgb crossHairColour = qRgb(192, 192, 0);
constexpr QRgb selectionColour = qRgb(192, 192, 255);
constexpr QRgb i0DarkColour = qRgb(192, 255, 192);
constexpr QRgb i1DarkColour = qRgb(255, 192, 192);
constexpr int blockPenWidth = 2;

QRect onScreen(const ChCoord& coord, const QRectF& area)
{
    return QRect(plotPixel(coord.realToScreenX(area.x())), plotPixel(coord.realToScreenY(area.y())),
                 plotPixel(coord.realToScreenDX(area.width())),
                 plotPixel(coord.realToScreenDY(area.height())));
}

void paintArea(QPainter& p, const ChCoord& coord, QRgb colour, const std::optional<QRectF>& area)
{
    if (!area)
        return;
    p.setPen(QColor(colour));
    p.drawRect(onScreen(coord, *area));
}

void paintCrossHair(QPainter& p, const ChCoord& coord, const ImageOverlay& o)
{
    p.setPen(QColor(crossHairColour));
    const int x = plotPixel(coord.realToScreenX(o.x));
    const int y = plotPixel(coord.realToScreenY(o.y));
    p.drawLine(x, plotPixel(coord.realToScreenY(o.imageHeight)), x,
               plotPixel(coord.realToScreenY(0)));
    p.drawLine(plotPixel(coord.realToScreenX(0)), y, plotPixel(coord.realToScreenX(o.imageWidth)),
               y);
}

} // namespace

void paintOverlay(QPainter& p, const ChCoord& coord, const ImageOverlay& o)
{
    const double a = std::abs(double(o.bandWidth));
    const double b = std::abs(double(o.bandHeight));
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(Qt::red, blockPenWidth));
    p.drawRect(onScreen(coord, QRectF(o.x - a, o.y - b, 2 * a + 1, 2 * b + 1)));
    paintCrossHair(p, coord, o);
    paintArea(p, coord, selectionColour, o.selection);
    paintArea(p, coord, i0DarkColour, o.i0DarkArea);
    paintArea(p, coord, i1DarkColour, o.i1DarkArea);
}
