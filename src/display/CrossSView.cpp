#include "display/CrossSView.h"

#include "display/BrokenLine.h"

#include <QPainter>

namespace {

constexpr QRgb cursorColour = qRgb(192, 192, 0);
constexpr QRgb axisColour = qRgb(0, 96, 160);
constexpr QRgb axisGround = qRgba(255, 255, 255, 208); ///< a curve shows through it
constexpr int axisMargin = 3;                          ///< round the text of the axis [pixels]

/// In the upper corner away from small positions; upright where there is no room across.
void paintAxisText(QPainter* p, const QSize& area, bool upright, const QString& text)
{
    if (upright) {
        p->translate(area.width(), 0);
        p->rotate(90.0);
    }
    const QRect box(QPoint(0, 0), upright ? area.transposed() : area);
    constexpr int place = Qt::AlignRight | Qt::AlignTop;
    const QRect inner = box.adjusted(axisMargin, 0, -axisMargin, 0);
    p->fillRect(p->boundingRect(inner, place, text), QColor::fromRgba(axisGround));
    p->setPen(QColor(axisColour));
    p->drawText(inner, place, text);
    p->resetTransform();
}

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

void CrossSView::setPoints(const QVector<QPointF>& points, const QString& axis)
{
    points_ = points;
    axis_ = axis;
    layOut();
}

void CrossSView::setRange(const PlotRange& positions)
{
    range_ = positions;
    layOut();
}

void CrossSView::layOut()
{
    const bool all = !range_.hasExtent();
    PlotRange positions;
    PlotRange values;
    for (const QPointF& point : qAsConst(points_)) {
        positions.add(point.x());
        if (all || (point.x() >= range_.min && point.x() <= range_.max))
            values.add(point.y());
    }
    positions_ = all ? positions.widened() : range_;
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
    if (!axis_.isEmpty())
        paintAxisText(p, size(), vertical_, axis_);
}
