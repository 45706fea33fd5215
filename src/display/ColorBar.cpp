#include "display/ColorBar.h"

#include "common/SafeInt.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr QSize barSize(20, 600);
constexpr QRgb handleColour = qRgb(0, 192, 255);

} // namespace

ColorBar::ColorBar(QWidget* parent)
    : DispA(parent)
    , barPixmap(barSize)
{
    connect(this, &DispA::drawImage1, this, &ColorBar::draw1);
    connect(this, &DispA::mouseMoved0, this, &ColorBar::onMouseMoved);
    connect(this, &DispA::mousePressed0, this, &ColorBar::onMousePressed);
    connect(this, &DispA::mouseReleased0, this, &ColorBar::onMouseReleased);
    paintCBar();
}

void ColorBar::setRange(double newMin, double newMax)
{
    if (newMin == rangeMin && newMax == rangeMax)
        return;
    rangeMin = newMin;
    rangeMax = newMax;
    paintCBar();
}

QColor ColorBar::colorOfH(int h) const
{
    return colorOfValue(qBound(0.0, double(h) / height(), 1.0));
}

void ColorBar::paintCBar()
{
    QPainter painter(&barPixmap);
    const int w = barPixmap.width();
    const int h = barPixmap.height();
    for (int y = h - 1; y >= 0; --y) {
        painter.setPen(colorOfH((h - 1 - y) * h / qMax(1, height())));
        painter.drawLine(0, y, w - 1, y);
    }
    painter.setPen(QColor(handleColour));
    for (const double handle : {highHandle, lowHandle}) {
        const int y = truncatedInt((1.0 - handle) * h);
        painter.drawLine(0, y, w - 1, y);
    }
    update();
}

/// The ramp is laid out by the widget's height.
void ColorBar::resizeEvent(QResizeEvent* e)
{
    DispA::resizeEvent(e);
    paintCBar();
}

void ColorBar::draw1(QPainter* p)
{
    p->drawPixmap(QRect(0, 0, width(), height()), barPixmap);
}

double ColorBar::fractionAtPointer() const
{
    return double(height() - mouse.pos.y()) / height();
}

void ColorBar::onMousePressed()
{
    const double f = fractionAtPointer();
    const double toHigh = std::abs(highHandle - f);
    const double toLow = std::abs(lowHandle - f);
    // Half way between both, neither is taken.
    dragging = toLow != toHigh;
    if (dragging)
        activeHandle_ = toLow > toHigh ? &ColorScale::highHandle : &ColorScale::lowHandle;
    paintCBar();
}

void ColorBar::onMouseMoved()
{
    if (!mouse.pressed)
        return;
    if (dragging) {
        this->*activeHandle_ = fractionAtPointer();
        paintCBar();
    }
    update();
    Q_EMIT cBarUpdating();
}

void ColorBar::onMouseReleased()
{
    Q_EMIT cBarUpdated();
    dragging = false;
}
