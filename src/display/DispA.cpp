#include "display/DispA.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

namespace {

constexpr double zoomFactor = 1.1;

} // namespace

DispA::DispA(QWidget* parent)
    : QFrame(parent)
{
    setFrameShape(QFrame::StyledPanel);
    setMouseTracking(true);
}

void DispA::paintEvent(QPaintEvent* e)
{
    Q_UNUSED(e)
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, width(), height()), Qt::white);
    Q_EMIT drawImage1(&painter);
    Q_EMIT drawImage2(&painter);
}

void DispA::mouseMoveEvent(QMouseEvent* e)
{
    // Alt lets the pointer leave without changing what is shown.
    if (e->modifiers() & Qt::AltModifier)
        return;
    mouse.recordMove(*e);
    Q_EMIT mouseMoved0();
    update();
}

void DispA::mousePressEvent(QMouseEvent* e)
{
    mouse.recordPress(*e);
    Q_EMIT mousePressed0();
}

void DispA::mouseReleaseEvent(QMouseEvent* e)
{
    mouse.recordRelease(*e);
    Q_EMIT mouseReleased0();
}

void DispA::mouseDoubleClickEvent(QMouseEvent* e)
{
    mouse.recordDoubleClick(*e);
    Q_EMIT mouseDoubleClicked0();
}

void DispA::wheelEvent(QWheelEvent* e)
{
    wheelSteps = e->angleDelta().y() * 0.125 / 15.0;
    // Only the direction counts; turning forward narrows the visible range.
    wheelFactor = wheelSteps < 0.0 ? zoomFactor : 1.0 / zoomFactor;
    Q_EMIT wheelMoved0();
}
