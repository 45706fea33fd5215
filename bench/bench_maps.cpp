// What is done with a map as a whole: taking its memory for a walk, and saving it.

#include "maps/MapBook.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

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

} // namespace

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
