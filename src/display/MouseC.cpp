#include "display/MouseC.h"

#include "common/SafeInt.h"

#include <QMouseEvent>

#include <cmath>

QPoint MouseC::wholePixel(const QPointF& p)
{
    return {truncatedInt(std::floor(p.x() + 0.5)), truncatedInt(std::floor(p.y() + 0.5))};
}

void MouseC::moveTo(const QPoint& p)
{
    prevPos = pos;
    pos = p;
}

void MouseC::record(const QMouseEvent& e)
{
    moveTo(wholePixel(e.localPos()));
    button = e.button();
    modifiers = int(e.modifiers());
}

void MouseC::recordMove(const QMouseEvent& e)
{
    record(e);
}

void MouseC::recordPress(const QMouseEvent& e)
{
    record(e);
    pressPos = pos;
    pressButton = button;
    pressModifiers = modifiers;
    pressed = true;
}

void MouseC::recordRelease(const QMouseEvent& e)
{
    record(e);
    releasePos = pos;
    releaseButton = button;
    releaseModifiers = modifiers;
    pressed = false;
}

void MouseC::recordDoubleClick(const QMouseEvent& e)
{
    doubleClickPos = wholePixel(e.localPos());
    doubleClickButton = e.button();
    doubleClickModifiers = int(e.modifiers());
}

int MouseC::mouseAction(int button, int modifiers)
{
    // By the bits Shift 1, Ctrl 2, Alt 4.
    static constexpr int codes[] = {Plain, Shift,    Ctrl,    ShiftCtrl,
                                    Alt,   ShiftAlt, CtrlAlt, ShiftCtrlAlt};
    if (button != Qt::LeftButton && button != Qt::RightButton)
        return NoAction;
    const int bits = ((modifiers & Qt::ShiftModifier) ? 1 : 0) |
                     ((modifiers & Qt::ControlModifier) ? 2 : 0) |
                     ((modifiers & Qt::AltModifier) ? 4 : 0);
    return codes[bits] + (button == Qt::RightButton ? RightPlain : 0);
}
