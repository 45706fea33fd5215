#include "image/ImageReaders.h"
#include "image/TiffData.h"

#include "common/Fault.h"
#include "common/Memory.h"
#include "common/TextItems.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <memory>

#include <tiffio.h>

namespace {

struct TiffCloser
{
    void operator()(TIFF* tif) const { TIFFClose(tif); }
};
using TiffHandle = std::unique_ptr<TIFF, TiffCloser>;

/// What a codec can unpack a byte to at the most, from the shape of its codes. A header that asks
/// for more than the file could hold comes of no writer.
struct Packing
{
    uint16_t compression;
    qint64 most;
};
constexpr qint64 unbounded = 0;
/// All codecs of unsigned 16-bit pixels; others pack colours, or pixels of other kinds.
constexpr Packing packings[] = {
    {COMPRESSION_NONE, 1},
    {COMPRESSION_PACKBITS, 64},        // runs of 128 in two bytes
    {COMPRESSION_LZW, 2731},           // strings of up to 4096 in 12 bits
    {COMPRESSION_ADOBE_DEFLATE, 1032}, // matches of 258 in two bits
    {COMPRESSION_DEFLATE, 1032},       // the same by its old number
    {COMPRESSION_LZMA, 7200},          // matches of 273 in 0.31 bits
    {COMPRESSION_ZSTD, 32768},         // blocks of 128 kB in four bytes
    {COMPRESSION_LERC, unbounded},     // a constant strip of any size has a fixed head
};

const Packing* packingOf(uint16_t compression)
{
    const auto* const end = std::end(packings);
    const auto* const found = std::find_if(std::begin(packings), end, [=](const Packing& packing) {
        return packing.compression == compression;
    });
    return found != end ? found : nullptr;
}

/// Bytes of pixels that a file can hold.
qint64 mostPixelBytes(const Packing& packing, qint64 fileBytes)
{
    return packing.most != unbounded ? fileBytes * packing.most
                                     : std::max(2 * maxImagePixels, fileBytes);
}

/// Memory of an image: a word and a byte of picture a pixel.
constexpr qint64 bytesPerPixel = 3;

TiffHandle openQuietly(const QString& name)
{
    // libtiff would print several lines a fault; the reader's own single line names the file.
    static const bool silenced = [] {
        TIFFSetErrorHandler(nullptr);
        TIFFSetWarningHandler(nullptr);
        return true;
    }();
    Q_UNUSED(silenced)
    return TiffHandle(TIFFOpen(QFile::encodeName(name).constData(), "r"));
}

/// Value of a tag of one 16-bit number.
uint16_t tagOf(TIFF* tif, uint32_t tag)
{
    uint16_t value = 0;
    TIFFGetFieldDefaulted(tif, tag, &value);
    return value;
}

/// Why the kind of image can't be taken, or null.
const char* kindRefusal(TIFF* tif)
{
    const uint16_t format = tagOf(tif, TIFFTAG_SAMPLEFORMAT);
    // Data of no stated kind are numbers of the only kind that detectors write.
    if (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID)
        return "Samples are signed or float, only unsigned ones are read";
    if (TIFFIsTiled(tif) || tagOf(tif, TIFFTAG_BITSPERSAMPLE) != 16 ||
        tagOf(tif, TIFFTAG_SAMPLESPERPIXEL) != 1)
        return "Not a striped 16 bit grey tiff";
    const uint16_t compression = tagOf(tif, TIFFTAG_COMPRESSION);
    if (TIFFIsCODECConfigured(compression) != 1 || packingOf(compression) == nullptr)
        return "Compression not supported";
    return nullptr;
}

/// Why an image of this size, of a kind that is taken, can't be, or null.
const char* sizeRefusal(TIFF* tif, quint32 width, quint32 height, qint64 fileBytes)
{
    if (width == 0 || height == 0 || width > quint32(maxImageSide) ||
        height > quint32(maxImageSide))
        return "Image size not supported";
    const qint64 pixels = qint64(width) * qint64(height);
    const Packing& packing = *packingOf(tagOf(tif, TIFFTAG_COMPRESSION));
    if (pixels > mostPixelBytes(packing, fileBytes) / 2)
        return "Image size exceeds the file";
    if (pixels > machineMemory() / bytesPerPixel)
        return "Image size exceeds the machine's memory";
    if (TIFFScanlineSize(tif) != tmsize_t(width) * 2)
        return "Unexpected line size";
    return nullptr;
}

struct TiffHeader
{
    quint32 width = 0;
    quint32 height = 0;
    const char* why = nullptr; ///< the image can't be taken, or null
};

TiffHeader headerOf(TIFF* tif, const QString& name)
{
    TiffHeader header;
    TIFFGetField(tif, TIFFTAG_IMAGEWIDTH, &header.width);
    TIFFGetField(tif, TIFFTAG_IMAGELENGTH, &header.height);
    header.why = kindRefusal(tif);
    if (header.why == nullptr)
        header.why = sizeRefusal(tif, header.width, header.height, QFileInfo(name).size());
    return header;
}

void tellFurtherPages(TIFF* tif, const QString& name)
{
    const quint64 pages = TIFFNumberOfDirectories(tif);
    if (pages > 1)
        qDebug() << "Only the first page is read, not the" << pages - 1
                 << "pages behind it :" << name;
}

/// Exposure [ms] from the EXIF directory; leaves the handle in that directory.
double exifExposureMs(TIFF* tif)
{
    double seconds = 0.1;
    toff_t offset = 0;
    if (TIFFGetField(tif, TIFFTAG_EXIFIFD, &offset) == 1 &&
        TIFFReadEXIFDirectory(tif, offset) == 1) {
        float value = 0.0F;
        double wide = 0.0;
        // libtiff hands rational EXIF tags out as float or double by its field table.
        const TIFFField* field = TIFFFindField(tif, EXIFTAG_EXPOSURETIME, TIFF_ANY);
        if (field && TIFFFieldSetGetSize(field) == int(sizeof(double))) {
            if (TIFFGetField(tif, EXIFTAG_EXPOSURETIME, &wide) == 1)
                seconds = wide;
        } else if (field && TIFFGetField(tif, EXIFTAG_EXPOSURETIME, &value) == 1) {
            seconds = double(value);
        }
    }
    return 1000.0 * seconds;
}

/// Sets the rows from .. to-1 to 0.
void clearRows(TiffData& image, int from, int to)
{
    for (int y = from; y < to; ++y) {
        quint16* const row = image.row<quint16>(y);
        std::fill(row, row + image.width, quint16(0));
        image.noteExtremes(y);
    }
}

/// Number of rows that could not be read, each set to 0; -1 when stopped. Rows are set when one
/// behind them has been read, so that the pixels of a file that holds none take no memory.
int readRows(TIFF* tif, TiffData& image, const std::atomic<bool>* stop)
{
    int failed = 0;
    int behindRead = 0;
    for (int y = 0; y < image.height; ++y) {
        if (stop && *stop)
            return -1;
        if (TIFFReadScanline(tif, image.row<quint16>(y), uint32_t(y), 0) != 1) {
            ++failed;
            continue;
        }
        clearRows(image, behindRead, y);
        image.noteExtremes(y);
        behindRead = y + 1;
    }
    if (failed < image.height)
        clearRows(image, behindRead, image.height);
    return failed;
}

} // namespace

