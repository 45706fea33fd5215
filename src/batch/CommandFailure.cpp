#include "batch/CommandFailure.h"

#include "batch/CmdLine.h"

namespace {

/// A text that is none may be one word of a million characters.
constexpr int longestWord = 100;

QString placeText(int lineNo, bool ofConfig, const QString& word)
{
    const QString end = word + QLatin1String(": ");
    if (lineNo == 0)
        return word.isEmpty() ? QString() : end;
    const QString place = ofConfig ? QStringLiteral("batch line %1 of the configuration, ")
                                   : QStringLiteral("line %1, ");
    return place.arg(lineNo) + end;
}

} // namespace

CommandFailure::CommandFailure(const CmdLine& cmd, const QString& why)
    : lineNo(cmd.lineNo)
    , ofConfig(cmd.ofConfig)
    , word(cmd.word.left(longestWord))
    , reason(why)
{
}

QString CommandFailure::text() const
{
    return placeText(lineNo, ofConfig, word) + reason;
}

QString batchLogText(const CommandFailure& failure)
{
    return QLatin1String("Err: ") + failure.text() + QLatin1Char('\n');
}

QString failurePlace(const CmdLine& cmd)
{
    return CommandFailure(cmd, QString()).text();
}

void FailureCount::add(const CommandFailure& failure)
{
    if (count++ == 0)
        first = failure;
}

void FailureCount::add(const FailureCount& later)
{
    if (count == 0)
        first = later.first;
    count += later.count;
}
