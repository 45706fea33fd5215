#pragma once

#include "image/TiffData.h"

/// Calls f with a null pointer of the image's pixel type as a tag, so that a loop over pixels is
/// compiled once per type; returns `none` for an image without pixels.
template<typename F, typename R>
R withPixelType(const TiffData& image, R none, F f)
{
    switch (image.pixelType) {
    case TiffData::TiffWords:
    case TiffData::ImgWords:
        return f(static_cast<const quint16*>(nullptr));
    case TiffData::ImgLongs:
        return f(static_cast<const quint32*>(nullptr));
    case TiffData::Floats:
        return f(static_cast<const float*>(nullptr));
    default:
        return none;
    }
}

/// Columns or rows first..last of the stored pixels, empty when first > last.
struct PixelRange
{
    int first;
    int last;
};

/// The part of position - half .. position + half that lies in 0 .. size - 1 after the shift.
inline PixelRange pixelRange(int position, int half, int shift, int size)
{
    const qint64 centre = qint64(position) - shift;
    const qint64 reach = qAbs(qint64(half));
    return {int(qBound<qint64>(0, centre - reach, size)),
            int(qBound<qint64>(-1, centre + reach, size - 1))};
}
