#pragma once

#include <QString>

class Analyzed2DRes;

/// The forms in which the numbers of a map are saved.
enum class MapForm
{
    Tiff16,
    FloatTiff,
    Text,
};

/// How the numbers of a map become a TIFF file; the scale is that of the 16-bit form.
struct TiffSaveOptions
{
    bool fixedScale = false; ///< scaleMin and scaleMax span the 16 bits, else the map's range
    double scaleMin = 0.0;
    double scaleMax = 10.0;
    bool asAnalyzed = false; ///< one value a position instead of one a pixel
    bool clamp = false;      ///< values outside the scale are cut to its ends, else they may wrap
};

/// How the numbers of a map become text.
struct TextSaveOptions
{
    bool asAnalyzed = false;    ///< without effect: text is always of the positions
    bool commaSeparated = true; ///< a comma between values, else a blank
    bool asXYVal = true;        ///< a line "x y value" a position, else a line a row
};

/// Name of a saved map: fname without its extension, "-", the map's label, ".", the extension of
/// the form.
QString mapFileName(const QString& fname, const QString& label, MapForm form);

// Each writes a map into the file. False, with one fault line, when the map holds nothing to save
// or the file can not be written; then what stood there before stays.

/// As 16-bit TIFF; values that are no numbers become 0. The scale stands in the ImageDescription,
/// and one log line counts the values that wrapped.
bool saveMapAsTiff(Analyzed2DRes& map, const QString& fileName, const TiffSaveOptions& options);

/// As 32-bit floating-point TIFF, values as they are, nan included.
bool saveMapAsFloatTiff(const Analyzed2DRes& map, const QString& fileName,
                        const TiffSaveOptions& options);

/// The positions as text.
bool saveMapAsText(const Analyzed2DRes& map, const QString& fileName,
                   const TextSaveOptions& options);
