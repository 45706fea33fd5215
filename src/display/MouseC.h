#pragma once

#include <QPoint>
#include <QPointF>
#include <Qt>

class QMouseEvent;

/// What the mouse did over a drawing area: positions in whole pixels, buttons and modifiers of the
/// last event of each kind. Values stay until the next event of their kind.
class MouseC
{
public:
    QPoint prevPos; ///< position before the last event of any kind
    QPoint pos;     ///< position of the last event
    QPoint pressPos;
    QPoint releasePos;
    QPoint doubleClickPos;
    bool pressed = false; ///< between a press and the following release
    int button = Qt::NoButton;
    int pressButton = Qt::NoButton;
    int releaseButton = Qt::NoButton;
    int doubleClickButton = Qt::NoButton;
    int modifiers = Qt::NoModifier;
    int pressModifiers = Qt::NoModifier;
    int releaseModifiers = Qt::NoModifier;
    int doubleClickModifiers = Qt::NoModifier;

    /// Gestures: the left button's codes; the right button's are 8 higher.
    enum Action
    {
        Plain = 0,
        Shift = 1,
        Ctrl = 2,
        Alt = 3,
        ShiftCtrl = 4,
        ShiftAlt = 5,
        CtrlAlt = 6,
        ShiftCtrlAlt = 7,
        RightPlain = 8,
        NoAction = 16
    };

    void recordMove(const QMouseEvent& e);
    void recordPress(const QMouseEvent& e);
    void recordRelease(const QMouseEvent& e);
    /// Leaves pos, prevPos and pressed alone.
    void recordDoubleClick(const QMouseEvent& e);
    /// Moves the position from code.
    void moveTo(const QPoint& p);

    /// The pixel of a position: halves round up, for negative coordinates too.
    static QPoint wholePixel(const QPointF& p);
    /// Button and modifiers as one code, 0 to 7 for the left and 8 to 15 for the right button;
    /// NoAction for any other button.
    static int mouseAction(int button, int modifiers);
    /// The code of the last press: a gesture keeps its meaning until the release.
    int pressAction() const { return mouseAction(pressButton, pressModifiers); }

private:
    void record(const QMouseEvent& e);
};
