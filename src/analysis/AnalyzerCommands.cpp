#include "analysis/Analyzer.h"
#include "analysis/arithmetic/ArithmeticSection.h"
#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfSection.h"
#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "display/PanelDock.h"
#include "display/XafsView.h"

#include <QButtonGroup>
#include <QDebug>

void Analyzer::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerShowWindow, [this](const Cmd&) {
        raisePanel(this);
        raisePanel(view());
    });
    bindChoiceOfAnalyses(book);
    book.onOff(ExCmdAnalyzerViewNormalize, view()->box(XafsView::Normalize));
    book.onOff(ExCmdAnalyzerViewEnergyCorrection, view()->box(XafsView::CorrectEnergy));
    bindFields(book);
    bindScaleCommands(book);
    for (AnalysisSection* section : qAsConst(sections_))
        section->bindCommands(book);
    bindImageCommands(book); // of rows that the sections make
    book.action(ExCmdAnalyzerSaveSpectra, [this](const Cmd& c) { view()->saveData(c.arg(0)); });
    connect(view(), &XafsView::saveAsked, &book.history(),
            [&book](const QString& file) { book.history().add(ExCmdAnalyzerSaveSpectra, {file}); });
}

void Analyzer::bindChoiceOfAnalyses(CommandBook& book)
{
    book.action(ExCmdAnalyzerSelectAnalysisMode,
                [this](const CmdLine& c) { setMode(intArg(c, 0)); });
    book.action(ExCmdAnalyzerUse,
                [this](const CmdLine& c) { useAnalysis(intArg(c, 0), onArg(c, 1)); });
    const QVector<Fold*> folds = foldsByNumber();
    for (int number = 0; number < folds.size(); ++number) {
        const Fold* const fold = folds.at(number);
        if (refGroup_->buttons().contains(fold->chooser()))
            continue; // followed as the choice of a map
        book.history().follow([fold, number] {
            const QString on = fold->isChosen() ? QStringLiteral("1") : QStringLiteral("0");
            return QStringList(batchLine(ExCmdAnalyzerUse, {QString::number(number), on}));
        });
    }
}

void Analyzer::bindImageCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerSelectImage, [this](const Cmd& c) { selectImageById(intArg(c, 0)); });
    book.action(ExCmdAnalyzerSelectRow, [this](const Cmd& c) { selectRow(intArg(c, 0)); });
    book.action(ExCmdAnalyzerShowOutcomes, [this](const Cmd&) { chooseMap({MapKind::Outcomes}); });
    book.action(ExCmdAnalyzerShowOperand,
                [this](const Cmd& c) { arithmetic_->showByNumber(intArg(c, 0)); });
    book.action(ExCmdAnalyzerSelectImageType, [this](const Cmd& c) {
        qDebug() << "Selecting img Type" << intArg(c, 0);
        setMapKind(intArg(c, 0));
    });
    // The command counts the other way round than mapKindIndex().
    book.history().follow(ExCmdAnalyzerSelectImageType,
                          [this] { return QString::number(1 - mapKindIndex()); });
    book.history().follow([this] { return imageLines(); }, History::AllTogether);
}

/// Which map is chosen. One of the arithmetic stands above the others, and any other takes its
/// place.
QStringList Analyzer::imageLines() const
{
    const MapChoice choice = mapChoice();
    QStringList lines;
    if (choice.fixed)
        lines << batchLine(ExCmdAnalyzerSelectImage,
                           {QString::number(rowsAtStart + int(*choice.fixed))});
    else
        lines << batchLine(ExCmdAnalyzerSelectRow, {QString::number(choice.row)});
    if (const std::optional<int> number = arithmetic_->shownNumber())
        lines << batchLine(ExCmdAnalyzerShowOperand, {QString::number(*number)});
    return lines;
}

void Analyzer::bindScaleCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerSetScaleMax, [this](const Cmd& c) {
        setDMutScaleMax(doubleArg(c, 0));
        setRatioScaleMax(doubleArg(c, 0));
    });
    book.action(ExCmdAnalyzerSetScaleMin, [this](const Cmd& c) {
        setDMutScaleMin(doubleArg(c, 0));
        setRatioScaleMin(doubleArg(c, 0));
    });
}
