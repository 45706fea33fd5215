#include "output/SaveDataCfg.h"

#include "common/FieldText.h"
#include "ui_SaveDataCfg.h"

SaveDataCfg::SaveDataCfg(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_SaveDataCfg>())
{
    ui_->setupUi(this);
    connect(ui_->SaveAsTiff, &QRadioButton::toggled, this, &SaveDataCfg::toggledSaveAs);
    toggledSaveAs(savesAsTiff());
}

SaveDataCfg::~SaveDataCfg() = default;

bool SaveDataCfg::savesAsTiff() const
{
    return ui_->SaveAsTiff->isChecked();
}

TiffSaveOptions SaveDataCfg::tiffOptions() const
{
    return {ui_->TiffFixedScale->isChecked(), ui_->TiffScaleMin->text().toDouble(),
            ui_->TiffScaleMax->text().toDouble(), ui_->TiffAsAnalyzed->isChecked()};
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
}

void SaveDataCfg::setSaveAsTiff()
{
    ui_->SaveAsTiff->setChecked(true);
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
