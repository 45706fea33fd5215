#include "display/XafsFileSelect.h"

#include "display/FileDialogs.h"
#include "display/FileDrop.h"
#include "display/PanelForm.h"
#include "display/RowMark.h"
#include "ui_XafsFileSelect.h"

#include <QFileInfo>

namespace {

constexpr const char* fileStyle = "background-color: rgb(253, 255, 225); color: black;";
/// What an empty field asks for must not look like a file.
constexpr const char* emptyStyle =
    "background-color: rgb(253, 255, 225); color: rgb(112, 112, 112);";

QFileDialog* newDialog(QWidget* parent)
{
    auto* dialog = new FileDialog(parent);
    dialog->setWindowTitle(XafsFileSelect::tr("Select Spectrum File"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters(
        {XafsFileSelect::tr("XAFS Data File (*.dat)"), XafsFileSelect::tr("Any Files (* *.*)")});
    return dialog;
}

} // namespace

XafsFileSelect::XafsFileSelect(QWidget* parent)
    : QFrame(parent)
    , ui_(std::make_unique<Ui_XafsFileSelect>())
    , dialog_(new LateDialog([this] { return newDialog(this); }, this))
{
    ui_->setupUi(this);
    ui_->Caption->hide();
    showFile(QString());
    fitButtons(*this);
    connect(ui_->Select, &QPushButton::clicked, dialog_, &LateDialog::show);
    connect(ui_->Clear, &QPushButton::clicked, this, &XafsFileSelect::clear);
    connect(dialog_, &LateDialog::fileSelected, this, &XafsFileSelect::fileSelected);
    connect(ui_->Use, &QCheckBox::toggled, this, &XafsFileSelect::changedUse);
    connect(new FileDrop(this, FileDrop::OneFile), &FileDrop::dropped, this,
            [this](const QStringList& files) { fileSelected(files.first()); });
}

XafsFileSelect::~XafsFileSelect() = default;

QString XafsFileSelect::fileName() const
{
    return fileName_;
}

bool XafsFileSelect::isUsed() const
{
    return ui_->Use->isChecked();
}

void XafsFileSelect::setCaption(const QString& caption)
{
    ui_->Caption->setText(caption);
    ui_->Caption->setVisible(!caption.isEmpty());
}

bool XafsFileSelect::isUseShown() const
{
    return !ui_->Use->isHidden();
}

QWidget* XafsFileSelect::buttons() const
{
    return ui_->Buttons;
}

void XafsFileSelect::hideUseText()
{
    ui_->Use->setAccessibleName(ui_->Use->text());
    ui_->Use->setText(QString());
}

QVector<QWidget*> XafsFileSelect::tabChain() const
{
    return {ui_->Use, ui_->Selected};
}

/// The end of a path tells files apart, so the row shows that.
void XafsFileSelect::showFile(const QString& fname)
{
    fileName_ = fname;
    ui_->Selected->setText(QFileInfo(fname).fileName());
    ui_->Selected->setStyleSheet(QLatin1String(fname.isEmpty() ? emptyStyle : fileStyle));
    ui_->Selected->setToolTip(fname.isEmpty() ? tr("File of the spectrum") : fname);
}

void XafsFileSelect::load(const QString& fname)
{
    fileValid_ = true;
    showFile(fname);
    const QFileInfo file(fname);
    if (file.exists())
        dialog_->setFolder(file.canonicalPath());
    Q_EMIT newFile(fname);
}

void XafsFileSelect::fileSelected(const QString& fname)
{
    load(fname);
}

void XafsFileSelect::fileNameValid(bool f)
{
    fileValid_ = f;
}

void XafsFileSelect::clear()
{
    showFile(QString());
    fileValid_ = false;
    Q_EMIT cleared();
}

void XafsFileSelect::setUse(bool f)
{
    ui_->Use->setChecked(f);
}

void XafsFileSelect::setMark(const QString& reasons)
{
    ui_->Mark->setReasons(reasons);
}

QString XafsFileSelect::mark() const
{
    return ui_->Mark->reasons();
}

void XafsFileSelect::showUse(bool f)
{
    ui_->Use->setVisible(f);
}
