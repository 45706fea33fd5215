#include "output/SaveBox.h"

#include "display/PanelForm.h"
#include "display/ReadingOrder.h"
#include "ui_SaveBox.h"

#include <QScrollArea>

SaveBox::SaveBox(QWidget* parent)
    : QGroupBox(parent)
    , ui_(std::make_unique<Ui_SaveBox>())
{
    ui_->setupUi(this);
    // Analyses and exports that this version does not have yet.
    ui_->FourierA->setEnabled(false);
    ui_->SaveProcPage->setEnabled(false);
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
