#include "output/TiffWriter.h"

#include <QDebug>
#include <QFile>
#include <QUuid>

#include <tiffio.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <vector>

namespace {

constexpr qint64 maxPixels = qint64(1) << 28;

struct CloseTiff
{
    void operator()(TIFF* tif) const { TIFFClose(tif); }
};
using TiffFile = std::unique_ptr<TIFF, CloseTiff>;

struct Tag
{
    quint32 id;
    int value;
};

bool setTags(TIFF* tif, int width, int height)
{
    // The rows of a strip are as many as the image is wide, whatever its height: deliberate.
    const Tag tags[] = {{TIFFTAG_IMAGEWIDTH, width},
                        {TIFFTAG_IMAGELENGTH, height},
                        {TIFFTAG_COMPRESSION, COMPRESSION_NONE},
                        {TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK},
                        {TIFFTAG_ROWSPERSTRIP, width},
                        {TIFFTAG_SAMPLESPERPIXEL, 1},
                        {TIFFTAG_BITSPERSAMPLE, 16},
                        {TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG},
                        {TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT}};
    return std::all_of(std::begin(tags), std::end(tags),
                       [tif](const Tag& tag) { return TIFFSetField(tif, tag.id, tag.value) == 1; });
}

bool writeStrips(TIFF* tif, int width, int height, const quint16* data)
{
    quint32 rowsPerStrip = 0;
    if (TIFFGetFieldDefaulted(tif, TIFFTAG_ROWSPERSTRIP, &rowsPerStrip) != 1 || rowsPerStrip == 0)
        return false;
    const auto rows = static_cast<quint32>(height);
    for (quint32 row = 0, strip = 0; row < rows; row += rowsPerStrip, ++strip) {
        const quint32 count = std::min(rowsPerStrip, rows - row);
        // libtiff takes a writable buffer, but only files of the other byte order change it.
        auto* const from = const_cast<quint16*>(data) + qint64(row) * width;
        if (TIFFWriteEncodedStrip(tif, strip, from, TIFFVStripSize(tif, count)) < 0)
            return false;
    }
    return true;
}

bool writeFile(const QByteArray& encodedName, int width, int height, const quint16* data)
{
    const TiffFile tif(TIFFOpen(encodedName.constData(), "w"));
    return tif && setTags(tif.get(), width, height) &&
           writeStrips(tif.get(), width, height, data) && TIFFFlush(tif.get()) == 1;
}

bool replaceFile(const QByteArray& from, const QByteArray& to)
{
    std::error_code failed;
    std::filesystem::rename(from.constData(), to.constData(), failed);
    return !failed;
}

} // namespace

bool TiffWriter::writeU16(const QString& fname, int width, int height, const quint16* data)
{
    const bool sound = data != nullptr && width > 0 && height > 0 &&
                       qint64(width) * height <= maxPixels && !fname.isEmpty();
    // The file grows under a name of its own beside the final one, which it takes when it is whole.
    const QString id = QUuid::createUuid().toString(QUuid::Id128);
    const QByteArray growing = QFile::encodeName(fname + QLatin1Char('.') + id.left(8));
    if (sound && writeFile(growing, width, height, data) &&
        replaceFile(growing, QFile::encodeName(fname)))
        return true;
    if (sound)
        QFile::remove(QFile::decodeName(growing));
    qDebug() << "Can't write TIFF file" << fname;
    return false;
}

bool TiffWriter::writeConstant(const QString& fname, int width, int height, quint16 value)
{
    const qint64 pixels = qint64(std::max(width, 0)) * std::max(height, 0);
    const std::vector<quint16> data(static_cast<std::size_t>(std::min(pixels, maxPixels)), value);
    return writeU16(fname, width, height, data.data());
}

bool TiffWriter::writeOnes(const QString& fname, int width, int height)
{
    return writeConstant(fname, width, height, 1);
}

bool TiffWriter::writeZeros(const QString& fname, int width, int height)
{
    return writeConstant(fname, width, height, 0);
}
