#include "display/CrossSView.h"

#include "display/ScreenPixel.h"

#include <QPainter>
#include <QPolygon>

#include <cmath>

namespace {

constexpr QRgb cursorColour = qRgb(192, 192, 0);

} // namespace

CrossSView::CrossSView(QWidget* parent)
    : DispA(parent)
{
    connect(this, &DispA::drawImage1, this, &CrossSView::draw);
}

/// Counts that vanished can make infinite values, which must not flatten all others.
void CrossSView::Range::add(double v)
{
    if (!std::isfinite(v))
        return;
    min = qMin(min, v);
    max = qMax(max, v);
}

/// A level curve runs through the middle of a range round it.
void CrossSView::Range::widenIfEmpty()
{
    if (max > min)
        return;
    min -= 0.5;
    max = min + 1.0;
}

void CrossSView::setVertical(bool f)
{
    vertical_ = f;
    update();
}

void CrossSView::setCursorPos(int pos)
{
    cursorPos_ = pos;
    update();
}

void CrossSView::setPoints(const QVector<QPointF>& points)
{
    points_ = points;
    positions_ = values_ = Range();
    for (const QPointF& point : points_) {
        positions_.add(point.x());
        values_.add(point.y());
    }
    positions_.widenIfEmpty();
    values_.widenIfEmpty();
    update();
}

void CrossSView::draw(QPainter* p)
{
    ChCoord plot;
    plot.setScreenArea(0, height(), width(), 0);
    if (points_.isEmpty())
        return;
    if (vertical_)
        plot.setRealArea(values_.min, positions_.min, values_.max, positions_.max);
    else
        plot.setRealArea(positions_.min, values_.min, positions_.max, values_.max);
    QPolygon line;
    line.reserve(points_.size());
    for (const QPointF& point : qAsConst(points_)) {
        const double x = vertical_ ? point.y() : point.x();
        const double y = vertical_ ? point.x() : point.y();
        line.append(QPoint(screenPixel(plot.realToScreenX(x)), screenPixel(plot.realToScreenY(y))));
    }
    p->drawPolyline(line);
    p->setPen(QColor(cursorColour));
    if (vertical_) {
        const int y = screenPixel(plot.realToScreenY(cursorPos_));
        p->drawLine(0, y, width(), y);
    } else {
        const int x = screenPixel(plot.realToScreenX(cursorPos_));
        p->drawLine(x, 0, x, height());
    }
}
