#pragma once

#include <QImage>
#include <QRectF>

/// Stretches the part `view` of a display picture (8-bit grey or RGB888) over `out`, an RGB32
/// image: each pixel of it shows the picture's pixel under its centre, without smoothing. White
/// outside the picture and for any other format. A view may have any size, lie anywhere and be no
/// number at all. Takes time by the pixels that it makes, not by those of the picture.
void sampleView(const QImage& picture, const QRectF& view, QImage& out);
