// What is done with a map as a whole: taking its memory for a walk, and saving it.

#include "maps/MapBook.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

AnalyzeCond wholeImage(int side)
{
    return {side, side, 0, 0, QRectF(0, 0, side, side), -1, -1};
}

/// Saves a map of doubles that have all their digits. items are values.
void saveText(benchmark::State& state, bool asXYZ)
{
    const QTemporaryDir folder;
    const QFileInfo file(folder.filePath(QStringLiteral("map.dat")));
    AnalyzeCond walk = wholeImage(512);
    Analyzed2DRes map(QStringLiteral("bench"));
    map.prepare(walk);
    do {
        map.setData(walk.cx, walk.cy, 0, 0, 1.0 / (3 + walk.cx + 512 * walk.cy));
    } while (walk.next());
    for (auto _ : state) {
        if (!map.saveAsText(file, true, false, asXYZ))
            state.SkipWithError("not saved");
    }
    state.SetItemsProcessed(state.iterations() * 512 * 512);
}

/// The ten maps of a walk over large images with four references: all are prepared, for the first
/// time in their book or after a walk that has filled them.
void prepareMaps(benchmark::State& state, bool again)
{
    constexpr int side = 2048;
    QVector<MapKey> keys{{MapKind::Zansa}, {MapKind::DEdge}};
    for (int row = 0; row < 4; ++row)
        keys << MapKey{MapKind::LcfJump, row} << MapKey{MapKind::LcfWeight, row};
    const auto prepareAll = [&keys](MapBook& book) {
        for (const MapKey& key : qAsConst(keys))
            book.begin(key, wholeImage(side), MapOrigin());
    };
    for (auto _ : state) {
        state.PauseTiming();
        auto book = std::make_unique<MapBook>();
        if (again) {
            prepareAll(*book);
            for (const MapKey& key : qAsConst(keys))
                book->at(key).setData(0, 0, side, side, 1.0);
        }
        state.ResumeTiming();
        prepareAll(*book);
        state.PauseTiming();
        book.reset();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK_CAPTURE(prepareMaps, first, false)
    ->Name("prepare_maps/first")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(prepareMaps, again, true)
    ->Name("prepare_maps/again")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(saveText, points, true)
    ->Name("save_text/points")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(saveText, rows, false)
    ->Name("save_text/rows")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime();
