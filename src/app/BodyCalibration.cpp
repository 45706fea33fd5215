#include "app/Body.h"

#include "calibration/CalibCtrl.h"
#include "common/Log.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "ui_Body.h"

#include <QDebug>

#include <cmath>

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
    if (calibration_.running) {
        stopCalibration();
        return;
    }
    AnalyzeCond walk;
    const QString fault = areaFault(walk);
    if (!fault.isEmpty()) {
        qDebug().noquote() << "Calibration not started:" << fault;
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
    const TiffData& first = *i1Stack_.first();
    mapX0_ = first.x0;
    mapY0_ = first.y0;
    calibCtrl_->showImageGeometry({first.width, first.height}, {first.x0, first.y0});
    Q_EMIT doCalibNextPoint();
}

/// What makes the shifts meaningless though nothing fails, a line each.
void Body::tellCalibrationDoubts() const
{
    if (stdSpectrum_.isEmpty())
        qDebug() << "Calibration: no standard is loaded";
    const CalibConditions c = calibConditions();
    const bool searches = c.step > 0.0 && c.step >= c.minStep && std::isfinite(c.range);
    if (c.method == CalibMethod::InnerProduct && !searches)
        qDebug() << "Calibration: range" << c.range << "step" << c.step << "and minimum step"
                 << c.minStep << "allow no search, all shifts are 0";
}

CalibConditions Body::calibConditions() const
{
    CalibConditions c = calibCtrl_->conditions(suggestElm());
    c.holdGap = ui_->HoldGap->isChecked();
    return c;
}

/// Leaves the map as far as it is filled, without statistics. Before the first position that is no
/// map, and the one before stays.
void Body::stopCalibration()
{
    if (!calibration_.running)
        return;
    qDebug().noquote() << "Calibration stopped:" << calibration_.statistics.outcomes.text();
    if (calibrationHasBegun()) {
        energyShiftMap_.genImg();
        setMapInterrupted(true);
    } else {
        putInForce(replacedMap_);
        replacedMap_ = ShiftMap();
    }
    leaveCalibration();
}

/// Whether a position of the walk is done.
bool Body::calibrationHasBegun() const
{
    AnalyzeCond first = calibIter_;
    first.start();
    return first.cx != calibIter_.cx || first.cy != calibIter_.cy;
}

void Body::leaveCalibration()
{
    calibration_.running = false;
    keepAsFormer(replacedMap_);
    replacedMap_ = ShiftMap();
    calibCtrl_->setRunning(false);
    for (const int ticket : qAsConst(calibration_.waiting))
        Q_EMIT finishBatchExec(ExCmdCalibWait, ticket);
    calibration_.waiting.clear();
    if (!closing_)
        refreshCursor();
}

void Body::waitForCalibration(int ticket)
{
    if (calibration_.running)
        calibration_.waiting.append(ticket);
    else
        Q_EMIT finishBatchExec(ExCmdCalibWait, ticket);
}

void Body::calibNextPoint()
{
    if (!calibration_.running)
        return;
    if (i1Stack_.isEmpty()) {
        qDebug() << "Calibration: the images are gone";
        stopCalibration();
        return;
    }
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
    leaveCalibration();
}
