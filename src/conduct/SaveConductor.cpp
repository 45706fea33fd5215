#include "conduct/SaveConductor.h"

#include "analysis/Analyzer.h"
#include "analysis/lcf/LcfSection.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/FileNames.h"
#include "common/SafeFile.h"
#include "common/TextItems.h"
#include "conduct/ViewConductor.h"
#include "display/ColorBar.h"
#include "display/FileDialogs.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"
#include "output/PictureFile.h"
#include "output/SaveBox.h"
#include "output/SaveDataCfg.h"
#include "output/TiffWriter.h"

#include <QDebug>
#include <QFileInfo>

#include <algorithm>

SaveConductor::SaveConductor(const Parts& parts, ViewConductor& view, QWidget& window)
    : parts_(parts)
    , view_(view)
    , window_(window)
    , saveDataDialog_(newDialog(tr("Save Data"), {}, {}, ExCmdSaveData, &SaveConductor::saveData))
    , saveAllDataDialog_(
          newDialog(tr("Save All"), {}, {}, ExCmdSaveAllData, &SaveConductor::saveAllData))
{
    const QStringList pictures = {tr("Image File (*.png)"), tr("Any Files (* *.*)")};
    const QString png = QStringLiteral("png"); // a picture's format is told by its name
    connectBox(
        newDialog(tr("Save Image"), pictures, png, ExCmdSaveImage, &SaveConductor::saveImage),
        newDialog(tr("Save All Images"), pictures, png, ExCmdSaveAllImages,
                  &SaveConductor::saveAllImages));
    connect(&parts_.book, &MapBook::changed, this, &SaveConductor::forgetSaved);
}

/// A dialog for files to be saved; without filters its user sets them.
LateDialog* SaveConductor::newDialog(const QString& title, const QStringList& filters,
                                     const QString& suffix, EX_CMD_ID command, Save save)
{
    const auto make = [this, filters, suffix] {
        auto* dialog = new FileDialog(&window_);
        dialog->setAcceptMode(QFileDialog::AcceptSave);
        if (!filters.isEmpty())
            dialog->setNameFilters(filters);
        dialog->setDefaultSuffix(suffix);
        connect(dialog, &QFileDialog::rejected, this, &SaveConductor::cancelled);
        return dialog;
    };
    auto* dialog = new LateDialog(make, &window_);
    dialog->setTitle(title);
    connect(dialog, &LateDialog::fileSelected, this, [this, save, command](const QString& file) {
        if (history_) {
            history_->settle();
            history_->add(command, {file});
        }
        (this->*save)(file);
    });
    return dialog;
}

void SaveConductor::connectBox(LateDialog* image, LateDialog* allImages)
{
    const SaveBox* const box = &parts_.saveBox;
    connect(box, &SaveBox::saveImage, image, &LateDialog::show);
    connect(box, &SaveBox::saveAllImages, allImages, &LateDialog::show);
    connect(box, &SaveBox::saveFlatDark, this, &SaveConductor::saveFlatDark);
    connect(box, &SaveBox::saveData, this, &SaveConductor::showSaveDataDialog);
}

void SaveConductor::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdSaveImage, [this](const Cmd& c) { saveImage(c.arg(0)); });
    book.action(ExCmdSaveImageWNum, [this](const Cmd& c) { saveImageWNum(c.arg(0), c.arg(1)); });
    book.action(ExCmdSaveAllImages, [this](const Cmd& c) { saveAllImages(c.arg(0)); });
    book.action(ExCmdSaveData, [this](const Cmd& c) { saveData(c.arg(0)); });
    book.action(ExCmdSaveAllData, [this](const Cmd& c) { saveAllData(c.arg(0)); });
    book.action(ExCmdSaveDataAsTiff, [this](const Cmd& c) {
        saveDataAsTiff(c.arg(0), parts_.panel.lcf().firstUsedRow());
    });
    book.action(ExCmdSaveFlatDark, [this](const Cmd&) { saveFlatDark(); });
    history_ = &book.history();
    history_->follow([this] { return writtenMaps_.lines(); }, History::InState);
    connect(&parts_.saveBox, &SaveBox::saveFlatDark, history_,
            [this] { history_->add(ExCmdSaveFlatDark); });
}

