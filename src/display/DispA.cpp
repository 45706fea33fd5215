#include "display/DispA.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>
#include <cstdlib>

namespace {

constexpr double zoomFactor = 1.1; ///< of one notch
constexpr double anglePerNotch = 120.0;
constexpr double pixelsPerNotch = 60.0; ///< Qt's own measure where it makes angles of pixels

/// A touchpad tells the way of the fingers in pixels, and phases. Without phases the pixels depend
/// on the driver, and an angle that comes with them is what can be relied on.
bool countsInPixels(const QWheelEvent& e)
{
    return !e.pixelDelta().isNull() && (e.phase() != Qt::NoScrollPhase || e.angleDelta().isNull());
}

/// Notches forward; 0 for a movement that goes sideways.
double notchesOf(const QWheelEvent& e)
{
    const bool pixels = countsInPixels(e);
    const QPoint delta = pixels ? e.pixelDelta() : e.angleDelta();
    if (std::abs(delta.x()) > std::abs(delta.y()))
        return 0.0;
    return delta.y() / (pixels ? pixelsPerNotch : anglePerNotch);
}

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
    const double notches = notchesOf(*e);
    if (notches == 0.0) {
        e->ignore();
        return;
    }
    wheelSteps = notches;
    // Turning forward narrows the visible range.
    wheelFactor = std::pow(zoomFactor, -notches);
    Q_EMIT wheelMoved0();
}
