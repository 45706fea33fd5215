#include "display/SmallWidgets.h"

#include <QPainter>

namespace {

/// Draws the text down the middle of the widget.
void drawDownward(QWidget& widget, const QString& text)
{
    QPainter p(&widget);
    p.setPen(Qt::black);
    p.rotate(90);
    p.drawText(QRect(0, -widget.width(), widget.height(), widget.width()),
               Qt::AlignHCenter | Qt::AlignVCenter, text);
}

} // namespace

VLabel::VLabel(QWidget* parent)
    : QLabel(parent)
{
}

QSize VLabel::sizeHint() const
{
    return QLabel::sizeHint().transposed();
}

QSize VLabel::minimumSizeHint() const
{
    return QLabel::minimumSizeHint().transposed();
}

void VLabel::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    drawDownward(*this, text());
}

VPushButton::VPushButton(QWidget* parent)
    : QPushButton(parent)
{
}

void VPushButton::setText(const QString& text)
{
    keeper_.setText(text);
    updateGeometry();
    update();
}

QSize VPushButton::sizeHint() const
{
    return keeper_.sizeHint().transposed();
}

QSize VPushButton::minimumSizeHint() const
{
    return keeper_.minimumSizeHint().transposed();
}

void VPushButton::paintEvent(QPaintEvent* event)
{
    QPushButton::paintEvent(event);
    drawDownward(*this, text());
}
