#include "MapFiles.h"

#include "common/Constants.h"

#include <QFile>
#include <QMap>
#include <QTextStream>

#include <tiffio.h>

#include <cmath>
#include <memory>

namespace {
struct CloseTiff
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffFile = std::unique_ptr<TIFF, CloseTiff>;

/// Whether the file is a 16-bit grey image of that size, so that a row fits its buffer.
bool is16BitMap(TIFF* tiff, int columns, int rows)
{
    uint32_t width = 0;
    uint32_t height = 0;
    uint16_t bits = 0;
    uint16_t samples = 0;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &samples);
    return width == static_cast<uint32_t>(columns) && height == static_cast<uint32_t>(rows) &&
           bits == 16 && samples == 1 && TIFFIsTiled(tiff) == 0;
}
} // namespace

QVector<QPoint> blockCentres(int size, int halfWidth)
{
    QVector<QPoint> centres;
    const int step = 2 * halfWidth + 1;
    for (int y = halfWidth; y < size; y += step) {
        for (int x = halfWidth; x < size; x += step) {
            centres.append(QPoint(x, y));
        }
    }
    return centres;
}

bool readMapText(QTextStream& in, const QVector<QPoint>& expected, SavedMap* map, QString* error)
{
    for (const QPoint& centre : expected) {
        QString line = in.readLine();
        const QStringList items = line.replace(QLatin1Char(','), QLatin1Char(' '))
                                      .split(QLatin1Char(' '), Qt::SkipEmptyParts);
        bool isNumber = false;
        const double value = items.size() == 3 ? items[2].toDouble(&isNumber) : 0.0;
        if (!isNumber) {
            *error = QStringLiteral("line %1 of %2 is missing or not \"x y value\"")
                         .arg(map->values.size() + 1)
                         .arg(expected.size());
            return false;
        }
        const QPoint position(items[0].toInt(), items[1].toInt());
        if (position != centre) {
            *error = QStringLiteral("line %1 is at (%2, %3), expected was (%4, %5)")
                         .arg(map->values.size() + 1)
                         .arg(position.x())
                         .arg(position.y())
                         .arg(centre.x())
                         .arg(centre.y());
            return false;
        }
        map->positions.append(position);
        map->values.append(value);
    }
    return true;
}

bool readShiftMap(QTextStream& in, int size, QVector<double>* shifts, QString* error)
{
    QMap<QString, double> head;
    QString line = in.readLine();
    for (; !in.atEnd() && !line.startsWith(QLatin1String("##---")); line = in.readLine()) {
        const QStringList parts = line.split(QLatin1Char(':'));
        head[parts[0].trimmed()] = parts.value(1).toDouble();
    }
    const double edge = head[QStringLiteral("Std Edge Energy [eV]")];
    const double doubleSpacing = 2.0 * head[QStringLiteral("Spacing [nm]")]; // in angstrom, really
    const double radians = shortPi / 180.0;
    const double edgeAngle = std::asin(hcEvAngstrom / (doubleSpacing * edge));
    for (int y = 0; y < size; ++y) {
        const QStringList items = in.readLine().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (items.size() != size || !std::isfinite(edgeAngle)) {
            *error = QStringLiteral("row %1 of %2 is missing or not whole").arg(y).arg(size);
            return false;
        }
        for (const QString& item : items) {
            const double angle = edgeAngle + item.toDouble() * radians;
            shifts->append(edge - hcEvAngstrom / (doubleSpacing * std::sin(angle)));
        }
    }
    return true;
}

bool readMapTiff(const QString& fname, int columns, int rows, QVector<quint16>* values,
                 QString* error)
{
    const TiffFile tiff(TIFFOpen(QFile::encodeName(fname).constData(), "r"));
    if (!tiff) {
        *error = QStringLiteral("can't be opened as TIFF");
        return false;
    }
    if (!is16BitMap(tiff.get(), columns, rows)) {
        *error = QStringLiteral("is not a 16-bit image of %1 x %2").arg(columns).arg(rows);
        return false;
    }
    values->resize(columns * rows);
    for (int y = 0; y < rows; ++y) {
        quint16* row = values->data() + y * columns;
        if (TIFFReadScanline(tiff.get(), row, static_cast<uint32_t>(y), 0) < 0) {
            *error = QStringLiteral("row %1 can't be read").arg(y);
            return false;
        }
    }
    return true;
}
