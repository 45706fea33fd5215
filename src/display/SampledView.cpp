#include "display/SampledView.h"

#include <QVarLengthArray>

namespace {

constexpr int outside = -1;
constexpr QRgb white = qRgb(255, 255, 255);

/// Index of the picture's pixel under the centre of pixel `at` of `count`.
int sampleIndex(double start, double length, int at, int count, int pictureSize)
{
    const double v = start + (at + 0.5) / count * length;
    // Written so that nan is outside.
    return v >= 0.0 && v < pictureSize ? int(v) : outside;
}

QRgb greyAt(const uchar* row, int x)
{
    return qRgb(row[x], row[x], row[x]);
}

QRgb rgbAt(const uchar* row, int x)
{
    return qRgb(row[3 * x], row[3 * x + 1], row[3 * x + 2]);
}

template<typename ColourAt>
void sample(const QImage& picture, const QRectF& view, QImage& out, ColourAt colourAt)
{
    const int width = out.width();
    QVarLengthArray<int, 2048> columns(width);
    for (int x = 0; x < width; ++x)
        columns[x] = sampleIndex(view.x(), view.width(), x, width, picture.width());
    for (int y = 0; y < out.height(); ++y) {
        const int rowNo = sampleIndex(view.y(), view.height(), y, out.height(), picture.height());
        if (rowNo == outside)
            continue;
        const uchar* row = picture.constScanLine(rowNo);
        auto* pixels = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < width; ++x)
            pixels[x] = columns[x] == outside ? white : colourAt(row, columns[x]);
    }
}

} // namespace

void sampleView(const QImage& picture, const QRectF& view, QImage& out)
{
    out.fill(white);
    if (picture.format() == QImage::Format_Grayscale8)
        sample(picture, view, out, greyAt);
    else if (picture.format() == QImage::Format_RGB888)
        sample(picture, view, out, rgbAt);
}
