#include "analysis/diagnostics/FourierWalk.h"

#include <QDebug>

#include <cmath>

FourierKernel::FourierKernel(int images)
    : images_(images)
    , series_(std::size_t(images))
    , sums_(std::size_t(images) * laneStride)
{
    fourier_.setSize(images);
}

std::unique_ptr<WalkKernel> FourierKernel::forWorker() const
{
    return std::make_unique<FourierKernel>(images_);
}

void FourierKernel::transform(double firstAverage, int lane, TileResult& out)
{
    fourier_.forward(series_.data());
    const double* const magnitudes = fourier_.magnitudes();
    out.set(0, lane, firstAverage);
    for (int k = 0; k < images_; ++k)
        out.set(1 + k, lane, magnitudes[k]);
    out.outcomes[std::size_t(lane)] = Outcome::Fitted;
}

void FourierKernel::plain(const PlainPosition& at, int lane, TileResult& out)
{
    const BlockConditions& block = at.source.block;
    const Spectrum counts = rawI1(at.source.i1, block, at.x, at.y);
    for (int i = 0; i < images_; ++i)
        series_[std::size_t(i)] = counts.y(i);
    transform(series_.front() / block.blockPixels(), lane, out);
}

Lanes FourierKernel::lanes(const Tile& tile, TileResult& out)
{
    const AnalyzeCond& at = tile.run.first;
    Lanes done;
    if (at.stepX < 1)
        return done;
    const BlockConditions& block = tile.source.block;
    double* sums = sums_.data();
    for (const SharedImage& image : tile.source.i1) {
        image->blockSums(at.cx, at.stepX, tile.count, at.cy, block.halfX, block.halfY, sums);
        sums += laneStride;
    }
    for (int lane = 0; lane < tile.count; ++lane) {
        for (int i = 0; i < images_; ++i)
            series_[std::size_t(i)] = sums_[std::size_t(i * laneStride + lane)];
        transform(series_.front() / block.blockPixels(), lane, out);
        done.set(std::size_t(lane));
    }
    return done;
}

double FourierSums::correlation(int k) const
{
    const auto i = std::size_t(k);
    return am[i] / std::sqrt(std::fabs(aa * mm[i]));
}

void FourierSums::log() const
{
    for (std::size_t k = 0; k < mm.size(); ++k)
        qDebug() << "Res" << k << aa << mm[k] << am[k] << correlation(int(k));
}

FourierSink::FourierSink(FourierSums& sums)
    : sums_(sums)
{
}

void FourierSink::take(const WalkRun& run, const TileResult& result)
{
    for (int lane = 0; lane < run.count; ++lane) {
        const double a = result.value(0, lane);
        sums_.aa += a * a;
        for (std::size_t k = 0; k < sums_.mm.size(); ++k) {
            const double m = result.value(1 + int(k), lane);
            sums_.am[k] += a * m;
            sums_.mm[k] += m * m;
        }
    }
}
