#include "analysis/sumup/SumUpWalk.h"

#include "maps/Analyzed2DRes.h"

#include <QDebug>

#include <algorithm>
#include <array>

namespace {

/// Calls f with each image that the ranges name, in their order.
template<typename F>
void forEachImage(const QVector<SumUpRange>& ranges, const TiffStack& stack, F f)
{
    for (const SumUpRange& range : ranges) {
        const int end = std::min(range.to, stack.size());
        for (int i = std::max(range.from, 0); i < end; ++i)
            f(*stack.at(i));
    }
}

} // namespace

SumUpKernel::SumUpKernel(const QVector<SumUpRange>& ranges)
    : ranges_(ranges)
{
}

std::unique_ptr<WalkKernel> SumUpKernel::forWorker() const
{
    return std::make_unique<SumUpKernel>(ranges_);
}

QStringList SumUpKernel::valueNames() const
{
    return {QStringLiteral("sum of the images' averages [counts per pixel]")};
}

void SumUpKernel::plain(const PlainPosition& at, int lane, TileResult& out)
{
    const BlockConditions& block = at.source.block;
    const double pixels = block.blockPixels();
    double sum = 0.0;
    forEachImage(ranges_, at.source.i1, [&](const TiffData& image) {
        sum += image.blockSum(at.x, at.y, block.halfX, block.halfY) / pixels;
    });
    out.set(0, lane, sum);
    out.outcomes[std::size_t(lane)] = Outcome::Fitted;
}

/// Image by image, for an image gives all blocks of a run at once.
Lanes SumUpKernel::lanes(const Tile& tile, TileResult& out)
{
    const AnalyzeCond& at = tile.run.first;
    Lanes done;
    if (at.stepX < 1)
        return done;
    const BlockConditions& block = tile.source.block;
    const double pixels = block.blockPixels();
    std::array<double, tileLanes> counts;
    double* const sums = out.values.data(); // of the one value
    const int count = tile.count;
    forEachImage(ranges_, tile.source.i1, [&](const TiffData& image) {
        image.blockSums(at.cx, at.stepX, count, at.cy, block.halfX, block.halfY, counts.data());
        for (int lane = 0; lane < count; ++lane)
            sums[lane] += counts[std::size_t(lane)] / pixels;
    });
    for (int lane = 0; lane < count; ++lane) {
        out.outcomes[std::size_t(lane)] = Outcome::Fitted;
        done.set(std::size_t(lane));
    }
    return done;
}

SumUpSink::SumUpSink(Analyzed2DRes& map)
    : map_(map)
{
}

void SumUpSink::take(const WalkRun& run, const TileResult& result)
{
    AnalyzeCond at = run.first;
    for (int lane = 0; lane < run.count; ++lane, at.next()) {
        if (at.newLine)
            qDebug() << at.cy << map_.min << map_.max;
        map_.setData(at.cx, at.cy, at.halfX, at.halfY, result.value(0, lane));
    }
}
