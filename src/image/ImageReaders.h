#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

#include <atomic>
#include <climits>

class QIODevice;
class TiffData;

// Readers of the three image formats. Each fills `image` with pixels, size, exposure, extremes and
// file name, or returns false after one log line. Sizes from a header are held against the file's
// length before memory is taken. `stop`, when given, ends the reading between two rows.

/// TIFF by libtiff: unsigned 16-bit grey in strips, one sample a pixel; anything else is refused,
/// and so is an image beyond the machine's memory. Exposure from the EXIF directory, 100 ms
/// without. Of several pages the first is read, and a log line tells how many were not.
bool readTiff(TiffData& image, const QString& name, const std::atomic<bool>* stop);

/// Size of the image that readTiff() would read, from the header alone; invalid for one that it
/// would refuse. Logs nothing.
QSize tiffSize(const QString& name);

/// "IM" files: a 64-byte header, a comment of "Key=value," entries, 16- or 32-bit little-endian
/// rows.
bool readImg(TiffData& image, const QString& name, const std::atomic<bool>* stop);

/// Reads the header from the start of an IMG file: sizes, origin, bytes per pixel and exposure.
/// Offset of the pixels, 0 on failure.
int readImgHeader(TiffData& image, QIODevice& file, const QString& name);

/// "#BRNX-CTImg" files: header lines, then one "x y value" line per pixel. A pixel is value * 500
/// as a float, 0 when negative. Missing lines read as 0.
bool readBrnx(TiffData& image, const QString& name, const std::atomic<bool>* stop);

/// Reads the header lines from a text device and leaves it behind them. Number of header lines, -1
/// when they give no size.
int readBrnxHeader(TiffData& image, QIODevice& file);

/// Value of "key" in an IMG comment: what follows the key up to `terminator`, a zero byte or the
/// end; `fallback` when the key is missing.
QByteArray commentValue(const QByteArray& comment, const char* key, char terminator,
                        const char* fallback);

/// Exposure [ms] of an IMG comment's text "number unit".
double exposureFromText(const QByteArray& text);

/// BRNX images above this number of pixels are refused: a text of one would never be written.
constexpr qint64 maxImagePixels = qint64(1) << 28;

/// Most columns and rows of any image: the bytes of a row of its coloured picture are an int.
constexpr int maxImageSide = (INT_MAX - 3) / 3;
