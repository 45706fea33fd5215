#pragma once

#include "common/ColorScale.h"
#include "display/DispA.h"

#include <QPixmap>

#include <vector>

/// The bar beside the image: it shows the ramp and its range, and carries the two handles that the
/// ramp spans. Through its ColorScale all images and maps turn into pixels; what is on show is made
/// anew by its owner when cBarUpdated() arrives, which also takes the handles' range over.
///
/// It is painted twice: for the screen by its own height, and at one size for files, so that those
/// do not depend on the window.
class ColorBar : public DispA, public ColorScale
{
    Q_OBJECT
public:
    explicit ColorBar(QWidget* parent = nullptr);

    QPixmap barPixmap; ///< the bar for files, of one size whatever the widget's
    bool dragging = false;

    /// The bar as it would be painted for this range of values, with its handles.
    QImage barImage(double min, double max) const;
    /// The same of values that are numbers of classes: their colours one above the other from 0 on,
    /// each with its number.
    static QImage classImage(const std::vector<QRgb>& colours);
    /// A handle stands off its end.
    bool handlesMoved() const { return lowHandle != 0.0 || highHandle != 1.0; }
    /// Something with a range is on show.
    bool hasRange() const { return hasRange_; }

Q_SIGNALS:
    void cBarUpdated();  ///< a handle was let go
    void cBarUpdating(); ///< the mouse moves with its button down
    void autoAsked();    ///< a double click: the automatic range is wanted

public Q_SLOTS:
    /// Shows another range of values and paints the bar.
    void setRange(double newMin, double newMax);
    /// Nothing with a range is on show: no numbers, on the screen.
    void clearRange();
    /// What is on show has values that are numbers of classes: these colours stand in the place of
    /// the ramp, and the handles move nothing. None brings the ramp back.
    void setClasses(const std::vector<QRgb>& colours);
    /// Brings both handles back to the ends; tells nobody.
    void resetHandles();
    void setRamp(int newRamp);
    void paintCBar();
    void draw1(QPainter* p);
    void onMouseMoved();
    void onMousePressed();
    void onMouseReleased();
    /// Brings both handles back to the ends, and asks for the automatic range.
    void onMouseDoubleClicked();
    /// Colour of barPixmap h pixels above its lower end.
    QColor colorOfH(int h) const;

private:
    double fractionAtPointer() const;
    void paintRamp(QPainter& painter) const;
    void paintEnds(QPainter& painter, double min, double max) const;
    void paintNumber(QPainter& painter, double value, double y, int flags) const;
    void paintShown();
    void paintShownHandles(QPainter& painter) const;
    void paintShownNumber(QPainter& painter, double value, double fraction) const;

    double ColorScale::*activeHandle_ = &ColorScale::lowHandle;
    bool hasRange_ = true;
    std::vector<QRgb> classes_; ///< empty for the ramp
    QPixmap shown_;             ///< the bar on the screen; null when it is to be painted anew
};
