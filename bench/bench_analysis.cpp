// What is done at each position of a map, one step at a time. items are positions.

#include "SyntheticExperiment.h"
#include "analysis/lcf/LcfFit.h"
#include "calibration/CalibBlock.h"
#include "maps/Analyzed2DRes.h"

#include <benchmark/benchmark.h>

namespace {

void countPositions(benchmark::State& state, int perIteration)
{
    state.SetItemsProcessed(state.iterations() * perIteration);
}

void blockSpectrum(benchmark::State& state)
{
    const int half = int(state.range(0));
    const int step = 2 * half + 1;
    const int count = std::min(mostLanes, (synthetic::side - half) / step);
    BlockSpectra blocks(synthetic::stacks(), synthetic::conditions(half));
    std::vector<double> mu(blocks.energies().size() * laneStride);
    int y = half;
    for (auto _ : state) {
        blocks.formMu({half, step, count, y}, mu.data());
        benchmark::DoNotOptimize(mu.data());
        y = (y + step) % (synthetic::side - half);
    }
    countPositions(state, count);
}

Spectrum someSpectrum()
{
    return rawXafs(synthetic::stacks(), synthetic::conditions(0), 200, 200);
}

void normalise(benchmark::State& state, int mode)
{
    const Spectrum raw = someSpectrum();
    const QString name = QStringLiteral("bench");
    for (auto _ : state)
        benchmark::DoNotOptimize(XafsSpectrum(raw, name, mode, 0.0, SuggestElm()));
    countPositions(state, 1);
}

/// Fits a row of a map whose positions have the same energy shift, or each another one.
void fitLcfOfARow(benchmark::State& state, bool shifted)
{
    LcfRequest request;
    request.rows = synthetic::referenceRows();
    request.inWalk = true;
    QVector<XafsSpectrum> spectra;
    BlockSpectra blocks(synthetic::stacks(), synthetic::conditions(0));
    for (int x = 0; x < synthetic::side; ++x) {
        const Spectrum raw = blocks.at(x, 100);
        const double offset = shifted ? 0.003 * spectra.size() : 0.0;
        spectra.append(XafsSpectrum(raw, QString(), VictLine::Straight, offset, SuggestElm()));
    }
    for (auto _ : state) {
        LcfPlan plan(request);
        for (const XafsSpectrum& spectrum : qAsConst(spectra))
            benchmark::DoNotOptimize(plan.fit(spectrum));
    }
    countPositions(state, spectra.size());
}

void calibrateBlock(benchmark::State& state)
{
    const XafsSpectrum standard = synthetic::referenceRows()[0].spectrum;
    const Spectrum raw = someSpectrum();
    for (auto _ : state) {
        const XafsSpectrum target(raw, QString(), VictLine::Straight, 0.0, SuggestElm());
        benchmark::DoNotOptimize(target.findBestShift(standard, 20.0, 1.0, 0.1));
    }
    countPositions(state, 1);
}

/// A whole calibration of 128x128 blocks as its chain does it, one position after the other.
void calibrateMap(benchmark::State& state)
{
    const XafsSpectrum standard = synthetic::referenceRows()[0].spectrum;
    CalibConditions conditions;
    conditions.method = CalibMethod::InnerProduct;
    constexpr int blocks = 128;
    constexpr int half = 1;
    constexpr int area = blocks * (2 * half + 1);
    const AnalyzeCond walk(synthetic::side, synthetic::side, half, half, QRectF(0, 0, area, area),
                           -1, -1);
    Analyzed2DRes map(QStringLiteral("bench"));
    for (auto _ : state) {
        BlockSpectra spectra(synthetic::stacks(), synthetic::conditions(half));
        CalibStatistics statistics;
        map.prepare(walk);
        AnalyzeCond at = walk;
        do {
            const BlockShift found = blockShift(spectra.at(at.cx, at.cy), standard, conditions);
            if (statistics.take({at.cx, at.cy}, found))
                map.setData(at.cx, at.cy, half, half, found.shift);
        } while (at.next());
        statistics.close(walk, map);
        map.genImg();
    }
    countPositions(state, blocks * blocks);
}

} // namespace

BENCHMARK(blockSpectrum)->Name("block_spectrum")->Arg(0)->Arg(2)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(normalise, straight, VictLine::Straight)->Name("normalise/straight");
BENCHMARK_CAPTURE(normalise, victoreen, VictLine::Victoreen)->Name("normalise/victoreen");
BENCHMARK_CAPTURE(fitLcfOfARow, same, false)->Name("fit_lcf")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(fitLcfOfARow, shifted, true)
    ->Name("fit_lcf/shifted")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(calibrateBlock)->Name("calibrate_block")->Unit(benchmark::kMicrosecond);
BENCHMARK(calibrateMap)->Name("calibrate_map_128x128")->Unit(benchmark::kMillisecond);
