#include "common/ColorScale.h"

#include <QImage>

#include <array>

static_assert(ColorScale::Grey == int(QImage::Format_Grayscale8));
static_assert(ColorScale::Rgb == int(QImage::Format_RGB888));

ColorScale* theColorBar = nullptr;

namespace {

constexpr int hotEntries = 767;
constexpr int smoothEntries = 256;

struct Colour
{
    uchar red, green, blue;
};

template<int N>
using ColourTable = std::array<Colour, N>;

constexpr ColourTable<smoothEntries> makeGreyTable()
{
    ColourTable<smoothEntries> table{};
    for (int i = 0; i < smoothEntries; ++i) {
        const auto v = static_cast<uchar>(i);
        table[size_t(i)] = {v, v, v};
    }
    return table;
}

/// Black, red, yellow, white; the last entry repeats white and is reached by t = 1 alone.
constexpr ColourTable<hotEntries> makeHotTable()
{
    ColourTable<hotEntries> table{};
    for (int i = 0; i < hotEntries; ++i) {
        const auto part = [i](int start) {
            const int v = i - start;
            return static_cast<uchar>(v < 0 ? 0 : v > 255 ? 255 : v);
        };
        table[size_t(i)] = {part(0), part(255), part(510)};
    }
    return table;
}

/// A published map of 256 colours by evenly spaced ones of it, straight lines between: they are so
/// close that none of the others is more than about two levels off.
template<std::size_t N>
constexpr ColourTable<smoothEntries> makeSmoothTable(const std::array<Colour, N>& knots)
{
    ColourTable<smoothEntries> table{};
    for (int i = 0; i < smoothEntries; ++i) {
        const double at = double(i) * double(N - 1) / (smoothEntries - 1);
        const std::size_t k = std::size_t(at) < N - 1 ? std::size_t(at) : N - 2;
        const double share = at - double(k);
        const auto between = [share](uchar a, uchar b) {
            return static_cast<uchar>(a + share * (double(b) - a) + 0.5);
        };
        table[size_t(i)] = {between(knots[k].red, knots[k + 1].red),
                            between(knots[k].green, knots[k + 1].green),
                            between(knots[k].blue, knots[k + 1].blue)};
    }
    return table;
}

/// By Smith, van der Walt and Firing, who gave it to the public domain.
constexpr std::array<Colour, 20> viridisKnots = {
    {{68, 1, 84},    {72, 21, 103},  {72, 38, 119},  {69, 55, 129},  {64, 71, 136},
     {57, 86, 140},  {51, 99, 141},  {45, 112, 142}, {40, 125, 142}, {35, 138, 141},
     {31, 150, 139}, {32, 163, 135}, {41, 175, 127}, {60, 187, 117}, {85, 198, 103},
     {115, 208, 85}, {149, 216, 64}, {184, 222, 41}, {220, 227, 25}, {253, 231, 37}}};

/// By Nunez, Anderton and Renslow, PLoS ONE 13 (2018) e0199239: as told to eyes of any colour
/// sense.
constexpr std::array<Colour, 18> cividisKnots = {{{0, 32, 76},
                                                  {0, 42, 102},
                                                  {0, 52, 110},
                                                  {39, 63, 108},
                                                  {60, 74, 107},
                                                  {76, 85, 107},
                                                  {91, 95, 109},
                                                  {104, 106, 112},
                                                  {117, 117, 117},
                                                  {131, 129, 120},
                                                  {146, 140, 120},
                                                  {161, 152, 118},
                                                  {176, 165, 114},
                                                  {192, 177, 109},
                                                  {209, 191, 102},
                                                  {225, 204, 92},
                                                  {243, 219, 79},
                                                  {255, 233, 69}}};

constexpr auto greyTable = makeGreyTable();
constexpr auto hotTable = makeHotTable();
constexpr auto viridisTable = makeSmoothTable(viridisKnots);
constexpr auto cividisTable = makeSmoothTable(cividisKnots);

/// A colour map: t of 0..1 is entry trunc(t * steps), at most `last`.
struct Ramp
{
    const char* name;
    const Colour* colours;
    int steps;
    int last;
};

constexpr std::array<Ramp, rampCount> ramps = {
    {{"Grey", greyTable.data(), smoothEntries, smoothEntries - 1},
     {"Hot", hotTable.data(), hotEntries - 1, hotEntries - 1},
     {"Viridis", viridisTable.data(), smoothEntries, smoothEntries - 1},
     {"Cividis", cividisTable.data(), smoothEntries, smoothEntries - 1}}};

const Ramp& rampOf(int ramp)
{
    return ramps[size_t(ramp >= 0 && ramp < rampCount ? ramp : GreyRamp)];
}

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

const char* rampName(int ramp)
{
    return ramp >= 0 && ramp < rampCount ? ramps[size_t(ramp)].name : "";
}

void ColorScale::chooseRamp(int newRamp)
{
    ramp = newRamp > GreyRamp && newRamp < rampCount ? newRamp : int(GreyRamp);
    imageFormat = ramp == GreyRamp ? Grey : Rgb;
}

uchar* ColorScale::mapValue(double v, uchar* out) const
{
    const double t = (v - lowHandle) / (highHandle - lowHandle);
    switch (imageFormat) {
    case Grey:
        *out = static_cast<uchar>(rampIndex(t, 256, 255));
        return out + 1;
    case Rgb: {
        const Ramp& map = rampOf(ramp);
        const Colour& c = map.colours[rampIndex(t, map.steps, map.last)];
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
    return imageFormat == other.imageFormat && ramp == other.ramp && lowHandle == other.lowHandle &&
           highHandle == other.highHandle;
}

int bytesPerPixel(int format)
{
    switch (format) {
    case ColorScale::Grey:
        return 1;
    case ColorScale::Rgb:
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
