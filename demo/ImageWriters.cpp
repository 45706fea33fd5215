#include "ImageWriters.h"

#include <QFile>
#include <QSaveFile>
#include <QtEndian>

#include <tiffio.h>

#include <array>

namespace {
struct FormatName
{
    const char* name;
    const char* suffix;
    ImageFormat format;
};

constexpr std::array<FormatName, 4> formatNames{{{"tiff", "tif", ImageFormat::Tiff},
                                                 {"img16", "img", ImageFormat::Img16},
                                                 {"img32", "img", ImageFormat::Img32},
                                                 {"brnx", "dat", ImageFormat::Brnx}}};

bool writeTiffRows(TIFF* tiff, int width, int height, const QVector<quint16>& counts)
{
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(width));
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(height));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 16);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    // Several strips an image, as detectors write them.
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
    QVector<quint16> row(width);
    for (int y = 0; y < height; ++y) {
        // libtiff may swap bytes in the buffer that it is given.
        std::copy_n(counts.constData() + y * width, width, row.begin());
        if (TIFFWriteScanline(tiff, row.data(), static_cast<uint32_t>(y), 0) < 0) {
            return false;
        }
    }
    return TIFFFlush(tiff) == 1;
}

bool writeTiff(const QString& fname, int width, int height, const QVector<quint16>& counts)
{
    TIFF* tiff = TIFFOpen(QFile::encodeName(fname).constData(), "w");
    if (tiff == nullptr) {
        return false;
    }
    const bool ok = writeTiffRows(tiff, width, height, counts);
    TIFFClose(tiff);
    return ok;
}

bool saveBytes(const QString& fname, const QByteArray& bytes)
{
    QSaveFile file(fname);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    file.write(bytes);
    return file.commit();
}

template<typename T>
void appendLittleEndian(QByteArray& bytes, T value)
{
    std::array<char, sizeof(T)> buffer{};
    qToLittleEndian(value, buffer.data());
    bytes.append(buffer.data(), static_cast<int>(buffer.size()));
}

/// 64 bytes of header, the comment, then the pixels, all words little-endian.
template<typename Pixel>
QByteArray imgBytes(int width, int height, const QVector<quint16>& counts)
{
    const QByteArray comment =
        QByteArrayLiteral("[Acquisition],ExposureTime=100 ms,BytesPerPixel=") +
        QByteArray::number(static_cast<int>(sizeof(Pixel))) + ',';
    QByteArray bytes = QByteArrayLiteral("IM");
    for (const int word : {comment.size(), width, height, 0, 0}) {
        appendLittleEndian(bytes, static_cast<quint16>(word));
    }
    bytes.append(QByteArray(64 - bytes.size(), '\0'));
    bytes.append(comment);
    for (const quint16 count : counts) {
        appendLittleEndian(bytes, static_cast<Pixel>(count));
    }
    return bytes;
}

/// A value of the text format is a 500th of the count: three decimals hold it exactly.
QByteArray brnxValue(quint16 count)
{
    const int thousandths = 2 * count;
    return QByteArray::number(thousandths / 1000) + '.' +
           QByteArray::number(thousandths % 1000).rightJustified(3, '0');
}

QByteArray brnxBytes(int width, int height, const QVector<quint16>& counts)
{
    QByteArray bytes = QByteArrayLiteral("#BRNX-CTImg demonstration experiment\n");
    bytes += QByteArrayLiteral("# RANGE_X0 = 0\n# RANGE_X1 = ") + QByteArray::number(width);
    bytes +=
        QByteArrayLiteral("\n# RANGE_Y0 = 0\n# RANGE_Y1 = ") + QByteArray::number(height) + '\n';
    for (int i = 0; i < counts.size(); ++i) {
        bytes += QByteArray::number(i % width) + ' ' + QByteArray::number(i / width) + ' ' +
                 brnxValue(counts[i]) + '\n';
    }
    return bytes;
}
} // namespace

bool imageFormatOf(const QString& name, ImageFormat* format)
{
    for (const FormatName& row : formatNames) {
        if (name == QLatin1String(row.name)) {
            *format = row.format;
            return true;
        }
    }
    return false;
}

QString imageSuffix(ImageFormat format)
{
    for (const FormatName& row : formatNames) {
        if (row.format == format) {
            return QLatin1String(row.suffix);
        }
    }
    return {};
}

bool writeImage(ImageFormat format, const QString& fname, int width, int height,
                const QVector<quint16>& counts)
{
    switch (format) {
    case ImageFormat::Tiff:
        return writeTiff(fname, width, height, counts);
    case ImageFormat::Img16:
        return saveBytes(fname, imgBytes<quint16>(width, height, counts));
    case ImageFormat::Img32:
        return saveBytes(fname, imgBytes<quint32>(width, height, counts));
    case ImageFormat::Brnx:
        return saveBytes(fname, brnxBytes(width, height, counts));
    }
    return false;
}
