#include "selection/SelectDataFilesAdditionalSetup.h"

#include "common/SafeInt.h"
#include "display/FileDialogs.h"
#include "display/WrapLayout.h"
#include "ui_SelectDataFilesAdditionalSetup.h"

SelectDataFilesAdditionalSetup::SelectDataFilesAdditionalSetup(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_SelectDataFilesAdditionalSetup>())
    , errPsDialog_(new LateDialog(
          [this] {
              auto* dialog = new FileDialog(this);
              dialog->setFileMode(QFileDialog::ExistingFile);
              return dialog;
          },
          this))
{
    ui_->setupUi(this);
    wrapLine(ui_->ErrPsLayout, ui_->ErrPsButtons);
    connect(ui_->SelectErrPsDef, &QPushButton::clicked, errPsDialog_, &LateDialog::show);
    connect(errPsDialog_, &LateDialog::fileSelected, this,
            &SelectDataFilesAdditionalSetup::errPsDefSelected);
    connect(ui_->UseErrPs, &QCheckBox::toggled, this,
            &SelectDataFilesAdditionalSetup::toggledUseErrPs);
    connect(ui_->SetDarkArea, &QPushButton::clicked, this,
            &SelectDataFilesAdditionalSetup::setDarkArea);
    connect(ui_->UpdateDarkArea, &QPushButton::clicked, this,
            &SelectDataFilesAdditionalSetup::updateDarkArea);
    connect(ui_->ClearDarkArea, &QPushButton::clicked, this,
            &SelectDataFilesAdditionalSetup::clearDarkArea);
}

SelectDataFilesAdditionalSetup::~SelectDataFilesAdditionalSetup() = default;

bool SelectDataFilesAdditionalSetup::showLatest() const
{
    return ui_->ShowLatest->isChecked();
}

void SelectDataFilesAdditionalSetup::setShowLatest(bool f)
{
    ui_->ShowLatest->setChecked(f);
}

bool SelectDataFilesAdditionalSetup::ignoreLive() const
{
    return ui_->IgnoreLiveFiles->isChecked();
}

void SelectDataFilesAdditionalSetup::setIgnoreLive(bool f)
{
    ui_->IgnoreLiveFiles->setChecked(f);
}

bool SelectDataFilesAdditionalSetup::errPointsSwitchedOn() const
{
    return ui_->UseErrPs->isChecked();
}

void SelectDataFilesAdditionalSetup::switchErrPoints(bool f)
{
    ui_->UseErrPs->setChecked(f);
}

void SelectDataFilesAdditionalSetup::errPsDefSelected(const QString& fname)
{
    const bool read = errPoints_.readFile(fname, 0);
    ui_->ErrPsFile->setLine(read ? errPoints_.fileName : QString());
    errPoints_.active = read && ui_->UseErrPs->isChecked();
}

void SelectDataFilesAdditionalSetup::useErrPoints(const QString& fname)
{
    ui_->UseErrPs->setChecked(!fname.isEmpty());
    if (!fname.isEmpty())
        errPsDefSelected(fname);
}

void SelectDataFilesAdditionalSetup::toggledUseErrPs(bool f)
{
    errPoints_.active = f;
}

void SelectDataFilesAdditionalSetup::noDarkArea()
{
    ui_->DarkArea->setText(QStringLiteral("(-,-)-(-,-)"));
}

void SelectDataFilesAdditionalSetup::darkArea(const T20& area)
{
    ui_->DarkArea->setText(QStringLiteral("(%1,%2)-(%3,%4)")
                               .arg(truncatedInt(area.x()))
                               .arg(truncatedInt(area.y()))
                               .arg(truncatedInt(area.x() + area.width()))
                               .arg(truncatedInt(area.y() + area.height())));
}
