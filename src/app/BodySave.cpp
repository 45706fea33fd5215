#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "analysis/LCFReference.h"
#include "analysis/MapLabels.h"
#include "common/Fault.h"
#include "common/FileNames.h"
#include "common/TextItems.h"
#include "display/ColorBar.h"
#include "display/FileDialogs.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "output/PictureFile.h"
#include "output/SaveDataCfg.h"
#include "output/TiffWriter.h"

#include <QAbstractButton>
#include <QDebug>

void Body::saveImage(const QString& fname)
{
    const QString file = withExtension(fname, QStringLiteral("png"));
    // Nothing may have been painted since something else came on show.
    imageBox_->area()->tellRange();
    if (!savePicture(imageBox_->area()->viewImage(), file))
        return;
    if (const Analyzed2DRes* map = imageBox_->area()->shownMap()) {
        const LabelledMap known = labelledMap(*analyzer_, map);
        tellSaved(*map, known.map ? known.fullLabel : map->name, file);
    }
    savePicture(imageBox_->bar()->barPixmap.toImage(), addSuffix(file, QStringLiteral("cBar")));
}

void Body::saveImageWNum(const QString& fname, const QString& num)
{
    if (num.isEmpty()) {
        fault(QStringLiteral("No number to save %1 with").arg(quoted(fname)));
        return;
    }
    saveImage(addSuffix(fname, num));
}

void Body::saveAllImages(const QString& fname)
{
    const QVector<LCFReference*>& rows = analyzer_->refs();
    bool saved = false;
    for (int kind = 0; kind < LCFReference::mapKinds; ++kind) {
        for (int row = 0; row < rows.size(); ++row) {
            Analyzed2DRes* map = rows[row]->map(kind);
            if (!rows[row]->showButton()->isChecked() || !map->imgValid ||
                !map->whyNotSaved(false).isEmpty())
                continue;
            // The bar, the scale or the choice of filtered values may be another since.
            map->genImg();
            imageBox_->area()->setAnalyzedRes(map);
            imageBox_->area()->setShowOverLayer(true);
            saveImage(addSuffix(fname, QStringLiteral("%1-%2").arg(row).arg(kind)));
            saved = true;
        }
    }
    if (!saved)
        fault(QStringLiteral("No result map to save as %1").arg(quoted(fname)));
    dispImgSelected();
}

void Body::saveFlatDark()
{
    TiffWriter::writeOnes(QStringLiteral("flat.dat"), data_.size.width(), data_.size.height());
    TiffWriter::writeZeros(QStringLiteral("dark.dat"), data_.size.width(), data_.size.height());
}

void Body::showSaveDataDialog()
{
    showSaveDialogOfForm(*saveDataDialog_);
}

void Body::showSaveAllDataDialog()
{
    showSaveDialogOfForm(*saveAllDataDialog_);
}

/// With filters and an extension of the form that is chosen now.
void Body::showSaveDialogOfForm(LateDialog& dialog)
{
    const bool text = saveDataCfg_->form() == MapForm::Text;
    dialog.get()->setNameFilters(
        {text ? tr("Data File (*.dat)") : tr("Tiff File (*.tif)"), tr("Any Files (* *.*)")});
    dialog.get()->setDefaultSuffix(text ? QStringLiteral("dat") : QStringLiteral("tif"));
    dialog.show();
}

void Body::saveData(const QString& fname)
{
    const LabelledMap map = labelledMap(*analyzer_, analyzer_->selectedMap());
    const MapForm form = saveDataCfg_->form();
    qDebug().noquote() << (form == MapForm::Text ? "selected text" : "selected tiff");
    if (!map.map)
        fault(QStringLiteral("No result map is chosen to save as %1").arg(quoted(fname)));
    else
        saveMapWithBar(map, mapFileName(fname, map.label, form), form);
}

void Body::saveAllData(const QString& fname)
{
    const MapForm form = saveDataCfg_->form();
    bool found = false;
    for (const LabelledMap& map : labelledMaps(*analyzer_)) {
        if (walk_.running || mapsInterrupted_ || !map.map->whyNotSaved(true).isEmpty())
            continue;
        saveMapWithBar(map, mapFileName(fname, map.fullLabel, form), form);
        found = true;
    }
    if (!found)
        fault(QStringLiteral("No finished result map to save as %1").arg(quoted(fname)));
}

void Body::saveDataAsTiff(const QString& fname, int ext)
{
    saveShownMap(fname, QString::number(ext), MapForm::Tiff16);
}

void Body::saveDataAsText(const QString& fname, int ext)
{
    saveShownMap(fname, QString::number(ext), MapForm::Text);
}

void Body::saveShownMap(const QString& fname, const QString& label, MapForm form)
{
    const LabelledMap map = labelledMap(*analyzer_, analyzer_->selectedMap());
    if (map.map)
        saveMap(map, mapFileName(fname, label, form), form);
    else
        fault(QStringLiteral("No result map is chosen to save as %1").arg(quoted(fname)));
}

bool Body::writeMap(Analyzed2DRes& map, const QString& file, MapForm form) const
{
    switch (form) {
    case MapForm::Tiff16:
        qDebug() << "saveDataAsTiff";
        return saveMapAsTiff(map, file, saveDataCfg_->tiffOptions());
    case MapForm::FloatTiff:
        return saveMapAsFloatTiff(map, file, saveDataCfg_->tiffOptions());
    case MapForm::Text:
        break;
    }
    return saveMapAsText(map, file, saveDataCfg_->textOptions());
}

bool Body::saveMap(const LabelledMap& map, const QString& file, MapForm form)
{
    if (!writeMap(*map.map, file, form))
        return false;
    tellSaved(*map.map, map.fullLabel, file);
    return true;
}

/// What a user should know of a file with this map in it: whose place it took, and what is missing.
void Body::tellSaved(const Analyzed2DRes& map, const QString& label, const QString& file)
{
    writtenMaps_.add(file, label);
    const bool complete = &map == &energyShiftMap_ ? !shiftMap_.interrupted && !calibration_.running
                                                   : !mapsInterrupted_ && !walk_.running;
    if (!complete)
        qDebug().noquote() << QStringLiteral("Map %1 saved as %2 is not complete: not all of its "
                                             "positions were reached")
                                  .arg(label, quoted(file));
}

/// The bar tells the scale of the file beside it; numbers as they are have that of the screen.
void Body::saveMapWithBar(const LabelledMap& map, const QString& file, MapForm form)
{
    if (!saveMap(map, file, form) || form == MapForm::Text)
        return;
    const TiffSaveOptions o = saveDataCfg_->tiffOptions();
    const Analyzed2DRes::Scale scale =
        form == MapForm::Tiff16 ? map.map->scaleForSave(o.fixedScale, o.scaleMin, o.scaleMax)
                                : map.map->scale();
    // The suffix carries a hyphen of its own, on purpose: map-0.tif gives map-0--cBar.tif.
    savePicture(imageBox_->bar()->barImage(scale.min, scale.max),
                addSuffix(file, QStringLiteral("-cBar")));
}
