// Loading a stack from TIFF files. bytes are pixels.

#include "SyntheticExperiment.h"
#include "image/LoadTiff.h"
#include "output/TiffWriter.h"

#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

QStringList writeStack(const QString& folder)
{
    QStringList files;
    for (int i = 0; i < synthetic::energies; ++i) {
        const auto image = synthetic::i1Image(i);
        files.append(
            QDir(folder).filePath(QStringLiteral("%1.tif").arg(i, 4, 10, QLatin1Char('0'))));
        TiffWriter::writeU16(files.last(), image->width, image->height, image->row<quint16>(0));
    }
    return files;
}

void loadStack(benchmark::State& state)
{
    const QTemporaryDir folder;
    LoadJob job;
    job.files = writeStack(folder.path());
    for (auto _ : state) {
        LoadTiff loader;
        QEventLoop loop;
        TiffStack stack;
        QObject::connect(&loader, &LoadTiff::loaded, &loop,
                         [&stack](TiffData* data, int) { stack.append(SharedImage(data)); });
        QObject::connect(&loader, &LoadTiff::finishLoadFiles, &loop, &QEventLoop::quit);
        loader.loadTiffs(job);
        loop.exec();
        state.PauseTiming();
        stack.clear();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * synthetic::energies * synthetic::side *
                            synthetic::side * 2);
}

} // namespace

BENCHMARK(loadStack)->Name("load_stack")->Unit(benchmark::kMillisecond)->UseRealTime();
