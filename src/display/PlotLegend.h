#pragma once

#include "display/FreePlace.h"

#include <QFontMetrics>
#include <QPen>

class QPainter;

/// Names the curves of a plot in a box beside them. It is left out where no place for it stays
/// clear of the curves, or the window is small. Use for each painting: begin(), add() for each
/// curve, place(), then the curves themselves into free(), then paint().
class PlotLegend
{
public:
    /// Begins the list for a plot window. Texts are measured anew when one of the two is another.
    void begin(const QRect& window, const QFont& font);
    /// A curve; one without a name gets no line.
    void add(const QString& name, const QPen& pen);
    void place();
    FreePlace& free() { return free_; }
    /// Finds the place and paints there.
    void paint(QPainter* p);

    /// Where it was painted last; empty when it was left out.
    const QRect& box() const { return box_; }

private:
    struct Row
    {
        QString name;
        QString shown; ///< shortened in the middle where it is long
        QPen pen;
        int width;
    };

    QRect window_;
    QFont font_;
    QFontMetrics metrics_{font_};
    QVector<Row> rows_; ///< kept from painting to painting for their measured texts
    int used_ = 0;
    QSize size_; ///< of the box; empty where there is no room
    FreePlace free_;
    QRect box_;
};
