#include "conduct/DarkConductor.h"

#include "batch/BatchLine.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "common/Cfg.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "common/SafeInt.h"
#include "common/Settings.h"
#include "common/TextItems.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "image/Measurement.h"
#include "selection/DataBox.h"
#include "selection/SelectDataFiles.h"

#include <QDebug>

DarkConductor::DarkConductor(Measurement& data, const SourceReader& reader, DataBox& box,
                             ImageBox& imageBox, XafsView& bgView, StackConductor& stacks,
                             QObject* parent)
    : QObject(parent)
    , data_(data)
    , reader_(reader)
    , box_(box)
    , imageBox_(imageBox)
    , bgView_(bgView)
{
    connectBox();
    for (ImageStack* stack : {&data_.i1, &data_.i0})
        connectStack(*stack);
    connect(&stacks, &StackConductor::imageCame, this,
            [this](ImageStack* stack) { fillDarkAverages(*stack); });
    connect(&stacks, &StackConductor::loaded, this,
            [this](ImageStack* stack) { refillDarkAverages(*stack); });
}

void DarkConductor::connectBox()
{
    const SelectDataFiles* const i1 = box_.i1Row();
    const SelectDataFiles* const i0 = box_.i0Row();
    connect(i1, &SelectDataFiles::setDarkArea, this, &DarkConductor::setI1DarkArea);
    connect(i0, &SelectDataFiles::setDarkArea, this, &DarkConductor::setI0DarkArea);
    connect(i1, &SelectDataFiles::updateDarkArea, this, &DarkConductor::clearUpdateI1DarkArea);
    connect(i0, &SelectDataFiles::updateDarkArea, this, &DarkConductor::clearUpdateI0DarkArea);
    connect(i1, &SelectDataFiles::clearDarkArea, this, &DarkConductor::clearI1DarkArea);
    connect(i0, &SelectDataFiles::clearDarkArea, this, &DarkConductor::clearI0DarkArea);
    connect(&box_, &DataBox::darkSelected, this, &DarkConductor::selectedDark);
    connect(&box_, &DataBox::darkCleared, this, &DarkConductor::clearDark);
    connect(&box_, &DataBox::bgSelected, this, &DarkConductor::selectedBG);
    connect(&box_, &DataBox::bgCleared, this, &DarkConductor::clearedBG);
    connect(&box_, &DataBox::totalI0ofI1Selected, this, &DarkConductor::newTotalI0ofI1File);
    connect(&box_, &DataBox::totalI0ofI0Selected, this, &DarkConductor::newTotalI0ofI0File);
    connect(&box_, &DataBox::totalI0ofI1Cleared, this, [this] {
        data_.totalI0ofI1 = XafsSpectrum();
        Q_EMIT conditionsChanged();
    });
    connect(&box_, &DataBox::totalI0ofI0Cleared, this,
            [this] { data_.totalI0ofI0 = XafsSpectrum(); });
}

/// An exposure that has another text scales the dark counts anew.
void DarkConductor::connectStack(ImageStack& stack)
{
    const auto changed = [this, &stack] { refill(stack); };
    connect(&reader_.rowOf(stack), &SelectDataFiles::exposureChanged, this, changed);
    connect(&box_, &DataBox::darkExposureChanged, this, changed);
}

void DarkConductor::bindCommands(CommandBook& book)
{
    book.action(ExCmdSetI0DarkArea, [this](const CmdLine&) { setI0DarkArea(); });
    book.action(ExCmdSetI1DarkArea, [this](const CmdLine&) { setI1DarkArea(); });
    book.action(ExCmdClearI0DarkArea, [this](const CmdLine&) { clearI0DarkArea(); });
    book.action(ExCmdClearI1DarkArea, [this](const CmdLine&) { clearI1DarkArea(); });
    book.action(ExCmdUpdateI0DarkArea, [this](const CmdLine&) { clearUpdateI0DarkArea(); });
    book.action(ExCmdUpdateI1DarkArea, [this](const CmdLine&) { clearUpdateI1DarkArea(); });
    book.action(ExCmdDarkFile, [this](const CmdLine& c) {
        if (c.args.isEmpty())
            clearDark();
        else
            selectedDark(c.arg(0));
    });
    tellHistory(book.history());
}

QStringList DarkConductor::areaLines(const ImageStack& stack) const
{
    const bool ofI1 = &stack == &data_.i1;
    if (!stack.darkAreaOn)
        return {batchLine(ofI1 ? ExCmdClearI1DarkArea : ExCmdClearI0DarkArea)};
    const T20& area = stack.darkArea;
    QStringList corners;
    for (const double at : {area.x(), area.y(), area.x() + area.width(), area.y() + area.height()})
        corners << QString::number(truncatedInt(at));
    return {batchLine(ExCmdSelectRegion, corners),
            batchLine(ofI1 ? ExCmdSetI1DarkArea : ExCmdSetI0DarkArea)};
}

