#include "conduct/CalibConductor.h"

#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "calibration/CalibCtrl.h"
#include "calibration/ShiftMapFile.h"
#include "common/Fault.h"
#include "common/Log.h"
#include "conduct/CursorConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "conduct/StopReason.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"
#include "selection/SpectrumBox.h"

#include <QDebug>

#include <cmath>
#include <utility>

namespace {

constexpr double shiftMapDeglitchRange = 0.9;
constexpr double shiftMapDeglitchFactor = 2.0;
} // namespace

CalibConductor::CalibConductor(const Parts& parts, StackConductor& stacks, CursorConductor& cursor,
                               QObject* parent)
    : QObject(parent)
    , parts_(parts)
    , cursor_(cursor)
{
    picture().setDeglitchConds(shiftMapDeglitchFactor, shiftMapDeglitchRange);
    connectPanel();
    connect(this, &CalibConductor::shiftMapChanged, &cursor, &CursorConductor::follow);
    connect(&stacks, &StackConductor::aboutToChange, this,
            [this](const ImageStack* stack, const QString& what) { stackChanges(*stack, what); });
    // Through the event loop, so that the window lives between the points.
    connect(this, &CalibConductor::doCalibNextPoint, this, &CalibConductor::calibNextPoint,
            Qt::QueuedConnection);
    connect(this, &CalibConductor::doFinishCalib, this, &CalibConductor::finishCalib);
}

void CalibConductor::connectPanel()
{
    CalibCtrl* const panel = &parts_.panel;
    connect(panel, &CalibCtrl::newStdFileLoaded, this, &CalibConductor::newStdFile);
    connect(panel, &CalibCtrl::standardChanged, this, &CalibConductor::newStdFile);
    connect(panel, &CalibCtrl::execCalibration, this, &CalibConductor::execCalibration);
    connect(panel, &CalibCtrl::saveEMap, this,
            qOverload<const QString&>(&CalibConductor::saveEMap));
    connect(panel, &CalibCtrl::loadEMap, this, &CalibConductor::loadEMap);
    connect(panel, &CalibCtrl::clearMap, this, &CalibConductor::clearShiftMap);
    connect(panel, &CalibCtrl::formerMap, this, &CalibConductor::swapFormerMap);
    connect(panel, &CalibCtrl::normalizeEShift, this, &CalibConductor::normalizeEShift);
    connect(this, &CalibConductor::calibProgress, panel, &CalibCtrl::progress);
}

void CalibConductor::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    // The calibration goes on behind the reported end; calib_wait waits for it.
    book.action(ExCmdCalibExec, [this](const Cmd&) { startCalibration(true); });
    book.later(ExCmdCalibWait, [this](const Cmd&, CommandEnd end) { waitForEnd(std::move(end)); });
    book.action(ExCmdCalibLoadMap, [this](const Cmd& c) {
        EMPHeader header;
        loadMap(c.arg(0), picture(), header);
    });
    book.action(ExCmdCalibClearMap, [this](const Cmd&) { clearShiftMap(); });
    book.action(ExCmdCalibSaveMap, [this](const Cmd& c) { saveEMap(c.arg(0)); });
    book.action(ExCmdCalibNormalizeShift, [this](const Cmd&) { normalizeEShift(); });
    book.action(ExCmdCalibFormerMap, [this](const Cmd&) { swapFormerMap(); });
}

void CalibConductor::newStdFile()
{
    if (run_.running)
        qDebug() << "Calibration: the one that runs goes on with the standard of its start";
    stdSpectrum_ = parts_.panel.standard();
    cursor_.showStandard(stdSpectrum_);
}

void CalibConductor::execCalibration()
{
    if (run_.running)
        stop();
    else
        startCalibration(false);
}

/// Starts a calibration in place of the one that runs.
void CalibConductor::startCalibration(bool ofBatch)
{
    stop();
    tellUnheardStop();
    AnalyzeCond walk;
    const QString why = calibrationFault(walk);
    if (!why.isEmpty()) {
        fault(QStringLiteral("Calibration not started: ") + why);
        return;
    }
    tellCalibrationDoubts();
    run_ = Run();
    run_.running = true;
    run_.ofBatch = ofBatch;
    run_.source = parts_.reader.frozenForCalibration();
    run_.conditions = conditions();
    run_.standard = comparedStandard(stdSpectrum_, run_.conditions);
    run_.at = walk;
    parts_.panel.setRunning(true);
    logTime(QStringLiteral("Start Calibration"));
    replacedMap_ = std::exchange(parts_.shiftMap, ShiftMap());
    parts_.shiftMap.prepare(walk);
    const TiffData& first = *run_.source->i1.first();
    parts_.shiftMap.origin = {first.x0, first.y0};
    parts_.book.begin(
        shiftMapKey, walk,
        {QStringLiteral("Calibration"), {parts_.panel.stdFileName()}, run_.source, {}});
    tellShiftMap();
    Q_EMIT runningChanged(true);
    Q_EMIT doCalibNextPoint();
}

