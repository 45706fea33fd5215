#pragma once

#include <QColor>

/// How a normalised value becomes a pixel: the range that a colour bar shows, the two handles that
/// the ramp spans, and the ramps themselves. A plain value; loader jobs carry a copy.
class ColorScale
{
public:
    /// QImage format numbers that display images may have.
    enum Format
    {
        Grey = 24,
        Hot = 13
    };

    int imageFormat = Grey;  ///< format of all display images
    double lowHandle = 0.0;  ///< lower end of the ramp, as a fraction of the range; not clamped
    double highHandle = 1.0; ///< upper end; may lie below lowHandle, which inverts the ramp
    double rangeMin = 0.0;   ///< value at the bottom of the bar
    double rangeMax = 1.0;   ///< value at the top of the bar

    /// Writes the pixel of the normalised value v at `out` in `imageFormat` and returns `out`
    /// advanced by the pixel's size: 1 byte for Grey, 3 for Hot, 0 for any other format. v is
    /// stretched between the handles and clamped to 0..1; nan and infinities are tolerated.
    uchar* mapValue(double v, uchar* out) const;

    /// The same pixel as a colour, each component being the byte times 257; black in an unknown
    /// format.
    QColor colorOfValue(double v) const;

    /// True when two scales make the same pixels of the same normalised values.
    bool mapsLike(const ColorScale& other) const;
};

/// 1 for ColorScale::Grey, 3 for ColorScale::Hot, 0 for any other format.
int bytesPerPixel(int format);

/// Bytes of one row of a display image of `width` pixels: padded to whole 32-bit words.
int displayStride(int format, int width);

/// Colour of plot curve i: entry i modulo nine of the program's curve colours.
QColor plotColor(int i);

/// The one colour bar of the program, through which images and maps turn into pixels; null as
/// long as no bar exists (tests and tools without a window), when currentColorScale() serves.
extern ColorScale* theColorBar;

/// `*theColorBar`, or a scale with default handles where there is no bar. GUI thread.
const ColorScale& currentColorScale();
