#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "analysis/LCFReference.h"
#include "common/FileNames.h"
#include "display/ColorBar.h"
#include "display/FileDialogs.h"
#include "display/ImgDispA.h"
#include "output/MapExport.h"
#include "output/PictureFile.h"
#include "output/SaveDataCfg.h"
#include "output/TiffWriter.h"
#include "ui_Body.h"

#include <QAbstractButton>
#include <QDebug>

void Body::saveImage(const QString& fname)
{
    // Nothing may have been painted since something else came on show.
    ui_->dispA->tellRange();
    if (savePicture(ui_->dispA->viewImage(), fname))
        saveColourBar(addSuffix(fname, QStringLiteral("cBar")));
}

void Body::saveImageWNum(const QString& fname, const QString& num)
{
    saveImage(addSuffix(fname, num));
}

void Body::saveAllImages(const QString& fname)
{
    const QVector<LCFReference*>& rows = analyzer_->refs();
    bool saved = false;
    for (int kind = 0; kind < LCFReference::mapKinds; ++kind) {
        for (int row = 0; row < rows.size(); ++row) {
            Analyzed2DRes* map = rows[row]->map(kind);
            if (!rows[row]->showButton()->isChecked() || !map->imgValid)
                continue;
            ui_->dispA->setAnalyzedRes(map);
            ui_->dispA->setShowOverLayer(true);
            saveImage(addSuffix(fname, QStringLiteral("%1-%2").arg(row).arg(kind)));
            saved = true;
        }
    }
    if (!saved)
        qDebug() << "No result map to save as" << fname;
    dispImgSelected(true);
}

void Body::saveColourBar(const QString& fname)
{
    savePicture(ui_->CBar->barPixmap.toImage(), fname);
}

void Body::saveFlatDark()
{
    TiffWriter::writeOnes(QStringLiteral("flat.dat"), imgW_, imgH_);
    TiffWriter::writeZeros(QStringLiteral("dark.dat"), imgW_, imgH_);
}

void Body::showSaveDataDialog()
{
    const QString any = tr("Any Files (* *.*)");
    saveDataDialog_->get()->setNameFilters(saveDataCfg_->savesAsTiff()
                                               ? QStringList{tr("Tiff File (*.tif)"), any}
                                               : QStringList{tr("Data File (*.dat)"), any});
    saveDataDialog_->get()->setDefaultSuffix(saveDataCfg_->savesAsTiff() ? QStringLiteral("tif")
                                                                         : QStringLiteral("dat"));
    saveDataDialog_->show();
}

void Body::saveData(const QString& fname)
{
    const int no = analyzer_->firstUsedRow();
    if (!saveDataCfg_->savesAsTiff()) {
        qDebug() << "selected text";
        saveDataAsText(fname, no);
        return;
    }
    qDebug() << "selected tiff";
    saveDataAsTiff(fname, no);
    if (const Analyzed2DRes* map = analyzer_->selectedMap())
        ui_->CBar->setRange(map->scale().min, map->scale().max);
    // The suffix carries a hyphen of its own, on purpose: map.tif gives map-0--cBar.tif.
    saveColourBar(addSuffix(addSuffix(fname, QString::number(no)), QStringLiteral("-cBar")));
}

void Body::saveDataAsTiff(const QString& fname, int ext)
{
    qDebug() << "saveDataAsTiff";
    if (Analyzed2DRes* map = analyzer_->selectedMap())
        saveMapAsTiff(*map, fname, ext, saveDataCfg_->tiffOptions());
}

void Body::saveDataAsText(const QString& fname, int ext)
{
    if (const Analyzed2DRes* map = analyzer_->selectedMap())
        saveMapAsText(*map, fname, ext, saveDataCfg_->textOptions());
}
