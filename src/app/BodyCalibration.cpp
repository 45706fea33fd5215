#include "app/Body.h"

#include "batch/BatchCtrl.h"
#include "calibration/CalibCtrl.h"
#include "common/Fault.h"
#include "common/Log.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "selection/SpectrumBox.h"

#include <QDebug>

#include <cmath>
#include <utility>

void Body::setupCalibration()
{
    windows_.append(calibCtrl_);
    connect(calibCtrl_, &CalibCtrl::newStdFileLoaded, this, &Body::newStdFile);
    connect(calibCtrl_, &CalibCtrl::standardChanged, this, &Body::newStdFile);
    connect(calibCtrl_, &CalibCtrl::execCalibration, this, &Body::execCalibration);
    connect(calibCtrl_, &CalibCtrl::saveEMap, this, qOverload<const QString&>(&Body::saveEMap));
    connect(calibCtrl_, &CalibCtrl::loadEMap, this, &Body::loadEMap);
    connect(calibCtrl_, &CalibCtrl::clearMap, this, &Body::clearShiftMap);
    connect(calibCtrl_, &CalibCtrl::formerMap, this, &Body::swapFormerMap);
    connect(calibCtrl_, &CalibCtrl::normalizeEShift, this, &Body::normalizeEShift);
    connect(calibCtrl_, &CalibCtrl::targetBackgroundChanged, this, &Body::refreshCursor);
    connect(this, &Body::calibProgress, calibCtrl_, &CalibCtrl::progress);
    // Through the event loop, so that the window lives between the points.
    connect(this, &Body::doCalibNextPoint, this, &Body::calibNextPoint, Qt::QueuedConnection);
    connect(this, &Body::doFinishCalib, this, &Body::finishCalib);
}

void Body::newStdFile()
{
    if (calibration_.running)
        qDebug() << "Calibration: the one that runs goes on with the standard of its start";
    stdSpectrum_ = calibCtrl_->standard();
    xafsView_->setStdSpectrum(stdSpectrum_);
    refreshCursor();
}

void Body::execCalibration()
{
    if (calibration_.running)
        stopCalibration();
    else
        startCalibration();
}

/// Starts a calibration in place of the one that runs.
void Body::startCalibration()
{
    stopCalibration();
    AnalyzeCond walk;
    const QString why = calibrationFault(walk);
    if (!why.isEmpty()) {
        fault(QStringLiteral("Calibration not started: ") + why);
        return;
    }
    tellCalibrationDoubts();
    calibration_.running = true;
    calibration_.statistics = CalibStatistics();
    calibration_.source = reader_->frozenForCalibration();
    calibration_.conditions = calibConditions();
    calibration_.standard = comparedStandard(stdSpectrum_, calibration_.conditions);
    calibration_.at = walk;
    calibCtrl_->setRunning(true);
    logTime(QStringLiteral("Start Calibration"));
    replacedMap_ = std::exchange(shiftMap_, ShiftMap());
    shiftMap_.prepare(walk);
    const TiffData& first = *data_.i1.images.first();
    shiftMap_.origin = {first.x0, first.y0};
    energyShiftMap_.prepare(walk);
    tellShiftMap();
    Q_EMIT doCalibNextPoint();
}

/// Fills walk with the one over the selected area; why there is nothing to compare, or an empty
/// text.
QString Body::calibrationFault(AnalyzeCond& walk) const
{
    QString why = reader_->areaFault(walk);
    if (why.isEmpty() && stdSpectrum_.isEmpty())
        return QStringLiteral("no standard is loaded");
    return why;
}

/// What makes the shifts meaningless though nothing fails.
void Body::tellCalibrationDoubts() const
{
    const CalibConditions c = calibConditions();
    const bool searches = c.step > 0.0 && c.step >= c.minStep && std::isfinite(c.range);
    if (c.method == CalibMethod::InnerProduct && !searches)
        qDebug() << "Calibration: range" << c.range << "step" << c.step << "and minimum step"
                 << c.minStep << "allow no search, all shifts are 0";
}

