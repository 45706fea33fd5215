#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "app/Screenshot.h"
#include "batch/BatchCtrl.h"
#include "batch/CommandTable.h"
#include "display/ColorBar.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "output/SaveDataCfg.h"
#include "selection/SelectDataFiles.h"
#include "ui_Body.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDebug>
#include <QDir>

#include <array>

namespace {

int intArg(const CmdLine& cmd, int i)
{
    return cmd.arg(i).toInt();
}

double doubleArg(const CmdLine& cmd, int i)
{
    return cmd.arg(i).toDouble();
}

/// Of the switches, only the value 1 means on.
bool onArg(const CmdLine& cmd, int i)
{
    return intArg(cmd, i) == 1;
}

bool isNewMode(const CmdLine& cmd)
{
    return cmd.arg(0).toUpper() == QLatin1String("NEW");
}

/// Files of a folder by name filters; the folder's text stands directly in front of each name.
QStringList filesOfPattern(const CmdLine& cmd)
{
    const QString folder = cmd.arg(1);
    QStringList files = QDir(folder).entryList(cmd.args.mid(2), QDir::Files);
    for (QString& file : files)
        file.prepend(folder);
    if (files.isEmpty())
        qDebug() << "No files to load:" << cmd.simplified;
    return files;
}

/// The optional use argument of a reference: on unless it is a number not above zero or a word.
bool usesReference(const QString& arg)
{
    return arg.isEmpty() || arg.toUpper() == QLatin1String("VIC") || arg.toDouble() > 0.0;
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
};

} // namespace

/// The batch commands as they act on the main window and its panels.
struct Body::Commands
{
    using Handler = void (*)(Body& body, const CmdLine& cmd);

    /// Who reports the end of a command.
    enum End
    {
        AtOnce,
        Later
    };

    struct Entry
    {
        EX_CMD_ID id;
        Handler run;
        End end = AtOnce;
    };

    struct Slot
    {
        Handler run = nullptr;
        void (*runOnRow)(SelectDataFiles& row, const CmdLine& cmd) = nullptr;
        bool i0 = false;
        End end = AtOnce;
    };
    using Table = std::array<Slot, ExCmdEnd>;

    static void load(Body& b, const CmdLine& c, const QStringList& files, bool i0)
    {
        if (i0)
            b.readI0(files, isNewMode(c), c.ticket);
        else
            b.readI1(files, isNewMode(c), c.ticket);
    }

    // Fewer than two arguments load nothing and report nothing: the run waits for "Stop", on
    // purpose.
    static void loadFiles(Body& b, const CmdLine& c, bool i0)
    {
        if (c.args.size() >= 2)
            load(b, c, c.args.mid(1), i0);
    }
    static void loadPattern(Body& b, const CmdLine& c, bool i0)
    {
        if (c.args.size() >= 2)
            load(b, c, filesOfPattern(c), i0);
    }

    static void setReference(Body& b, const CmdLine& c)
    {
        const int row = intArg(c, 0);
        if (row < 0 || row >= b.analyzer_->refs().size())
            return;
        b.analyzer_->setLCFStd(row, usesReference(c.arg(4)), doubleArg(c, 2), c.arg(3),
                               onArg(c, 1) ? QStringLiteral("1") : QStringLiteral("0"));
    }

    static void selectDispImage(Body& b, const CmdLine& c)
    {
        if (QAbstractButton* button = b.imgSelect_->button(intArg(c, 0)))
            button->setChecked(true);
    }

    static void setColourRange(Body& b, const CmdLine& c)
    {
        qDebug() << "setting cbar" << doubleArg(c, 0) << doubleArg(c, 1);
        b.ui_->CBar->setRange(doubleArg(c, 0), doubleArg(c, 1));
    }

    using B = Body;
    using C = CmdLine;
    static QVector<Entry> stackCommands();
    static QVector<Entry> viewCommands();
    static QVector<Entry> analyzerCommands();
    static QVector<Entry> savingCommands();
    static QVector<Entry> conditionCommands();
    static const Table& table();
};

