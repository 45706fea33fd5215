#pragma once

#include "image/TiffData.h"

#include <limits>

/// Where all images of some stacks have pixels: an image that registration has moved reads 0 beside
/// them, which looks like darkness and not like a sample.
class CommonArea
{
public:
    void take(const TiffStack& images);

    /// Some image is moved.
    bool isMoved() const { return moved_; }
    /// The block round (x, y) reaches to where some image has no pixels. Without a shift none does:
    /// all images lack the same pixels there.
    bool isLeftBy(int x, int y, int halfX, int halfY) const;

private:
    static constexpr qint64 far = std::numeric_limits<int>::max();

    bool moved_ = false;
    qint64 left_ = -far; ///< right and bottom exclusive
    qint64 top_ = -far;
    qint64 right_ = far;
    qint64 bottom_ = far;
};
