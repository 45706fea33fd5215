#include "conduct/CalibConductor.h"

#include "calibration/CalibCtrl.h"
#include "calibration/ShiftMapFile.h"
#include "common/Fault.h"
#include "common/Log.h"
#include "common/TextItems.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"

#include <QDebug>
#include <QFile>
#include <QTextStream>

#include <cmath>
#include <utility>

namespace {

/// A map value this many eV off the common level is an outlier; fixed.
constexpr double outlierLimit = 40.0;

} // namespace

void CalibConductor::normalizeEShift()
{
    logTime(QStringLiteral("Start Normalize E Shift"));
    picture().deglitch2(outlierLimit);
    picture().copyProc2Data();
    picture().genImg();
    parts_.shiftMap.takeFrom(picture());
    tellShiftMap();
    Q_EMIT shiftMapChanged();
    logTime(QStringLiteral("End Normalize E Shift  "));
}

void CalibConductor::clearShiftMap()
{
    leaveMapInForce();
    putInForce(ShiftMap());
    Q_EMIT shiftMapChanged();
}

/// Before another map takes its place: ends a calibration and keeps the map as the former one; but
/// not what a stopped calibration has filled when it replaced a whole map.
void CalibConductor::leaveMapInForce()
{
    const bool isFragment = run_.running && run_.begun && !replacedMap_.shifts.isEmpty();
    stop();
    if (!isFragment)
        keepAsFormer(parts_.shiftMap);
}

Analyzed2DRes& CalibConductor::picture() const
{
    return parts_.book.at(shiftMapKey);
}

void CalibConductor::putInForce(const ShiftMap& shiftMap)
{
    parts_.shiftMap = shiftMap;
    // The book knows from this whether the map is complete.
    parts_.book.begin(shiftMapKey, shiftMap.walk, {});
    shiftMap.showIn(picture());
    parts_.book.end(shiftMapKey, !shiftMap.interrupted, {});
    tellShiftMap();
}

/// The panel shows what belongs to the map in force.
void CalibConductor::tellShiftMap()
{
    parts_.panel.setMapInterrupted(parts_.shiftMap.interrupted);
    spread_ = run_.running ? std::nullopt : parts_.shiftMap.medianAndSpread();
    parts_.panel.showStatistics(parts_.shiftMap.statistics, spread_);
    tellMapReasons();
    parts_.panel.showMapFile(parts_.shiftMap.fileName);
    if (!parts_.shiftMap.isEmpty())
        parts_.panel.showImageGeometry({parts_.shiftMap.walk.width, parts_.shiftMap.walk.height},
                                       parts_.shiftMap.origin);
}

void CalibConductor::tellMapReasons()
{
    const QString noMap = parts_.shiftMap.isEmpty() ? tr("No shift map") : QString();
    const bool hasEdge = edgeOfMap() > 0.0;
    parts_.panel.setMapReasons(noMap, !noMap.isEmpty() || hasEdge
                                          ? noMap
                                          : tr("No edge energy: select the standard or type it"));
}

/// Nothing is no former map: the one that was kept before stays.
void CalibConductor::keepAsFormer(const ShiftMap& shiftMap)
{
    if (shiftMap.shifts.isEmpty())
        return;
    formerMap_ = shiftMap;
    parts_.panel.setFormerMap(true);
}

void CalibConductor::swapFormerMap()
{
    // Stopping a calibration makes the map that it replaced the former one.
    if (!formerMap_ && replacedMap_.shifts.isEmpty()) {
        fault(QStringLiteral("No former energy shift map"));
        return;
    }
    stop();
    if (!formerMap_)
        return; // stopped before its first position: nothing was replaced
    const ShiftMap current = parts_.shiftMap;
    putInForce(*formerMap_);
    formerMap_ = current;
    Q_EMIT shiftMapChanged();
}

/// Edge [eV] at which the map's shifts become angles: the standard's, that of the field, or that at
/// which the map was read; 0 for none.
double CalibConductor::edgeOfMap() const
{
    for (const double edge : {stdSpectrum_.isEmpty() ? 0.0 : stdSpectrum_.midx,
                              parts_.panel.edgeEV(), parts_.shiftMap.edgeE}) {
        if (edge > 0.0 && std::isfinite(edge))
            return edge;
    }
    return 0.0;
}

