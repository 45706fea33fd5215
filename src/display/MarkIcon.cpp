#include "display/MarkIcon.h"

#include <QPainter>
#include <QWidget>

namespace {

constexpr QRgb doneColour = qRgb(38, 140, 66);
constexpr QRgb lookColour = qRgb(224, 148, 18);
constexpr QRgb blockedColour = qRgb(192, 44, 44);
constexpr QRgb runningColour = qRgb(48, 116, 196);

constexpr int wholeCircle = 360 * 16; ///< of QPainter, in sixteenths of a degree
constexpr int atTwelve = 90 * 16;

QMarginsF evenMargins(double width)
{
    return {width, width, width, width};
}

void paintCircle(QPainter& p, const QRectF& r, QColor colour, Qt::PenStyle style)
{
    // Neither as loud as text nor lost on a dark ground.
    colour.setAlpha(160);
    p.setPen(QPen(colour, r.width() / 9, style));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(r);
}

void paintTick(QPainter& p, const QRectF& r)
{
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(doneColour));
    p.drawEllipse(r);
    const auto at = [&r](double x, double y) {
        return QPointF(r.left() + x * r.width(), r.top() + y * r.height());
    };
    p.setPen(QPen(Qt::white, r.width() / 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPolyline(QPolygonF({at(0.28, 0.53), at(0.44, 0.68), at(0.73, 0.34)}));
}

void paintTriangle(QPainter& p, const QRectF& r)
{
    p.setPen(QPen(QColor(lookColour), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(QColor(lookColour));
    p.drawPolygon(QPolygonF({{r.center().x(), r.top()}, r.bottomRight(), r.bottomLeft()}));
    p.setPen(QPen(Qt::white, r.width() / 8, Qt::SolidLine, Qt::RoundCap));
    const double x = r.center().x();
    p.drawLine(QPointF(x, r.top() + 0.38 * r.height()), QPointF(x, r.top() + 0.64 * r.height()));
    p.drawPoint(QPointF(x, r.top() + 0.85 * r.height()));
}

void paintCross(QPainter& p, const QRectF& r)
{
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(blockedColour));
    p.drawRoundedRect(r, 2, 2);
    const QRectF inner = r.marginsRemoved(evenMargins(r.width() * 0.27));
    p.setPen(QPen(Qt::white, r.width() / 7, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(inner.topLeft(), inner.bottomRight());
    p.drawLine(inner.topRight(), inner.bottomLeft());
}

void paintPie(QPainter& p, const QRectF& r, double share)
{
    p.setPen(QPen(QColor(runningColour), r.width() / 9));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(r);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(runningColour));
    p.drawPie(r, atTwelve, -int(qBound(0.0, share, 1.0) * wholeCircle));
}

} // namespace

void paintMark(QPainter& painter, const QRectF& square, Mark mark, double share,
               const QColor& textColour)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF r = square.marginsRemoved(evenMargins(square.width() / 14));
    switch (mark) {
    case Mark::ToDo:
        paintCircle(painter, r, textColour, Qt::SolidLine);
        break;
    case Mark::Optional:
        paintCircle(painter, r, textColour, Qt::DotLine);
        break;
    case Mark::Done:
        paintTick(painter, r);
        break;
    case Mark::LookHere:
        paintTriangle(painter, r);
        break;
    case Mark::Blocked:
        paintCross(painter, r);
        break;
    case Mark::Running:
        paintPie(painter, r, share);
        break;
    }
    painter.restore();
}

QPixmap markPixmap(const QWidget& widget, Mark mark, double share)
{
    const int side = widget.fontMetrics().height();
    const double ratio = widget.devicePixelRatioF();
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paintMark(painter, QRectF(0, 0, side, side), mark, share,
              isLoud(mark) ? QColor(Qt::black) : widget.palette().color(QPalette::WindowText));
    return pixmap;
}

QColor markTint(Mark mark)
{
    switch (mark) {
    case Mark::LookHere:
        return QColor(255, 236, 200);
    case Mark::Blocked:
        return QColor(255, 216, 212);
    case Mark::Running:
        return QColor(217, 234, 253);
    default:
        return {};
    }
}
