#include "output/SaveBox.h"

#include "batch/CommandBook.h"
#include "display/PanelForm.h"
#include "display/ReadingOrder.h"
#include "display/RunRow.h"
#include "ui_SaveBox.h"

#include <QScrollArea>

SaveBox::SaveBox(QWidget* parent)
    : QGroupBox(parent)
    , ui_(std::make_unique<Ui_SaveBox>())
{
    ui_->setupUi(this);
    setupRows();
    for (QWidget* button : {ui_->SaveImage, ui_->SaveFlatDark})
        ofPictures_.append({button, button->toolTip()});
    for (QWidget* button : std::initializer_list<QWidget*>{
             ui_->SaveAllImages, ui_->SaveData, ui_->DeGlitch, ui_->ShowDeGlitched, ui_->CheckVals})
        ofMaps_.append({button, button->toolTip()});
    setReasons({}, {});
    // The pages' own scroll areas are no stops for Tab.
    for (QScrollArea* page : ui_->ToolBox->findChildren<QScrollArea*>())
        page->setFocusPolicy(Qt::NoFocus);
    fitButtons(*this);
    tabInReadingOrder(this);

    connect(ui_->SaveImage, &QPushButton::clicked, this, &SaveBox::saveImage);
    connect(ui_->SaveAllImages, &QPushButton::clicked, this, &SaveBox::saveAllImages);
    connect(ui_->SaveFlatDark, &QPushButton::clicked, this, &SaveBox::saveFlatDark);
    connect(ui_->SaveData, &QPushButton::clicked, this, &SaveBox::saveData);
    connect(ui_->DeGlitch, &QPushButton::clicked, this, &SaveBox::deglitch);
    connect(ui_->ShowDeGlitched, &QCheckBox::toggled, this, &SaveBox::showDeglitchedToggled);
    connect(ui_->CheckVals, &QPushButton::clicked, this, &SaveBox::checkVals);
}

SaveBox::~SaveBox() = default;

void SaveBox::setupRows()
{
    ui_->SaveEachRun->setNames(QStringLiteral("SaveEachSpectrum"),
                               QStringLiteral("SaveEachProgress"));
    ui_->SaveEachRun->setStartText(tr("Save Each Spectrum"));
    ui_->SaveEachRun->setTips({tr("Write the spectra of all points of the area as text"),
                               tr("Stop; no file is written")});
    ui_->FourierRun->setNames(QStringLiteral("FourierA"), QStringLiteral("FourierProgress"));
    ui_->FourierRun->setStartText(tr("Fourier A."));
    ui_->FourierRun->setTips(
        {tr("Fourier analysis of the intensity over the stack, into the log"), tr("Stop")});
    for (const QCheckBox* box : {ui_->SaveAsNormalizedXAFS, ui_->SaveAsRawXAFS, ui_->SaveAsRaw})
        connect(box, &QCheckBox::toggled, this, &SaveBox::formsChanged);
}

QVector<SpectrumForm> SaveBox::chosenForms() const
{
    QVector<SpectrumForm> forms;
    const std::pair<const QCheckBox*, SpectrumForm> boxes[] = {
        {ui_->SaveAsNormalizedXAFS, SpectrumForm::Normalized},
        {ui_->SaveAsRawXAFS, SpectrumForm::RawXafs},
        {ui_->SaveAsRaw, SpectrumForm::Raw}};
    for (const auto& [box, form] : boxes) {
        if (box->isChecked())
            forms.append(form);
    }
    return forms;
}

RunRow& SaveBox::spectraRow() const
{
    return *ui_->SaveEachRun;
}

RunRow& SaveBox::fourierRow() const
{
    return *ui_->FourierRun;
}

void SaveBox::bindCommands(CommandBook& book)
{
    book.onOff(ExCmdExportNormalized, ui_->SaveAsNormalizedXAFS);
    book.onOff(ExCmdExportRawXafs, ui_->SaveAsRawXAFS);
    book.onOff(ExCmdExportRaw, ui_->SaveAsRaw);
}

void SaveBox::setReasons(const QString& noPicture, const QString& noMap)
{
    disable(ofPictures_, noPicture);
    disable(ofMaps_, noMap);
    QStringList lines{noPicture, noMap};
    lines.removeAll(QString());
    lines.removeDuplicates();
    ui_->SaveReason->setText(lines.join(QLatin1Char('\n')));
    ui_->DeGlitchReason->setText(noMap);
    ui_->CheckReason->setText(noMap);
    for (QLabel* line : {ui_->SaveReason, ui_->DeGlitchReason, ui_->CheckReason})
        line->setVisible(!line->text().isEmpty());
}

void SaveBox::disable(const QVector<Explained>& buttons, const QString& reason)
{
    for (const Explained& explained : buttons) {
        explained.button->setEnabled(reason.isEmpty());
        explained.button->setToolTip(reason.isEmpty() ? explained.toolTip : reason);
    }
}

void SaveBox::setShowDeglitched(bool f)
{
    const QSignalBlocker quiet(ui_->ShowDeGlitched);
    ui_->ShowDeGlitched->setChecked(f);
}
