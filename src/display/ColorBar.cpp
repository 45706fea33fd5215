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
constexpr int handleHeight = 3; ///< on the screen [pixels]
constexpr int numberMargin = 4; ///< from the end of the bar on the screen [pixels]

/// Bands from the lower end up, each with the number of its class.
void paintClasses(QPainter& painter, const QSize& size, const std::vector<QRgb>& colours)
{
    const int count = int(colours.size());
    const auto edge = [&](int i) { return size.height() - i * size.height() / count; };
    for (int i = 0; i < count; ++i) {
        const QRect band(QPoint(0, edge(i + 1)), QPoint(size.width() - 1, edge(i) - 1));
        painter.fillRect(band, QColor(colours[std::size_t(i)]));
        painter.setPen(qGray(colours[std::size_t(i)]) > 127 ? Qt::black : Qt::white);
        painter.drawText(band, Qt::AlignCenter, QString::number(i));
    }
}

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
    if (hasRange_ && newMin == rangeMin && newMax == rangeMax)
        return;
    hasRange_ = true;
    rangeMin = newMin;
    rangeMax = newMax;
    paintCBar();
}

void ColorBar::clearRange()
{
    if (!hasRange_)
        return;
    hasRange_ = false;
    paintCBar();
}

void ColorBar::setClasses(const std::vector<QRgb>& colours)
{
    if (colours == classes_)
        return;
    classes_ = colours;
    dragging = false;
    setAttribute(Qt::WA_TransparentForMouseEvents, !classes_.empty());
    paintCBar();
}

void ColorBar::resetHandles()
{
    lowHandle = 0.0;
    highHandle = 1.0;
    paintCBar();
}

void ColorBar::setRamp(int newRamp)
{
    chooseRamp(newRamp);
    paintCBar();
}

QColor ColorBar::colorOfH(int h) const
{
    return colorOfValue(qBound(0.0, double(h) / barPixmap.height(), 1.0));
}

void ColorBar::paintCBar()
{
    if (!classes_.empty()) {
        QPainter painter(&barPixmap);
        paintClasses(painter, barSize, classes_);
        shown_ = QPixmap();
        update();
        return;
    }
    QPainter painter(&barPixmap);
    paintRamp(painter);
    paintEnds(painter, rangeMin, rangeMax);
    if (dragging)
        paintNumber(painter, rangeMin + (rangeMax - rangeMin) * this->*activeHandle_,
                    0.5 * barPixmap.height(), Qt::AlignRight | Qt::AlignVCenter);
    shown_ = QPixmap();
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

QImage ColorBar::classImage(const std::vector<QRgb>& colours)
{
    QPixmap bar(barSize);
    QPainter painter(&bar);
    paintClasses(painter, barSize, colours);
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

/// Each mouse move over the image paints the bar: from what was painted before.
void ColorBar::draw1(QPainter* p)
{
    if (shown_.size() != size() * devicePixelRatioF())
        paintShown();
    p->drawPixmap(0, 0, shown_);
}

void ColorBar::paintShown()
{
    shown_ = QPixmap(size() * devicePixelRatioF());
    shown_.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&shown_);
    if (!classes_.empty()) {
        paintClasses(painter, size(), classes_);
        return;
    }
    const int rows = height();
    for (int y = 0; y < rows; ++y)
        painter.fillRect(0, y, width(), 1, colorOfValue(double(rows - 1 - y) / qMax(1, rows - 1)));
    paintShownHandles(painter);
    if (!hasRange_)
        return;
    paintShownNumber(painter, rangeMax, 1.0);
    paintShownNumber(painter, rangeMin, 0.0);
    if (dragging)
        paintShownNumber(painter, rangeMin + (rangeMax - rangeMin) * this->*activeHandle_, 0.5);
}

/// Whole on the screen at the ends too: there they are to be taken.
void ColorBar::paintShownHandles(QPainter& painter) const
{
    for (const double handle : {highHandle, lowHandle}) {
        const int y = truncatedInt((1.0 - handle) * height()) - handleHeight / 2;
        painter.fillRect(0, qBound(0, y, height() - handleHeight), width(), handleHeight,
                         QColor(handleColour));
    }
}

/// A value, read downward, at a height of the bar; dark on light colours, light on dark ones.
void ColorBar::paintShownNumber(QPainter& painter, double value, double fraction) const
{
    const QString text = QString::number(value, 'g', 6);
    const int length = painter.fontMetrics().horizontalAdvance(text) + 2;
    const int room = qMax(0, height() - length - 2 * (numberMargin + handleHeight));
    const int top = numberMargin + handleHeight + truncatedInt((1.0 - fraction) * room);
    const double middle = 1.0 - (top + 0.5 * length) / qMax(1, height());
    painter.setPen(qGray(colorOfValue(middle).rgb()) > 127 ? Qt::black : Qt::white);
    painter.save();
    painter.translate(width(), top);
    painter.rotate(90.0);
    painter.drawText(QRect(0, 0, length, width()), Qt::AlignCenter | Qt::TextDontClip, text);
    painter.restore();
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
    resetHandles();
    Q_EMIT autoAsked();
}
