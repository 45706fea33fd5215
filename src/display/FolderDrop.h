#pragma once

#include <QObject>

class QDropEvent;
class QMimeData;
class QWidget;

/// Lets a window take a folder, or images of one folder, that are dropped anywhere in it but on a
/// widget that takes files itself: what such a widget refuses is refused.
class FolderDrop : public QObject
{
    Q_OBJECT
public:
    /// The children of the window are to be made before; the window owns the new object.
    explicit FolderDrop(QWidget* window);

    /// The folder that was dropped, or that all the dropped images lie in; empty for anything else.
    static QString folderOf(const QMimeData& data);

Q_SIGNALS:
    void dropped(const QString& folder);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
