#include "common/Memory.h"

#include <QApplication>

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    keepFreedMemory();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
