// Exports of spectra and the Fourier analysis, without a window. items are positions, bytes those
// of the files.

#include "SyntheticExperiment.h"
#include "analysis/fourier/FourierWalk.h"
#include "output/SpectraText.h"
#include "output/TextSink.h"
#include "walk/WalkEngine.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>

namespace {

constexpr int exportedSide = 200; ///< of the area [positions]
constexpr int threads = 2;

/// Writes, and leaves the file to its fate: how fast a disk takes bytes in is not our doing.
class UnsyncedSink : public TextSink
{
public:
    UnsyncedSink(std::unique_ptr<SafeFile> file, qint64& bytes)
        : TextSink(std::move(file), QStringLiteral("export"))
        , bytes_(bytes)
    {
    }

    void take(const WalkRun& run, const TileResult& result) override
    {
        for (const QByteArray& text : result.text)
            bytes_ += text.size();
        TextSink::take(run, result);
    }
    void end() override {}

private:
    qint64& bytes_;
};

SharedSource newSource()
{
    auto source = std::make_shared<WalkSource>();
    const StackPair stacks = synthetic::stacks();
    source->i1 = stacks.i1;
    source->i0 = stacks.i0;
    source->block = synthetic::conditions(0);
    return source;
}

AnalyzeCond exportedArea()
{
    return {synthetic::side,
            synthetic::side,
            0,
            0,
            QRectF(100, 100, exportedSide, exportedSide),
            -1,
            -1};
}

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::unique_ptr<SafeFile> newFile(const QTemporaryDir& folder)
{
    auto file = std::make_unique<SafeFile>(folder.filePath(QStringLiteral("spectra.dat")));
    file->open();
    return file;
}

/// What writing as many bytes takes that are there already. [s]
double plainWrite(const QTemporaryDir& folder, qint64 bytes)
{
    const QByteArray block(512 * 1024, '7');
    const auto file = newFile(folder);
    const auto start = std::chrono::steady_clock::now();
    for (qint64 left = bytes; left > 0; left -= block.size())
        file->write(block.constData(), std::min<qint64>(left, block.size()));
    return secondsSince(start);
}

void exportSpectra(benchmark::State& state, SpectraKind kind)
{
    // Beside the program, for a temporary folder may be memory.
    const QTemporaryDir folder(QStringLiteral("bench-export-XXXXXX"));
    const SharedSource source = newSource();
    qint64 bytes = 0;
    double exporting = 0.0;
    double writing = 0.0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        qint64 written = 0;
        WalkOrder order{source, exportedArea(), {}};
        order.jobs.push_back({std::make_unique<SpectraKernel>(kind, source->i1),
                              std::make_unique<UnsyncedSink>(newFile(folder), written)});
        runWalk(std::move(order), threads);
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        exporting += seconds;
        bytes += written;
        writing += plainWrite(folder, written);
    }
    state.SetBytesProcessed(bytes);
    state.SetItemsProcessed(state.iterations() * exportedSide * exportedSide);
    state.counters["MB_per_s"] = 1e-6 * double(bytes) / exporting;
    state.counters["plain_write_%"] = 100.0 * writing / exporting;
}

/// The same area, all frequencies of 200 images.
void analyseFrequencies(benchmark::State& state)
{
    const SharedSource source = newSource();
    for (auto _ : state) {
        auto sums = std::make_shared<std::vector<FourierSums>>(std::size_t(synthetic::energies));
        WalkOrder order{source, exportedArea(), {}};
        order.jobs.push_back({std::make_unique<FourierKernel>(synthetic::energies),
                              std::make_unique<FourierSink>(sums)});
        runWalk(std::move(order), threads);
        benchmark::DoNotOptimize(sums->front().am);
    }
    state.SetItemsProcessed(state.iterations() * exportedSide * exportedSide);
}

void asExport(benchmark::internal::Benchmark* run)
{
    run->Unit(benchmark::kMillisecond)->UseManualTime();
}

} // namespace

BENCHMARK_CAPTURE(exportSpectra, normalized, SpectraKind::Normalized)
    ->Name("export_normalized_200x200")
    ->Apply(asExport);
BENCHMARK_CAPTURE(exportSpectra, raw_xafs, SpectraKind::RawXafs)
    ->Name("export_raw_xafs_200x200")
    ->Apply(asExport);
BENCHMARK_CAPTURE(exportSpectra, raw, SpectraKind::Raw)
    ->Name("export_raw_200x200")
    ->Apply(asExport);
BENCHMARK(analyseFrequencies)
    ->Name("fourier_200x200")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
