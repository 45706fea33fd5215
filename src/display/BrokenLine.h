#pragma once

#include "display/FreePlace.h"
#include "display/PlotRange.h"

#include <QPainter>
#include <QPolygon>

#include <cmath>

/// Draws a curve as a polyline on whole pixels that breaks where a coordinate is no finite number.
/// It keeps its memory from curve to curve.
class BrokenLine
{
public:
    void reserve(int points) { piece_.reserve(points); }

    /// Tells a search for a free place of what is drawn from now on; null ends that.
    void tell(FreePlace* place) { place_ = place; }

    /// Takes the next point [pixels].
    void add(QPainter* p, double x, double y)
    {
        if (std::isfinite(x) && std::isfinite(y))
            piece_.append(QPoint(plotPixel(x), plotPixel(y)));
        else
            end(p);
    }

    /// Draws what has been collected; a lone point is a dot.
    void end(QPainter* p)
    {
        if (piece_.size() == 1)
            p->drawPoint(piece_.first());
        else if (!piece_.isEmpty())
            p->drawPolyline(piece_);
        if (place_)
            place_->take(piece_);
        piece_.resize(0);
    }

private:
    QPolygon piece_;
    FreePlace* place_ = nullptr;
};
