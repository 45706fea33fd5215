#pragma once

#include "display/BrokenLine.h"
#include "display/DispA.h"
#include "display/PlotRange.h"

#include <QPointF>
#include <QVector>

/// A narrow plot of the image along the cross hair: beside the image (vertical) or below it.
/// Without points there is no paper, but the panel's ground.
class CrossSView : public DispA
{
    Q_OBJECT
public:
    explicit CrossSView(QWidget* parent = nullptr);

    /// In a vertical strip the values run to the right and the positions upward.
    void setVertical(bool f);
    /// (position, value) pairs, and what the values are, which stands in the lower left corner.
    void setPoints(const QVector<QPointF>& points, const QString& axis = QString());
    /// Positions at the ends of the plot, whose values span the plot; without an extent, as at
    /// first, the plot spans all points. Values that are no finite numbers count in no case.
    void setRange(const PlotRange& positions);
    void setCursorPos(int pos);

    const QVector<QPointF>& points() const { return points_; }
    const QString& axis() const { return axis_; }
    const PlotRange& shownPositions() const { return positions_; }
    const PlotRange& shownValues() const { return values_; }

public Q_SLOTS:
    void draw(QPainter* p);

private:
    void layOut();
    void paintCurve(QPainter* p, const ChCoord& plot);
    void paintCursor(QPainter* p, const ChCoord& plot) const;

    QVector<QPointF> points_;
    QString axis_;
    PlotRange range_; ///< asked for
    bool vertical_ = false;
    PlotRange positions_; ///< of the plot
    PlotRange values_;
    int cursorPos_ = 0;
    BrokenLine line_;
};
