#pragma once

#include "display/DispA.h"

#include <QPointF>
#include <QVector>

/// A narrow plot of the image along the cross hair: beside the image (vertical) or below it.
class CrossSView : public DispA
{
    Q_OBJECT
public:
    explicit CrossSView(QWidget* parent = nullptr);

    /// In a vertical strip the values run to the right and the positions upward.
    void setVertical(bool f);
    /// (position, value) pairs; bounds are taken from them.
    void setPoints(const QVector<QPointF>& points);
    void setCursorPos(int pos);

public Q_SLOTS:
    void draw(QPainter* p);

private:
    QVector<QPointF> points_;
    bool vertical_ = false;
    double posMin_ = 0.0, posMax_ = 0.0, valueMin_ = 0.0, valueMax_ = 0.0;
    int cursorPos_ = 0;
};
