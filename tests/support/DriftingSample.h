#pragma once

#include <QPoint>

#include <cmath>

/// A sample with an edge that drifts over the detector by whole pixels from image to image, under a
/// beam that stays: three grains in one, so that no other shift brings it onto itself. Its outline
/// is sharp, and so the same at each energy.
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
    static double thickness(int x, int y)
    {
        const auto isIn = [&](double cx, double cy, double radius) {
            return std::hypot(x - cx, y - cy) < radius;
        };
        const bool isSample = isIn(36, 27, 11) || isIn(27, 33, 7) || isIn(46, 20, 8);
        return isSample ? 1.1 + 0.1 * std::sin(0.8 * x) * std::cos(0.5 * y) : 0.0;
    }

    /// The beam, flat, or soft so that the rim of an image is no edge.
    static double beam(int x, int y, bool soft)
    {
        constexpr double pi = 3.14159265358979323846;
        return soft ? 50000.0 * std::sin(pi * (x + 0.5) / width) * std::sin(pi * (y + 0.5) / height)
                    : 50000.0;
    }

    static double counts(int image, int x, int y, bool soft = false)
    {
        const QPoint d = drift(image);
        const double mu = 0.9 + 0.5 * std::tanh((energy(image) - 8984.0) / 3.0);
        return std::floor(beam(x, y, soft) * std::exp(-mu * thickness(x - d.x(), y - d.y())));
    }

    /// Shift that brings an image back onto that number.
    static QPoint backTo(int onto, int image) { return drift(onto) - drift(image); }
};
