#include "display/FolderDrop.h"

#include "display/FileDialogs.h"
#include "display/FileDrop.h"

#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QWidget>

namespace {

/// The widget, or one that it lies in, takes files itself.
bool takesFiles(const QWidget* widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (widget->findChild<FileDrop*>(QString(), Qt::FindDirectChildrenOnly))
            return true;
    }
    return false;
}

} // namespace

FolderDrop::FolderDrop(QWidget* window)
    : QObject(window)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
    // Fields would take the names of files as a text.
    for (QWidget* child : window->findChildren<QWidget*>()) {
        if (child->acceptDrops() && child->window() == window->window() && !takesFiles(child))
            child->installEventFilter(this);
    }
}

QString FolderDrop::folderOf(const QMimeData& data)
{
    const QStringList paths = localPaths(data);
    if (paths.isEmpty())
        return {};
    if (paths.size() == 1 && QFileInfo(paths.first()).isDir())
        return paths.first();
    const QStringList images = filterPatterns(SelectImgDialog::imageFilter());
    QString folder = QFileInfo(paths.first()).absolutePath();
    for (const QString& path : paths) {
        const QFileInfo file(path);
        if (file.absolutePath() != folder || file.isDir() || !QDir::match(images, file.fileName()))
            return {};
    }
    return folder;
}

bool FolderDrop::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto& drop = static_cast<QDropEvent&>(*event);
    if (!drop.mimeData()->hasUrls())
        return QObject::eventFilter(watched, event);
    // An event that a row refused comes here with its place in the window.
    auto* const widget = static_cast<QWidget*>(watched);
    const QWidget* const below = widget->childAt(drop.pos());
    const QString folder =
        takesFiles(below ? below : widget) ? QString() : folderOf(*drop.mimeData());
    drop.setAccepted(!folder.isEmpty());
    if (folder.isEmpty())
        return true;
    drop.setDropAction(Qt::CopyAction); // never moved away from where they lie
    drop.accept();
    if (type == QEvent::Drop)
        Q_EMIT dropped(folder);
    return true;
}
