#pragma once

#include <QString>

/// Writes grey images of 16 bits a pixel as TIFF files, uncompressed, with as many rows a strip as
/// the image is wide.
///
/// All functions return false, with one log line that names the file, when the image is empty or
/// larger than 2^28 pixels or the file can not be written whole; then nothing is left under the
/// name, or what stood there before.
class TiffWriter
{
public:
    /// Writes `data`, width*height values row by row.
    static bool writeU16(const QString& fname, int width, int height, const quint16* data);

    /// An image of one value.
    static bool writeConstant(const QString& fname, int width, int height, quint16 value);
    static bool writeOnes(const QString& fname, int width, int height);
    static bool writeZeros(const QString& fname, int width, int height);
};