void CalibConductor::saveEMap(const QString& fname)
{
    saveEMap(fname, picture());
}

void CalibConductor::saveEMap(const QString& fname, const Analyzed2DRes& map)
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
    if (parts_.shiftMap.interrupted || run_.running)
        qDebug() << "Energy shift map to save as" << fname << ": its calibration is not complete";
    const QString written = saveShiftMap(fname, mapRecord(map, edge),
                                         [&map](int x, int y) { return map.valueAt(x, y); });
    if (written.isEmpty() || &map != &picture())
        return;
    parts_.shiftMap.fileName = written;
    tellShiftMap();
}

ShiftMapRecord CalibConductor::mapRecord(const Analyzed2DRes& map, double edge) const
{
    const AnalyzeCond& at = parts_.shiftMap.walk;
    ShiftMapRecord record;
    record.recorded = recordDate();
    record.header.stdEdgeE = edge;
    record.header.spacing = parts_.panel.crystalSpacing();
    record.header.xOffset = parts_.shiftMap.origin.x();
    record.header.yOffset = parts_.shiftMap.origin.y();
    record.header.width = at.width;
    record.header.height = at.height;
    record.header.halfX = at.halfX;
    record.header.halfY = at.halfY;
    record.header.areaX0 = at.x0;
    record.header.areaX1 = at.x1;
    record.header.areaY0 = at.y0;
    record.header.areaY1 = at.y1;
    record.stdFileName = parts_.panel.stdFileName();
    record.mapWidth = map.stepper.width;
    record.mapHeight = map.stepper.height;
    // Other images may have been loaded since: the values go with the head's size, or nobody could
    // read them again.
    record.imageWidth = at.width;
    record.imageHeight = at.height;
    return record;
}

void CalibConductor::loadEMap(const QString& fname)
{
    qDebug() << "loading emap" << fname;
    EMPHeader header;
    loadMap(fname, picture(), header);
}

void CalibConductor::loadMap(const QString& fname, Analyzed2DRes& map, EMPHeader& empH)
{
    const bool inForce = &map == &picture();
    const std::optional<ShiftMap> loaded = readMap(fname, empH, inForce);
    if (loaded && inForce)
        takeInForce(*loaded);
    else if (loaded)
        loaded->showIn(map);
}

/// The map of a file; none, with one fault line, for a file of none or of one that does not fit the
/// images. empH tells what its head says. What is in force stays as it is, but for the panel's
/// fields of one that is to come into force: they tell also of a map that is refused, on purpose.
std::optional<ShiftMap> CalibConductor::readMap(const QString& fname, EMPHeader& empH,
                                                bool inForce) const
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
        parts_.panel.showImageGeometry({empH.width, empH.height}, {empH.xOffset, empH.yOffset});
    const QString why = sizeFault(empH);
    if (!why.isEmpty()) {
        fault(why);
        empH.isValid = false;
        return {};
    }
    const double typed = parts_.panel.edgeEV();
    const double edge = typed > 0.0 && std::isfinite(typed) ? typed : empH.stdEdgeE;
    qDebug() << "Start Reading EMP file ";
    ShiftMap loaded = readShiftMap(in, empH, edge);
    qDebug() << "End Reading EMP file   ";
    loaded.fileName = fname;
    return loaded;
}

/// Why a map does not fit the images; empty when it does, without images, and with the check off.
QString CalibConductor::sizeFault(const EMPHeader& empH) const
{
    const QSize size(empH.width, empH.height);
    if (!parts_.panel.checksSize() || parts_.data.i1.images.isEmpty() || parts_.data.size == size)
        return {};
    return QStringLiteral("Loading Energy Map size : %1 x %2 : is not matched to the "
                          "current image size : %3 x %4")
        .arg(empH.width)
        .arg(empH.height)
        .arg(parts_.data.size.width())
        .arg(parts_.data.size.height());
}

/// A map that was read comes into force. With no images its size becomes theirs.
void CalibConductor::takeInForce(const ShiftMap& loaded)
{
    if (parts_.panel.checksSize() && parts_.data.i1.images.isEmpty())
        parts_.data.size = {loaded.walk.width, loaded.walk.height};
    leaveMapInForce();
    putInForce(loaded);
    Q_EMIT shiftMapChanged();
}
