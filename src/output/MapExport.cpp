#include "output/MapExport.h"

#include "maps/Analyzed2DRes.h"
#include "output/TiffWriter.h"

#include <QDebug>
#include <QDir>

#include <memory>

namespace {

QSize savedSize(const Analyzed2DRes& map, bool asAnalyzed)
{
    const AnalyzeCond& walk = map.stepper;
    return asAnalyzed ? QSize(walk.columns(), walk.rows()) : QSize(walk.width, walk.height);
}

} // namespace

QString mapFileName(const QString& fname, int number, const QString& extension)
{
    const QFileInfo fi(fname);
    return fi.absoluteDir().absoluteFilePath(fi.completeBaseName() + QLatin1Char('-') +
                                             QString::number(number) + QLatin1Char('.') +
                                             extension);
}

bool saveMapAsTiff(Analyzed2DRes& map, const QString& fname, int number,
                   const TiffSaveOptions& options)
{
    const std::unique_ptr<quint16[]> values(map.tiffDataForSave(
        options.fixedScale, options.scaleMin, options.scaleMax, options.asAnalyzed));
    if (!values) {
        qDebug() << "Nothing to save in map" << map.name;
        return false;
    }
    const QSize size = savedSize(map, options.asAnalyzed);
    return TiffWriter::writeU16(mapFileName(fname, number, QStringLiteral("tif")), size.width(),
                                size.height(), values.get());
}

bool saveMapAsText(const Analyzed2DRes& map, const QString& fname, int number,
                   const TextSaveOptions& options)
{
    return map.saveAsText(QFileInfo(mapFileName(fname, number, QStringLiteral("dat"))),
                          options.asAnalyzed, options.commaSeparated, options.asXYVal);
}