/// What the rows ask for, once it is done.
void DarkConductor::tellHistory(History& history) const
{
    using Row = SelectDataFiles;
    const struct
    {
        void (Row::*asked)();
        EX_CMD_ID i1, i0;
    } deeds[] = {{&Row::setDarkArea, ExCmdSetI1DarkArea, ExCmdSetI0DarkArea},
                 {&Row::updateDarkArea, ExCmdUpdateI1DarkArea, ExCmdUpdateI0DarkArea},
                 {&Row::clearDarkArea, ExCmdClearI1DarkArea, ExCmdClearI0DarkArea}};
    for (const auto& deed : deeds) {
        connect(box_.i1Row(), deed.asked, &history, [&history, id = deed.i1] { history.add(id); });
        connect(box_.i0Row(), deed.asked, &history, [&history, id = deed.i0] { history.add(id); });
    }
    // The file brings an exposure of its own.
    const auto darkLines = [this] {
        const QString file = data_.dark ? data_.dark->fileName : QString();
        return QStringList{batchLine(ExCmdDarkFile, {file}),
                           batchLine(ExCmdDarkExposure, {shortestText(box_.darkExposure())})};
    };
    history.follow(darkLines, History::AllTogether);
    for (const ImageStack* stack : {&data_.i1, &data_.i0})
        history.follow([this, stack] { return areaLines(*stack); }, History::InState);
}

QStringList DarkConductor::loadDefaultErrPoints(const QString& place)
{
    const QString path = theCfg().upperValue(QStringLiteral("ERRPOINTS"));
    if (path.isEmpty())
        return {};
    const FaultCollector faults(place);
    ErrPoints& list = defaultErrPoints();
    list.active = list.readFile(path, 0);
    return faults.faults();
}

double DarkConductor::darkLevel(const ImageStack& stack, int image, int x, int y) const
{
    double level = stack.darkAreaOn ? stack.darkAvg.value(image, 0.0) : 0.0;
    if (data_.dark)
        level += data_.dark->pixel(x, y) * reader_.darkFactor(stack);
    return level;
}

void DarkConductor::selectedDark(const QString& fname)
{
    clearDark();
    const auto image = std::make_shared<TiffData>();
    if (!image->readFile(fname, defaultErrPoints()))
        return;
    box_.showDark(fname, image->exposureMs);
    data_.dark = image;
    refillDarkAverages(data_.i1);
    refillDarkAverages(data_.i0);
    Q_EMIT conditionsChanged();
}

void DarkConductor::clearDark()
{
    data_.dark.reset();
    box_.clearDarkName();
    refillDarkAverages(data_.i1);
    refillDarkAverages(data_.i0);
    Q_EMIT conditionsChanged();
}

void DarkConductor::setDarkArea(ImageStack& stack)
{
    ImgDispA& area = *imageBox_.area();
    if (!area.hasSelection()) {
        fault(QStringLiteral("Dark area not set: no area is selected in the image"));
        return;
    }
    stack.darkArea = area.selectedArea();
    stack.darkAreaOn = true;
    reader_.rowOf(stack).darkArea(stack.darkArea);
    // The selection was drawn for the dark area alone; the user's earlier one comes back.
    area.recallOldSelectedArea();
    refill(stack);
}

void DarkConductor::fillDarkAverages(ImageStack& stack)
{
    stack.fillDarkAverages(data_.dark.get(), reader_.darkFactor(stack));
}

void DarkConductor::refillDarkAverages(ImageStack& stack)
{
    stack.refillDarkAverages(data_.dark.get(), reader_.darkFactor(stack));
}

void DarkConductor::refill(ImageStack& stack)
{
    refillDarkAverages(stack);
    Q_EMIT conditionsChanged();
}

void DarkConductor::clearDarkArea(ImageStack& stack)
{
    stack.darkAreaOn = false;
    stack.darkAvg.clear();
    reader_.rowOf(stack).noDarkArea();
    Q_EMIT conditionsChanged();
}

void DarkConductor::setI0DarkArea()
{
    setDarkArea(data_.i0);
}

void DarkConductor::setI1DarkArea()
{
    setDarkArea(data_.i1);
}

void DarkConductor::updateI0DarkArea()
{
    fillDarkAverages(data_.i0);
}

void DarkConductor::updateI1DarkArea()
{
    fillDarkAverages(data_.i1);
}

void DarkConductor::clearUpdateI0DarkArea()
{
    refill(data_.i0);
}

void DarkConductor::clearUpdateI1DarkArea()
{
    refill(data_.i1);
}

void DarkConductor::clearI0DarkArea()
{
    clearDarkArea(data_.i0);
}

void DarkConductor::clearI1DarkArea()
{
    clearDarkArea(data_.i1);
}

void DarkConductor::clearedBG()
{
    bgView_.setSpectrum(XafsSpectrum());
}

void DarkConductor::selectedBG(const QString& fname)
{
    XafsSpectrum fresh;
    if (!fresh.load(fname)) {
        fault(QStringLiteral("No background spectrum in ") + quoted(fname));
        box_.clearBg();
        return;
    }
    bgView_.setSpectrum(fresh);
    bgView_.resetXScale();
}

/// A file that fails leaves nothing of it: what is shown is what is calculated with.
bool DarkConductor::loadTotalI0(XafsSpectrum& total, const QString& fname)
{
    XafsSpectrum fresh;
    if (!fresh.load(fname)) {
        fault(QStringLiteral("No total I0 spectrum in ") + quoted(fname));
        return false;
    }
    total = fresh;
    for (int i = 0; i < total.size(); ++i)
        qDebug() << total.x(i) << total.i0Spectrum.y(i);
    return true;
}

void DarkConductor::newTotalI0ofI1File(const QString& fname)
{
    if (!loadTotalI0(data_.totalI0ofI1, fname))
        box_.clearTotalI0ofI1();
    Q_EMIT conditionsChanged();
}

void DarkConductor::newTotalI0ofI0File(const QString& fname)
{
    // Kept and logged; no calculation reads it, on purpose.
    if (!loadTotalI0(data_.totalI0ofI0, fname))
        box_.clearTotalI0ofI0();
}

void DarkConductor::useErrPMaskToggled(bool f)
{
    defaultErrPoints().active = f;
}
