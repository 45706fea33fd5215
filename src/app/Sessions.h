#pragma once

#include <QObject>

class BatchCtrl;
class History;
class LateDialog;
class QWidget;

/// Saves the state of all work as a session, a batch that brings it about again, and opens such
/// files.
class Sessions : public QObject
{
    Q_OBJECT
public:
    /// They outlive it; dialogs belong to the window.
    Sessions(History& history, BatchCtrl& batch, QWidget& window);

    /// Let the user choose the file.
    void chooseToSave();
    void chooseToOpen();
    /// Writes stacks, energies, dark images and areas, bad pixels, conditions, references,
    /// standard, shift map and saved maps by their files, and what is chosen in the panels. A file
    /// that can't be written keeps its old contents and costs one log line.
    void save(const QString& fname);
    /// Runs the session's lines, after everything was brought back to where a fresh program starts.
    /// A file that can't be read costs one log line and changes nothing.
    void open(const QString& fname);

Q_SIGNALS:
    /// The session was saved or opened.
    void used(const QString& fname);

private:
    History& history_;
    BatchCtrl& batch_;
    LateDialog* saveDialog_;
    LateDialog* openDialog_;
};
