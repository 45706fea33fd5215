#include "image/ImagePicture.h"

#include "common/SafeInt.h"
#include "image/PixelAccess.h"

#include <algorithm>
#include <limits>
#include <new>
#include <type_traits>
#include <vector>

namespace {

/// Writes one pixel value per column as picture bytes.
template<typename T>
void paintRows(const TiffData& image, const ColorScale& scale, const ValueRange& range,
               uchar* buffer, int stride)
{
    const double span = range.max - range.min;
    for (int y = 0; y < image.height; ++y) {
        uchar* out = buffer + size_t(y) * size_t(stride);
        const int rowNo = y - image.shiftY;
        const bool rowInside = rowNo >= 0 && rowNo < image.height;
        const T* row = rowInside ? image.row<T>(rowNo) : nullptr;
        for (int x = 0; x < image.width; ++x) {
            const int column = x - image.shiftX;
            const bool inside = rowInside && column >= 0 && column < image.width;
            const double v = inside ? static_cast<double>(row[column]) : 0.0;
            out = scale.mapValue((v - range.min) / span, out);
        }
        std::fill(out, buffer + size_t(y + 1) * size_t(stride), uchar(0));
    }
}

/// The same for 16-bit pixels of an unshifted image: each of the values that occur is mapped once,
/// into pixels of `bytes` bytes.
template<int bytes>
void paintRowsByTable(const TiffData& image, const ColorScale& scale, const ValueRange& range,
                      uchar* buffer, int stride)
{
    const double span = range.max - range.min;
    std::vector<uchar> table((size_t(std::numeric_limits<quint16>::max()) + 1) * bytes);
    const auto enter = [&](int v) {
        scale.mapValue((v - range.min) / span, &table[size_t(v) * bytes]);
    };
    for (int v = truncatedInt(image.minVal); v <= truncatedInt(image.maxVal); ++v)
        enter(v);
    // The one value that may lie outside the extremes: a bad pixel without a good neighbour.
    enter(0);
    // In locals: a byte that is written might be any part of what they come from.
    const uchar* const mapped = table.data();
    const int width = image.width;
    for (int y = 0; y < image.height; ++y) {
        const quint16* row = image.row<quint16>(y);
        uchar* out = buffer + size_t(y) * size_t(stride);
        for (int x = 0; x < width; ++x) {
            for (int k = 0; k < bytes; ++k)
                out[x * bytes + k] = mapped[row[x] * bytes + k];
        }
        std::fill(out + width * bytes, out + stride, uchar(0));
    }
}

bool paintsByTable(const TiffData& image, const ColorScale& scale)
{
    constexpr qint64 worthATable = 1 << 16;
    return (image.pixelType == TiffData::TiffWords || image.pixelType == TiffData::ImgWords) &&
           bytesPerPixel(scale.imageFormat) > 0 && image.shiftX == 0 && image.shiftY == 0 &&
           qint64(image.width) * image.height > worthATable;
}

} // namespace

void ImagePicture::show(const SharedImage& image, const ColorScale& scale)
{
    show(image, scale, image ? ValueRange{image->minVal, image->maxVal} : builtOver_);
}

void ImagePicture::show(const SharedImage& image, const ColorScale& scale, const ValueRange& range)
{
    if (!image) {
        clear();
        return;
    }
    if (picture_ && image_ == image && builtOver_ == range && builtWith_.mapsLike(scale))
        return;
    image_ = image;
    builtWith_ = scale;
    builtOver_ = range;
    paint(*image);
}

void ImagePicture::clear()
{
    picture_.reset();
    bytes_.reset();
    image_.reset();
}

void ImagePicture::paint(const TiffData& image)
{
    const size_t oldBytes = picture_ ? size_t(picture_->sizeInBytes()) : 0;
    picture_.reset();
    const int format = builtWith_.imageFormat;
    const int stride = displayStride(format, image.width);
    const size_t bytes = stride < 1 || image.height < 1 ? 0 : size_t(stride) * size_t(image.height);
    // Fresh memory costs as much as the pixels: the old buffer serves again.
    if (bytes != oldBytes)
        bytes_.reset(bytes > 0 ? new (std::nothrow) uchar[bytes] : nullptr);
    uchar* const buffer = bytes_.get();
    if (!buffer)
        return;
    if (image.pixelType == TiffData::NoPixels)
        std::fill(buffer, buffer + bytes, uchar(0));
    if (paintsByTable(image, builtWith_)) {
        if (format == ColorScale::Grey)
            paintRowsByTable<1>(image, builtWith_, builtOver_, buffer, stride);
        else
            paintRowsByTable<3>(image, builtWith_, builtOver_, buffer, stride);
    } else {
        withPixelType(image, 0, [&](auto* tag) {
            using T = std::remove_const_t<std::remove_pointer_t<decltype(tag)>>;
            paintRows<T>(image, builtWith_, builtOver_, buffer, stride);
            return 0;
        });
    }
    picture_ = std::make_unique<QImage>(buffer, image.width, image.height, stride,
                                        static_cast<QImage::Format>(format));
}
