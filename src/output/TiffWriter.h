#pragma once

#include <QString>

/// Writes grey images as TIFF files, uncompressed, with as many rows a strip as the image is wide.
///
/// All functions return false, with one fault line that names the file, when the image is empty or
/// larger than 2^28 pixels or the file can not be written whole; then what stood there before
/// stays.
class TiffWriter
{
public:
    /// Writes `data`, width*height values of 16 bits row by row. The description, if there is one,
    /// is plain ASCII and becomes the file's ImageDescription.
    static bool writeU16(const QString& fname, int width, int height, const quint16* data,
                         const QString& description = {});

    /// The same of floating-point numbers of 32 bits.
    static bool writeFloat(const QString& fname, int width, int height, const float* data,
                           const QString& description = {});

    /// A 16-bit image of one value.
    static bool writeConstant(const QString& fname, int width, int height, quint16 value);
    static bool writeOnes(const QString& fname, int width, int height);
    static bool writeZeros(const QString& fname, int width, int height);
};
