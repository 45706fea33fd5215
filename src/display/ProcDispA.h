#pragma once

#include "display/DispA.h"

#include <QImage>
#include <QRectF>

/// The image area of registration: a picture and the part of it that is in view, zoomed by the
/// wheel about the cursor. It neither selects nor moves. Coordinates are image pixels; the view is
/// stretched over the whole widget.
class ProcDispA : public DispA
{
    Q_OBJECT
public:
    explicit ProcDispA(QWidget* parent = nullptr);

    /// Shows a picture, which its owner keeps; null for none. The first one comes into view whole,
    /// as does one of another size; others keep the view.
    void setImage(const QImage* picture);
    /// Brings the whole picture into view; nothing without one.
    void resetViewWindow();
    /// What stands in the area while there is no picture.
    void setEmptyText(const QString& text);
    const QRectF& viewWindow() const { return viewWindow_; }

    QSize sizeHint() const override;

Q_SIGNALS:
    void mouseMoved(double x, double y); ///< pressed or not

public Q_SLOTS:
    void drawOnScreen(QPainter* p);
    void onMousePressed();
    void onMouseReleased();
    void onMouseMoved();
    void onWheelMoved();

private:
    const QImage* image_ = nullptr;
    QSize shownSize_; ///< of the picture that the view was last brought on
    QRectF viewWindow_;
    QString emptyText_;
};
