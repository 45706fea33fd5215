#include "Fuzz.h"

#include "batch/BatchInterpreter.h"
#include "common/Cfg.h"
#include "common/Fault.h"
#include "common/Settings.h"

#include <vector>

namespace {

/// The words of a command line, a line each, as main() gets them.
std::vector<QByteArray> wordsOf(const QByteArray& bytes)
{
    std::vector<QByteArray> words{"morvenkite"};
    for (const QByteArray& line : bytes.split('\n'))
        words.push_back(line.left(int(qstrnlen(line.constData(), uint(line.size())))) + '\0');
    return words;
}

} // namespace

/// Options of the command line, as the program takes them at its start. Of a configuration that
/// they name a line is there.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::vector<QByteArray> words = wordsOf(asBytes(data, size));
    std::vector<const char*> argv;
    for (const QByteArray& word : words)
        argv.push_back(word.constData());
    writeInput("BATCH :echo $scan$\nThreads 2\n", QStringLiteral("config.cfg"));

    const FaultCollector faults;
    initSettings();
    theCfg() = Cfg(int(argv.size()), argv.data(), QString(), QStringList());
    readConfiguration(theCfg(), QStringLiteral("."));
    applySettings(theCfg());
    const StartOptions options = readStartOptions(theCfg());
    check(WalkThreads >= 0 && WalkThreads <= 256, "threads are a number that a machine can have");
    check(options.timeout >= 0.0, "a timeout is no time below 0");
    for (const auto& variable : qAsConst(BatchVariables))
        check(!variable.first.isEmpty(), "a variable has a name");

    BatchInterpreter interpreter;
    interpreter.start(configuredBatch(theCfg()), true);
    for (int i = 0; i < 100 && interpreter.step().kind != BatchOutcome::Ended; ++i) {
    }
    return 0;
}
