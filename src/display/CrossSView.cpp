#include "display/CrossSView.h"

#include "display/EmptyPlot.h"

#include <QPainter>

namespace {

constexpr QRgb cursorColour = qRgb(192, 192, 0);
constexpr QRgb axisColour = qRgb(96, 96, 96);
constexpr int axisMargin = 3; ///< round the text of the axis [pixels]

/// In the lower left corner; upright where there is no room across.
void paintAxisText(QPainter* p, const QSize& area, const QString& text)
{
    const int width = p->fontMetrics().horizontalAdvance(text) + 2 * axisMargin;
    p->save();
    p->setPen(QColor(axisColour));
    if (width > area.width()) {
        p->translate(p->fontMetrics().height(), area.height());
        p->rotate(-90.0);
    } else {
        p->translate(0, area.height());
    }
    p->drawText(axisMargin, -p->fontMetrics().descent() - 1, text);
    p->restore();
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
    values_ = values.widened().withAir();
    update();
}

void CrossSView::draw(QPainter* p)
{
    if (points_.isEmpty()) {
        paintEmptyPlot(p, *this, QString());
        return;
    }
    // The curve runs over the text.
    paintAxisText(p, size(), axis_);
    ChCoord plot;
    plot.setScreenArea(0, height(), width(), 0);
    if (vertical_)
        plot.setRealArea(values_.min, positions_.min, values_.max, positions_.max);
    else
        plot.setRealArea(positions_.min, values_.min, positions_.max, values_.max);
    paintCurve(p, plot);
    paintCursor(p, plot);
}

void CrossSView::paintCurve(QPainter* p, const ChCoord& plot)
{
    p->setPen(Qt::black);
    line_.reserve(points_.size());
    for (const QPointF& point : qAsConst(points_)) {
        const double x = vertical_ ? point.y() : point.x();
        const double y = vertical_ ? point.x() : point.y();
        line_.add(p, plot.realToScreenX(x), plot.realToScreenY(y));
    }
    line_.end(p);
}

void CrossSView::paintCursor(QPainter* p, const ChCoord& plot) const
{
    p->setPen(QColor(cursorColour));
    if (vertical_) {
        const int y = plotPixel(plot.realToScreenY(cursorPos_));
        p->drawLine(0, y, width(), y);
    } else {
        const int x = plotPixel(plot.realToScreenX(cursorPos_));
        p->drawLine(x, 0, x, height());
    }
}
