#pragma once

#include "walk/WalkKernel.h"

class Analyzed2DRes;

/// Images from .. to - 1 of a stack, counted from 0.
struct SumUpRange
{
    int from = 0;
    int to = 0;
};

/// The sum of chosen images, one value a position [counts per pixel]: of each image of each range
/// the average of the block, its sum over the pixels of a whole block also at the image's edge. An
/// image of several ranges, or of a range that stands twice, counts as often; numbers that are no
/// image's count nothing. It reads the images as they are, without dark or I0.
class SumUpKernel : public WalkKernel
{
public:
    explicit SumUpKernel(const QVector<SumUpRange>& ranges);

    Stage stage() const override { return Stage::Counts; }
    int values() const override { return 1; }
    std::unique_ptr<WalkKernel> forWorker() const override;
    void plain(const PlainPosition& at, int lane, TileResult& out) override;
    Lanes lanes(const Tile& tile, TileResult& out) override;
    QStringList valueNames() const override;

private:
    const QVector<SumUpRange> ranges_;
};

/// Fills a map with the sums, in walking order, and tells the log at each row how far the values
/// reach.
class SumUpSink : public WalkSink
{
public:
    /// The map outlives it.
    explicit SumUpSink(Analyzed2DRes& map);

    void take(const WalkRun& run, const TileResult& result) override;

private:
    Analyzed2DRes& map_;
};
