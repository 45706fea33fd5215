#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QVector>

#include <functional>

// Writers of files for tests, independent of the readers.

/// Value of pixel (x, y).
using PixelFunction = std::function<double(int x, int y)>;

inline bool writeBytes(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// Contents of a file, empty when it can't be read.
inline QByteArray bytesOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void appendWord(QByteArray& bytes, quint32 v, int size)
{
    for (int i = 0; i < size; ++i)
        bytes.append(char((v >> (8 * i)) & 0xFFU));
}

/// Bytes of an IMG file with the given comment and 2- or 4-byte pixels.
inline QByteArray imgBytes(int w, int h, const QByteArray& comment, int bytesPerPixel,
                           const PixelFunction& f, int x0 = 0, int y0 = 0)
{
    QByteArray bytes("IM");
    for (const int v : {comment.size(), w, h, x0, y0})
        appendWord(bytes, quint32(v), 2);
    bytes.append(QByteArray(64 - bytes.size(), '\0'));
    bytes.append(comment);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x)
            appendWord(bytes, quint32(f(x, y)), bytesPerPixel);
    }
    return bytes;
}

/// Bytes of a BRNX file; f gives the written value, a 500th of the pixel.
inline QByteArray brnxBytes(int w, int h, const PixelFunction& f)
{
    QByteArray bytes("#BRNX-CTImg\n");
    bytes += "# RANGE_X0 = 0\n# RANGE_X1 = " + QByteArray::number(w) + "\n";
    bytes += "# range_y0 = 0\n# RANGE_Y1 = " + QByteArray::number(h) + "\n";
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            bytes += QByteArray::number(x) + " " + QByteArray::number(y) + " " +
                     QByteArray::number(f(x, y), 'g', 17) + "\n";
        }
    }
    return bytes;
}

/// Bytes of an uncompressed little-endian TIFF of one strip, 16 bit grey, with an EXIF exposure of
/// `exposureMs` when that is above 0. `bits` other than 16 makes a file that readers must refuse.
inline QByteArray tiffBytes(int w, int h, const PixelFunction& f, int exposureMs = 0, int bits = 16)
{
    const quint32 dataAt = 8;
    const quint32 dataBytes = quint32(w * h * 2);
    const quint32 ifdAt = dataAt + dataBytes;
    struct Tag
    {
        quint32 id, type, count, value;
    };
    QVector<Tag> tags{{256, 4, 1, quint32(w)}, {257, 4, 1, quint32(h)}, {258, 3, 1, quint32(bits)},
                      {259, 3, 1, 1},          {262, 3, 1, 1},          {273, 4, 1, dataAt},
                      {277, 3, 1, 1},          {278, 4, 1, quint32(h)}, {279, 4, 1, dataBytes}};
    const quint32 entries = quint32(tags.size()) + (exposureMs > 0 ? 1 : 0);
    const quint32 exifAt = ifdAt + 2 + 12 * entries + 4;
    if (exposureMs > 0)
        tags.append({34665, 4, 1, exifAt});

    QByteArray bytes("II");
    appendWord(bytes, 42, 2);
    appendWord(bytes, ifdAt, 4);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x)
            appendWord(bytes, quint32(f(x, y)), 2);
    }
    const auto appendTag = [&bytes](const Tag& tag) {
        appendWord(bytes, tag.id, 2);
        appendWord(bytes, tag.type, 2);
        appendWord(bytes, tag.count, 4);
        appendWord(bytes, tag.value, 4);
    };
    appendWord(bytes, entries, 2);
    for (const Tag& tag : qAsConst(tags))
        appendTag(tag);
    appendWord(bytes, 0, 4);
    if (exposureMs > 0) {
        appendWord(bytes, 1, 2);
        appendTag({33434, 5, 1, exifAt + 2 + 12 + 4});
        appendWord(bytes, 0, 4);
        appendWord(bytes, quint32(exposureMs), 4);
        appendWord(bytes, 1000, 4);
    }
    return bytes;
}
