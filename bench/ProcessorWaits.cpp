#include "ProcessorWaits.h"

#include <QDir>
#include <QFile>

namespace {

/// What the threads of this process have waited for a processor since they began. [ms]
double waitedMs()
{
    const QDir tasks(QStringLiteral("/proc/self/task"));
    double ns = 0.0;
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(tasks.filePath(task + QLatin1String("/schedstat")));
        if (file.open(QIODevice::ReadOnly))
            ns += file.readAll().split(' ').value(1).toDouble(); // behind the time it ran
    }
    return ns * 1e-6;
}

} // namespace

ProcessorWaits::ProcessorWaits(benchmark::State& state)
    : state_(state)
    , before_(waitedMs())
{
}

ProcessorWaits::~ProcessorWaits()
{
    state_.counters["waited_ms"] =
        benchmark::Counter(waitedMs() - before_, benchmark::Counter::kAvgIterations);
}