QSize tiffSize(const QString& name)
{
    const TiffHandle tif = openQuietly(name);
    if (!tif)
        return {};
    const TiffHeader header = headerOf(tif.get(), name);
    return header.why == nullptr ? QSize(int(header.width), int(header.height)) : QSize();
}

bool readTiff(TiffData& image, const QString& name, const std::atomic<bool>* stop)
{
    const TiffHandle tif = openQuietly(name);
    if (!tif) {
        fault(QStringLiteral("Can not open tiff ") + quoted(name));
        return false;
    }
    const auto [width, height, why] = headerOf(tif.get(), name);
    if (why != nullptr) {
        fault(QLatin1String(why) + QLatin1Char(' ') + quoted(name));
        return false;
    }
    if (!image.allocate(int(width), int(height), TiffData::TiffWords)) {
        fault(QStringLiteral("No memory for image ") + quoted(name));
        return false;
    }
    const int failed = readRows(tif.get(), image, stop);
    if (failed < 0)
        return false;
    if (failed > 0) {
        fault(QStringLiteral("%1 of %2 rows can not be read in %3, they count as 0")
                  .arg(failed)
                  .arg(image.height)
                  .arg(quoted(name)));
    }
    if (failed == image.height)
        return false;
    tellFurtherPages(tif.get(), name);
    // Read last, since it moves the handle away from the image's directory.
    image.exposureMs = exifExposureMs(tif.get());
    return true;
}
