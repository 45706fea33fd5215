#include "walk/ShiftField.h"

#include <cmath>

double ShiftField::at(int x, int y) const
{
    const qint64 column = qint64(x) + imageOrigin.x() - origin.x();
    const qint64 row = qint64(y) + imageOrigin.y() - origin.y();
    if (column < 0 || row < 0 || column >= size.width() || row >= size.height())
        return 0.0;
    const double shift = values.at(int(row * size.width() + column));
    return std::isnan(shift) ? 0.0 : shift;
}
