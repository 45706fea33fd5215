#pragma once

#include <QString>

class Analyzed2DRes;

/// How the numbers of a map become a TIFF file.
struct TiffSaveOptions
{
    bool fixedScale = false; ///< scaleMin and scaleMax span the 16 bits, else the map's range
    double scaleMin = 0.0;
    double scaleMax = 10.0;
    bool asAnalyzed = false; ///< one value a position instead of one a pixel
};

/// How the numbers of a map become text.
struct TextSaveOptions
{
    bool asAnalyzed = false;    ///< without effect: text is always of the positions
    bool commaSeparated = true; ///< a comma between values, else a blank
    bool asXYVal = true;        ///< a line "x y value" a position, else a line a row
};

/// Name of a saved map: folder and complete base name of fname, "-", the number, ".", extension.
QString mapFileName(const QString& fname, int number, const QString& extension);

/// Writes a map as 16-bit TIFF under mapFileName(fname, number, "tif"); values that are no numbers
/// become 0. False, with one log line, when the map holds nothing or the file can not be written;
/// no half file is left.
bool saveMapAsTiff(Analyzed2DRes& map, const QString& fname, int number,
                   const TiffSaveOptions& options);

/// Writes the positions of a map as text under mapFileName(fname, number, "dat"). False, with one
/// log line, when the file can not be written.
bool saveMapAsText(const Analyzed2DRes& map, const QString& fname, int number,
                   const TextSaveOptions& options);
