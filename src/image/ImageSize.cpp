#include "image/ImageSize.h"

#include "image/ImageReaders.h"
#include "image/TiffData.h"

#include <QFile>
#include <QFileInfo>

namespace {

constexpr int magicBytes = 15;

QSize imgSize(QFile& file, const QString& name)
{
    TiffData header;
    const qint64 offset = readImgHeader(header, file, name);
    const qint64 bytes = header.bytesPerPixel == 4 ? 4 : 2;
    const bool complete = offset > 0 && header.width > 0 && header.height > 0 &&
                          offset + bytes * header.width * header.height <= file.size();
    return complete ? QSize(header.width, header.height) : QSize();
}

QSize brnxSize(QFile& file)
{
    TiffData header;
    if (readBrnxHeader(header, file) < 0)
        return {};
    const qint64 pixels = qint64(header.width) * header.height;
    return pixels <= maxImagePixels && pixels <= file.size() ? QSize(header.width, header.height)
                                                             : QSize();
}

} // namespace

QSize imageSize(const QString& name)
{
    QFile file(name);
    // Opening a pipe may never return.
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray magic = file.peek(magicBytes);
    if (magic.size() < magicBytes)
        return {};
    if (magic.startsWith("II") || magic.startsWith("MM"))
        return tiffSize(name);
    if (magic.startsWith("IM"))
        return imgSize(file, name);
    if (magic.startsWith("#BRNX-CTImg"))
        return brnxSize(file);
    return {};
}
