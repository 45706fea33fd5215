#include "display/FileDrop.h"

#include "common/FileNames.h"

#include <QDebug>
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include <algorithm>

namespace {

bool isFolder(const QString& path)
{
    return QFileInfo(path).isDir();
}

} // namespace

QStringList filterPatterns(const QString& filter)
{
    const int open = filter.lastIndexOf(QLatin1Char('('));
    const int close = filter.lastIndexOf(QLatin1Char(')'));
    if (open < 0 || close < open)
        return {};
    return filter.mid(open + 1, close - open - 1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QStringList localPaths(const QMimeData& data)
{
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (!url.isLocalFile())
            return {};
        paths.append(url.toLocalFile());
    }
    return paths;
}

FileDrop::FileDrop(QWidget* target, Mode mode, const QStringList& patterns)
    : QObject(target)
    , mode_(mode)
    , patterns_(patterns)
{
    target->setAcceptDrops(true);
    target->installEventFilter(this);
    // A field that takes texts would take the names of the files as one. Dialogs that the target
    // owns go their own way.
    for (QWidget* child : target->findChildren<QWidget*>()) {
        if (child->acceptDrops() && child->window() == target->window())
            child->installEventFilter(this);
    }
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto& drop = static_cast<QDropEvent&>(*event);
    if (!drop.mimeData()->hasUrls())
        return QObject::eventFilter(watched, event);
    if (!isWelcome(*drop.mimeData())) {
        drop.ignore();
    } else {
        drop.setDropAction(Qt::CopyAction); // never moved away from where they lie
        drop.accept();
        if (type == QEvent::Drop)
            take(drop);
    }
    return true;
}

/// Looks at names alone: it is asked at each move of the mouse.
bool FileDrop::isWelcome(const QMimeData& data) const
{
    const QStringList paths = localPaths(data);
    if (mode_ == OneFile)
        return paths.size() == 1 && matches(paths.first()) && !isFolder(paths.first());
    return std::any_of(paths.begin(), paths.end(), [this](const QString& path) {
        return isFolder(path) ? mode_ == ManyFiles : matches(path);
    });
}

bool FileDrop::matches(const QString& path) const
{
    return patterns_.isEmpty() || QDir::match(patterns_, QFileInfo(path).fileName());
}

QStringList FileDrop::filesOf(const QMimeData& data) const
{
    QStringList files;
    for (const QString& path : localPaths(data)) {
        if (matches(path) && QFileInfo(path).isFile())
            files.append(path);
    }
    sortNaturally(files);
    return files;
}

void FileDrop::take(QDropEvent& event)
{
    for (const QString& path : localPaths(*event.mimeData())) {
        if (isFolder(path)) {
            Q_EMIT folderDropped(path);
            return;
        }
    }
    const QStringList files = filesOf(*event.mimeData());
    if (files.isEmpty()) {
        qDebug().noquote() << "Nothing to load in what was dropped:"
                           << localPaths(*event.mimeData()).join(QLatin1Char(' '));
        return;
    }
    Q_EMIT dropped(files);
}
