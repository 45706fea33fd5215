#pragma once

#include <QByteArray>

/// Reads the bytes as an image file and uses the image as the program does, once it is there.
/// Promises: an image that is refused costs one fault and no memory, one that is read at most one;
/// the size by the header alone is that of the image; extremes hold all pixels; sums over single
/// pixels are the pixels.
void readAsImage(const QByteArray& bytes);
