#include "display/CrossSView.h"

#include "common/Constants.h"
#include "common/SafeInt.h"

#include <QPainter>
#include <QPolygon>

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
    posMin_ = valueMin_ = runningMinStart;
    posMax_ = valueMax_ = runningMaxStart;
    for (const QPointF& point : points_) {
        posMin_ = qMin(posMin_, point.x());
        posMax_ = qMax(posMax_, point.x());
        valueMin_ = qMin(valueMin_, point.y());
        valueMax_ = qMax(valueMax_, point.y());
    }
    update();
}

void CrossSView::draw(QPainter* p)
{
    ChCoord plot;
    plot.setScreenArea(0, height(), width(), 0);
    if (points_.isEmpty())
        return;
    if (vertical_)
        plot.setRealArea(valueMin_, posMin_, valueMax_, posMax_);
    else
        plot.setRealArea(posMin_, valueMin_, posMax_, valueMax_);
    QPolygon line;
    line.reserve(points_.size());
    for (const QPointF& point : qAsConst(points_)) {
        const double x = vertical_ ? point.y() : point.x();
        const double y = vertical_ ? point.x() : point.y();
        line.append(QPoint(truncatedInt(plot.realToScreenX(x)), truncatedInt(plot.realToScreenY(y))));
    }
    p->drawPolyline(line);
    p->setPen(QColor(cursorColour));
    if (vertical_) {
        const int y = truncatedInt(plot.realToScreenY(cursorPos_));
        p->drawLine(0, y, width(), y);
    } else {
        const int x = truncatedInt(plot.realToScreenX(cursorPos_));
        p->drawLine(x, 0, x, height());
    }
}
