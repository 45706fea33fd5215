#pragma once

#include <QFileDialog>
#include <QVector>

/// A file dialog drawn by Qt itself: the same on every desktop, and without one. It starts in the
/// data root.
class FileDialog : public QFileDialog
{
    Q_OBJECT
public:
    explicit FileDialog(QWidget* parent = nullptr);
};

/// Chooses image files of the three formats; existing ones.
class SelectImgDialog : public FileDialog
{
    Q_OBJECT
public:
    explicit SelectImgDialog(QWidget* parent = nullptr);

    /// The filter of the three formats.
    static QString imageFilter();
};

/// Chooses energy shift map files.
class EShiftMapDialog : public FileDialog
{
    Q_OBJECT
public:
    explicit EShiftMapDialog(QWidget* parent = nullptr);
};

/// Keeps all its dialogs in the folder in which the user last looked.
class FDGroup : public QObject
{
    Q_OBJECT
public:
    explicit FDGroup(QObject* parent = nullptr);

    /// Takes a dialog into the group, once; it must outlive the group or be deleted before its
    /// next signal.
    void add(QFileDialog* dialog);
    const QVector<QFileDialog*>& dialogs() const { return dialogs_; }

public Q_SLOTS:
    void currentChanged(const QString& path);
    void directoryEntered(const QString& dir);

private:
    void sameDirectory(const QString& path);

    QVector<QFileDialog*> dialogs_;
};
