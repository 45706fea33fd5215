#include "display/CrossSView.h"

#include "display/BrokenLine.h"

#include <QPainter>

namespace {

constexpr QRgb cursorColour = qRgb(192, 192, 0);

} // namespace

CrossSView::CrossSView(QWidget* parent)
    : DispA(parent)
{
    connect(this, &DispA::drawImage1, this, &CrossSView::draw);
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
    PlotRange positions;
    PlotRange values;
    for (const QPointF& point : points_) {
        positions.add(point.x());
        values.add(point.y());
    }
    positions_ = positions.widened();
    values_ = values.widened();
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
    BrokenLine line;
    line.reserve(points_.size());
    for (const QPointF& point : qAsConst(points_)) {
        const double x = vertical_ ? point.y() : point.x();
        const double y = vertical_ ? point.x() : point.y();
        line.add(p, plot.realToScreenX(x), plot.realToScreenY(y));
    }
    line.end(p);
    p->setPen(QColor(cursorColour));
    if (vertical_) {
        const int y = plotPixel(plot.realToScreenY(cursorPos_));
        p->drawLine(0, y, width(), y);
    } else {
        const int x = plotPixel(plot.realToScreenX(cursorPos_));
        p->drawLine(x, 0, x, height());
    }
}
