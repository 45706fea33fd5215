#pragma once

#include <QObject>
#include <QStringList>

class QDropEvent;
class QMimeData;
class QWidget;

/// The patterns of a file dialog's filter, what stands in its last brackets: "*.a" and "*.b" of
/// "Some files (*.a *.b)".
QStringList filterPatterns(const QString& filter);

/// Paths of the local files and folders; none when anything else is among them.
QStringList localPaths(const QMimeData& data);

/// Lets a widget take files that are dropped on it or on a widget within it. Only local files and
/// folders count; texts go to the fields as ever.
class FileDrop : public QObject
{
    Q_OBJECT
public:
    enum Mode
    {
        OneFile,  ///< a single file
        Files,    ///< any number of files
        ManyFiles ///< any number of files, or a folder
    };

    /// Takes files whose name matches a pattern, or any file when there are none. The children of
    /// the target are to be made before. The target owns the new object.
    FileDrop(QWidget* target, Mode mode, const QStringList& patterns = {});

Q_SIGNALS:
    /// Existing files, in their natural order; at least one.
    void dropped(const QStringList& files);
    /// A folder was among what was dropped, which is left to whoever looks through folders.
    void folderDropped(const QString& path);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isWelcome(const QMimeData& data) const;
    bool matches(const QString& path) const;
    QStringList filesOf(const QMimeData& data) const;
    void take(QDropEvent& event);

    Mode mode_;
    QStringList patterns_;
};
