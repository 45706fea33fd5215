#include "app/Body.h"
#include "app/ConsoleModes.h"
#include "app/ProgressSum.h"
#include "app/TermSignals.h"
#include "app/TerminalProgress.h"
#include "app/Translation.h"
#include "app/WorkbenchStore.h"
#include "batch/BatchCtrl.h"
#include "batch/BatchFile.h"
#include "common/Cfg.h"
#include "common/Fault.h"
#include "common/LogRelay.h"
#include "common/Memory.h"
#include "common/Settings.h"
#include "conduct/BatchConductor.h"

#include <QApplication>
#include <QDebug>
#include <QIcon>
#include <QStyleFactory>
#include <QTranslator>

#include <cstdio>
#include <optional>

#include <optional>
#include <unistd.h>

namespace {

/// Exit codes of unattended runs; see docs/file-formats.md.
constexpr int commandsFailed = 1;
constexpr int notStarted = 2;
constexpr int timedOut = 3;
/// The number of the signal is added.
constexpr int endedBySignal = 128;

/// What the program starts with, and what of it could not be had.
struct Start
{
    StartOptions options;
    QString batchText;
    QStringList faults;
};

Start readStart()
{
    const FaultCollector faults;
    Start start;
    readConfiguration(theCfg(), QCoreApplication::applicationDirPath());
    applySettings(theCfg());
    start.options = readStartOptions(theCfg());
    if (!start.options.batchFile.isEmpty()) {
        const QString why = readBatchFile(start.options.batchFile, start.batchText);
        if (!why.isEmpty())
            fault(why);
    }
    start.faults = faults.faults();
    return start;
}

/// Why an unattended run can't start; empty when it can.
QString startFault(const Start& start)
{
    if (!start.faults.isEmpty())
        return start.faults.first();
    if (start.batchText.trimmed().isEmpty() && configuredBatch(theCfg()).trimmed().isEmpty())
        return QStringLiteral(
            "there is neither a batch text nor a batch line of the configuration");
    return {};
}

void printError(const QString& line)
{
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
}

QIcon programIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icon-%1.png").arg(size));
    return icon;
}

/// Shows the window and runs its event loop to the end. Gives the exit code; the failures of a run
/// go to `failures`.
int runWindow(const Start& start, FailureCount& failures)
{
    int endCode = 0;
    TermSignals signalsToEnd;
    Body body;
    const auto endWith = [&](int code) {
        if (endCode == 0)
            endCode = code;
        body.endQuietly();
        QCoreApplication::quit();
    };
    QObject::connect(&signalsToEnd, &TermSignals::received, &body,
                     [&](int number) { endWith(endedBySignal + number); });
    BatchCtrl& batch = *body.batchCtrl();
    QObject::connect(&batch, &BatchCtrl::gaveUp, &body, [&] { endWith(timedOut); });
    // A run on its own neither follows nor changes what its user likes.
    if (!start.options.execBatch)
        body.attend();
    body.show();
    if (!start.batchText.isEmpty())
        batch.setText(start.batchText);
    std::optional<TerminalProgress> progress;
    if (start.options.execBatch) {
        progress.emplace(*body.findChild<ProgressSum*>(), isatty(STDERR_FILENO) == 1);
        batch.watch().setLimit(start.options.timeout);
        batch.execBatchSlot();
    }
    const int loopCode = QApplication::exec();
    failures = batch.failures();
    return endCode != 0 ? endCode : loopCode;
}

/// The exit code of an unattended run, and its last line on the error stream when there were
/// failures.
int endUnattended(int code, const FailureCount& failures)
{
    if (failures.count == 0)
        return code;
    printError(QStringLiteral("Batch failures: %1, the first: %2")
                   .arg(failures.count)
                   .arg(failures.first.text()));
    return code != 0 ? code : commandsFailed;
}

} // namespace

int main(int argc, char** argv)
{
    keepFreedMemory();
    const LogRelay logRelay;
    theCfg() = Cfg(argc, argv, QString(), QStringList());
    if (const std::optional<int> code = runConsoleMode(argc, argv, MORVENKITE_VERSION))
        return *code;
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication app(argc, argv);
    QApplication::setApplicationVersion(QStringLiteral(MORVENKITE_VERSION));
    QTranslator translator;
    QApplication::setWindowIcon(programIcon());
    QApplication::setStyle(QStringLiteral("Fusion"));
    qDebug() << "application folder" << QCoreApplication::applicationDirPath();

    const Start start = readStart();
    if (start.options.execBatch) {
        const QString why = startFault(start);
        if (!why.isEmpty()) {
            printError(QStringLiteral("Batch not started: ") + why);
            return notStarted;
        }
    }
    if (!start.options.english)
        installTranslation(translator);
    if (!start.options.execBatch)
        applyColours(keptColours());
    FailureCount failures;
    const int code = runWindow(start, failures);
    return start.options.execBatch ? endUnattended(code, failures) : code;
}
