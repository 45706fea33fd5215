#include "conduct/ViewConductor.h"

#include "analysis/Analyzer.h"
#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "display/ColorBar.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "maps/MapBook.h"
#include "maps/MapChoice.h"
#include "output/SaveBox.h"

#include <QDebug>

namespace {

/// Share of the value range, at its top and bottom, in which the deglitch filter may act.
constexpr double deglitchRangeRatio = 0.1;

} // namespace

void ViewConductor::connectResults()
{
    connect(&panel_, &Analyzer::changedSelection, this, &ViewConductor::selectedNewRef);
    connect(&panel_, &Analyzer::scalesChanged, this, &ViewConductor::takeScales);
    connect(&panel_, &Analyzer::scaleAsked, this, &ViewConductor::tellScaleOfChosen);
    connect(&book_, &MapBook::changed, this, [this](const MapKey& key) {
        if (chosenResult() == key)
            tellShowDeglitched();
        if (isMapChosen())
            tellCaption();
    });
    connect(&saveBox_, &SaveBox::deglitch, this, &ViewConductor::deglitch);
    connect(&saveBox_, &SaveBox::showDeglitchedToggled, this, &ViewConductor::showDeglitched);
    connect(&saveBox_, &SaveBox::checkVals, this, &ViewConductor::showAnalyzedVals);
}

std::optional<MapKey> ViewConductor::chosenResult() const
{
    return chosenMap(panel_.mapChoice(), book_);
}

Analyzed2DRes* ViewConductor::chosenMapOf() const
{
    const std::optional<MapKey> key = chosenResult();
    return key ? book_.find(*key) : nullptr;
}

void ViewConductor::resultsPainted()
{
    if (box_.choice() != ShowResAnalysisId)
        return;
    map_ = chosenResult();
    box_.area()->setAnalyzedRes(shownMap());
    tellCaption();
    if (shownMap())
        Q_EMIT valuesChanged();
}

void ViewConductor::paintShownResult()
{
    if (box_.choice() != ShowResAnalysisId)
        return;
    setupResAnalysisImage();
    resultsPainted();
}

void ViewConductor::resultsStopped()
{
    if (box_.choice() == ShowResAnalysisId)
        dispImgSelected();
}

void ViewConductor::setupResAnalysisImage()
{
    if (Analyzed2DRes* map = chosenMapOf())
        map->genImg();
}

/// The panel's scales go to all result maps, painted anew.
void ViewConductor::takeScales()
{
    book_.setScales(panel_.scales());
    tellScaleOfChosen();
    dispImgSelected();
}

/// The bar tells the scale of the chosen map, also under an image that is on show.
void ViewConductor::tellScaleOfChosen()
{
    const Analyzed2DRes* const map = chosenMapOf();
    if (map && unattended_)
        box_.bar()->setRange(map->scale().min, map->scale().max);
}

/// The box tells what the selected map shows, and must not make it a picture by that.
void ViewConductor::tellShowDeglitched()
{
    const Analyzed2DRes* const map = chosenMapOf();
    saveBox_.setShowDeglitched(map && map->useProc());
}

void ViewConductor::showDeglitched(bool on)
{
    if (Analyzed2DRes* map = chosenMapOf())
        map->selectProcImg(on);
    else if (on)
        qDebug() << "No map is chosen to be shown deglitched";
    tellShowDeglitched();
    Q_EMIT valuesChanged();
    box_.area()->update();
}

void ViewConductor::deglitch()
{
    Analyzed2DRes* map = chosenMapOf();
    if (!map)
        return;
    // Only the top and bottom tenth of the value range is replaced.
    map->setDeglitchConds(map->deglitchFactor, deglitchRangeRatio);
    map->deglitch();
    box_.area()->update();
}

void ViewConductor::bindFilterCommands(CommandBook& book)
{
    book.action(ExCmdAnalyzerDeglitch,
                [this](const CmdLine& c) { deglitchBy(doubleArg(c, 0), doubleArg(c, 1)); });
    book.action(ExCmdAnalyzerShowDeglitched, [this](const CmdLine& c) {
        const Analyzed2DRes* const map = chosenMapOf();
        if (!map)
            fault(QStringLiteral("No map is chosen to be shown deglitched or as analysed"));
        else if (onArg(c, 0) && !map->procData())
            fault(QStringLiteral("Map %1 holds no deglitched values").arg(map->name));
        else
            showDeglitched(onArg(c, 0));
    });
    History& history = book.history();
    connect(&saveBox_, &SaveBox::deglitch, &history, [this, &history] {
        if (const Analyzed2DRes* const map = chosenMapOf())
            history.add(ExCmdAnalyzerDeglitch,
                        {shortestText(map->deglitchFactor), shortestText(deglitchRangeRatio)});
    });
    connect(&saveBox_, &SaveBox::showDeglitchedToggled, &history,
            [&history](bool on) { history.add(batchLine(ExCmdAnalyzerShowDeglitched, on)); });
}

/// The button's filter with numbers of the caller's.
void ViewConductor::deglitchBy(double factor, double range)
{
    Analyzed2DRes* const map = chosenMapOf();
    if (!map) {
        fault(QStringLiteral("No map is chosen to be deglitched"));
        return;
    }
    const QString why = map->whyNotSaved(true);
    if (!why.isEmpty()) {
        fault(QStringLiteral("Map %1 is not deglitched: %2").arg(map->name, why));
        return;
    }
    map->setDeglitchConds(factor, range);
    map->deglitch();
    box_.area()->update();
}

void ViewConductor::showAnalyzedVals()
{
    const Analyzed2DRes* map = chosenMapOf();
    if (!map || !map->data())
        return;
    qDebug() << "vals of" << map->name;
    const double* const filtered = map->procData() ? map->procData() : map->data();
    const int width = map->stepper.width;
    for (int y = 0; y < map->stepper.height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int at = y * width + x;
            qDebug().noquote() << QString::asprintf("%4d %4d %15.6f %15.6f", x, y, map->data()[at],
                                                    filtered[at]);
        }
    }
}
