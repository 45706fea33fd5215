#pragma once

#include "common/ColorScale.h"
#include "display/DispA.h"

#include <QPixmap>

/// The bar beside the image: it shows the ramp and its range, and carries the two handles that the
/// ramp spans. Through its ColorScale all images and maps turn into pixels; what is on
/// show is made anew by its owner when cBarUpdated() arrives.
class ColorBar : public DispA, public ColorScale
{
    Q_OBJECT
public:
    explicit ColorBar(QWidget* parent = nullptr);

    QPixmap barPixmap; ///< the painted bar, of one size whatever the widget's
    bool dragging = false;

    /// The bar as it would be painted for this range of values, with its handles.
    QImage barImage(double min, double max) const;

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
    /// Colour of barPixmap h pixels above its lower end.
    QColor colorOfH(int h) const;

private:
    double fractionAtPointer() const;
    void paintRamp(QPainter& painter) const;
    void paintEnds(QPainter& painter, double min, double max) const;
    void paintNumber(QPainter& painter, double value, double y, int flags) const;

    double ColorScale::*activeHandle_ = &ColorScale::lowHandle;
};
