#include "image/ImageReaders.h"
#include "image/TiffData.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <memory>

#include <tiffio.h>

namespace {

struct TiffCloser
{
    void operator()(TIFF* tif) const { TIFFClose(tif); }
};
using TiffHandle = std::unique_ptr<TIFF, TiffCloser>;

/// No codec packs 16-bit pixels tighter than this in practice; a header that asks for more than
/// the file could unpack to is hostile.
constexpr qint64 maxPacking = 2048;

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

/// Why the image can't be taken, or null.
const char* refusal(TIFF* tif, quint32 width, quint32 height, qint64 fileBytes)
{
    uint16_t bits = 0;
    uint16_t samples = 0;
    uint16_t compression = COMPRESSION_NONE;
    TIFFGetFieldDefaulted(tif, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(tif, TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetFieldDefaulted(tif, TIFFTAG_COMPRESSION, &compression);
    if (TIFFIsTiled(tif) || bits != 16 || samples != 1)
        return "Not a striped 16 bit grey tiff";
    const qint64 pixels = qint64(width) * qint64(height);
    if (width == 0 || height == 0 || pixels > maxImagePixels)
        return "Image size not supported";
    const qint64 packing = compression == COMPRESSION_NONE ? 1 : maxPacking;
    if (pixels * 2 > fileBytes * packing)
        return "Image size exceeds the file";
    if (TIFFScanlineSize(tif) != tmsize_t(width) * 2)
        return "Unexpected line size";
    return nullptr;
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

/// Number of rows that could not be read, each set to 0; -1 when stopped.
int readRows(TIFF* tif, TiffData& image, const std::atomic<bool>* stop)
{
    int failed = 0;
    for (int y = 0; y < image.height; ++y) {
        if (stop && *stop)
            return -1;
        quint16* row = image.row<quint16>(y);
        if (TIFFReadScanline(tif, row, uint32_t(y), 0) != 1) {
            std::fill(row, row + image.width, quint16(0));
            ++failed;
        }
        image.noteExtremes(y);
    }
    return failed;
}

} // namespace

bool readTiff(TiffData& image, const QString& name, const std::atomic<bool>* stop)
{
    const TiffHandle tif = openQuietly(name);
    if (!tif) {
        qDebug() << "Can not open tiff" << name;
        return false;
    }
    uint32_t width = 0;
    uint32_t height = 0;
    TIFFGetField(tif.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tif.get(), TIFFTAG_IMAGELENGTH, &height);
    if (const char* why = refusal(tif.get(), width, height, QFileInfo(name).size())) {
        qDebug() << why << name;
        return false;
    }
    if (!image.allocate(int(width), int(height), TiffData::TiffWords)) {
        qDebug() << "No memory for image" << name;
        return false;
    }
    const int failed = readRows(tif.get(), image, stop);
    if (failed < 0)
        return false;
    if (failed > 0)
        qDebug() << "Unreadable rows set to 0 :" << failed << name;
    // Read last, since it moves the handle away from the image's directory.
    image.exposureMs = exifExposureMs(tif.get());
    return true;
}
