#pragma once

#include "maps/AnalyzeCond.h"

#include <QDateTime>
#include <QString>
#include <QVector>

#include <functional>

class QTextStream;

// The file of an energy shift map, a text. It holds for each pixel not the shift but the difference
// of the monochromator's Bragg angle in degrees, so that a map can be carried to another edge
// measured with the same optics.

/// What the head of a file tells of its map. The offsets and sizes are in pixels.
struct EMPHeader
{
    bool isValid = false; ///< complete, with a size that the file can hold
    int xOffset = 0;      ///< of the image on the detector
    int yOffset = 0;
    int width = 0; ///< of the image
    int height = 0;
    int halfX = 0; ///< half widths of the blocks
    int halfY = 0;
    int areaX0 = 0; ///< calibrated area
    int areaX1 = 0;
    int areaY0 = 0;
    int areaY1 = 0;
    double stdEdgeE = 0.0; ///< edge of the standard [eV]
    double spacing = 0.0;  ///< of the crystal's lattice [angstrom]
};

/// Reads the head and leaves the stream at the first value. isValid tells whether width, height,
/// edge and spacing were all there; what makes it invalid is logged, but for an empty stream.
/// A size is taken for true up to 512 x 512 pixels, and beyond that as far as the stream is long
/// enough for a value for each pixel.
EMPHeader readMapHeader(QTextStream& in);

/// The walk over a valid map's blocks, side by side. An area that reaches beyond the image is cut
/// to it, with one log line.
AnalyzeCond mapWalk(const EMPHeader& header);

/// Reads the values behind a valid head and turns each into the shift [eV] at the edge energy
/// given; row by row, width*height of them. A missing value is logged and counts as angle 0; one
/// that gives no finite shift becomes 0, and one log line counts these.
QVector<double> readMapShifts(QTextStream& in, const EMPHeader& header, double edgeE);

/// Everything that a file tells besides the values.
struct ShiftMapRecord
{
    QDateTime recorded;
    EMPHeader header;
    QString stdFileName;
    int mapWidth = 0;
    int mapHeight = 0;
    int imageWidth = 0; ///< values are written for each pixel of this image
    int imageHeight = 0;
};

/// The record date of a file written now: the present, or the moment that the environment gives in
/// SOURCE_DATE_EPOCH [s since 1970], in UTC, so that two runs write the same bytes.
QDateTime recordDate();

/// Shift [eV] at a pixel of the image.
using ShiftAt = std::function<double(int x, int y)>;

/// Writes head and values. Angles that the crystal can't reach count as -1 degree.
void writeShiftMap(QTextStream& out, const ShiftMapRecord& record, const ShiftAt& shiftAt);

/// Writes a file, with the extension "emp" unless the name has one. Returns the name of the file,
/// or an empty text, with one fault line, when it could not be written.
QString saveShiftMap(const QString& fname, const ShiftMapRecord& record, const ShiftAt& shiftAt);
