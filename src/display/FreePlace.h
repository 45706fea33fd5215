#pragma once

#include <QPolygon>
#include <QRect>
#include <QVector>

/// Looks for the place in a plot where a box covers least of the curves: anywhere along the right
/// or the left side of the window. Curves are taken as they are drawn, so none has to be kept.
class FreePlace
{
public:
    /// Begins a search for a box of this size [pixels].
    void begin(const QRect& window, const QSize& box);
    /// Takes a piece of a curve, or a lone point of one.
    void take(const QPolygon& line);

    struct Found
    {
        QRect box;      ///< empty where the window has no room for it
        double covered; ///< length of the curves under it [pixels]
    };
    /// Ends the search with the best place. A former one is kept while it is about as good, so that
    /// a legend does not hop about while the curves change a little.
    Found find(const QRect& former);

private:
    /// Length of curve in each row of pixels below a side's boxes; while curves come, as the steps
    /// from row to row, so that a slope costs the same however high it is.
    struct Side
    {
        int left = 0;
        int right = 0;
        QVector<double> rows;

        void take(const QPoint& a, const QPoint& b, int top);
        void sumUp();
        double covered(int row, int rows) const;
    };

    QRect boxAt(const Side& side, int y) const;

    QRect window_;
    QSize box_;
    Side sides_[2]; ///< right, left: steps up at an edge leave the lower right corner free
};
