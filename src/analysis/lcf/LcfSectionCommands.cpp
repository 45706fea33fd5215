#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfSection.h"
#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/FieldText.h"
#include "display/NumberFields.h"

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
    book.action(ExCmdAnalyzerAddRef, [this](const Cmd&) { addNewRef(); });
    book.action(ExCmdAnalyzerClearRef, [this](const Cmd& c) { clearReference(intArg(c, 0)); });
    bindFields(book);
    book.action(ExCmdAnalyzerLCFRange,
                [this](const Cmd& c) { setRange(doubleArg(c, 0), doubleArg(c, 1)); });
    tellHistory(book.history());
}

void LcfSection::tellHistory(History& history)
{
    // One for all: rows come and never go.
    history.follow([this] {
        QStringList lines;
        for (int row = 0; row < refs_.size(); ++row)
            lines << referenceLine(row);
        return lines;
    });
}

QString LcfSection::referenceLine(int row) const
{
    const LCFReference& ref = *refs_.at(row);
    const QString number = QString::number(row);
    if (ref.fileName().isEmpty())
        return batchLine(ExCmdAnalyzerClearRef, {number});
    const QLatin1String off("0");
    const QLatin1String on("1");
    return batchLine(ExCmdAnalyzerSetLCFStd,
                     {number, ref.backgroundMode() == VictLine::Victoreen ? on : off,
                      energyText(fieldValue(ref.shiftField())), ref.fileName(),
                      ref.isUsed() ? on : off});
}

void LcfSection::clearReference(int row)
{
    if (makeRow(row))
        refs_.at(row)->clearFile();
}
