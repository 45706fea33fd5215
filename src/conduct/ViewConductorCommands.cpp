// The commands of the view, and what the history is told of it.
#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "common/SafeInt.h"
#include "conduct/ViewConductor.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"

#include <QDebug>

void ViewConductor::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    ImgDispA* const area = box_.area();
    book.action(ExCmdSelectDispImage, [this](const Cmd& c) {
        if (!box_.setChoice(intArg(c, 0)))
            fault(QStringLiteral("No kind of image has the number ") + c.arg(0));
    });
    book.action(ExCmdSeekImage, [this](const Cmd& c) { seekImage(intArg(c, 0)); });
    book.action(ExCmdCbarSetRange, [this](const Cmd& c) {
        qDebug() << "setting cbar" << doubleArg(c, 0) << doubleArg(c, 1);
        // A range without an extent can't be meant.
        if (doubleArg(c, 0) == doubleArg(c, 1))
            takeAutoRange();
        else
            giveRange(doubleArg(c, 0), doubleArg(c, 1));
    });
    book.action(ExCmdCbarSetAll, [this](const Cmd&) {
        qDebug() << "cbar set all";
        cBarUpdated();
    });
    book.action(ExCmdSelectRegion, [area](const Cmd& c) {
        area->setSelectedArea(intArg(c, 0), intArg(c, 1), intArg(c, 2), intArg(c, 3));
    });
    book.action(ExCmdScaleReset, [area](const Cmd&) { area->resetImageViewWindow(); });
    book.action(ExCmdZoomIn, [area](const Cmd&) { area->setViewWAsSelectedArea(); });
    book.action(ExCmdClearSelection, [area](const Cmd&) { area->clearSelection(); });
    book.action(ExCmdColorMap, [this](const Cmd& c) {
        box_.setRamp(intArg(c, 0));
        if (box_.ramp() != intArg(c, 0))
            fault(QStringLiteral("No colour map has the number ") + c.arg(0));
    });
    book.action(ExCmdCbarRule, [this](const Cmd& c) {
        const int rule = intArg(c, 0);
        if (rule >= 0 && rule < rangeRules)
            setRule(RangeRule(rule));
        else
            fault(QStringLiteral("No rule for the range of colours has the number ") + c.arg(0));
    });
    bindFilterCommands(book);
    tellHistory(book.history());
    tellDeeds(book.history());
}

void ViewConductor::tellHistory(History& history) const
{
    history.follow(ExCmdSelectDispImage, [this] { return QString::number(box_.choice()); });
    history.follow(ExCmdColorMap, [this] { return QString::number(box_.ramp()); });
    history.follow([this] {
        const int no = currentNumber(shownStack());
        return no < 0 || isMapChosen()
                   ? QStringList()
                   : QStringList(batchLine(ExCmdSeekImage, {QString::number(no)}));
    });
    history.follow([this] {
        const ImgDispA& area = *box_.area();
        if (!area.hasSelection())
            return QStringList(batchLine(ExCmdClearSelection));
        QStringList corners;
        for (const QPointF& corner :
             {area.selectedArea().topLeft(), area.selectedArea().bottomRight()})
            corners << QString::number(truncatedInt(corner.x()))
                    << QString::number(truncatedInt(corner.y()));
        return QStringList(batchLine(ExCmdSelectRegion, corners));
    });
}

/// What the image box and the form for saving ask for.
void ViewConductor::tellDeeds(History& history) const
{
    const auto setRange = [&history](double min, double max) {
        history.add(ExCmdCbarSetRange, {shortestText(min), shortestText(max)});
    };
    connect(&box_, &ImageBox::rangeTyped, &history, setRange);
    connect(&box_, &ImageBox::autoAsked, &history, [setRange] { setRange(0.0, 0.0); });
    connect(&box_, &ImageBox::ruleChosen, &history, [&history](RangeRule rule) {
        history.add(ExCmdCbarRule, {QString::number(int(rule))});
    });
    connect(&box_, &ImageBox::setAll, &history, [&history] { history.add(ExCmdCbarSetAll); });
    connect(&box_, &ImageBox::zoomAsked, &history, [&history] { history.add(ExCmdZoomIn); });
    connect(&box_, &ImageBox::wholeAsked, &history, [&history] { history.add(ExCmdScaleReset); });
}