/// Fills walk with the one over the selected area; why there is nothing to compare, or an empty
/// text.
QString CalibConductor::calibrationFault(AnalyzeCond& walk) const
{
    QString why = parts_.reader.areaFault(walk);
    if (why.isEmpty() && stdSpectrum_.isEmpty())
        return QStringLiteral("no standard is loaded");
    return why;
}

/// What makes the shifts meaningless though nothing fails.
void CalibConductor::tellCalibrationDoubts() const
{
    const CalibConditions c = conditions();
    const bool searches = c.step > 0.0 && c.step >= c.minStep && std::isfinite(c.range);
    if (c.method == CalibMethod::InnerProduct && !searches)
        qDebug() << "Calibration: range" << c.range << "step" << c.step << "and minimum step"
                 << c.minStep << "allow no search, all shifts are 0";
}

CalibConditions CalibConductor::conditions() const
{
    const SpectrumSettings settings = parts_.spectrumBox.settings();
    CalibConditions c = parts_.panel.conditions(settings.elm);
    c.holdGap = settings.holdGap;
    return c;
}

/// Whether a position of the walk is done.
bool CalibConductor::hasBegun() const
{
    AnalyzeCond first = run_.at;
    first.start();
    return first.cx != run_.at.cx || first.cy != run_.at.cy;
}

void CalibConductor::stop()
{
    stopCalibration(stopReason());
}

/// The run's own images stay, but its map would no longer belong to what is shown.
void CalibConductor::stackChanges(const ImageStack& stack, const QString& what)
{
    if (!run_.running || !parts_.reader.holds(*run_.source, stack))
        return;
    const QString why = stopReason(what);
    if (run_.ofBatch && run_.waiting.empty())
        unheardStop_ = why;
    stopCalibration(why);
}

void CalibConductor::stopCalibration(const QString& why)
{
    if (!run_.running)
        return;
    qDebug().noquote()
        << QStringLiteral("Calibration %1: %2").arg(why, run_.statistics.outcomes.text());
    if (hasBegun()) {
        picture().genImg();
        parts_.shiftMap.interrupted = true;
        parts_.book.end(shiftMapKey, false, run_.statistics.outcomes);
        tellShiftMap();
    } else {
        putInForce(replacedMap_);
        replacedMap_ = ShiftMap();
    }
    leaveCalibration(why);
}

/// Tells the batch commands that wait why it ended; empty for its end.
void CalibConductor::leaveCalibration(const QString& why)
{
    run_.running = false;
    run_.source.reset();
    keepAsFormer(replacedMap_);
    replacedMap_ = ShiftMap();
    parts_.panel.setRunning(false);
    std::vector<CommandEnd> waiting = std::exchange(run_.waiting, {});
    Q_EMIT shiftMapChanged();
    Q_EMIT runningChanged(false);
    for (CommandEnd& end : waiting)
        end.failed(why.isEmpty() ? QStringList() : QStringList(why));
}

void CalibConductor::waitForEnd(CommandEnd end)
{
    if (run_.running) {
        run_.waiting.push_back(std::move(end));
        return;
    }
    const QString why = std::exchange(unheardStop_, QString());
    end.failed(why.isEmpty() ? QStringList() : QStringList(why));
}

void CalibConductor::tellUnheardStop()
{
    const QString why = std::exchange(unheardStop_, QString());
    run_.ofBatch = false; // of one that still runs, too: nobody will ask
    if (!why.isEmpty())
        fault(QStringLiteral("The calibration was ") + why);
}

void CalibConductor::calibNextPoint()
{
    if (!run_.running)
        return;
    AnalyzeCond& at = run_.at;
    if (at.newLine)
        Q_EMIT calibProgress(at.progress());
    const BlockShift found =
        blockShift(run_.source->mu(at.cx, at.cy), run_.standard, run_.conditions);
    if (run_.statistics.take({at.cx, at.cy}, found)) {
        parts_.shiftMap.set(at, found.shift);
        picture().setData(at.cx, at.cy, at.halfX, at.halfY, found.shift);
    } else {
        parts_.shiftMap.leaveOut(at);
        picture().leaveOut(at.cx, at.cy, at.halfX, at.halfY);
    }
    if (at.next())
        Q_EMIT doCalibNextPoint();
    else
        Q_EMIT doFinishCalib();
    Q_EMIT progressed();
}

void CalibConductor::finishCalib()
{
    Q_EMIT calibProgress(100.0);
    run_.statistics.close(parts_.shiftMap.walk, picture());
    parts_.shiftMap.statistics = run_.statistics;
    parts_.book.end(shiftMapKey, true, run_.statistics.outcomes);
    tellShiftMap();
    picture().genImg();
    logTime(QStringLiteral("End Calibration   "));
    qDebug().noquote() << "Calibration:" << run_.statistics.outcomes.text();
    leaveCalibration({});
}
