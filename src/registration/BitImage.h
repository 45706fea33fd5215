#pragma once

#include "registration/ProcImage.h"

#include <QPoint>
#include <QSize>

/// The sums of which a normalised scalar product of two images is made.
struct ProductSums
{
    double bb = 0.0; ///< of the squares of the image
    double rr = 0.0; ///< of the squares of the reference
    double br = 0.0; ///< of the products

    void add(double b, double r)
    {
        bb += b * b;
        rr += r * r;
        br += b * r;
    }
    /// br / sqrt(bb rr); 0.0 where that product is not above 0.
    double product() const;
};

/// A binary image, a bit a pixel: 64 pixels are compared at a time, and the sums of a product are
/// counts, the same as those of numbers.
class BitImage
{
public:
    BitImage() = default;
    /// Bits are set where a value is above the threshold.
    BitImage(const ProcImage& image, double threshold);

    bool isEmpty() const { return words_.empty(); }
    QSize size() const { return {width_, height_}; }

    /// Sums over the pixels (x, y) of the reference for which (x, y) - shift lies in this image,
    /// which has the size of the reference. Any shift may be given.
    ProductSums sumsWith(const BitImage& reference, const QPoint& shift) const;

private:
    const quint64* row(qint64 y) const { return words_.data() + y * wordsPerRow_; }
    quint64 bitsAt(const quint64* row, qint64 column) const;

    int width_ = 0;
    int height_ = 0;
    int wordsPerRow_ = 0;
    std::vector<quint64> words_; ///< pixel x of a row is bit x % 64 of its word x / 64
};