void SaveConductor::saveImage(const QString& fname)
{
    // Nothing may have been painted since something else came on show.
    ImgDispA& area = *parts_.imageBox.area();
    area.tellRange();
    savePictureOf(area.viewImage(), parts_.imageBox.bar()->barPixmap.toImage(),
                  withExtension(fname, QStringLiteral("png")), parts_.book.keyOf(view_.shownMap()));
}

/// The picture with the bar beside it; false, with one fault line, when it can't be written.
bool SaveConductor::savePictureOf(const QImage& picture, const QImage& bar, const QString& file,
                                  const std::optional<MapKey>& key)
{
    if (!savePicture(picture, file))
        return false;
    if (key)
        tellSaved(*key, file);
    savePicture(bar, addSuffix(file, QStringLiteral("cBar")));
    return true;
}

void SaveConductor::saveImageWNum(const QString& fname, const QString& num)
{
    if (num.isEmpty()) {
        fault(QStringLiteral("No number to save %1 with").arg(quoted(fname)));
        return;
    }
    saveImage(addSuffix(fname, num));
}

void SaveConductor::saveAllImages(const QString& fname)
{
    const MapChoice choice = parts_.panel.mapChoice();
    bool saved = false;
    for (int kind = 0; rowMapKind(kind); ++kind) {
        const MapKey key{*rowMapKind(kind), choice.row};
        Analyzed2DRes* const map = parts_.book.find(key);
        if (!map || !map->imgValid || !map->whyNotSaved(false).isEmpty())
            continue;
        // The bar, the scale or the choice of filtered values may be another since.
        map->genImg();
        const QString name = addSuffix(fname, QStringLiteral("%1-%2").arg(key.row).arg(kind));
        savePictureOf(parts_.imageBox.area()->viewOf(*map->img()), barOf(*map, map->scale()),
                      withExtension(name, QStringLiteral("png")), key);
        saved = true;
    }
    if (!saved)
        fault(QStringLiteral("No result map to save as %1").arg(quoted(fname)));
    // A picture that was made anew may be the one on show.
    parts_.imageBox.area()->update();
}

void SaveConductor::saveFlatDark()
{
    const QSize size = parts_.data.size;
    const auto flat = QStringLiteral("flat.dat");
    const auto dark = QStringLiteral("dark.dat");
    if (TiffWriter::writeOnes(flat, size.width(), size.height()))
        logWritten(flat);
    if (TiffWriter::writeZeros(dark, size.width(), size.height()))
        logWritten(dark);
}

void SaveConductor::showSaveDataDialog()
{
    showDialogOfForm(*saveDataDialog_);
}

void SaveConductor::showSaveAllDataDialog()
{
    showDialogOfForm(*saveAllDataDialog_);
}

/// With filters and an extension of the form that is chosen now.
void SaveConductor::showDialogOfForm(LateDialog& dialog)
{
    const bool text = parts_.config.form() == MapForm::Text;
    dialog.get()->setNameFilters(
        {text ? tr("Data File (*.dat)") : tr("Tiff File (*.tif)"), tr("Any Files (* *.*)")});
    dialog.get()->setDefaultSuffix(text ? QStringLiteral("dat") : QStringLiteral("tif"));
    dialog.show();
}

/// The chosen result map; none, with one fault line, when nothing is chosen.
std::optional<MapKey> SaveConductor::chosenToSave(const QString& fname) const
{
    const std::optional<MapKey> key = view_.chosenResult();
    if (!key)
        fault(QStringLiteral("No result map is chosen to save as %1").arg(quoted(fname)));
    return key;
}

void SaveConductor::saveData(const QString& fname)
{
    const MapForm form = parts_.config.form();
    qDebug().noquote() << (form == MapForm::Text ? "selected text" : "selected tiff");
    if (const std::optional<MapKey> key = chosenToSave(fname))
        saveMapWithBar(*key, mapFileName(fname, parts_.book.label(*key), form), form);
}

