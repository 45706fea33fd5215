#include "display/SignLine.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr QRgb good = qRgb(38, 138, 67);
constexpr QRgb look = qRgb(214, 138, 0);
constexpr QRgb prevents = qRgb(200, 40, 40);

// Signs are drawn in a square of 16 units.
constexpr double side = 16.0;

void drawTick(QPainter& p)
{
    p.setBrush(QColor(good));
    p.drawEllipse(QRectF(0.5, 0.5, 15, 15));
    p.setPen(QPen(Qt::white, 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPolyline(QPolygonF({{4.3, 8.3}, {7.0, 11.0}, {11.7, 5.5}}));
}

void drawTriangle(QPainter& p)
{
    QPainterPath triangle;
    triangle.addPolygon(QPolygonF({{8.0, 1.0}, {15.5, 14.8}, {0.5, 14.8}}));
    triangle.closeSubpath();
    p.fillPath(triangle, QColor(look));
    p.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(8.0, 6.0), QPointF(8.0, 9.6));
    p.drawPoint(QPointF(8.0, 12.5));
}

void drawCross(QPainter& p)
{
    p.setBrush(QColor(prevents));
    p.drawRoundedRect(QRectF(1, 1, 14, 14), 2, 2);
    p.setPen(QPen(Qt::white, 2.0, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(5, 5), QPointF(11, 11));
    p.drawLine(QPointF(11, 5), QPointF(5, 11));
}

QPixmap pictureOf(Sign sign, int pixels, double ratio)
{
    QPixmap picture(QSize(pixels, pixels) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter p(&picture);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(pixels / side, pixels / side);
    p.setPen(Qt::NoPen);
    if (sign == Sign::Good)
        drawTick(p);
    else if (sign == Sign::Look)
        drawTriangle(p);
    else
        drawCross(p);
    return picture;
}

} // namespace

SignLine::SignLine(QWidget* parent)
    : QWidget(parent)
    , picture_(new QLabel(this))
    , text_(new QLabel(this))
{
    text_->setWordWrap(true);
    text_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    text_->setTextFormat(Qt::PlainText);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(picture_, 0, Qt::AlignTop);
    layout->addWidget(text_, 1);
    showSign();
}

void SignLine::setLine(Sign sign, const QString& text)
{
    sign_ = sign;
    text_->setText(text);
    showSign();
}

QString SignLine::text() const
{
    return text_->text();
}

void SignLine::showSign()
{
    picture_->setPixmap(pictureOf(sign_, fontMetrics().height(), devicePixelRatioF()));
}
