#include "app/Body.h"

#include "calibration/CalibCtrl.h"
#include "common/Log.h"
#include "display/FileDialogs.h"
#include "display/ImgDispA.h"
#include "display/XafsView.h"
#include "ui_Body.h"

#include <QDebug>
#include <QFile>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

/// A map value this many eV off the common level is an outlier; fixed.
constexpr double outlierLimit = 40.0;

void fillMap(Analyzed2DRes& map, const AnalyzeCond& walk, const QVector<double>& shifts)
{
    map.prepare(walk);
    int i = 0;
    for (int y = 0; y < walk.height; ++y) {
        for (int x = 0; x < walk.width; ++x)
            map.setData(x, y, 0, 0, shifts[i++]);
    }
    map.genImg();
}

} // namespace

void Body::setupCalibration()
{
    calibCtrl_ = new CalibCtrl;
    windows_.append(calibCtrl_);
    for (LateDialog* dialog : calibCtrl_->dialogs())
        dataDialogs_->add(dialog);
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
    if (!askAnalyzeCond(walk)) {
        qDebug() << "Calibration not started: no I1 images";
        return;
    }
    tellCalibrationDoubts();
    calibration_.running = true;
    calibration_.statistics = CalibStatistics();
    replacedMap_ = shiftMapInForce();
    calibIter_ = walk;
    calibCtrl_->setRunning(true);
    logTime(QStringLiteral("Start Calibration"));
    energyShiftMap_.prepare(calibIter_);
    mapEdgeE_ = 0.0;
    setMapInterrupted(false);
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
    const CalibConditions c = calibCtrl_->conditions(suggestElm());
    const bool searches = c.step > 0.0 && c.step >= c.minStep && std::isfinite(c.range);
    if (c.method == CalibMethod::InnerProduct && !searches)
        qDebug() << "Calibration: range" << c.range << "step" << c.step << "and minimum step"
                 << c.minStep << "allow no search, all shifts are 0";
}

/// Leaves the map as far as it is filled, without statistics. Before the first position that is no
/// map, and the one before stays.
void Body::stopCalibration()
{
    if (!calibration_.running)
        return;
    qDebug() << "Calibration stopped";
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
    const double shift = blockShift(rawXafsAt(x, y, calibIter_.halfX, calibIter_.halfY),
                                    stdSpectrum_, calibCtrl_->conditions(suggestElm()));
    energyShiftMap_.setData(x, y, calibIter_.halfX, calibIter_.halfY,
                            calibration_.statistics.take({x, y}, shift));
    if (calibIter_.next())
        Q_EMIT doCalibNextPoint();
    else
        Q_EMIT doFinishCalib();
}

void Body::finishCalib()
{
    Q_EMIT calibProgress(100.0);
    calibration_.statistics.close(calibIter_, energyShiftMap_);
    calibCtrl_->showStatistics(calibration_.statistics);
    energyShiftMap_.genImg();
    logTime(QStringLiteral("End Calibration   "));
    leaveCalibration();
}

void Body::normalizeEShift()
{
    logTime(QStringLiteral("Start Normalize E Shift"));
    energyShiftMap_.deglitch2(outlierLimit);
    energyShiftMap_.copyProc2Data();
    energyShiftMap_.genImg();
    refreshCursor();
    logTime(QStringLiteral("End Normalize E Shift  "));
}

void Body::clearShiftMap()
{
    stopCalibration();
    keepAsFormer(shiftMapInForce());
    putInForce(ShiftMap());
    refreshCursor();
}

Body::ShiftMap Body::shiftMapInForce() const
{
    const double* shifts = energyShiftMap_.data();
    const AnalyzeCond& size = energyShiftMap_.stepper;
    ShiftMap map{{}, calibIter_, {mapX0_, mapY0_}, mapEdgeE_, mapInterrupted_};
    if (shifts != nullptr)
        std::copy_n(shifts, size.width * size.height, std::back_inserter(map.shifts));
    return map;
}

void Body::putInForce(const ShiftMap& shiftMap)
{
    mapX0_ = shiftMap.origin.x();
    mapY0_ = shiftMap.origin.y();
    mapEdgeE_ = shiftMap.edgeE;
    setMapInterrupted(shiftMap.interrupted);
    calibIter_ = shiftMap.walk;
    if (shiftMap.shifts.isEmpty()) {
        energyShiftMap_.clear();
        return;
    }
    calibCtrl_->showImageGeometry({shiftMap.walk.width, shiftMap.walk.height}, shiftMap.origin);
    fillMap(energyShiftMap_, shiftMap.walk, shiftMap.shifts);
}

/// Nothing is no former map: the one that was kept before stays.
void Body::keepAsFormer(const ShiftMap& shiftMap)
{
    if (shiftMap.shifts.isEmpty())
        return;
    formerMap_ = std::make_unique<ShiftMap>(shiftMap);
    calibCtrl_->setFormerMap(true);
}

void Body::swapFormerMap()
{
    // Stopping a calibration makes the map that it replaced the former one.
    if (!formerMap_ && replacedMap_.shifts.isEmpty()) {
        qDebug() << "No former energy shift map";
        return;
    }
    stopCalibration();
    if (!formerMap_)
        return; // stopped before its first position: nothing was replaced
    const ShiftMap current = shiftMapInForce();
    putInForce(*formerMap_);
    *formerMap_ = current;
    refreshCursor();
}

