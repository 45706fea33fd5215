#include "output/TiffWriter.h"

#include "common/Fault.h"
#include "common/SafeFile.h"
#include "common/TextItems.h"

#include <tiffio.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr qint64 maxPixels = qint64(1) << 28;

struct CloseTiff
{
    void operator()(TIFF* tif) const { TIFFClose(tif); }
};
using TiffFile = std::unique_ptr<TIFF, CloseTiff>;

struct Image
{
    int width;
    int height;
    int bits; ///< of a pixel
    int sampleFormat;
    const void* data; ///< row by row
    QByteArray description;
};

struct Tag
{
    quint32 id;
    int value;
};

// libtiff's road to a device. It reads nothing back of a file with one image.
QIODevice& device(thandle_t handle)
{
    return *static_cast<QIODevice*>(handle);
}

tmsize_t readNothing(thandle_t /*handle*/, void* /*data*/, tmsize_t /*size*/)
{
    return 0;
}

tmsize_t writeBytes(thandle_t handle, void* data, tmsize_t size)
{
    return device(handle).write(static_cast<const char*>(data), size);
}

toff_t seekTo(thandle_t handle, toff_t offset, int whence)
{
    QIODevice& file = device(handle);
    const qint64 base = whence == SEEK_CUR ? file.pos() : whence == SEEK_END ? file.size() : 0;
    const qint64 to = base + static_cast<qint64>(offset);
    return file.seek(to) ? static_cast<toff_t>(to) : static_cast<toff_t>(-1);
}

int leaveOpen(thandle_t /*handle*/)
{
    return 0;
}

toff_t sizeOf(thandle_t handle)
{
    return static_cast<toff_t>(device(handle).size());
}

bool setTags(TIFF* tif, const Image& image)
{
    // The rows of a strip are as many as the image is wide, whatever its height: deliberate.
    const Tag tags[] = {
        {TIFFTAG_IMAGEWIDTH, image.width},         {TIFFTAG_IMAGELENGTH, image.height},
        {TIFFTAG_COMPRESSION, COMPRESSION_NONE},   {TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK},
        {TIFFTAG_ROWSPERSTRIP, image.width},       {TIFFTAG_SAMPLESPERPIXEL, 1},
        {TIFFTAG_BITSPERSAMPLE, image.bits},       {TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG},
        {TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT}};
    const auto set = [tif](const Tag& tag) { return TIFFSetField(tif, tag.id, tag.value) == 1; };
    if (!std::all_of(std::begin(tags), std::end(tags), set))
        return false;
    // Unsigned numbers are what a file means that tells nothing.
    if (image.sampleFormat != SAMPLEFORMAT_UINT && !set({TIFFTAG_SAMPLEFORMAT, image.sampleFormat}))
        return false;
    return image.description.isEmpty() ||
           TIFFSetField(tif, TIFFTAG_IMAGEDESCRIPTION, image.description.constData()) == 1;
}

bool writeStrips(TIFF* tif, const Image& image)
{
    quint32 rowsPerStrip = 0;
    if (TIFFGetFieldDefaulted(tif, TIFFTAG_ROWSPERSTRIP, &rowsPerStrip) != 1 || rowsPerStrip == 0)
        return false;
    const auto rows = static_cast<quint32>(image.height);
    const qint64 rowBytes = qint64(image.width) * image.bits / 8;
    // libtiff takes a writable buffer, but only files of the other byte order change it.
    auto* const data = static_cast<char*>(const_cast<void*>(image.data));
    for (quint32 row = 0, strip = 0; row < rows; row += rowsPerStrip, ++strip) {
        const quint32 count = std::min(rowsPerStrip, rows - row);
        if (TIFFWriteEncodedStrip(tif, strip, data + row * rowBytes, TIFFVStripSize(tif, count)) <
            0)
            return false;
    }
    return true;
}

/// Why the image could not be written; empty when it is.
QString writeImage(QIODevice& file, const Image& image)
{
    const TiffFile tif(TIFFClientOpen("image", "w", &file, readNothing, writeBytes, seekTo,
                                      leaveOpen, sizeOf, nullptr, nullptr));
    const bool written = tif && setTags(tif.get(), image) && writeStrips(tif.get(), image) &&
                         TIFFFlush(tif.get()) == 1;
    return written ? QString() : QStringLiteral("not taken by the TIFF library");
}

bool writeTiff(const QString& fname, const Image& image)
{
    const qint64 pixels = qint64(std::max(image.width, 0)) * std::max(image.height, 0);
    if (image.data == nullptr || pixels == 0 || pixels > maxPixels) {
        fault(QStringLiteral("Can't write %1: no image of %2 x %3 pixels can be saved")
                  .arg(quoted(fname))
                  .arg(image.width)
                  .arg(image.height));
        return false;
    }
    // The library would print a fault of the device too, which is told once, with the name.
    static const bool silenced = [] { return TIFFSetErrorHandler(nullptr), true; }();
    Q_UNUSED(silenced)
    return writeFile(fname, [&image](QIODevice& file) { return writeImage(file, image); });
}

} // namespace

bool TiffWriter::writeU16(const QString& fname, int width, int height, const quint16* data,
                          const QString& description)
{
    return writeTiff(fname, {width, height, 16, SAMPLEFORMAT_UINT, data, description.toLatin1()});
}

bool TiffWriter::writeFloat(const QString& fname, int width, int height, const float* data,
                            const QString& description)
{
    return writeTiff(fname, {width, height, 32, SAMPLEFORMAT_IEEEFP, data, description.toLatin1()});
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
