#pragma once

#include <QPoint>

#include <algorithm>
#include <cmath>

/// A sample with an edge that drifts over the detector by whole pixels from image to image, under a
/// flat beam: three grains of different sizes, so that no other shift brings it onto itself.
struct DriftingSample
{
    static constexpr int width = 72;
    static constexpr int height = 54;
    static constexpr int images = 24;
    static constexpr double firstEnergy = 8960.0; ///< [eV], in steps of 2

    static double energy(int image) { return firstEnergy + 2.0 * image; }

    /// How far the sample has gone at an image, up to 2 pixels a step and 13 in all.
    static QPoint drift(int image)
    {
        return {int(std::lround(9.0 * std::sin(0.14 * image))), -(image * 13) / (images - 1)};
    }

    /// Thickness that was in front of pixel (x, y) at the first image.
    static double thickness(double x, double y)
    {
        const auto grain = [&](double cx, double cy, double radius) {
            return std::max(0.0, 1.0 - std::hypot(x - cx, y - cy) / radius);
        };
        return 2.0 * std::min(0.6, grain(36, 27, 17) + grain(22, 34, 9) + grain(48, 18, 11));
    }

    static double counts(int image, int x, int y)
    {
        const QPoint d = drift(image);
        const double mu = 0.9 + 0.5 * std::tanh((energy(image) - 8984.0) / 3.0);
        return std::floor(50000.0 * std::exp(-mu * thickness(x - d.x(), y - d.y())));
    }

    /// Shift that brings an image back onto that number.
    static QPoint backTo(int onto, int image) { return drift(onto) - drift(image); }
};
