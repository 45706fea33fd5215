#pragma once

#include "output/MapExport.h"

#include <QFrame>

#include <memory>

class CommandBook;
class NumberFields;
class Ui_SaveDataCfg;

/// The part of a panel that says how the numbers of a map are saved.
class SaveDataCfg : public QFrame
{
    Q_OBJECT
public:
    explicit SaveDataCfg(QWidget* parent = nullptr);
    ~SaveDataCfg() override;

    MapForm form() const;
    TiffSaveOptions tiffOptions() const;
    TextSaveOptions textOptions() const;
    /// Names of the number fields that can't be read.
    QStringList unreadable() const;

    /// The commands that set its fields or show it.
    void bindCommands(CommandBook& book);

Q_SIGNALS:
    void fieldsChanged(); ///< a number field can or can't be read any more

public Q_SLOTS:
    /// Enables the settings of TIFF (f) or of text; those of the scale for 16 bits alone.
    void toggledSaveAs(bool f);
    void setSaveAsTiff();
    void setSaveAsFloatTiff();
    void setSaveAsText();
    void setSaveTiffScaleFixed(bool f);
    void setSaveTiffScaleMin(double min);
    void setSaveTiffScaleMax(double max);
    void setSaveTiffClamp(bool f);
    void setSaveTiffAsAnalyzed(bool f);
    void setSaveTextAsCSV();
    void setSaveTextAsSSV();
    void setSaveTextAsXYVal();
    void setSaveTextAsValValVal();

private:
    Q_DISABLE_COPY(SaveDataCfg)

    const std::unique_ptr<Ui_SaveDataCfg> ui_;
    NumberFields* const numbers_;
};