CalibConditions Body::calibConditions() const
{
    CalibConditions c = calibCtrl_->conditions(reader_->suggestElm());
    c.holdGap = spectrumBox_->settings().holdGap;
    return c;
}

/// Leaves the map as far as it is filled, without statistics. Before the first position that is no
/// map, and the one before stays.
void Body::stopCalibration(const QString& why)
{
    if (!calibration_.running)
        return;
    qDebug().noquote()
        << QStringLiteral("Calibration %1: %2").arg(why, calibration_.statistics.outcomes.text());
    if (calibrationHasBegun()) {
        energyShiftMap_.genImg();
        shiftMap_.interrupted = true;
        tellShiftMap();
    } else {
        putInForce(replacedMap_);
        replacedMap_ = ShiftMap();
    }
    leaveCalibration({why});
}

/// A stack is about to be another than the one that a walk reads: the walk's own images stay, but
/// its map would no longer belong to what is shown.
void Body::stopWorkOn(const Stack& stack, const QString& what)
{
    const auto holds = [&](const SharedSource& source) {
        return &stack == &i1_ || source->block.useI0;
    };
    const QString why = stoppedText() + QLatin1String(", ") + what;
    if (walk_.running && holds(walk_.source))
        stopWalk(why);
    if (calibration_.running && holds(calibration_.source))
        stopCalibration(why);
}

/// Whether a position of the walk is done.
bool Body::calibrationHasBegun() const
{
    AnalyzeCond first = calibration_.at;
    first.start();
    return first.cx != calibration_.at.cx || first.cy != calibration_.at.cy;
}

/// `faults` are for the batch commands that wait for the end.
void Body::leaveCalibration(const QStringList& faults)
{
    calibration_.running = false;
    keepAsFormer(replacedMap_);
    replacedMap_ = ShiftMap();
    calibCtrl_->setRunning(false);
    const QVector<int> waiting = std::exchange(calibration_.waiting, {});
    for (const int ticket : waiting)
        endCommand(ExCmdCalibWait, ticket, faults);
    if (!closing_)
        refreshCursor();
    if (finishesWhenIdle_ && !closing_)
        Q_EMIT finishing();
}

void Body::waitForCalibration(int ticket)
{
    if (calibration_.running)
        calibration_.waiting.append(ticket);
    else
        endCommand(ExCmdCalibWait, ticket, {});
}

void Body::calibNextPoint()
{
    if (!calibration_.running)
        return;
    batchCtrl_->watch().progressed();
    AnalyzeCond& at = calibration_.at;
    if (at.newLine)
        Q_EMIT calibProgress(at.progress());
    const BlockShift found = blockShift(calibration_.source->mu(at.cx, at.cy),
                                        calibration_.standard, calibration_.conditions);
    if (calibration_.statistics.take({at.cx, at.cy}, found)) {
        shiftMap_.set(at, found.shift);
        energyShiftMap_.setData(at.cx, at.cy, at.halfX, at.halfY, found.shift);
    } else {
        shiftMap_.leaveOut(at);
        energyShiftMap_.leaveOut(at.cx, at.cy, at.halfX, at.halfY);
    }
    if (at.next())
        Q_EMIT doCalibNextPoint();
    else
        Q_EMIT doFinishCalib();
}

void Body::finishCalib()
{
    Q_EMIT calibProgress(100.0);
    calibration_.statistics.close(shiftMap_.walk, energyShiftMap_);
    shiftMap_.statistics = calibration_.statistics;
    tellShiftMap();
    energyShiftMap_.genImg();
    logTime(QStringLiteral("End Calibration   "));
    qDebug().noquote() << "Calibration:" << calibration_.statistics.outcomes.text();
    leaveCalibration({});
}
