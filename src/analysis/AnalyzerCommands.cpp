#include "analysis/Analyzer.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "display/PanelDock.h"
#include "display/XafsView.h"

#include <QDebug>

namespace {

/// The optional use argument of a reference: on unless it is a number not above zero or a word.
bool usesReference(const QString& arg)
{
    return arg.isEmpty() || arg.toUpper() == QLatin1String("VIC") || arg.toDouble() > 0.0;
}

void setReference(Analyzer& panel, const CmdLine& c)
{
    panel.setLCFStd(intArg(c, 0), usesReference(c.arg(4)), doubleArg(c, 2), c.arg(3),
                    onArg(c, 1) ? QStringLiteral("1") : QStringLiteral("0"));
}

} // namespace

void Analyzer::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerShowWindow, [this](const Cmd&) {
        raisePanel(this);
        raisePanel(view());
    });
    book.action(ExCmdAnalyzerSetLCFStd, [this](const Cmd& c) { setReference(*this, c); });
    book.action(ExCmdAnalyzerSelectImage, [this](const Cmd& c) { selectImageById(intArg(c, 0)); });
    book.action(ExCmdAnalyzerSelectImageType, [this](const Cmd& c) {
        qDebug() << "Selecting img Type" << intArg(c, 0);
        setMapKind(intArg(c, 0));
    });
    book.action(ExCmdAnalyzerSelectAnalysisMode, [this](const Cmd& c) { setMode(intArg(c, 0)); });
    book.action(ExCmdAnalyzerZansaOwnWeights, [this](const Cmd& c) { setOwnWeights(onArg(c, 0)); });
    book.action(ExCmdAnalyzerViewNormalize, [this](const Cmd& c) { setNormalize(onArg(c, 0)); });
    book.action(ExCmdAnalyzerViewEnergyCorrection,
                [this](const Cmd& c) { setEnergyCorrection(onArg(c, 0)); });
    bindScaleCommands(book);
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
