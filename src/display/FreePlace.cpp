#include "display/FreePlace.h"

#include "common/SafeInt.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int inset = 6;         ///< between the window's frame and the box [pixels]
constexpr int clearance = 4;     ///< between curves and the box [pixels]
constexpr double tolerated = 12; ///< length of curve that a former place may cover more [pixels]

} // namespace

void FreePlace::begin(const QRect& window, const QSize& box)
{
    window_ = window;
    box_ = box;
    sides_[0].right = window.right() - inset;
    sides_[0].left = sides_[0].right - box.width() + 1;
    sides_[1].left = window.left() + inset;
    sides_[1].right = sides_[1].left + box.width() - 1;
    for (Side& side : sides_)
        side.rows.fill(0.0, std::max(0, window.height()) + 1);
}

void FreePlace::take(const QPolygon& line)
{
    if (window_.isEmpty() || line.isEmpty())
        return;
    const QPoint* const points = line.constData();
    for (Side& side : sides_) {
        side.take(points[0], points[0], window_.top());
        for (int i = 1; i < line.size(); ++i)
            side.take(points[i - 1], points[i], window_.top());
    }
}

void FreePlace::Side::take(const QPoint& a, const QPoint& b, int top)
{
    const double low = left - clearance;
    const double high = right + clearance;
    const QPoint& start = a.x() <= b.x() ? a : b;
    const QPoint& end = a.x() <= b.x() ? b : a;
    if (end.x() < low || start.x() > high)
        return;
    const double dx = end.x() - start.x();
    const double dy = end.y() - start.y();
    const double from = dx > 0.0 ? std::max(0.0, (low - start.x()) / dx) : 0.0;
    const double to = dx > 0.0 ? std::min(1.0, (high - start.x()) / dx) : 1.0;
    const double y0 = start.y() + from * dy - top;
    const double y1 = start.y() + to * dy - top;
    const int first = truncatedInt(std::floor(std::min(y0, y1)));
    const int last = truncatedInt(std::floor(std::max(y0, y1)));
    const int end1 = rows.size() - 1; // the last step leads out of the window
    if (last < 0 || first >= end1)
        return;
    const double length = std::max(1.0, (to - from) * std::sqrt(dx * dx + dy * dy));
    const double perRow = length / (last - first + 1);
    rows[std::max(first, 0)] += perRow;
    rows[std::min(last + 1, end1)] -= perRow;
}

/// Turns steps into lengths, and these into the length above each row.
void FreePlace::Side::sumUp()
{
    double inRow = 0.0;
    double above = 0.0;
    for (double& row : rows) {
        inRow += row;
        row = above;
        above += inRow;
    }
}

double FreePlace::Side::covered(int row, int count) const
{
    const int last = rows.size() - 1;
    return rows[qBound(0, row + count, last)] - rows[qBound(0, row, last)];
}

QRect FreePlace::boxAt(const Side& side, int y) const
{
    return {QPoint(side.left, y), box_};
}

FreePlace::Found FreePlace::find(const QRect& former)
{
    Found best{QRect(), 0.0};
    Found kept = best;
    const int lowest = window_.bottom() - inset - box_.height() + 1;
    if (box_.isEmpty() || box_.width() > window_.width() - 2 * inset)
        return best;
    for (Side& side : sides_) {
        side.sumUp();
        for (int y = lowest; y >= window_.top() + inset; --y) {
            const double covered =
                side.covered(y - window_.top() - clearance, box_.height() + 2 * clearance);
            // Rows are sums and differences of the same lengths: no length is not quite 0.
            if (best.box.isEmpty() || covered < best.covered - 0.5)
                best = {boxAt(side, y), covered};
            // Of another size, with another text in it, it still is the same place.
            if (former.top() == y && (former.left() == side.left || former.right() == side.right))
                kept = {boxAt(side, y), covered};
        }
    }
    return !kept.box.isEmpty() && kept.covered <= best.covered + tolerated ? kept : best;
}
