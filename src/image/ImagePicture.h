#pragma once

#include "common/ColorScale.h"
#include "image/DisplayRange.h"
#include "image/TiffData.h"

#include <QImage>

#include <memory>

/// The picture of an image for the screen, made when the image is shown. Whoever shows images has
/// one, into whose memory the next image is painted: a picture a loaded image would cost half as
/// much memory as the pixels again, and more time in loading than it costs to paint those that
/// somebody looks at. (0.4 ms an image of 1024x1024 pixels.)
class ImagePicture
{
public:
    /// Makes the picture of an image, unless it is that of this image and range, and was made with
    /// a scale that maps like `scale`: each pixel's place in the range goes through it. The image
    /// is kept until clear() or another one; null is the same as clear().
    void show(const SharedImage& image, const ColorScale& scale, const ValueRange& range);
    /// The same over the range of the image itself.
    void show(const SharedImage& image, const ColorScale& scale);

    /// Frees picture and image.
    void clear();

    /// The picture, at the same place until show() makes another or clear(); or null.
    const QImage* picture() const { return picture_.get(); }

private:
    void paint(const TiffData& image);

    SharedImage image_;
    ColorScale builtWith_;
    ValueRange builtOver_{0.0, 1.0};
    std::unique_ptr<uchar[]> bytes_;
    std::unique_ptr<QImage> picture_;
};
