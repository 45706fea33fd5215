#include "app/BodyCommands.h"

#include "batch/BatchCtrl.h"
#include "batch/CommandTable.h"
#include "common/Fault.h"
#include "common/FileNames.h"
#include "display/ColorBar.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "selection/SelectDataFiles.h"
#include "selection/SpectrumBox.h"

#include <QDebug>
#include <QDir>

namespace {

bool isNewMode(const CmdLine& cmd)
{
    return cmd.arg(0).toUpper() == QLatin1String("NEW");
}

/// Files of a folder by name filters, in their natural order; the folder's text stands directly in
/// front of each name.
QStringList filesOfPattern(const CmdLine& cmd)
{
    const QString folder = cmd.arg(1);
    QStringList files = QDir(folder).entryList(cmd.args.mid(2), QDir::Files, QDir::NoSort);
    sortNaturally(files);
    for (QString& file : files)
        file.prepend(folder);
    if (files.isEmpty())
        fault(QStringLiteral("No files to load: ") + cmd.simplified);
    return files;
}

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

void Body::Commands::load(Body& b, const CmdLine& c, const QStringList& files, bool i0)
{
    if (i0)
        b.readI0(files, isNewMode(c), c);
    else
        b.readI1(files, isNewMode(c), c);
}

// Fewer than two arguments load nothing and report nothing: the run waits for "Stop", on purpose;
// but for one that nobody is there to stop.
bool Body::Commands::namesFiles(Body& b, const CmdLine& c)
{
    if (c.args.size() >= 2)
        return true;
    if (b.batchCtrl_->isUnattended()) {
        fault(QStringLiteral("No files to load: ") + c.simplified);
        b.endCommand(exCmdId(CmdLine(c.word)), c.ticket, {});
    } else {
        fault(QStringLiteral("No files to load, the run waits for \"Stop\": ") + c.simplified);
    }
    return false;
}

void Body::Commands::loadFiles(Body& b, const CmdLine& c, bool i0)
{
    if (namesFiles(b, c))
        load(b, c, c.args.mid(1), i0);
}

void Body::Commands::loadPattern(Body& b, const CmdLine& c, bool i0)
{
    if (namesFiles(b, c))
        load(b, c, filesOfPattern(c), i0);
}

void Body::Commands::selectDispImage(Body& b, const CmdLine& c)
{
    if (!b.imageBox_->setChoice(intArg(c, 0)))
        fault(QStringLiteral("No kind of image has the number ") + c.arg(0));
}

void Body::Commands::setColourRange(Body& b, const CmdLine& c)
{
    qDebug() << "setting cbar" << doubleArg(c, 0) << doubleArg(c, 1);
    b.imageBox_->bar()->setRange(doubleArg(c, 0), doubleArg(c, 1));
}

/// Loading and clearing the stacks, their energies.
QVector<Body::Commands::Entry> Body::Commands::stackCommands()
{
    return {
        {ExCmdClearI1Files, [](B& b, const C&) { b.clearI1Files(); }},
        {ExCmdClearI0Files, [](B& b, const C&) { b.clearI0Files(); }},
        {ExCmdEngApplyI1, [](B& b, const C&) { b.applyEnergies(b.i1_); }},
        {ExCmdEngApplyI0, [](B& b, const C&) { b.applyEnergies(b.i0_); }},
        {ExCmdLoadI1Files, [](B& b, const C& c) { loadFiles(b, c, false); }, Later},
        {ExCmdLoadI0Files, [](B& b, const C& c) { loadFiles(b, c, true); }, Later},
        {ExCmdLoadI1FilesOfPattern, [](B& b, const C& c) { loadPattern(b, c, false); }, Later},
        {ExCmdLoadI0FilesOfPattern, [](B& b, const C& c) { loadPattern(b, c, true); }, Later},
    };
}

/// The image area, its selection and the colour bar, the spectrum view.
QVector<Body::Commands::Entry> Body::Commands::viewCommands()
{
    return {
        {ExCmdSelectDispImage, selectDispImage},
        {ExCmdSeekImage, [](B& b, const C& c) { b.seekImage(intArg(c, 0)); }},
        {ExCmdMovePosition, [](B& b, const C& c) { b.moveCursor(intArg(c, 0), intArg(c, 1)); }},
        {ExCmdCbarSetRange, setColourRange},
        {ExCmdCbarSetAll,
         [](B& b, const C&) {
             qDebug() << "cbar set all";
             b.cBarUpdated();
         }},
        {ExCmdSelectRegion,
         [](B& b, const C& c) {
             b.imageBox_->area()->setSelectedArea(intArg(c, 0), intArg(c, 1), intArg(c, 2),
                                                  intArg(c, 3));
         }},
        {ExCmdXafsViewNormalize, [](B& b, const C& c) { b.xafsView_->setNormalize(onArg(c, 0)); }},
        {ExCmdXafsViewEnergyCorrection,
         [](B& b, const C& c) { b.xafsView_->setEnergyCorrection(onArg(c, 0)); }},
        {ExCmdScaleReset, [](B& b, const C&) { b.imageBox_->area()->resetImageViewWindow(); }},
        {ExCmdZoomIn, [](B& b, const C&) { b.imageBox_->area()->setViewWAsSelectedArea(); }},
    };
}

/// Conditions of the block spectrum and of its edge.
QVector<Body::Commands::Entry> Body::Commands::conditionCommands()
{
    return {
        {ExCmdSetFluoType, [](B& b, const C& c) { b.spectrumBox_->setFluorescence(onArg(c, 0)); }},
        {ExCmdSetBandW, [](B& b, const C& c) { b.spectrumBox_->setHalfX(intArg(c, 0)); }},
        {ExCmdSetBandH, [](B& b, const C& c) { b.spectrumBox_->setHalfY(intArg(c, 0)); }},
        {ExCmdUseI0, [](B& b, const C& c) { b.spectrumBox_->setUseI0(onArg(c, 0)); }},
        {ExCmdSuggestElm, [](B& b, const C& c) { b.spectrumBox_->setUseSuggestion(onArg(c, 0)); }},
        {ExCmdSuggestingElm, [](B& b, const C& c) { b.spectrumBox_->setElement(c.arg(0)); }},
        {ExCmdSuggestingEdge,
         [](B& b, const C& c) {
             const int edge = intArg(c, 0);
             if (!b.spectrumBox_->setEdge(edge))
                 fault(QStringLiteral("No edge has the number %1: %2").arg(edge).arg(c.simplified));
         }},
        {ExCmdSuggestingEdgeEV, [](B& b, const C& c) { b.spectrumBox_->setEdgeEnergy(c.arg(0)); }},
        {ExCmdSuggestingPreEndEV, [](B& b, const C& c) { b.spectrumBox_->setPreEnd(c.arg(0)); }},
        {ExCmdSuggestingPostStartEV,
         [](B& b, const C& c) { b.spectrumBox_->setPostStart(c.arg(0)); }},
        {ExCmdSuggestingThJump,
         [](B& b, const C& c) { b.spectrumBox_->setThJump(doubleArg(c, 0)); }},
        {ExCmdHoldGap, [](B& b, const C& c) { b.spectrumBox_->setHoldGap(onArg(c, 0)); }},
        {ExCmdSuggestForRefs,
         [](B& b, const C& c) { b.spectrumBox_->setSuggestForRefs(onArg(c, 0)); }},
        {ExCmdSetI0DarkArea, [](B& b, const C&) { b.setI0DarkArea(); }},
        {ExCmdSetI1DarkArea, [](B& b, const C&) { b.setI1DarkArea(); }},
        {ExCmdClearI0DarkArea, [](B& b, const C&) { b.clearI0DarkArea(); }},
        {ExCmdClearI1DarkArea, [](B& b, const C&) { b.clearI1DarkArea(); }},
    };
}

const Body::Commands::Table& Body::Commands::table()
{
    static const Table byId = [] {
        Table t;
        for (const auto& group : {stackCommands(), viewCommands(), analyzerCommands(),
                                  calibrationCommands(), savingCommands(), conditionCommands()}) {
            for (const Entry& entry : group) {
                t[entry.id].run = entry.run;
                t[entry.id].end = entry.end;
            }
        }
        for (const Entry& entry : conditionCommands())
            t[entry.id].changesSpectrum = true;
        for (const RowCommand& command : rowCommands) {
            t[command.i0].runOnRow = t[command.i1].runOnRow = command.run;
            t[command.i0].i0 = true;
        }
        return t;
    }();
    return byId;
}

void Body::execCmdSlot(const CmdLine& cmd, bool inRem)
{
    if (closing_)
        return;
    if (inRem) {
        Q_EMIT finishBatchExec(ExCmdNone, cmd.ticket);
        return;
    }
    const CmdLine word(cmd.word);
    const EX_CMD_ID id = exCmdId(word);
    if (id == ExCmdNone) {
        if (!::isKeyword(word))
            batchCtrl_->showCmdErr(cmd);
        Q_EMIT finishBatchExec(ExCmdNone, cmd.ticket);
        return;
    }
    const Commands::Slot& slot = Commands::table()[id];
    Q_EMIT commandStarted(cmd);
    if (slot.end == Commands::Later && cmd.ticket != 0)
        commandsUnderWay_.insert(cmd.ticket, cmd);
    runCommand(id, cmd);
    if (slot.end == Commands::AtOnce)
        Q_EMIT finishBatchExec(id, cmd.ticket);
}

/// Ends the program when nothing is under way any more: an unattended run is through.
void Body::finishWhenIdle()
{
    finishesWhenIdle_ = true;
    if (!calibration_.running && !closing_)
        Q_EMIT finishing();
}

/// Does what the command says, and records what can't be done.
void Body::runCommand(EX_CMD_ID id, const CmdLine& cmd)
{
    const FaultCollector faults(failurePlace(cmd));
    const Commands::Slot& slot = Commands::table()[id];
    if (slot.runOnRow)
        slot.runOnRow(slot.i0 ? *i0_.row : *i1_.row, cmd);
    else if (slot.run)
        slot.run(*this, cmd);
    else
        fault(QStringLiteral("Command not available in this version: ") + cmd.word);
    if (slot.changesSpectrum)
        refreshCursor();
    batchCtrl_->commandFailed(cmd, faults.faults());
}

/// Records what became of a command whose end comes after its start, and reports the end to the
/// batch that waits for it. Ticket 0, of what a click started, reports nothing.
void Body::endCommand(EX_CMD_ID id, int ticket, const QStringList& faults)
{
    if (ticket == 0 || closing_)
        return;
    batchCtrl_->commandFailed(commandsUnderWay_.take(ticket), faults);
    Q_EMIT finishBatchExec(id, ticket);
}
