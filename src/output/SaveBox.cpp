#include "output/SaveBox.h"

#include "ui_SaveBox.h"

SaveBox::SaveBox(QWidget* parent)
    : QGroupBox(parent)
    , ui_(std::make_unique<Ui_SaveBox>())
{
    ui_->setupUi(this);
    // Analyses and exports that this version does not have yet.
    ui_->FourierA->setEnabled(false);
    ui_->SaveProcPage->setEnabled(false);

    connect(ui_->SaveImage, &QPushButton::clicked, this, &SaveBox::saveImage);
    connect(ui_->SaveAllImages, &QPushButton::clicked, this, &SaveBox::saveAllImages);
    connect(ui_->SaveFlatDark, &QPushButton::clicked, this, &SaveBox::saveFlatDark);
    connect(ui_->SaveData, &QPushButton::clicked, this, &SaveBox::saveData);
    connect(ui_->DeGlitch, &QPushButton::clicked, this, &SaveBox::deglitch);
    connect(ui_->ShowDeGlitched, &QCheckBox::toggled, this, &SaveBox::showDeglitchedToggled);
    connect(ui_->CheckVals, &QPushButton::clicked, this, &SaveBox::checkVals);
}

SaveBox::~SaveBox() = default;

void SaveBox::setShowDeglitched(bool f)
{
    const QSignalBlocker quiet(ui_->ShowDeGlitched);
    ui_->ShowDeGlitched->setChecked(f);
}
