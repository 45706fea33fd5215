#include "spectrum/CurveTable.h"

void CurveTable::tabulate()
{
    const int n = curve_->size();
    if (n < 2)
        return;
    x_.resize(n);
    y_.resize(n);
    slopes_.resize(n - 1);
    const QPointF* p = curve_->points.constData();
    const double shift = curve_->shift();
    for (int i = 0; i < n; ++i) {
        x_[i] = p[i].x() - shift;
        y_[i] = p[i].y();
    }
    for (int i = 0; i < n - 1; ++i) {
        if (!(x_[i] < x_[i + 1]))
            return;
        slopes_[i] = (y_[i + 1] - y_[i]) / (x_[i + 1] - x_[i]);
    }
    tabulated_ = true;
}
