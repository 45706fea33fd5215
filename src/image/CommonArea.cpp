#include "image/CommonArea.h"

#include <algorithm>

void CommonArea::take(const TiffStack& images)
{
    for (const SharedImage& image : images) {
        const qint64 shiftX = image->shiftX;
        const qint64 shiftY = image->shiftY;
        moved_ = moved_ || shiftX != 0 || shiftY != 0;
        left_ = std::max(left_, shiftX);
        top_ = std::max(top_, shiftY);
        right_ = std::min(right_, shiftX + image->width);
        bottom_ = std::min(bottom_, shiftY + image->height);
    }
}

bool CommonArea::isLeftBy(int x, int y, int halfX, int halfY) const
{
    const qint64 reachX = qAbs(qint64(halfX));
    const qint64 reachY = qAbs(qint64(halfY));
    return moved_ && (x - reachX < left_ || x + reachX >= right_ || y - reachY < top_ ||
                      y + reachY >= bottom_);
}