void Body::setMapInterrupted(bool f)
{
    mapInterrupted_ = f;
    calibCtrl_->setMapInterrupted(f);
}

/// Edge [eV] at which the map's shifts become angles: the standard's, that of the field, or that at
/// which the map was read; 0 for none.
double Body::edgeOfMap() const
{
    for (const double edge :
         {stdSpectrum_.isEmpty() ? 0.0 : stdSpectrum_.midx, calibCtrl_->edgeEV(), mapEdgeE_}) {
        if (edge > 0.0 && std::isfinite(edge))
            return edge;
    }
    return 0.0;
}

void Body::saveEMap(const QString& fname)
{
    saveEMap(fname, energyShiftMap_);
}

void Body::saveEMap(const QString& fname, const Analyzed2DRes& map)
{
    if (!map.data()) {
        qDebug() << "No energy shift map to save as" << fname;
        return;
    }
    const double edge = edgeOfMap();
    if (edge == 0.0) {
        qDebug() << "Energy shift map not saved as" << fname
                 << ": no standard is loaded and the edge energy field is empty";
        return;
    }
    if (mapInterrupted_)
        qDebug() << "Energy shift map saved as" << fname << "is that of a stopped calibration";
    const AnalyzeCond& at = calibIter_;
    ShiftMapRecord record;
    record.recorded = QDateTime::currentDateTime();
    record.header.stdEdgeE = edge;
    record.header.spacing = calibCtrl_->crystalSpacing();
    record.header.xOffset = mapX0_;
    record.header.yOffset = mapY0_;
    record.header.width = at.width;
    record.header.height = at.height;
    record.header.halfX = at.halfX;
    record.header.halfY = at.halfY;
    record.header.areaX0 = at.x0;
    record.header.areaX1 = at.x1;
    record.header.areaY0 = at.y0;
    record.header.areaY1 = at.y1;
    record.stdFileName = calibCtrl_->stdFileName();
    record.mapWidth = map.stepper.width;
    record.mapHeight = map.stepper.height;
    // Other images may have been loaded since: the values go with the head's size, or nobody could
    // read them again.
    record.imageWidth = at.width;
    record.imageHeight = at.height;
    const QString written =
        saveShiftMap(fname, record, [&map](int x, int y) { return map.valueAt(x, y); });
    if (!written.isEmpty())
        calibCtrl_->showMapFile(written);
}

void Body::loadEMap(const QString& fname)
{
    qDebug() << "loading emap" << fname;
    EMPHeader header;
    loadMap(fname, energyShiftMap_, header, 0);
}

/// Whatever comes of it, the end is reported.
void Body::loadMap(const QString& fname, Analyzed2DRes& map, EMPHeader& empH, int ticket)
{
    readMap(fname, map, empH);
    Q_EMIT finishBatchExec(ExCmdCalibLoadMap, ticket);
}

void Body::readMap(const QString& fname, Analyzed2DRes& map, EMPHeader& empH)
{
    empH = EMPHeader();
    QFile file(fname);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qDebug() << "Can not open" << fname;
        return;
    }
    QTextStream in(&file);
    empH = readMapHeader(in);
    if (!empH.isValid) {
        qDebug() << "Invalid Energy Map Data File : " << fname;
        return;
    }
    calibCtrl_->showImageGeometry({empH.width, empH.height}, {empH.xOffset, empH.yOffset});
    if (!acceptsMapSize(empH)) {
        empH.isValid = false;
        return;
    }
    stopCalibration();
    keepAsFormer(shiftMapInForce());
    setMapInterrupted(false);
    const double typed = calibCtrl_->edgeEV();
    mapEdgeE_ = typed > 0.0 && std::isfinite(typed) ? typed : empH.stdEdgeE;
    mapX0_ = empH.xOffset;
    mapY0_ = empH.yOffset;
    qDebug() << "Start Reading EMP file ";
    takeMap(map, mapWalk(empH), readMapShifts(in, empH, mapEdgeE_));
    qDebug() << "End Reading EMP file   ";
    calibCtrl_->showMapFile(fname);
}

/// A map must fit the images, unless the check is off. With no images its size becomes theirs.
bool Body::acceptsMapSize(const EMPHeader& empH)
{
    if (!calibCtrl_->checksSize() || (empH.width == imgW_ && empH.height == imgH_))
        return true;
    if (i1Stack_.isEmpty()) {
        imgW_ = empH.width;
        imgH_ = empH.height;
        return true;
    }
    qDebug().noquote() << QStringLiteral(
                              "Loading Energy Map size : %1 x %2 : is not matched to the "
                              "current image size : %3 x %4")
                              .arg(empH.width)
                              .arg(empH.height)
                              .arg(imgW_)
                              .arg(imgH_);
    return false;
}

void Body::takeMap(Analyzed2DRes& map, const AnalyzeCond& walk, const QVector<double>& shifts)
{
    calibIter_ = walk;
    fillMap(map, walk, shifts);
    refreshCursor();
}
