#pragma once

#include "display/DispA.h"
#include "display/PlotRange.h"

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
    /// (position, value) pairs; the plot spans the finite ones.
    void setPoints(const QVector<QPointF>& points);
    void setCursorPos(int pos);

public Q_SLOTS:
    void draw(QPainter* p);

private:
    QVector<QPointF> points_;
    bool vertical_ = false;
    PlotRange positions_;
    PlotRange values_;
    int cursorPos_ = 0;
};
