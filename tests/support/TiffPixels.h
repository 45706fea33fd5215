#pragma once

#include <QFile>
#include <QVector>

#include <tiffio.h>

#include <memory>

// A reader of TIFF files for tests, independent of the program's.

inline std::unique_ptr<TIFF, void (*)(TIFF*)> openTiff(const QString& name)
{
    return {TIFFOpen(QFile::encodeName(name).constData(), "r"), TIFFClose};
}

/// Width, height and the tags of the form that every reader of 16-bit images takes.
using Tags = QVector<quint32>;

/// Pixels of a 16-bit image in rows, empty when it can't be opened; its tags are appended.
inline QVector<quint16> tiffPixels(const QString& name, Tags& tags)
{
    const auto tif = openTiff(name);
    if (!tif)
        return {};
    for (const quint32 tag : {256U, 257U, 278U, 258U, 259U, 262U, 274U, 277U, 284U}) {
        quint32 v = 0; // tags of 16 bits fill the lower half
        TIFFGetField(tif.get(), tag, &v);
        tags.append(v);
    }
    QVector<quint16> pixels(int(tags[0] * tags[1]));
    for (quint32 y = 0; y < tags[1]; ++y)
        TIFFReadScanline(tif.get(), pixels.data() + y * tags[0], y);
    return pixels;
}
