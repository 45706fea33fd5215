// The text of spectra, from the images to a file: bytes are those of the file. It lies in memory
// where the machine has such a folder, so that no disk is in the figures.

#include "ProcessorWaits.h"
#include "SyntheticExperiment.h"
#include "output/SpectrumExport.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <benchmark/benchmark.h>

namespace {

constexpr int areaSide = 200; ///< [pixels], and positions

QString fileInFolder(const QString& name)
{
    const QString memory = QStringLiteral("/dev/shm");
    static const QTemporaryDir made((QDir(memory).exists() ? memory : QDir::tempPath()) +
                                    QStringLiteral("/morvenkite-bench"));
    return made.filePath(name);
}

SharedSource source()
{
    auto made = std::make_shared<WalkSource>();
    const StackPair stacks = synthetic::stacks();
    made->i1 = stacks.i1;
    made->i0 = stacks.i0;
    made->block = synthetic::conditions(1);
    return made;
}

/// One file of the form; its name.
QString exportOnce(const SharedSource& from, SpectrumForm form)
{
    AnalyzeCond area(synthetic::side, synthetic::side, 1, 1, QRectF(20, 20, areaSide, areaSide), 1,
                     1);
    area.cutToImage();
    const QString name = fileInFolder(QStringLiteral("spectra.dat"));
    const auto file = std::make_shared<SpectrumFile>(name, spectrumHeader(form, area),
                                                     qint64(area.columns()) * area.rows());
    WalkOrder order{from, area, {}};
    order.jobs.push_back(
        {std::make_unique<SpectrumTextKernel>(form), std::make_unique<SpectrumTextSink>(file)});
    runWalk(std::move(order), QThread::idealThreadCount());
    return name;
}

/// Seconds that a plain write of these bytes takes, in the pieces of a walk.
double plainWriteSeconds(const QByteArray& bytes)
{
    constexpr int piece = 500000;
    QElapsedTimer clock;
    clock.start();
    QFile file(fileInFolder(QStringLiteral("plain.dat")));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return 0.0;
    for (int at = 0; at < bytes.size(); at += piece)
        file.write(bytes.constData() + at, qMin(piece, bytes.size() - at));
    file.close();
    return double(clock.nsecsElapsed()) * 1e-9;
}

void exportSpectra(benchmark::State& state, SpectrumForm form)
{
    const SharedSource from = source();
    QFile file(exportOnce(from, form));
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const double plain = plainWriteSeconds(bytes);
    QElapsedTimer clock;
    clock.start();
    {
        const ProcessorWaits waits(state);
        for (auto _ : state)
            exportOnce(from, form);
    }
    const double seconds = double(clock.nsecsElapsed()) * 1e-9 / double(state.iterations());
    state.SetBytesProcessed(state.iterations() * bytes.size());
    state.counters["plain_write_share"] = plain / seconds;
}

} // namespace

BENCHMARK_CAPTURE(exportSpectra, normalized, SpectrumForm::Normalized)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(exportSpectra, raw_xafs, SpectrumForm::RawXafs)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(exportSpectra, raw, SpectrumForm::Raw)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime();
