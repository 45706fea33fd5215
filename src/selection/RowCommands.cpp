#include "selection/RowCommands.h"

#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/FieldText.h"
#include "image/ErrPoints.h"
#include "selection/EOFSetup.h"
#include "selection/SelectDataFiles.h"

namespace {

/// A command that exists for both stacks and acts on the stack's row.
struct RowCommand
{
    EX_CMD_ID i0;
    EX_CMD_ID i1;
    void (*run)(SelectDataFiles& row, const CmdLine& cmd);
};

using Row = SelectDataFiles;

const RowCommand rowCommands[] = {
    {ExCmdSetI0EnergyPattern, ExCmdSetI1EnergyPattern,
     [](Row& row, const CmdLine& c) { row.setEngByNameRegExp(c.arg(0)); }},
    {ExCmdCutFI0, ExCmdCutFI1, [](Row& row, const CmdLine& c) { row.setCutF(intArg(c, 0)); }},
    {ExCmdCutLI0, ExCmdCutLI1, [](Row& row, const CmdLine& c) { row.setCutL(intArg(c, 0)); }},
    {ExCmdSkipI0, ExCmdSkipI1, [](Row& row, const CmdLine& c) { row.setSkip(intArg(c, 0)); }},
    {ExCmdShowLatestI0, ExCmdShowLatestI1,
     [](Row& row, const CmdLine& c) { row.setShowLatest(onArg(c, 0)); }},
    {ExCmdEngByNameI0, ExCmdEngByNameI1, [](Row& row, const CmdLine&) { row.setEngByName(true); }},
    {ExCmdEngByNameRegExpI0, ExCmdEngByNameRegExpI1,
     [](Row& row, const CmdLine& c) { row.setEngByNameRegExp(c.arg(0)); }},
    {ExCmdEngByNameFactorI0, ExCmdEngByNameFactorI1,
     [](Row& row, const CmdLine& c) { row.setEngByNameFactor(doubleArg(c, 0)); }},
    {ExCmdEngByCalcI0, ExCmdEngByCalcI1,
     [](Row& row, const CmdLine& c) { row.setEngByCalc(onArg(c, 0)); }},
    {ExCmdEngCalcBaseI0, ExCmdEngCalcBaseI1,
     [](Row& row, const CmdLine& c) { row.setEngCalcStart(doubleArg(c, 0)); }},
    {ExCmdEngCalcDeltaI0, ExCmdEngCalcDeltaI1,
     [](Row& row, const CmdLine& c) { row.setEngCalcDelta(doubleArg(c, 0)); }},
    {ExCmdEngCalcEndI0, ExCmdEngCalcEndI1,
     [](Row& row, const CmdLine& c) { row.setEngCalcEnd(doubleArg(c, 0)); }},
    {ExCmdEngCalcNumI0, ExCmdEngCalcNumI1,
     [](Row& row, const CmdLine& c) { row.setEngCalcNum(intArg(c, 0)); }},
    {ExCmdEngCalcEvenInEngI0, ExCmdEngCalcEvenInEngI1,
     [](Row& row, const CmdLine& c) { row.setEvenInEng(onArg(c, 0)); }},
    {ExCmdEngCalcEvenInDegI0, ExCmdEngCalcEvenInDegI1,
     [](Row& row, const CmdLine& c) { row.setEvenInDeg(onArg(c, 0)); }},
    {ExCmdEngCalcDispUnitI0, ExCmdEngCalcDispUnitI1,
     [](Row& row, const CmdLine& c) { row.setDispUnit(intArg(c, 0)); }},
    {ExCmdEngByRefI0, ExCmdEngByRefI1,
     [](Row& row, const CmdLine& c) { row.setEngByRef(c.arg(0)); }},
    {ExCmdEngCrystalDI0, ExCmdEngCrystalDI1,
     [](Row& row, const CmdLine& c) { row.setCrystalD(c.arg(0)); }},
    {ExCmdExposureI0, ExCmdExposureI1,
     [](Row& row, const CmdLine& c) { row.enterExposure(c.arg(0)); }},
    {ExCmdIgnoreLiveI0, ExCmdIgnoreLiveI1,
     [](Row& row, const CmdLine& c) { row.setIgnoreLive(onArg(c, 0)); }},
    {ExCmdErrorPointsI0, ExCmdErrorPointsI1,
     [](Row& row, const CmdLine& c) { row.useErrPoints(c.arg(0)); }},
    {ExCmdUseErrorPointsI0, ExCmdUseErrorPointsI1,
     [](Row& row, const CmdLine& c) { row.switchErrPoints(onArg(c, 0)); }},
};

QString number(int n)
{
    return QString::number(n);
}

/// What a row's controls stand at, in the order in which commands may set them.
struct RowState
{
    EX_CMD_ID i0;
    EX_CMD_ID i1;
    QString (*argument)(const SelectDataFiles& row); ///< null where there is nothing to tell
};

EnergyRule ruleOf(const SelectDataFiles& row)
{
    return row.energySetup().rule();
}

QString flag(bool on)
{
    return number(on ? 1 : 0);
}

const RowState rowStates[] = {
    {ExCmdShowLatestI0, ExCmdShowLatestI1, [](const Row& row) { return flag(row.showLatest()); }},
    {ExCmdIgnoreLiveI0, ExCmdIgnoreLiveI1, [](const Row& row) { return flag(row.ignoreLive()); }},
    {ExCmdSkipI0, ExCmdSkipI1, [](const Row& row) { return number(row.skip()); }},
    {ExCmdCutFI0, ExCmdCutFI1, [](const Row& row) { return number(row.cutFirst()); }},
    {ExCmdCutLI0, ExCmdCutLI1, [](const Row& row) { return number(row.cutLast()); }},
    {ExCmdErrorPointsI0, ExCmdErrorPointsI1,
     [](const Row& row) { return row.errPoints().fileName; }},
    {ExCmdUseErrorPointsI0, ExCmdUseErrorPointsI1,
     [](const Row& row) { return flag(row.errPointsSwitchedOn()); }},
    // The pattern guesses a factor.
    {ExCmdEngByNameRegExpI0, ExCmdEngByNameRegExpI1,
     [](const Row& row) { return ruleOf(row).pattern; }},
    {ExCmdEngByNameFactorI0, ExCmdEngByNameFactorI1,
     [](const Row& row) { return shortestText(ruleOf(row).factor); }},
    {ExCmdEngCalcDispUnitI0, ExCmdEngCalcDispUnitI1,
     [](const Row& row) { return number(ruleOf(row).unit); }},
    {ExCmdEngCalcEvenInEngI0, ExCmdEngCalcEvenInEngI1,
     [](const Row& row) { return flag(ruleOf(row).evenInEnergy); }},
    {ExCmdEngCrystalDI0, ExCmdEngCrystalDI1,
     [](const Row& row) { return shortestText(ruleOf(row).spacing); }},
    {ExCmdEngCalcBaseI0, ExCmdEngCalcBaseI1,
     [](const Row& row) { return shortestText(ruleOf(row).start); }},
    {ExCmdEngCalcNumI0, ExCmdEngCalcNumI1,
     [](const Row& row) { return number(ruleOf(row).points); }},
    // An end that was typed has become a step.
    {ExCmdEngCalcDeltaI0, ExCmdEngCalcDeltaI1,
     [](const Row& row) { return shortestText(ruleOf(row).delta); }},
    {ExCmdEngByRefI0, ExCmdEngByRefI1,
     [](const Row& row) {
         return ruleOf(row).source == EnergyRule::ByReference ? row.energySetup().referenceFile()
                                                              : QString();
     }},
    {ExCmdEngByNameI0, ExCmdEngByNameI1,
     [](const Row& row) {
         return ruleOf(row).source == EnergyRule::ByName ? QStringLiteral("") : QString();
     }},
    {ExCmdEngByCalcI0, ExCmdEngByCalcI1,
     [](const Row& row) {
         return ruleOf(row).source == EnergyRule::ByCalculation ? flag(true) : QString();
     }},
    // Files bring their own, which is no deed of the user's.
    {ExCmdExposureI0, ExCmdExposureI1, [](const Row& row) { return row.typedExposure(); }},
};

void followRow(History& history, EX_CMD_ID id, QString (*argument)(const SelectDataFiles&),
               const SelectDataFiles& row)
{
    history.follow([id, argument, &row] {
        const QString told = argument(row);
        return told.isNull() ? QStringList() : QStringList(batchLine(id, {told}));
    });
}

} // namespace

void bindRowCommands(CommandBook& book, SelectDataFiles& i1, SelectDataFiles& i0)
{
    for (const RowCommand& command : rowCommands) {
        const auto run = command.run;
        book.action(command.i1, [&i1, run](const CmdLine& c) { run(i1, c); });
        book.action(command.i0, [&i0, run](const CmdLine& c) { run(i0, c); });
    }
    book.action(ExCmdEngCopyToI0, [&](const CmdLine&) { i0.takeEnergySetup(i1); });
    for (const RowState& state : rowStates) {
        followRow(book.history(), state.i1, state.argument, i1);
        followRow(book.history(), state.i0, state.argument, i0);
    }
}
