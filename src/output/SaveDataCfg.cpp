#include "output/SaveDataCfg.h"

#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/FieldText.h"
#include "display/FieldWidth.h"
#include "display/NumberFields.h"
#include "display/PanelDock.h"
#include "display/ReadingOrder.h"
#include "display/WrapLayout.h"
#include "ui_SaveDataCfg.h"

#include <QDebug>

namespace {

/// Width that the longest caption may take in a narrow dock. [pixels]
constexpr int mostCaptionWidth = 330;

/// Breaks a caption that is wider, as in large fonts, near its middle.
void foldCaption(QAbstractButton* button)
{
    QString text = button->text();
    const int middle = text.indexOf(QLatin1Char(' '), text.size() / 2);
    if (button->sizeHint().width() <= mostCaptionWidth || middle < 0)
        return;
    text[middle] = QLatin1Char('\n');
    button->setText(text);
}

} // namespace

SaveDataCfg::SaveDataCfg(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_SaveDataCfg>())
    , numbers_(new NumberFields(this))
{
    ui_->setupUi(this);
    for (QLineEdit* field : {ui_->TiffScaleMin, ui_->TiffScaleMax})
        fitDigits(field, 9);
    numbers_->watch(ui_->TiffScaleMin, tr("Scale Min"));
    numbers_->watch(ui_->TiffScaleMax, tr("Scale Max"));
    connect(numbers_, &NumberFields::changed, this, &SaveDataCfg::fieldsChanged);
    foldCaption(ui_->TiffAsAnalyzed);
    wrapLine(ui_->SeparatorColumn, ui_->SeparatorRow);
    tabInReadingOrder(this);
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

QStringList SaveDataCfg::unreadable() const
{
    return numbers_->unreadable();
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
    book.action(ExCmdSaveDataCfgShowWindow, [this](const Cmd&) { raisePanel(this); });
    book.action(ExCmdSaveDataCfgSaveAsTiff, [this](const Cmd&) {
        qDebug() << "setting save as tiff";
        setSaveAsTiff();
    });
    book.action(ExCmdSaveDataCfgSaveAsText, [this](const Cmd&) {
        qDebug() << "setting save as text";
        setSaveAsText();
    });
    book.action(ExCmdSaveDataCfgSaveAsFloatTiff, [this](const Cmd&) { setSaveAsFloatTiff(); });
    book.history().follow([this] {
        return QStringList(batchLine(ui_->SaveAsTiff->isChecked() ? ExCmdSaveDataCfgSaveAsTiff
                                     : ui_->SaveAsFloatTiff->isChecked()
                                         ? ExCmdSaveDataCfgSaveAsFloatTiff
                                         : ExCmdSaveDataCfgSaveAsText));
    });
    book.onOff(ExCmdSaveDataCfgTiffFixScale, ui_->TiffFixedScale);
    book.number(ExCmdSaveDataCfgTiffScaleMin, ui_->TiffScaleMin);
    book.number(ExCmdSaveDataCfgTiffScaleMax, ui_->TiffScaleMax);
    book.onOff(ExCmdSaveDataCfgTiffAsAnalyzed, ui_->TiffAsAnalyzed);
    book.onOff(ExCmdSaveDataCfgTiffClamp, ui_->TiffClamp);
    book.check(ExCmdSaveDataCfgTextAsCsv, ui_->DataCommaSeparated);
    book.check(ExCmdSaveDataCfgTextAsSsv, ui_->DataSpaceSeparated);
    book.check(ExCmdSaveDataCfgTextAsXyz, ui_->DataXYVal);
    book.check(ExCmdSaveDataCfgTextAsVals, ui_->DataValValVal);
}
