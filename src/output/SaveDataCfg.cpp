#include "output/SaveDataCfg.h"

#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/FieldText.h"
#include "ui_SaveDataCfg.h"

#include <QDebug>

SaveDataCfg::SaveDataCfg(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_SaveDataCfg>())
{
    ui_->setupUi(this);
    const auto chosen = [this] { toggledSaveAs(form() != MapForm::Text); };
    for (const QRadioButton* choice : {ui_->SaveAsTiff, ui_->SaveAsFloatTiff, ui_->SaveAsTextData})
        connect(choice, &QRadioButton::toggled, this, chosen);
    chosen();
}

SaveDataCfg::~SaveDataCfg() = default;

MapForm SaveDataCfg::form() const
{
    if (ui_->SaveAsTextData->isChecked())
        return MapForm::Text;
    return ui_->SaveAsFloatTiff->isChecked() ? MapForm::FloatTiff : MapForm::Tiff16;
}

TiffSaveOptions SaveDataCfg::tiffOptions() const
{
    return {ui_->TiffFixedScale->isChecked(), ui_->TiffScaleMin->text().toDouble(),
            ui_->TiffScaleMax->text().toDouble(), ui_->TiffAsAnalyzed->isChecked(),
            ui_->TiffClamp->isChecked()};
}

TextSaveOptions SaveDataCfg::textOptions() const
{
    return {ui_->TiffAsAnalyzed->isChecked(), ui_->DataCommaSeparated->isChecked(),
            ui_->DataXYVal->isChecked()};
}

void SaveDataCfg::toggledSaveAs(bool f)
{
    ui_->TiffCfg->setEnabled(f);
    ui_->TextCfg->setEnabled(!f);
    ui_->TiffScale->setEnabled(form() == MapForm::Tiff16);
}

void SaveDataCfg::setSaveAsTiff()
{
    ui_->SaveAsTiff->setChecked(true);
}

void SaveDataCfg::setSaveAsFloatTiff()
{
    ui_->SaveAsFloatTiff->setChecked(true);
}

void SaveDataCfg::setSaveAsText()
{
    ui_->SaveAsTextData->setChecked(true);
}

void SaveDataCfg::setSaveTiffScaleFixed(bool f)
{
    ui_->TiffFixedScale->setChecked(f);
}

void SaveDataCfg::setSaveTiffScaleMin(double min)
{
    ui_->TiffScaleMin->setText(fieldText(min));
}

void SaveDataCfg::setSaveTiffScaleMax(double max)
{
    ui_->TiffScaleMax->setText(fieldText(max));
}

void SaveDataCfg::setSaveTiffClamp(bool f)
{
    ui_->TiffClamp->setChecked(f);
}

void SaveDataCfg::setSaveTiffAsAnalyzed(bool f)
{
    ui_->TiffAsAnalyzed->setChecked(f);
}

void SaveDataCfg::setSaveTextAsCSV()
{
    ui_->DataCommaSeparated->setChecked(true);
}

void SaveDataCfg::setSaveTextAsSSV()
{
    ui_->DataSpaceSeparated->setChecked(true);
}

void SaveDataCfg::setSaveTextAsXYVal()
{
    ui_->DataXYVal->setChecked(true);
}

void SaveDataCfg::setSaveTextAsValValVal()
{
    ui_->DataValValVal->setChecked(true);
}

void SaveDataCfg::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdSaveDataCfgShowWindow, [this](const Cmd&) { show(); });
    book.action(ExCmdSaveDataCfgSaveAsTiff, [this](const Cmd&) {
        qDebug() << "setting save as tiff";
        setSaveAsTiff();
    });
    book.action(ExCmdSaveDataCfgSaveAsText, [this](const Cmd&) {
        qDebug() << "setting save as text";
        setSaveAsText();
    });
    book.action(ExCmdSaveDataCfgSaveAsFloatTiff, [this](const Cmd&) { setSaveAsFloatTiff(); });
    book.onOff(ExCmdSaveDataCfgTiffFixScale, ui_->TiffFixedScale);
    book.number(ExCmdSaveDataCfgTiffScaleMin, ui_->TiffScaleMin);
    book.number(ExCmdSaveDataCfgTiffScaleMax, ui_->TiffScaleMax);
    book.onOff(ExCmdSaveDataCfgTiffAsAnalyzed, ui_->TiffAsAnalyzed);
    book.onOff(ExCmdSaveDataCfgTiffClamp, ui_->TiffClamp);
    book.action(ExCmdSaveDataCfgTextAsCsv, [this](const Cmd&) { setSaveTextAsCSV(); });
    book.action(ExCmdSaveDataCfgTextAsSsv, [this](const Cmd&) { setSaveTextAsSSV(); });
    book.action(ExCmdSaveDataCfgTextAsXyz, [this](const Cmd&) { setSaveTextAsXYVal(); });
    book.action(ExCmdSaveDataCfgTextAsVals, [this](const Cmd&) { setSaveTextAsValValVal(); });
}
