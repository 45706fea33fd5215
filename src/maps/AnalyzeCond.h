#pragma once

#include <QMetaType>
#include <QRectF>

#include <algorithm>
#include <cstddef>
#include <cstdlib>

/// The walk over the sampled positions of an area: image size, binning block, area, steps and the
/// current position. A copyable record; calibration, analyses, exports and filters all walk by it.
/// Pixels and positions are image coordinates.
struct AnalyzeCond
{
    int width = 0; ///< size of the full image; row stride of every field that the walk addresses
    int height = 0;
    int halfX = 0; ///< the block covers 2*halfX+1 by 2*halfY+1 pixels round the position
    int halfY = 0;
    int x0 = 0; ///< area; x0 <= x1 and y0 <= y1
    int x1 = 0;
    int stepX = 1; ///< distance of positions in a row
    int y0 = 0;
    int y1 = 0;
    int stepY = 1; ///< distance of rows
    int cx = 0;    ///< current position: the block's centre
    int cy = 0;
    bool newLine = true; ///< the current position is the first of its row

    AnalyzeCond() = default;

    /// Area (x, y, w, h) with its ends cut to integers and put in order; a negative step means
    /// blocks side by side (2*half+1). The walk is started.
    AnalyzeCond(int imageWidth, int imageHeight, int halfBlockX, int halfBlockY, const QRectF& area,
                int stepArgX, int stepArgY);

    /// Cuts the area to the image, right and bottom ends exclusive, and starts the walk; false when
    /// nothing is left of it.
    bool cutToImage();

    /// To the first position: half a block inside the area's corner.
    void start();

    /// To the next position; false past the last one. The last centre of a row is the last below
    /// x1, so a block may reach past the area by halfX. A step below 1 advances by 1.
    bool next();

    /// Number of positions that the walk visits in a row and number of its rows, each at least 1.
    int columns() const;
    int rows() const;

    /// Pixels of the image; 0 without one.
    std::size_t pixels() const
    {
        return width < 1 || height < 1 ? 0 : std::size_t(width) * std::size_t(height);
    }

    /// Progress of the walk in percent, by rows; 0 for an area without height.
    double progress() const;

    /// Writes v over the block round (cx, cy) of a field of width*height values, clipped to it.
    void fillBlock(double* field, double v) const;

    /// The same round any pixel; half widths count by their absolute value.
    template<typename T>
    void fillBlockAt(T* field, int x, int y, int half, int halfRows, T v) const;
};

template<typename T>
void AnalyzeCond::fillBlockAt(T* field, int x, int y, int half, int halfRows, T v) const
{
    const qint64 reachX = std::abs(qint64(half));
    const qint64 reachY = std::abs(qint64(halfRows));
    const qint64 left = std::max<qint64>(x - reachX, 0);
    const qint64 right = std::min<qint64>(x + reachX, width - 1);
    const qint64 bottom = std::min<qint64>(y + reachY, height - 1);
    for (qint64 row = std::max<qint64>(y - reachY, 0); row <= bottom; ++row) {
        T* const line = field + row * width;
        for (qint64 column = left; column <= right; ++column)
            line[column] = v;
    }
}

Q_DECLARE_METATYPE(AnalyzeCond)
