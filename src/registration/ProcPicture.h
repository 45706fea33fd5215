#pragma once

#include "common/ColorScale.h"
#include "registration/BitImage.h"

#include <QImage>

/// The picture of an image over its extremes, in the colours of the scale; a null picture without
/// pixels or without memory. Always of three bytes a pixel.
QImage procPicture(const ProcImage& image, const ColorScale& scale);

/// A binary image, moved by `shift`, against a reference of its size: red where the image alone is
/// set, green where the reference alone is, yellow where both are; a colour of its own where the
/// moved image has no pixels. `sums` gets those of the product.
QImage comparisonPicture(const ProcImage& image, const ProcImage& reference, const QPoint& shift,
                         ProductSums& sums);

/// The colour of positions that the moved image does not reach.
QRgb outsideColour();
