#include "display/FileDialogs.h"

#include "common/FileNames.h"
#include "common/Settings.h"
#include "common/SettingsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>

namespace {

const auto foldersGroup = QStringLiteral("Folders/");

} // namespace

FileDialog::FileDialog(QWidget* parent)
    : QFileDialog(parent)
{
    setOption(QFileDialog::DontUseNativeDialog);
    setDirectory(DataRoot);
}

SelectImgDialog::SelectImgDialog(QWidget* parent)
    : FileDialog(parent)
{
    setWindowTitle(tr("Select Images"));
    setFileMode(QFileDialog::ExistingFiles);
    setNameFilters({imageFilter(), tr("Any Files (* *.*)")});
}

QString SelectImgDialog::imageFilter()
{
    return tr("BRNX Files, IMG Files, Tiff Files (*.dat *.img *.tif *.tiff)");
}

FolderDialog::FolderDialog(QWidget* parent)
    : FileDialog(parent)
{
    setWindowTitle(tr("Open Folder"));
    setFileMode(QFileDialog::Directory);
    setOption(QFileDialog::ShowDirsOnly);
}

void FolderDialog::showEvent(QShowEvent* event)
{
    // What was chosen last would stand for a folder within the one that is shown.
    if (auto* const name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit")))
        name->clear();
    FileDialog::showEvent(event);
}

EShiftMapDialog::EShiftMapDialog(QWidget* parent)
    : FileDialog(parent)
{
    setWindowTitle(tr("Energy Shift Map"));
    setNameFilters({tr("Energy Shift Map File (*.emp)"), tr("Any Files (* *.*)")});
}

LateDialog::LateDialog(std::function<QFileDialog*()> make, QObject* parent)
    : QObject(parent)
    , make_(std::move(make))
{
}

QFileDialog* LateDialog::get()
{
    if (dialog_)
        return dialog_;
    dialog_ = make_();
    if (!folder_.isEmpty())
        dialog_->setDirectory(folder_);
    if (!title_.isEmpty())
        dialog_->setWindowTitle(title_);
    connect(dialog_, &QFileDialog::fileSelected, this, &LateDialog::fileSelected);
    connect(dialog_, &QFileDialog::filesSelected, this, [this](QStringList files) {
        // They come in the order in which they were clicked.
        sortNaturally(files);
        Q_EMIT filesSelected(files);
    });
    Q_EMIT wasMade(dialog_);
    return dialog_;
}

void LateDialog::setFolder(const QString& path)
{
    if (dialog_)
        dialog_->setDirectory(path);
    else
        folder_ = path;
}

void LateDialog::setTitle(const QString& title)
{
    title_ = title;
    if (dialog_)
        dialog_->setWindowTitle(title);
}

void LateDialog::show()
{
    get()->show();
    // It may stand open behind another window.
    get()->raise();
    get()->activateWindow();
}

FDGroup::FDGroup(QObject* parent)
    : FDGroup(QString(), QString(), parent)
{
}

FDGroup::FDGroup(const QString& name, const QString& root, QObject* parent)
    : QObject(parent)
    , name_(name)
    , root_(root)
    , folder_(name.isEmpty() ? QString() : keptFolder())
{
}

QString FDGroup::keptFolder() const
{
    const QStringList kept = settingsStore().value(foldersGroup + name_).toStringList();
    const bool usable = kept.value(0) == root_ && QFileInfo(kept.value(1)).isDir();
    return usable ? kept.value(1) : root_;
}

void FDGroup::keepFolder(const QString& folder) const
{
    if (!name_.isEmpty())
        settingsStore().setValue(foldersGroup + name_, QStringList{root_, folder});
}

void FDGroup::add(QFileDialog* dialog)
{
    if (dialogs_.contains(dialog))
        return;
    dialogs_.append(dialog);
    connect(dialog, &QFileDialog::currentChanged, this, &FDGroup::currentChanged);
    connect(dialog, &QFileDialog::directoryEntered, this, &FDGroup::directoryEntered);
    // A name that was typed may lie in another folder than the one that was looked at.
    connect(dialog, &QFileDialog::fileSelected, this, &FDGroup::chosen);
    connect(dialog, &QFileDialog::filesSelected, this,
            [this](const QStringList& files) { chosen(files.value(0)); });
    connect(dialog, &QObject::destroyed, this, [this, dialog] { dialogs_.removeAll(dialog); });
}

void FDGroup::add(LateDialog* dialog)
{
    if (lateDialogs_.contains(dialog))
        return;
    lateDialogs_.append(dialog);
    connect(dialog, &QObject::destroyed, this, [this, dialog] { lateDialogs_.removeAll(dialog); });
    if (!folder_.isEmpty())
        dialog->setFolder(folder_);
    if (dialog->made())
        add(dialog->made());
    else
        connect(dialog, &LateDialog::wasMade, this, qOverload<QFileDialog*>(&FDGroup::add));
}

void FDGroup::currentChanged(const QString& path)
{
    // A name that is being typed has no folder yet; Qt would give the working folder for it.
    const QFileInfo file(path);
    if (file.exists())
        sameDirectory(file.canonicalPath());
}

void FDGroup::directoryEntered(const QString& dir)
{
    sameDirectory(dir);
}

void FDGroup::chosen(const QString& file)
{
    const QFileInfo info(file);
    if (info.isAbsolute())
        sameDirectory(info.isDir() ? info.absoluteFilePath() : info.absolutePath());
}

void FDGroup::sameDirectory(const QString& path)
{
    const QString folder = QDir(path).absolutePath();
    if (folder != folder_) {
        folder_ = folder;
        keepFolder(folder);
    }
    // Only dialogs elsewhere are moved, or their signals would run in a circle.
    for (QFileDialog* dialog : qAsConst(dialogs_)) {
        if (dialog->directory().absolutePath() != folder)
            dialog->setDirectory(folder);
    }
    for (LateDialog* dialog : qAsConst(lateDialogs_)) {
        if (!dialog->made())
            dialog->setFolder(folder);
    }
}
