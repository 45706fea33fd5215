#include "display/ColorBar.h"

#include "common/SafeInt.h"
#include "display/DrawText.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr QSize barSize(20, 600);
constexpr QRgb handleColour = qRgb(0, 192, 255);
constexpr QRgb textColour = qRgb(0, 255, 192);
constexpr double textLength = 95.0;  ///< of the box of a number [pixels]
constexpr double endDistance = 50.0; ///< of the box's centre from the end of the bar [pixels]
constexpr double maxPoint = 10.0;

} // namespace

ColorBar::ColorBar(QWidget* parent)
    : DispA(parent)
    , barPixmap(barSize)
{
    connect(this, &DispA::drawImage1, this, &ColorBar::draw1);
    connect(this, &DispA::mouseMoved0, this, &ColorBar::onMouseMoved);
    connect(this, &DispA::mousePressed0, this, &ColorBar::onMousePressed);
    connect(this, &DispA::mouseReleased0, this, &ColorBar::onMouseReleased);
    connect(this, &DispA::mouseDoubleClicked0, this, &ColorBar::onMouseDoubleClicked);
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
    return colorOfValue(qBound(0.0, double(h) / barPixmap.height(), 1.0));
}

void ColorBar::paintCBar()
{
    QPainter painter(&barPixmap);
    paintRamp(painter);
    paintEnds(painter, rangeMin, rangeMax);
    if (dragging)
        paintNumber(painter, rangeMin + (rangeMax - rangeMin) * this->*activeHandle_,
                    0.5 * barPixmap.height(), Qt::AlignRight | Qt::AlignVCenter);
    update();
}

QImage ColorBar::barImage(double min, double max) const
{
    QPixmap bar(barSize);
    QPainter painter(&bar);
    paintRamp(painter);
    paintEnds(painter, min, max);
    painter.end();
    return bar.toImage();
}

void ColorBar::paintRamp(QPainter& painter) const
{
    const int w = barPixmap.width();
    const int h = barPixmap.height();
    for (int y = 0; y < h; ++y) {
        painter.setPen(colorOfH(h - 1 - y));
        painter.drawLine(0, y, w - 1, y);
    }
    painter.setPen(QColor(handleColour));
    for (const double handle : {highHandle, lowHandle}) {
        const int y = truncatedInt((1.0 - handle) * h);
        painter.drawLine(0, y, w - 1, y);
    }
}

/// Leaves the pen at the texts' colour.
void ColorBar::paintEnds(QPainter& painter, double min, double max) const
{
    painter.setPen(QColor(textColour));
    paintNumber(painter, max, endDistance, Qt::AlignLeft | Qt::AlignVCenter);
    paintNumber(painter, min, barPixmap.height() - endDistance, Qt::AlignRight | Qt::AlignVCenter);
}

/// A value, read downward, its box round the height y.
void ColorBar::paintNumber(QPainter& painter, double value, double y, int flags) const
{
    const int w = barPixmap.width();
    QRectF box(0.5 * w, y, textLength, w);
    DrawText::drawRotated(&painter, 90.0, box, QFont(), flags, DrawText::Fitted,
                          QString::number(value, 'g', 6), maxPoint, false, Qt::NoBrush);
}

void ColorBar::draw1(QPainter* p)
{
    // Without smoothing a lower widget would drop the lines of the handles.
    p->setRenderHint(QPainter::SmoothPixmapTransform, true);
    p->drawPixmap(QRect(0, 0, width(), height()), barPixmap);
    p->setRenderHint(QPainter::SmoothPixmapTransform, false);
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
    paintCBar(); // without the handle's value
}

void ColorBar::onMouseDoubleClicked()
{
    if (mouse.doubleClickButton != Qt::LeftButton)
        return;
    lowHandle = 0.0;
    highHandle = 1.0;
    paintCBar();
    Q_EMIT cBarUpdated();
}
