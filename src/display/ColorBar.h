#pragma once

#include "common/ColorScale.h"
#include "display/DispA.h"

#include <QPixmap>

/// The bar beside the image: it shows the ramp and its range, and carries the two handles that the
/// ramp spans. Through its ColorScale all images and maps turn into pixels; they are made anew by
/// their owner when cBarUpdated() arrives.
class ColorBar : public DispA, public ColorScale
{
    Q_OBJECT
public:
    explicit ColorBar(QWidget* parent = nullptr);

    QPixmap barPixmap; ///< the painted bar, of one size whatever the widget's
    bool dragging = false;

Q_SIGNALS:
    void cBarUpdated();  ///< a handle was let go
    void cBarUpdating(); ///< the mouse moves with its button down

public Q_SLOTS:
    /// Shows another range of values and paints the bar.
    void setRange(double newMin, double newMax);
    void paintCBar();
    void draw1(QPainter* p);
    void onMouseMoved();
    void onMousePressed();
    void onMouseReleased();
    /// Brings both handles back to the ends.
    void onMouseDoubleClicked();
    /// Colour of the bar h pixels above its lower end.
    QColor colorOfH(int h) const;

protected:
    void resizeEvent(QResizeEvent* e) override;

private:
    double fractionAtPointer() const;
    void paintNumber(QPainter& painter, double value, double y, int flags);

    double ColorScale::*activeHandle_ = &ColorScale::lowHandle;
};
