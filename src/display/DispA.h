#pragma once

#include "display/ChCoord.h"
#include "display/MouseC.h"

#include <QFrame>

class QPainter;

/// The drawing area of every picture of the program. It paints white, then lets its owner paint in
/// two layers, and forwards the mouse; owners connect to the signals and override nothing.
class DispA : public QFrame
{
    Q_OBJECT
public:
    explicit DispA(QWidget* parent = nullptr);

    ChCoord coord;
    MouseC mouse;
    bool wheelEnabled = true;
    bool dragEnabled = true;
    double wheelSteps = 0.0;  ///< last wheel movement in notches; forward is positive
    double wheelFactor = 1.0; ///< factor on the visible range that it asks for

Q_SIGNALS:
    void drawImage1(QPainter* p); ///< lower layer
    void drawImage2(QPainter* p); ///< upper layer, same painter
    void mouseMoved0();
    void mousePressed0();
    void mouseReleased0();
    void mouseDoubleClicked0();
    void wheelMoved0(); ///< forward or back; sideways movements are passed on

protected:
    void paintEvent(QPaintEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;
};
