#include "analysis/Analyzer.h"
#include "analysis/lcf/LcfSection.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "display/PanelDock.h"
#include "display/XafsView.h"

#include <QDebug>

void Analyzer::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerShowWindow, [this](const Cmd&) {
        raisePanel(this);
        raisePanel(view());
    });
    book.action(ExCmdAnalyzerSelectAnalysisMode, [this](const Cmd& c) { setMode(intArg(c, 0)); });
    book.action(ExCmdAnalyzerViewNormalize, [this](const Cmd& c) { setNormalize(onArg(c, 0)); });
    book.action(ExCmdAnalyzerViewEnergyCorrection,
                [this](const Cmd& c) { setEnergyCorrection(onArg(c, 0)); });
    bindImageCommands(book);
    bindScaleCommands(book);
    for (AnalysisSection* section : qAsConst(sections_))
        section->bindCommands(book);
}

void Analyzer::bindImageCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerSelectImage, [this](const Cmd& c) { selectImageById(intArg(c, 0)); });
    book.action(ExCmdAnalyzerSelectRow, [this](const Cmd& c) { selectRow(intArg(c, 0)); });
    book.action(ExCmdAnalyzerShowOutcomes,
                [this](const Cmd&) { chooseMap({MapKind::Outcomes}); });
    book.action(ExCmdAnalyzerSelectImageType, [this](const Cmd& c) {
        qDebug() << "Selecting img Type" << intArg(c, 0);
        setMapKind(intArg(c, 0));
    });
}

void Analyzer::bindScaleCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerSetFixedScale, [this](const Cmd& c) { setFixedScale(onArg(c, 0)); });
    book.action(ExCmdAnalyzerSetScaleMax, [this](const Cmd& c) {
        setDMutScaleMax(doubleArg(c, 0));
        setRatioScaleMax(doubleArg(c, 0));
    });
    book.action(ExCmdAnalyzerSetScaleMin, [this](const Cmd& c) {
        setDMutScaleMin(doubleArg(c, 0));
        setRatioScaleMin(doubleArg(c, 0));
    });
    book.action(ExCmdAnalyzerSetDMutScaleMax,
                [this](const Cmd& c) { setDMutScaleMax(doubleArg(c, 0)); });
    book.action(ExCmdAnalyzerSetDMutScaleMin,
                [this](const Cmd& c) { setDMutScaleMin(doubleArg(c, 0)); });
    book.action(ExCmdAnalyzerSetRatioScaleMax,
                [this](const Cmd& c) { setRatioScaleMax(doubleArg(c, 0)); });
    book.action(ExCmdAnalyzerSetRatioScaleMin,
                [this](const Cmd& c) { setRatioScaleMin(doubleArg(c, 0)); });
}
