#include "selection/RowCommands.h"

#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
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
};

} // namespace

void bindRowCommands(CommandBook& book, SelectDataFiles& i1, SelectDataFiles& i0)
{
    for (const RowCommand& command : rowCommands) {
        const auto run = command.run;
        book.action(command.i1, [&i1, run](const CmdLine& c) { run(i1, c); });
        book.action(command.i0, [&i0, run](const CmdLine& c) { run(i0, c); });
    }
}
