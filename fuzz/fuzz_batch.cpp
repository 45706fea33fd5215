#include "Fuzz.h"

#include "batch/BatchCheck.h"
#include "batch/BatchFile.h"
#include "batch/BatchInterpreter.h"

namespace {

/// Steps and time of an input: its loops may go on for ever.
constexpr int mostSteps = 400;
constexpr int mostMs = 1000;

void run(const QString& text)
{
    BatchInterpreter interpreter;
    interpreter.start(text);
    const int lines = text.count(QLatin1Char('\n')) + 1;
    for (int i = 0; i < mostSteps; ++i) {
        const BatchOutcome outcome = interpreter.step();
        if (outcome.kind == BatchOutcome::Ended)
            break;
        check(outcome.line.lineNo >= 1 && outcome.line.lineNo <= lines, "a line has its number");
        // The user edits a text that runs.
        if (i == mostSteps / 2)
            interpreter.replaceText(text.left(text.size() / 2));
    }
}

} // namespace

/// Batch texts: read, checked and interpreted.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QString text;
    const QString why = readBatchFile(writeInput(asBytes(data, size)), text);
    check(why.isEmpty() != text.isNull() || size == 0, "a batch is read, or refused");
    BatchCheckOptions options;
    options.limits.steps = mostSteps;
    options.limits.passes = mostSteps / 2;
    options.limits.milliseconds = mostMs;
    const BatchReport report = checkBatch(text, options);
    check(report.count >= 0 && report.lines(QStringLiteral("input")).size() >= 1,
          "a check has a report");
    check(report.count > 0 || report.findings.isEmpty(), "findings are counted");
    run(text);
    return 0;
}