/// Loading and clearing the stacks.
QVector<Body::Commands::Entry> Body::Commands::stackCommands()
{
    return {
        {ExCmdClearI1Files, [](B& b, const C&) { b.clearI1Files(); }},
        {ExCmdClearI0Files, [](B& b, const C&) { b.clearI0Files(); }},
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
        {ExCmdMovePosition,
         [](B& b, const C& c) { b.ui_->dispA->setRealMousePos(intArg(c, 0), intArg(c, 1)); }},
        {ExCmdCbarSetRange, setColourRange},
        {ExCmdCbarSetAll,
         [](B& b, const C&) {
             qDebug() << "cbar set all";
             b.cBarUpdated();
         }},
        {ExCmdSelectRegion,
         [](B& b, const C& c) {
             b.ui_->dispA->setSelectedArea(intArg(c, 0), intArg(c, 1), intArg(c, 2), intArg(c, 3));
         }},
        {ExCmdXafsViewNormalize, [](B& b, const C& c) { b.xafsView_->setNormalize(onArg(c, 0)); }},
        {ExCmdXafsViewEnergyCorrection,
         [](B& b, const C& c) { b.xafsView_->setEnergyCorrection(onArg(c, 0)); }},
        {ExCmdScaleReset, [](B& b, const C&) { b.ui_->dispA->resetImageViewWindow(); }},
        {ExCmdZoomIn, [](B& b, const C&) { b.ui_->dispA->setViewWAsSelectedArea(); }},
    };
}

/// The analysis panel and its walk.
QVector<Body::Commands::Entry> Body::Commands::analyzerCommands()
{
    return {
        {ExCmdAnalyzerShowWindow, [](B& b, const C&) { b.analyzer_->show(); }},
        {ExCmdAnalyzerSetLCFStd, setReference},
        {ExCmdAnalyzerExecLCF, [](B& b, const C& c) { b.startWalk(c.ticket); }, Later},
        {ExCmdAnalyzerSelectImage,
         [](B& b, const C& c) { b.analyzer_->selectImageById(intArg(c, 0)); }},
        {ExCmdAnalyzerSelectImageType,
         [](B& b, const C& c) {
             qDebug() << "Selecting img Type" << intArg(c, 0);
             b.analyzer_->setMapKind(intArg(c, 0));
         }},
        {ExCmdAnalyzerSetFixedScale,
         [](B& b, const C& c) { b.analyzer_->setFixedScale(onArg(c, 0)); }},
        {ExCmdAnalyzerSetScaleMax,
         [](B& b, const C& c) {
             b.analyzer_->setDMutScaleMax(doubleArg(c, 0));
             b.analyzer_->setRatioScaleMax(doubleArg(c, 0));
         }},
        {ExCmdAnalyzerSetScaleMin,
         [](B& b, const C& c) {
             b.analyzer_->setDMutScaleMin(doubleArg(c, 0));
             b.analyzer_->setRatioScaleMin(doubleArg(c, 0));
         }},
        {ExCmdAnalyzerSetDMutScaleMax,
         [](B& b, const C& c) { b.analyzer_->setDMutScaleMax(doubleArg(c, 0)); }},
        {ExCmdAnalyzerSetDMutScaleMin,
         [](B& b, const C& c) { b.analyzer_->setDMutScaleMin(doubleArg(c, 0)); }},
        {ExCmdAnalyzerSetRatioScaleMax,
         [](B& b, const C& c) { b.analyzer_->setRatioScaleMax(doubleArg(c, 0)); }},
        {ExCmdAnalyzerSetRatioScaleMin,
         [](B& b, const C& c) { b.analyzer_->setRatioScaleMin(doubleArg(c, 0)); }},
        {ExCmdAnalyzerSelectAnalysisMode,
         [](B& b, const C& c) { b.analyzer_->setMode(intArg(c, 0)); }},
    };
}

