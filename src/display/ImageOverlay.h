#pragma once

#include <QRectF>

#include <optional>

class ChCoord;
class QPainter;

/// What is drawn over the image: the averaging block and cross hair at the cursor, the selected
/// area and the dark areas. All in image pixels.
struct ImageOverlay
{
    int x = 0; ///< cursor
    int y = 0;
    int bandWidth = 0; ///< half widths of the averaging block; their signs do not count
    int bandHeight = 0;
    int imageWidth = 0;
    int imageHeight = 0;
    std::optional<QRectF> selection; ///< sizes may be negative during a drag
    std::optional<QRectF> i0DarkArea;
    std::optional<QRectF> i1DarkArea;
};

/// Paints the overlay, block first and dark areas last, through the image area's coordinates.
void paintOverlay(QPainter& p, const ChCoord& coord, const ImageOverlay& overlay);
