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

} // namespace

void Body::normalizeEShift()
{
    logTime(QStringLiteral("Start Normalize E Shift"));
    energyShiftMap_.deglitch2(outlierLimit);
    energyShiftMap_.copyProc2Data();
    energyShiftMap_.genImg();
    shiftMap_.takeFrom(energyShiftMap_);
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
        keepAsFormer(shiftMap_);
}

void Body::putInForce(const ShiftMap& shiftMap)
{
    shiftMap_ = shiftMap;
    shiftMap_.showIn(energyShiftMap_);
    tellShiftMap();
}

/// The panel shows what belongs to the map in force.
void Body::tellShiftMap()
{
    calibCtrl_->setMapInterrupted(shiftMap_.interrupted);
    calibCtrl_->showStatistics(shiftMap_.statistics);
    calibCtrl_->showMapFile(shiftMap_.fileName);
    if (!shiftMap_.isEmpty())
        calibCtrl_->showImageGeometry({shiftMap_.walk.width, shiftMap_.walk.height},
                                      shiftMap_.origin);
}

/// Nothing is no former map: the one that was kept before stays.
void Body::keepAsFormer(const ShiftMap& shiftMap)
{
    if (shiftMap.shifts.isEmpty())
        return;
    formerMap_ = shiftMap;
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
    const ShiftMap current = shiftMap_;
    putInForce(*formerMap_);
    formerMap_ = current;
    refreshCursor();
}

/// Edge [eV] at which the map's shifts become angles: the standard's, that of the field, or that at
/// which the map was read; 0 for none.
double Body::edgeOfMap() const
{
    for (const double edge : {stdSpectrum_.isEmpty() ? 0.0 : stdSpectrum_.midx,
                              calibCtrl_->edgeEV(), shiftMap_.edgeE}) {
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
    if (shiftMap_.interrupted || calibration_.running)
        qDebug() << "Energy shift map to save as" << fname << ": its calibration is not complete";
    const QString written = saveShiftMap(fname, mapRecord(map, edge),
                                         [&map](int x, int y) { return map.valueAt(x, y); });
    if (written.isEmpty() || &map != &energyShiftMap_)
        return;
    shiftMap_.fileName = written;
    tellShiftMap();
}

ShiftMapRecord Body::mapRecord(const Analyzed2DRes& map, double edge) const
{
    const AnalyzeCond& at = shiftMap_.walk;
    ShiftMapRecord record;
    record.recorded = recordDate();
    record.header.stdEdgeE = edge;
    record.header.spacing = calibCtrl_->crystalSpacing();
    record.header.xOffset = shiftMap_.origin.x();
    record.header.yOffset = shiftMap_.origin.y();
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
    const bool inForce = &map == &energyShiftMap_;
    const std::optional<ShiftMap> loaded = readMap(fname, empH, inForce);
    if (loaded && inForce)
        takeInForce(*loaded);
    else if (loaded)
        loaded->showIn(map);
    endCommand(ExCmdCalibLoadMap, ticket, {});
}

/// The map of a file; none, with one fault line, for a file of none or of one that does not fit the
/// images. empH tells what its head says. What is in force stays as it is, but for the panel's
/// fields of one that is to come into force: they tell also of a map that is refused, on purpose.
std::optional<ShiftMap> Body::readMap(const QString& fname, EMPHeader& empH, bool inForce) const
{
    empH = EMPHeader();
    QFile file(fname);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        fault(QStringLiteral("Can not open ") + quoted(fname));
        return {};
    }
    QTextStream in(&file);
    empH = readMapHeader(in);
    if (!empH.isValid) {
        fault(QStringLiteral("Invalid Energy Map Data File :  ") + quoted(fname));
        return {};
    }
    if (inForce)
        calibCtrl_->showImageGeometry({empH.width, empH.height}, {empH.xOffset, empH.yOffset});
    const QString why = sizeFault(empH);
    if (!why.isEmpty()) {
        fault(why);
        empH.isValid = false;
        return {};
    }
    const double typed = calibCtrl_->edgeEV();
    const double edge = typed > 0.0 && std::isfinite(typed) ? typed : empH.stdEdgeE;
    qDebug() << "Start Reading EMP file ";
    ShiftMap loaded = readShiftMap(in, empH, edge);
    qDebug() << "End Reading EMP file   ";
    loaded.fileName = fname;
    return loaded;
}

/// Why a map does not fit the images; empty when it does, without images, and with the check off.
QString Body::sizeFault(const EMPHeader& empH) const
{
    const QSize size(empH.width, empH.height);
    if (!calibCtrl_->checksSize() || data_.i1.images.isEmpty() || data_.size == size)
        return {};
    return QStringLiteral("Loading Energy Map size : %1 x %2 : is not matched to the "
                          "current image size : %3 x %4")
        .arg(empH.width)
        .arg(empH.height)
        .arg(data_.size.width())
        .arg(data_.size.height());
}

/// A map that was read comes into force. With no images its size becomes theirs.
void Body::takeInForce(const ShiftMap& loaded)
{
    if (calibCtrl_->checksSize() && data_.i1.images.isEmpty())
        data_.size = {loaded.walk.width, loaded.walk.height};
    leaveMapInForce();
    putInForce(loaded);
    refreshCursor();
}
