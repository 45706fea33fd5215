#pragma once

#include <QColor>

#include <array>

/// The colour maps, by their places in rampNames().
enum RampId
{
    GreyRamp = 0,
    HotRamp = 1,
    ViridisRamp = 2,
    CividisRamp = 3
};
constexpr int rampCount = 4;

/// Name of a colour map as people and the store know it: "Grey"; empty for no map's number.
const char* rampName(int ramp);

/// How a normalised value becomes a pixel: the range that a colour bar shows, the two handles that
/// the ramp spans, and the ramp itself. A plain value; loader jobs carry a copy.
class ColorScale
{
public:
    /// QImage format numbers that display images may have.
    enum Format
    {
        Grey = 24, ///< a byte a pixel, of the grey ramp whatever `ramp` says
        Rgb = 13   ///< three bytes a pixel
    };

    int imageFormat = Grey;  ///< format of all display images
    int ramp = GreyRamp;     ///< which colours a pixel of three bytes gets
    double lowHandle = 0.0;  ///< lower end of the ramp, as a fraction of the range; not clamped
    double highHandle = 1.0; ///< upper end; may lie below lowHandle, which inverts the ramp
    double rangeMin = 0.0;   ///< value at the bottom of the bar
    double rangeMax = 1.0;   ///< value at the top of the bar

    /// Chooses a colour map and the format that it takes: one byte for grey, else three. Another
    /// number chooses grey.
    void chooseRamp(int newRamp);

    /// Writes the pixel of the normalised value v at `out` in `imageFormat` and returns `out`
    /// advanced by the pixel's size: 1 byte for Grey, 3 for Rgb, 0 for any other format. v is
    /// stretched between the handles and clamped to 0..1; nan and infinities are tolerated.
    uchar* mapValue(double v, uchar* out) const;

    /// The same pixel as a colour, each component being the byte times 257; black in an unknown
    /// format.
    QColor colorOfValue(double v) const;

    /// True when two scales make the same pixels of the same normalised values.
    bool mapsLike(const ColorScale& other) const;
};

/// 1 for ColorScale::Grey, 3 for ColorScale::Rgb, 0 for any other format.
int bytesPerPixel(int format);

/// Bytes of one row of a display image of `width` pixels: padded to whole 32-bit words.
int displayStride(int format, int width);

/// Colour of blocks without an edge, in every colour map: no ramp holds it.
constexpr std::array<uchar, 3> noEdgeColour = {96, 112, 128};

/// Colour of plot curve i: entry i modulo nine of the program's curve colours.
QColor plotColor(int i);

/// The one colour bar of the program, through which images and maps turn into pixels; null as
/// long as no bar exists (tests and tools without a window), when currentColorScale() serves.
extern ColorScale* theColorBar;

/// `*theColorBar`, or a scale with default handles where there is no bar. GUI thread.
const ColorScale& currentColorScale();