/// Saving of pictures, spectra and maps, and the end of the program.
QVector<Body::Commands::Entry> Body::Commands::savingCommands()
{
    return {
        {ExCmdSaveImage, [](B& b, const C& c) { b.saveImage(c.arg(0)); }},
        {ExCmdSaveImageWNum, [](B& b, const C& c) { b.saveImageWNum(c.arg(0), c.arg(1)); }},
        {ExCmdSaveAllImages, [](B& b, const C& c) { b.saveAllImages(c.arg(0)); }},
        {ExCmdSaveSpectra, [](B& b, const C& c) { b.xafsView_->saveData(c.arg(0)); }},
        {ExCmdScreenshot, [](B&, const C& c) { saveScreenshot(c.arg(0), c.arg(1)); }},
        {ExCmdSaveData, [](B& b, const C& c) { b.saveData(c.arg(0)); }},
        {ExCmdSaveDataAsTiff,
         [](B& b, const C& c) { b.saveDataAsTiff(c.arg(0), b.analyzer_->firstUsedRow()); }},
        {ExCmdSaveDataCfgShowWindow, [](B& b, const C&) { b.saveDataCfg_->show(); }},
        {ExCmdSaveDataCfgSaveAsTiff,
         [](B& b, const C&) {
             qDebug() << "setting save as tiff";
             b.saveDataCfg_->setSaveAsTiff();
         }},
        {ExCmdSaveDataCfgSaveAsText,
         [](B& b, const C&) {
             qDebug() << "setting save as text";
             b.saveDataCfg_->setSaveAsText();
         }},
        {ExCmdSaveDataCfgTiffFixScale,
         [](B& b, const C& c) { b.saveDataCfg_->setSaveTiffScaleFixed(onArg(c, 0)); }},
        {ExCmdSaveDataCfgTiffScaleMin,
         [](B& b, const C& c) { b.saveDataCfg_->setSaveTiffScaleMin(doubleArg(c, 0)); }},
        {ExCmdSaveDataCfgTiffScaleMax,
         [](B& b, const C& c) { b.saveDataCfg_->setSaveTiffScaleMax(doubleArg(c, 0)); }},
        {ExCmdSaveDataCfgTiffAsAnalyzed,
         [](B& b, const C& c) { b.saveDataCfg_->setSaveTiffAsAnalyzed(onArg(c, 0)); }},
        {ExCmdSaveDataCfgTextAsCsv, [](B& b, const C&) { b.saveDataCfg_->setSaveTextAsCSV(); }},
        {ExCmdSaveDataCfgTextAsSsv, [](B& b, const C&) { b.saveDataCfg_->setSaveTextAsSSV(); }},
        {ExCmdSaveDataCfgTextAsXyz, [](B& b, const C&) { b.saveDataCfg_->setSaveTextAsXYVal(); }},
        {ExCmdSaveDataCfgTextAsVals,
         [](B& b, const C&) { b.saveDataCfg_->setSaveTextAsValValVal(); }},
        // Nobody reports the end: the program ends.
        {ExCmdQuit, [](B& b, const C&) { Q_EMIT b.finishing(); }, Later},
    };
}

/// Conditions of the block spectrum and of its edge.
QVector<Body::Commands::Entry> Body::Commands::conditionCommands()
{
    return {
        {ExCmdSetFluoType, [](B& b, const C& c) { b.ui_->FluoType->setChecked(onArg(c, 0)); }},
        {ExCmdSetBandW,
         [](B& b, const C& c) { b.ui_->HWidth->setText(QString::number(intArg(c, 0))); }},
        {ExCmdSetBandH,
         [](B& b, const C& c) { b.ui_->VWidth->setText(QString::number(intArg(c, 0))); }},
        {ExCmdUseI0, [](B& b, const C& c) { b.ui_->UseI0->setChecked(onArg(c, 0)); }},
        {ExCmdSuggestElm,
         [](B& b, const C& c) {
             b.ui_->UseSuggestElm->setChecked(onArg(c, 0));
             b.refreshEdgeEnergy();
         }},
        {ExCmdSuggestingElm,
         [](B& b, const C& c) {
             b.ui_->SuggestingElm->setText(c.arg(0));
             b.refreshEdgeEnergy();
         }},
        {ExCmdSuggestingEdge,
         [](B& b, const C& c) {
             b.ui_->SuggestingEdge->setCurrentIndex(intArg(c, 0));
             b.refreshEdgeEnergy();
         }},
        {ExCmdSuggestingEdgeEV, [](B& b, const C& c) { b.ui_->SuggestingEeV->setText(c.arg(0)); }},
        {ExCmdSuggestingPreEndEV, [](B& b, const C& c) { b.ui_->DPreE->setText(c.arg(0)); }},
        {ExCmdSuggestingPostStartEV, [](B& b, const C& c) { b.ui_->DPostS->setText(c.arg(0)); }},
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
                                  savingCommands(), conditionCommands()}) {
            for (const Entry& entry : group) {
                t[entry.id].run = entry.run;
                t[entry.id].end = entry.end;
            }
        }
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
    if (slot.runOnRow)
        slot.runOnRow(slot.i0 ? *i0_.row : *i1_.row, cmd);
    else if (slot.run)
        slot.run(*this, cmd);
    else
        qDebug() << "Command not available in this version:" << cmd.word;
    if (slot.end == Commands::AtOnce)
        Q_EMIT finishBatchExec(id, cmd.ticket);
}
