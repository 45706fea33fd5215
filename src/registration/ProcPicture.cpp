#include "registration/ProcPicture.h"

namespace {

constexpr int pixelBytes = 3;

/// A share of a colour as the byte of a pixel; values beyond 0 .. 1 have none.
bool channelOf(double v, uchar& byte)
{
    const double scaled = 255.0 * v;
    if (!(scaled >= 0.0 && scaled < 256.0))
        return false;
    byte = static_cast<uchar>(scaled);
    return true;
}

/// Red of the image and green of the reference; black where one of them is no share.
void mixPixel(double v, double r, uchar* pixel)
{
    uchar red = 0;
    uchar green = 0;
    const bool sound = channelOf(v, red) && channelOf(r, green);
    pixel[0] = sound ? red : 0;
    pixel[1] = sound ? green : 0;
    pixel[2] = 0;
}

} // namespace

QRgb outsideColour()
{
    return qRgb(noEdgeColour[0], noEdgeColour[1], noEdgeColour[2]);
}

QImage procPicture(const ProcImage& image, const ColorScale& scale)
{
    ColorScale colours = scale;
    colours.imageFormat = ColorScale::Rgb;
    QImage picture(image.width, image.height, QImage::Format_RGB888);
    const double span = image.maxV - image.minV;
    for (int y = 0; y < picture.height(); ++y) {
        uchar* out = picture.scanLine(y);
        for (int x = 0; x < image.width; ++x)
            out = colours.mapValue((image.at(x, y) - image.minV) / span, out);
    }
    return picture;
}

QImage comparisonPicture(const ProcImage& image, const ProcImage& reference, const QPoint& shift,
                         ProductSums& sums)
{
    sums = ProductSums();
    QImage picture(reference.width, reference.height, QImage::Format_RGB888);
    picture.fill(outsideColour());
    for (int y = 0; y < picture.height(); ++y) {
        const qint64 fromY = qint64(y) - shift.y();
        if (fromY < 0 || fromY >= image.height)
            continue;
        uchar* const row = picture.scanLine(y);
        for (int x = 0; x < reference.width; ++x) {
            const qint64 fromX = qint64(x) - shift.x();
            if (fromX < 0 || fromX >= image.width)
                continue;
            const double v = image.at(int(fromX), int(fromY));
            const double r = reference.at(x, y);
            sums.add(v, r);
            mixPixel(v, r, row + pixelBytes * x);
        }
    }
    return picture;
}