void SaveConductor::saveAllData(const QString& fname)
{
    const MapForm form = parts_.config.form();
    bool found = false;
    for (const MapKey& key : keysToSave()) {
        saveMapWithBar(key, mapFileName(fname, parts_.book.fullLabel(key), form), form);
        found = true;
    }
    if (!found)
        fault(QStringLiteral("No finished result map to save as %1").arg(quoted(fname)));
}

void SaveConductor::saveDataAsTiff(const QString& fname, int ext)
{
    saveChosen(fname, QString::number(ext), MapForm::Tiff16);
}

void SaveConductor::saveDataAsText(const QString& fname, int ext)
{
    saveChosen(fname, QString::number(ext), MapForm::Text);
}

void SaveConductor::saveChosen(const QString& fname, const QString& label, MapForm form)
{
    if (const std::optional<MapKey> key = chosenToSave(fname))
        saveMap(*key, mapFileName(fname, label, form), form);
}

bool SaveConductor::writeMap(Analyzed2DRes& map, const QString& file, MapForm form) const
{
    switch (form) {
    case MapForm::Tiff16:
        qDebug() << "saveDataAsTiff";
        return saveMapAsTiff(map, file, parts_.config.tiffOptions());
    case MapForm::FloatTiff:
        return saveMapAsFloatTiff(map, file, parts_.config.tiffOptions());
    case MapForm::Text:
        break;
    }
    return saveMapAsText(map, file, parts_.config.textOptions());
}

bool SaveConductor::saveMap(const MapKey& key, const QString& file, MapForm form)
{
    if (!writeMap(parts_.book.at(key), file, form)) {
        lastFault_ = tr("%1 could not be written, see Messages").arg(QFileInfo(file).fileName());
        Q_EMIT savedChanged();
        return false;
    }
    tellSaved(key, file);
    lastFault_.clear();
    saved_.insert(key);
    Q_EMIT saved(file);
    Q_EMIT savedChanged();
    return true;
}

QVector<MapKey> SaveConductor::keysToSave() const
{
    QVector<MapKey> keys;
    for (const MapKey& key : parts_.book.resultKeys()) {
        if (parts_.book.isComplete(key) && parts_.book.at(key).whyNotSaved(true).isEmpty())
            keys.append(key);
    }
    return keys;
}

int SaveConductor::savedMaps() const
{
    const QVector<MapKey> keys = keysToSave();
    return int(std::count_if(keys.begin(), keys.end(),
                             [this](const MapKey& key) { return saved_.count(key) > 0; }));
}

/// Numbers on their way into a map are not those that were saved.
void SaveConductor::forgetSaved(const MapKey& key)
{
    if (parts_.book.stateOf(key) == MapState::Filling)
        saved_.erase(key);
    Q_EMIT savedChanged();
}

/// What a user should know of a file with this map in it: whose place it took, and what is missing.
void SaveConductor::tellSaved(const MapKey& key, const QString& file)
{
    writtenMaps_.add(file, parts_.book.fullLabel(key));
    if (!parts_.book.isComplete(key))
        qDebug().noquote() << QStringLiteral("Map %1 saved as %2 is not complete: not all of its "
                                             "positions were reached")
                                  .arg(parts_.book.fullLabel(key), quoted(file));
}

/// The bar that tells what the colours of a map mean, over the scale.
QImage SaveConductor::barOf(const Analyzed2DRes& map, const ValueRange& scale) const
{
    return map.classColours().empty() ? parts_.imageBox.bar()->barImage(scale.min, scale.max)
                                      : ColorBar::classImage(map.classColours());
}

/// The bar tells the scale of the file beside it; numbers as they are have that of the screen.
void SaveConductor::saveMapWithBar(const MapKey& key, const QString& file, MapForm form)
{
    if (!saveMap(key, file, form) || form == MapForm::Text)
        return;
    const TiffSaveOptions o = parts_.config.tiffOptions();
    const Analyzed2DRes& map = parts_.book.at(key);
    const Analyzed2DRes::Scale scale = form == MapForm::Tiff16
                                           ? map.scaleForSave(o.fixedScale, o.scaleMin, o.scaleMax)
                                           : map.scale();
    // The suffix carries a hyphen of its own, on purpose: map-0.tif gives map-0--cBar.tif.
    savePicture(barOf(map, scale), addSuffix(file, QStringLiteral("-cBar")));
}
