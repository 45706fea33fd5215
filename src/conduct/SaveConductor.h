#pragma once

#include "common/ExCmdId.h"
#include "image/DisplayRange.h"
#include "maps/MapKinds.h"
#include "output/MapExport.h"
#include "output/WrittenMaps.h"

#include <QObject>
#include <QStringList>

#include <optional>
#include <set>

class Analyzed2DRes;
class Analyzer;
class CommandBook;
class History;
class ImageBox;
class LateDialog;
class MapBook;
class QImage;
class QWidget;
class SaveBox;
class SaveDataCfg;
class ViewConductor;
struct Measurement;

/// Saves pictures and maps. Maps are asked for by their keys, and none is shown to be saved.
class SaveConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it.
    struct Parts
    {
        const Measurement& data;
        MapBook& book;
        const ImageBox& imageBox;
        SaveBox& saveBox;
        SaveDataCfg& config;
        const Analyzer& panel;
    };
    /// The dialogs belong to the window.
    SaveConductor(const Parts& parts, ViewConductor& view, QWidget& window);

    void bindCommands(CommandBook& book);

    /// Finished result maps with something in them, and how many of those are saved as numbers.
    int mapsToSave() const { return keysToSave().size(); }
    int savedMaps() const;
    /// The map whose writing failed last, in words for people; empty since one was written.
    QString lastFault() const { return lastFault_; }

public Q_SLOTS:
    /// Saves the part of the image or map in view, and the colour bar beside it.
    void saveImage(const QString& fname);
    /// saveImage() under the name with "-" and num in front of its extension.
    void saveImageWNum(const QString& fname, const QString& num);
    /// Saves each kind of map of the row that is chosen, under "name-row-kind".
    void saveAllImages(const QString& fname);
    void showSaveDataDialog();
    void showSaveAllDataDialog();
    /// Saves the numbers of the chosen result map in the chosen form, under "name-label" (see
    /// MapBook::label()), and the colour bar beside a TIFF file. A map that holds nothing, or none,
    /// costs one fault line.
    void saveData(const QString& fname);
    /// The same of every finished result map, under "name-full label".
    void saveAllData(const QString& fname);
    /// The numbers of the chosen result map alone, under "name-ext".
    void saveDataAsTiff(const QString& fname, int ext);
    void saveDataAsText(const QString& fname, int ext);
    /// Writes flat.dat (ones) and dark.dat (zeros) of the image size to the working directory.
    void saveFlatDark();

Q_SIGNALS:
    /// Other maps are saved, or are to be, than before; or writing one failed.
    void savedChanged();
    void saved(const QString& file); ///< the numbers of a map
    void cancelled();                ///< a dialog was closed without a name

private:
    using Save = void (SaveConductor::*)(const QString& fname);

    LateDialog* newDialog(const QString& title, const QStringList& filters, const QString& suffix,
                          EX_CMD_ID command, Save save);
    void connectBox(LateDialog* image, LateDialog* allImages);
    void showDialogOfForm(LateDialog& dialog);
    bool savePictureOf(const QImage& picture, const QImage& bar, const QString& file,
                       const std::optional<MapKey>& key);
    std::optional<MapKey> chosenToSave(const QString& fname) const;
    void saveChosen(const QString& fname, const QString& label, MapForm form);
    bool writeMap(Analyzed2DRes& map, const QString& file, MapForm form) const;
    bool saveMap(const MapKey& key, const QString& file, MapForm form);
    QImage barOf(const Analyzed2DRes& map, const ValueRange& scale) const;
    void saveMapWithBar(const MapKey& key, const QString& file, MapForm form);
    void tellSaved(const MapKey& key, const QString& file);
    QVector<MapKey> keysToSave() const;
    void forgetSaved(const MapKey& key);

    const Parts parts_;
    ViewConductor& view_;
    QWidget& window_;
    LateDialog* saveDataDialog_;
    LateDialog* saveAllDataDialog_;
    WrittenMaps writtenMaps_;
    History* history_ = nullptr; ///< once commands are bound
    std::set<MapKey> saved_;     ///< of the maps as they are
    QString lastFault_;
};
