#include "conduct/CalibConductor.h"

#include "batch/BatchLine.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "calibration/CalibCtrl.h"
#include "calibration/CalibWalk.h"
#include "calibration/ShiftMapFile.h"
#include "common/Fault.h"
#include "common/Log.h"
#include "conduct/CursorConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StopReason.h"
#include "conduct/WalkConductor.h"
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

CalibConductor::CalibConductor(const Parts& parts, CursorConductor& cursor, WalkConductor& walks,
                               QObject* parent)
    : QObject(parent)
    , parts_(parts)
    , cursor_(cursor)
    , walks_(walks)
{
    picture().setDeglitchConds(shiftMapDeglitchFactor, shiftMapDeglitchRange);
    connectPanel();
    connect(this, &CalibConductor::shiftMapChanged, &cursor, &CursorConductor::follow);
}

CalibConductor::~CalibConductor()
{
    walks_.stop(WalkConductor::Calibration);
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
    connect(panel, &CalibCtrl::edgeEVChanged, this, &CalibConductor::tellMapReasons);
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
    history_ = &book.history();
    tellHistory();
}

QStringList CalibConductor::mapLines() const
{
    const QString& file = parts_.shiftMap.fileName;
    if (!mapWhole() && !mapStopped())
        return {batchLine(ExCmdCalibClearMap)};
    if (file.isEmpty())
        return {QStringLiteral("# the shift map was not saved")};
    return {batchLine(ExCmdCalibLoadMap, {file})};
}

/// What the panel asks for, once it is done.
void CalibConductor::tellHistory()
{
    const CalibCtrl* const panel = &parts_.panel;
    const std::pair<void (CalibCtrl::*)(), EX_CMD_ID> deeds[] = {
        {&CalibCtrl::clearMap, ExCmdCalibClearMap},
        {&CalibCtrl::formerMap, ExCmdCalibFormerMap},
        {&CalibCtrl::normalizeEShift, ExCmdCalibNormalizeShift}};
    history_->follow([this] { return mapLines(); }, History::InState);
    for (const auto& deed : deeds)
        connect(panel, deed.first, history_, [this, id = deed.second] { history_->add(id); });
    const std::pair<void (CalibCtrl::*)(const QString&), EX_CMD_ID> files[] = {
        {&CalibCtrl::saveEMap, ExCmdCalibSaveMap}, {&CalibCtrl::loadEMap, ExCmdCalibLoadMap}};
    for (const auto& deed : files) {
        connect(panel, deed.first, history_,
                [this, id = deed.second](const QString& file) { history_->add(id, {file}); });
    }
}

void CalibConductor::newStdFile()
{
    if (run_.running)
        qDebug() << "Calibration: the one that runs goes on with the standard of its start";
    stdSpectrum_ = parts_.panel.standard();
    cursor_.showStandard(stdSpectrum_);
    tellMapReasons();
}

void CalibConductor::execCalibration()
{
    if (run_.running) {
        stop();
        return;
    }
    // What comes behind goes by the map, so the batch waits for it.
    if (history_) {
        history_->settle();
        history_->add({batchLine(ExCmdCalibExec), batchLine(ExCmdCalibWait)});
    }
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
    parts_.panel.setRunning(true);
    logTime(QStringLiteral("Start Calibration"));
    replacedMap_ = std::exchange(parts_.shiftMap, ShiftMap());
    parts_.shiftMap.prepare(walk);
    const SharedSource source = parts_.reader.frozenForCalibration();
    const TiffData& first = *source->i1.first();
    parts_.shiftMap.origin = {first.x0, first.y0};
    parts_.shiftMap.standard = stdSpectrum_;
    const CalibConditions c = conditions();
    const auto kernel = std::make_shared<CalibKernel>(comparedStandard(stdSpectrum_, c), c);
    const QString name = QStringLiteral("Calibration");
    parts_.book.begin(shiftMapKey, walk,
                      {name, {parts_.panel.stdFileName()}, source, {{name, kernel}}, {}});
    tellShiftMap();
    Q_EMIT runningChanged(true);
    Q_EMIT calibProgress(walk.progress());
    startWalk(walk, source, *kernel);
}

void CalibConductor::startWalk(const AnalyzeCond& walk, const SharedSource& source,
                               const CalibKernel& kernel)
{
    WalkOrder order{source, walk, {}};
    order.jobs.push_back({kernel.forWorker(), std::make_unique<CalibSink>(
                                                  parts_.shiftMap, picture(), run_.statistics)});
    walks_.run(WalkConductor::Calibration, std::move(order),
               {[this](const WalkRun& run) { positionsTaken(run); }, [this] { finishCalib(); },
                [this](const QString& what) { imagesChange(what); }});
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

QString CalibConductor::whyNotReady() const
{
    if (parts_.data.i1.images.isEmpty())
        return tr("No images: load them in step 1");
    if (stdSpectrum_.isEmpty())
        return tr("No standard: select its file above");
    AnalyzeCond walk;
    if (!parts_.reader.askAnalyzeCond(walk))
        return tr("The selected area lies outside the image");
    return {};
}

void CalibConductor::tellReadiness()
{
    parts_.panel.setReadiness(whyNotReady());
}

bool CalibConductor::mapWhole() const
{
    return !run_.running && !parts_.shiftMap.isEmpty() && !parts_.shiftMap.interrupted;
}

bool CalibConductor::mapStopped() const
{
    return !run_.running && !parts_.shiftMap.isEmpty() && parts_.shiftMap.interrupted;
}

bool CalibConductor::standardChangedSince() const
{
    const XafsSpectrum& then = parts_.shiftMap.standard;
    if (parts_.shiftMap.isEmpty() || then.isEmpty() || stdSpectrum_.isEmpty())
        return false;
    return then.points != stdSpectrum_.points ||
           then.doubleNormalizedPreBase.points != stdSpectrum_.doubleNormalizedPreBase.points;
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

void CalibConductor::stop()
{
    stopCalibration(stopReason());
}

/// The run's own images stay, but its map would no longer belong to what is shown.
void CalibConductor::imagesChange(const QString& what)
{
    const QString why = stopReason(what);
    if (run_.ofBatch && run_.waiting.empty())
        unheardStop_ = why;
    stopCalibration(why);
}

void CalibConductor::stopCalibration(const QString& why)
{
    if (!run_.running)
        return;
    walks_.stop(WalkConductor::Calibration);
    qDebug().noquote()
        << QStringLiteral("Calibration %1: %2").arg(why, run_.statistics.outcomes.text());
    if (run_.begun) {
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
    tellShiftMap();
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

void CalibConductor::positionsTaken(const WalkRun& run)
{
    run_.begun = true;
    const AnalyzeCond next = run.behind();
    if (next.cy < next.y1)
        run_.percent = next.progress();
    if (next.newLine && next.cy < next.y1)
        Q_EMIT calibProgress(next.progress());
    Q_EMIT progressed();
}

void CalibConductor::finishCalib()
{
    run_.percent = 100.0;
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
