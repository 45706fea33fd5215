#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "common/FileNames.h"
#include "display/ColorBar.h"
#include "display/FileDialogs.h"
#include "output/MapExport.h"
#include "output/SaveDataCfg.h"
#include "ui_Body.h"

#include <QDebug>

void Body::showSaveDataDialog()
{
    const QString any = QStringLiteral("Any Files (* *.*)");
    saveDataDialog_->get()->setNameFilters(
        saveDataCfg_->savesAsTiff() ? QStringList{QStringLiteral("Tiff File (*.tif)"), any}
                                    : QStringList{QStringLiteral("Data File (*.dat)"), any});
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
    // The suffix carries a hyphen of its own, on purpose: map.tif gives map-0--cBar.tif.
    const QString barName =
        addSuffix(addSuffix(fname, QString::number(no)), QStringLiteral("-cBar"));
    if (!ui_->CBar->barPixmap.save(barName))
        qDebug() << "Can't save the colour bar" << barName;
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
