#include "app/Body.h"

#include "calibration/CalibCtrl.h"
#include "common/Fault.h"
#include "common/Log.h"
#include "common/TextItems.h"

#include <QDebug>
#include <QFile>
#include <QTextStream>

#include <cmath>

namespace {

/// A map value this many eV off the common level is an outlier; fixed.
constexpr double outlierLimit = 40.0;

void fillMap(Analyzed2DRes& map, const AnalyzeCond& walk, const QVector<double>& shifts)
{
    map.prepare(walk);
    int i = 0;
    for (int y = 0; y < walk.height; ++y) {
        for (int x = 0; x < walk.width; ++x, ++i) {
            if (std::isnan(shifts[i]))
                map.leaveOut(x, y, 0, 0);
            else
                map.setData(x, y, 0, 0, shifts[i]);
        }
    }
    map.genImg();
}

} // namespace

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
    leaveMapInForce();
    putInForce(ShiftMap());
    refreshCursor();
}

/// Before another map takes its place: ends a calibration and keeps the map as the former one; but
/// not what a stopped calibration has filled when it replaced a whole map.
void Body::leaveMapInForce()
{
    const bool isFragment =
        calibration_.running && calibrationHasBegun() && !replacedMap_.shifts.isEmpty();
    stopCalibration();
    if (!isFragment)
        keepAsFormer(shiftMapInForce());
}

Body::ShiftMap Body::shiftMapInForce() const
{
    const double* shifts = energyShiftMap_.data();
    const AnalyzeCond& size = energyShiftMap_.stepper;
    ShiftMap map{{},
                 calibIter_,
                 {mapX0_, mapY0_},
                 mapEdgeE_,
                 mapInterrupted_,
                 energyShiftMap_.min,
                 energyShiftMap_.max,
                 mapStatistics_,
                 calibCtrl_->mapFile()};
    if (shifts == nullptr)
        return map;
    map.shifts.reserve(size.width * size.height);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x, ++shifts)
            map.shifts.append(energyShiftMap_.isLeftOut(x, y) ? qQNaN() : *shifts);
    }
    return map;
}

void Body::putInForce(const ShiftMap& shiftMap)
{
    mapX0_ = shiftMap.origin.x();
    mapY0_ = shiftMap.origin.y();
    mapEdgeE_ = shiftMap.edgeE;
    setMapInterrupted(shiftMap.interrupted);
    setMapStatistics(shiftMap.statistics);
    calibCtrl_->showMapFile(shiftMap.fileName);
    calibIter_ = shiftMap.walk;
    if (shiftMap.shifts.isEmpty()) {
        energyShiftMap_.clear();
        return;
    }
    calibCtrl_->showImageGeometry({shiftMap.walk.width, shiftMap.walk.height}, shiftMap.origin);
    fillMap(energyShiftMap_, shiftMap.walk, shiftMap.shifts);
    energyShiftMap_.min = shiftMap.min;
    energyShiftMap_.max = shiftMap.max;
    energyShiftMap_.genImg();
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
        fault(QStringLiteral("No former energy shift map"));
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

void Body::setMapStatistics(const std::optional<CalibStatistics>& statistics)
{
    mapStatistics_ = statistics;
    calibCtrl_->showStatistics(statistics);
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
        fault(QStringLiteral("No energy shift map to save as %1").arg(quoted(fname)));
        return;
    }
    const double edge = edgeOfMap();
    if (edge == 0.0) {
        fault(QStringLiteral("Energy shift map not saved as %1: no standard is loaded and the edge "
                             "energy field is empty")
                  .arg(quoted(fname)));
        return;
    }
    if (mapInterrupted_ || calibration_.running)
        qDebug() << "Energy shift map to save as" << fname << ": its calibration is not complete";
    const QString written = saveShiftMap(fname, mapRecord(map, edge),
                                         [&map](int x, int y) { return map.valueAt(x, y); });
    if (!written.isEmpty())
        calibCtrl_->showMapFile(written);
}

ShiftMapRecord Body::mapRecord(const Analyzed2DRes& map, double edge) const
{
    const AnalyzeCond& at = calibIter_;
    ShiftMapRecord record;
    record.recorded = recordDate();
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
    return record;
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
    endCommand(ExCmdCalibLoadMap, ticket, {});
}

void Body::readMap(const QString& fname, Analyzed2DRes& map, EMPHeader& empH)
{
    empH = EMPHeader();
    QFile file(fname);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        fault(QStringLiteral("Can not open ") + quoted(fname));
        return;
    }
    QTextStream in(&file);
    empH = readMapHeader(in);
    if (!empH.isValid) {
        fault(QStringLiteral("Invalid Energy Map Data File :  ") + quoted(fname));
        return;
    }
    calibCtrl_->showImageGeometry({empH.width, empH.height}, {empH.xOffset, empH.yOffset});
    if (!acceptsMapSize(empH)) {
        empH.isValid = false;
        return;
    }
    leaveMapInForce();
    setMapInterrupted(false);
    setMapStatistics({});
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
    if (!calibCtrl_->checksSize() || data_.size == QSize(empH.width, empH.height))
        return true;
    if (data_.i1.images.isEmpty()) {
        data_.size = {empH.width, empH.height};
        return true;
    }
    fault(QStringLiteral("Loading Energy Map size : %1 x %2 : is not matched to the "
                         "current image size : %3 x %4")
              .arg(empH.width)
              .arg(empH.height)
              .arg(data_.size.width())
              .arg(data_.size.height()));
    return false;
}

void Body::takeMap(Analyzed2DRes& map, const AnalyzeCond& walk, const QVector<double>& shifts)
{
    calibIter_ = walk;
    fillMap(map, walk, shifts);
    refreshCursor();
}
