#include "output/MapExport.h"

#include "common/Fault.h"
#include "common/FieldText.h"
#include "common/FileNames.h"
#include "common/TextItems.h"
#include "maps/Analyzed2DRes.h"
#include "output/TiffWriter.h"

#include <QDebug>
#include <QFileInfo>

#include <memory>
#include <vector>

namespace {

QSize savedSize(const Analyzed2DRes& map, bool asAnalyzed)
{
    const AnalyzeCond& walk = map.stepper;
    return asAnalyzed ? QSize(walk.columns(), walk.rows()) : QSize(walk.width, walk.height);
}

bool hasNothing(const Analyzed2DRes& map, const QString& fileName, bool asAnalyzed)
{
    const QString why = map.whyNotSaved(asAnalyzed);
    if (!why.isEmpty())
        fault(QStringLiteral("Nothing to save in map %1 as %2: %3")
                  .arg(map.name, quoted(fileName), why));
    return !why.isEmpty();
}

/// What turns the pixels of a file back into the values of the map.
QString scaleText(const Analyzed2DRes& map, const Analyzed2DRes::Scale& scale)
{
    return QStringLiteral("Morvenkite map %1\nmin = %2\nmax = %3\n"
                          "value = min + pixel / 65535 * (max - min)\n")
        .arg(map.name, shortestText(scale.min), shortestText(scale.max));
}

} // namespace

QString mapFileName(const QString& fname, const QString& label, MapForm form)
{
    if (fname.isEmpty())
        return fname;
    const QString extension = form == MapForm::Text ? QStringLiteral("dat") : QStringLiteral("tif");
    const QString named = withReplacedExtension(QFileInfo(fname).absoluteFilePath(), extension);
    return addSuffix(named, label);
}

bool saveMapAsTiff(Analyzed2DRes& map, const QString& fileName, const TiffSaveOptions& options)
{
    if (hasNothing(map, fileName, options.asAnalyzed))
        return false;
    const std::unique_ptr<quint16[]> values(map.tiffDataForSave(
        options.fixedScale, options.scaleMin, options.scaleMax, options.asAnalyzed, options.clamp));
    const Analyzed2DRes::Scale scale =
        map.scaleForSave(options.fixedScale, options.scaleMin, options.scaleMax);
    const QSize size = savedSize(map, options.asAnalyzed);
    const bool written = TiffWriter::writeU16(fileName, size.width(), size.height(), values.get(),
                                              scaleText(map, scale));
    if (written && map.wrappedSamples > 0) {
        qDebug().noquote() << QStringLiteral("%1 of %2 values lie outside the scale %3 to %4 and "
                                             "wrapped in %5")
                                  .arg(map.wrappedSamples)
                                  .arg(map.savedSamples)
                                  .arg(shortestText(scale.min), shortestText(scale.max),
                                       quoted(fileName));
    }
    return written;
}

bool saveMapAsFloatTiff(const Analyzed2DRes& map, const QString& fileName,
                        const TiffSaveOptions& options)
{
    if (hasNothing(map, fileName, options.asAnalyzed))
        return false;
    const std::vector<float> values = map.floatsForSave(options.asAnalyzed);
    const QSize size = savedSize(map, options.asAnalyzed);
    return TiffWriter::writeFloat(fileName, size.width(), size.height(), values.data(),
                                  QStringLiteral("Morvenkite map %1\n").arg(map.name));
}

bool saveMapAsText(const Analyzed2DRes& map, const QString& fileName,
                   const TextSaveOptions& options)
{
    return !hasNothing(map, fileName, true) &&
           map.saveAsText(QFileInfo(fileName), options.asAnalyzed, options.commaSeparated,
                          options.asXYVal);
}
