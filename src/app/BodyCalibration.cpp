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
    calibCtrl_ = new CalibCtrl;
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
    calibration_.standard = comparedStandard(stdSpectrum_, calibConditions());
    replacedMap_ = shiftMapInForce();
    calibCtrl_->showMapFile(QString());
    calibIter_ = walk;
    calibCtrl_->setRunning(true);
    logTime(QStringLiteral("Start Calibration"));
    energyShiftMap_.prepare(calibIter_);
    mapEdgeE_ = 0.0;
    setMapInterrupted(false);
    setMapStatistics({});
    const TiffData& first = *data_.i1.images.first();
    mapX0_ = first.x0;
    mapY0_ = first.y0;
    calibCtrl_->showImageGeometry({first.width, first.height}, {first.x0, first.y0});
    Q_EMIT doCalibNextPoint();
}

/// Fills walk with the one over the selected area; why there is nothing to compare, or an empty
/// text.
QString Body::calibrationFault(AnalyzeCond& walk) const
{
    QString why = areaFault(walk);
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
    CalibConditions c = calibCtrl_->conditions(suggestElm());
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
        setMapInterrupted(true);
    } else {
        putInForce(replacedMap_);
        replacedMap_ = ShiftMap();
    }
    leaveCalibration({why});
}

/// Whether a position of the walk is done.
bool Body::calibrationHasBegun() const
{
    AnalyzeCond first = calibIter_;
    first.start();
    return first.cx != calibIter_.cx || first.cy != calibIter_.cy;
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
    if (data_.i1.images.isEmpty()) {
        stopCalibration(stoppedText() + QLatin1String(", the I1 images are gone"));
        return;
    }
    batchCtrl_->watch().progressed();
    if (calibIter_.newLine)
        Q_EMIT calibProgress(calibIter_.progress());
    const int x = calibIter_.cx;
    const int y = calibIter_.cy;
    const BlockShift found = blockShift(rawXafsAt(x, y, calibIter_.halfX, calibIter_.halfY),
                                        calibration_.standard, calibConditions());
    if (calibration_.statistics.take({x, y}, found))
        energyShiftMap_.setData(x, y, calibIter_.halfX, calibIter_.halfY, found.shift);
    else
        energyShiftMap_.leaveOut(x, y, calibIter_.halfX, calibIter_.halfY);
    if (calibIter_.next())
        Q_EMIT doCalibNextPoint();
    else
        Q_EMIT doFinishCalib();
}

void Body::finishCalib()
{
    Q_EMIT calibProgress(100.0);
    calibration_.statistics.close(calibIter_, energyShiftMap_);
    setMapStatistics(calibration_.statistics);
    energyShiftMap_.genImg();
    logTime(QStringLiteral("End Calibration   "));
    qDebug().noquote() << "Calibration:" << calibration_.statistics.outcomes.text();
    leaveCalibration({});
}
