#pragma once

#include "image/TiffData.h"

#include <limits>
#include <vector>

/// An image that is registered, or what was made of it: a value for each image position.
struct ProcImage
{
    std::vector<double> pixels; ///< row by row
    int width = 0;
    int height = 0;
    double minV = std::numeric_limits<double>::max(); ///< smallest and largest value, without nan
    double maxV = std::numeric_limits<double>::min(); ///< stays where no value is above it

    bool isEmpty() const { return pixels.empty(); }
    double at(int x, int y) const
    {
        return pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)];
    }
    bool hasSizeOf(const ProcImage& other) const
    {
        return width == other.width && height == other.height;
    }

    /// Takes minV and maxV from the values.
    void takeExtremes();
};

/// The values of an image at its positions; 0.0 where a shift leaves none. The memory of `into`
/// serves again: fresh memory costs far more than what is done with it.
ProcImage dataImage(const TiffData& image, ProcImage into = {});

/// The edges in an image: at each position the greater one of the two absolute Prewitt gradients,
/// in x and in y. What lies outside counts as 0, so the rim of a bright image is an edge too.
/// (J. M. S. Prewitt, "Object enhancement and extraction", 1970)
ProcImage edgeImage(const TiffData& image, ProcImage into = {});

/// 1.0 where a value is above the threshold, else 0.0.
ProcImage binarized(const ProcImage& image, double threshold);

/// The threshold at so many thousandths of the way from `min` to `max`, as a field shows it.
double thresholdBetween(double min, double max, int thousandths);
/// The same between the extremes of an image as fields show them.
double thresholdOf(const ProcImage& image, int thousandths);
