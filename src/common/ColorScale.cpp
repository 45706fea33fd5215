#include "common/ColorScale.h"

#include <QImage>

#include <array>

static_assert(ColorScale::Grey == int(QImage::Format_Grayscale8));
static_assert(ColorScale::Hot == int(QImage::Format_RGB888));

ColorScale* theColorBar = nullptr;

namespace {

constexpr int hotEntries = 767;

struct Rgb
{
    uchar red, green, blue;
};

/// Black, red, yellow, white; the last entry repeats white and is reached by t = 1 alone.
constexpr std::array<Rgb, hotEntries> makeHotTable()
{
    std::array<Rgb, hotEntries> table{};
    for (int i = 0; i < hotEntries; ++i) {
        const auto part = [i](int start) {
            const int v = i - start;
            return static_cast<uchar>(v < 0 ? 0 : v > 255 ? 255 : v);
        };
        table[size_t(i)] = {part(0), part(255), part(510)};
    }
    return table;
}

constexpr std::array<Rgb, hotEntries> hotTable = makeHotTable();

/// trunc(t * steps) for t clamped to 0..1, limited to `last`. The first comparison is written so
/// that nan fails it and becomes 0: it must never reach the cast.
int rampIndex(double t, int steps, int last)
{
    if (!(t > 0.0))
        return 0;
    if (t >= 1.0)
        return last;
    return qMin(static_cast<int>(t * steps), last);
}

} // namespace

uchar* ColorScale::mapValue(double v, uchar* out) const
{
    const double t = (v - lowHandle) / (highHandle - lowHandle);
    switch (imageFormat) {
    case Grey:
        *out = static_cast<uchar>(rampIndex(t, 256, 255));
        return out + 1;
    case Hot: {
        const Rgb& c = hotTable[size_t(rampIndex(t, hotEntries - 1, hotEntries - 1))];
        out[0] = c.red;
        out[1] = c.green;
        out[2] = c.blue;
        return out + 3;
    }
    default:
        return out;
    }
}

QColor ColorScale::colorOfValue(double v) const
{
    std::array<uchar, 3> rgb{};
    const auto size = mapValue(v, rgb.data()) - rgb.data();
    if (size == 1)
        return {rgb[0], rgb[0], rgb[0]};
    return {rgb[0], rgb[1], rgb[2]};
}

bool ColorScale::mapsLike(const ColorScale& other) const
{
    return imageFormat == other.imageFormat && lowHandle == other.lowHandle &&
           highHandle == other.highHandle;
}

int bytesPerPixel(int format)
{
    switch (format) {
    case ColorScale::Grey:
        return 1;
    case ColorScale::Hot:
        return 3;
    default:
        return 0;
    }
}

int displayStride(int format, int width)
{
    return (bytesPerPixel(format) * width + 3) / 4 * 4;
}

QColor plotColor(int i)
{
    static const std::array<QColor, 9> plotColors = {
        QColor(255, 0, 0),   QColor(0, 255, 0),   QColor(0, 0, 255),
        QColor(255, 200, 0), QColor(255, 0, 200), QColor(200, 255, 0),
        QColor(200, 0, 255), QColor(0, 255, 200), QColor(0, 200, 255)};
    const int count = int(plotColors.size());
    return plotColors[size_t((i % count + count) % count)];
}

const ColorScale& currentColorScale()
{
    static const ColorScale defaultScale;
    return theColorBar ? *theColorBar : defaultScale;
}
