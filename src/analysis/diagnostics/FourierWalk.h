#pragma once

#include "spectrum/Fourier.h"
#include "walk/WalkKernel.h"

#include <vector>

/// Transforms the counts of a block over the images: value 0 is the average of its pixels in the
/// first image, value 1 + k the magnitude of frequency k. One transform gives all frequencies.
class FourierKernel : public WalkKernel
{
public:
    /// For a stack of so many images.
    explicit FourierKernel(int images);

    Stage stage() const override { return Stage::Counts; }
    int values() const override { return 1 + images_; }
    std::unique_ptr<WalkKernel> forWorker() const override;
    void plain(const PlainPosition& at, int lane, TileResult& out) override;
    Lanes lanes(const Tile& tile, TileResult& out) override;

private:
    void transform(double firstAverage, int lane, TileResult& out);

    const int images_;
    Fourier fourier_;
    std::vector<double> series_; ///< counts of a block
    std::vector<double> sums_;   ///< [image][laneStride]
};

/// Correlates the first image with the magnitudes of each frequency over the area.
struct FourierSums
{
    explicit FourierSums(int images)
        : mm(std::size_t(images), 0.0)
        , am(std::size_t(images), 0.0)
    {
    }

    double aa = 0.0;        ///< of the squares of the first image
    std::vector<double> mm; ///< of the squares of the magnitudes
    std::vector<double> am; ///< of the products

    /// am / sqrt(|aa mm|); nan where that is 0 / 0.
    double correlation(int k) const;
    /// A debug line for each frequency: "Res", its number, the sums and the correlation.
    void log() const;
};

/// Adds up in walking order, so that the sums do not depend on the threads.
class FourierSink : public WalkSink
{
public:
    explicit FourierSink(FourierSums& sums);
    void take(const WalkRun& run, const TileResult& result) override;

private:
    FourierSums& sums_;
};
