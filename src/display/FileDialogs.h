#pragma once

#include <QFileDialog>
#include <QVector>

#include <functional>

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

/// Chooses a folder. Enter takes the one that it shows.
class FolderDialog : public FileDialog
{
    Q_OBJECT
public:
    explicit FolderDialog(QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
};

/// Chooses energy shift map files.
class EShiftMapDialog : public FileDialog
{
    Q_OBJECT
public:
    explicit EShiftMapDialog(QWidget* parent = nullptr);
};

/// A file dialog that is made when it is first needed. Making one takes some 10 ms, there are many,
/// and a session uses few of them.
class LateDialog : public QObject
{
    Q_OBJECT
public:
    /// The function makes the dialog, ready but for its folder; with an owner that lives as long as
    /// this.
    LateDialog(std::function<QFileDialog*()> make, QObject* parent);

    /// The dialog, made now if it has not been.
    QFileDialog* get();
    QFileDialog* made() const { return dialog_; } ///< null before
    /// Brings the dialog to a folder, now or when it is made.
    void setFolder(const QString& path);
    /// Gives the dialog its title, in place of that which it was made with.
    void setTitle(const QString& title);

public Q_SLOTS:
    void show();

Q_SIGNALS:
    void wasMade(QFileDialog* dialog);
    // Of the dialog, passed on; several files in their natural order.
    void fileSelected(const QString& file);
    void filesSelected(const QStringList& files);

private:
    std::function<QFileDialog*()> make_;
    QFileDialog* dialog_ = nullptr;
    QString folder_; ///< for a dialog not made yet; empty for the one that it starts in
    QString title_;  ///< empty for the one that it is made with
};

/// Keeps all its dialogs in the folder in which the user last looked or chose a file.
class FDGroup : public QObject
{
    Q_OBJECT
public:
    /// A group that begins where its dialogs do and is forgotten with the session.
    explicit FDGroup(QObject* parent = nullptr);
    /// A group that goes on, from session to session, in the folder kept under its name. It begins
    /// in its root when there is none, when it is gone, or when it was kept under another root.
    FDGroup(const QString& name, const QString& root, QObject* parent);

    /// Takes a dialog into the group, once; it must outlive the group or be deleted before its
    /// next signal.
    void add(QFileDialog* dialog);
    void add(LateDialog* dialog);
    /// Those that have been made.
    const QVector<QFileDialog*>& dialogs() const { return dialogs_; }

public Q_SLOTS:
    void currentChanged(const QString& path);
    void directoryEntered(const QString& dir);

private:
    void sameDirectory(const QString& path);
    void chosen(const QString& file);
    QString keptFolder() const;
    void keepFolder(const QString& folder) const;

    const QString name_; ///< in the store; empty for a group that is not kept
    const QString root_;
    QString folder_; ///< of all dialogs; empty while each is where it started
    QVector<QFileDialog*> dialogs_;
    QVector<LateDialog*> lateDialogs_; ///< made or not
};
