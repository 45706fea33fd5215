#include "analysis/lcf/LcfSection.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"

namespace {

/// The optional use argument of a reference: on unless it is a number not above zero or a word.
bool usesReference(const QString& arg)
{
    return arg.isEmpty() || arg.toUpper() == QLatin1String("VIC") || arg.toDouble() > 0.0;
}

void setReference(LcfSection& section, const CmdLine& c)
{
    section.setLCFStd(intArg(c, 0), usesReference(c.arg(4)), doubleArg(c, 2), c.arg(3),
                      onArg(c, 1) ? QStringLiteral("1") : QStringLiteral("0"));
}

} // namespace

void LcfSection::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerSetLCFStd, [this](const Cmd& c) { setReference(*this, c); });
    book.action(ExCmdAnalyzerSetLCFMode, [this](const Cmd& c) { setLCFMode(intArg(c, 0)); });
    book.action(ExCmdAnalyzerZansaOwnWeights, [this](const Cmd& c) { setOwnWeights(onArg(c, 0)); });
    book.action(ExCmdAnalyzerLCFRange,
                [this](const Cmd& c) { setRange(doubleArg(c, 0), doubleArg(c, 1)); });
    book.action(ExCmdAnalyzerLCFOld, [this](const Cmd& c) { setLcfOld(onArg(c, 0)); });
}
