#pragma once

#include <QMap>
#include <QObject>
#include <QVector>

#include <utility>

class AnalysisConductor;
class CommandBook;
class FDGroup;
class LateDialog;
class ProgressSum;
class QMainWindow;
class QWidget;
class StackConductor;
struct Measurement;
struct Windows;

/// What surrounds the boxes of the main window: the status bar with its progress, the places of the
/// windows, the folders of the dialogs.
class Shell : public QObject
{
    Q_OBJECT
public:
    /// What it surrounds outlives it.
    Shell(QMainWindow& window, Windows& windows, const Measurement& data,
          const StackConductor& stacks, const AnalysisConductor& analysis);

    void bindCommands(CommandBook& book);

    /// Brings the windows to where they stood when a session that called this was closed, shown or
    /// hidden as they were; at the end of this one that is kept anew.
    void restoreWindows();
    /// Keeps the places of the windows, once, in a session that restored them.
    void saveWindows();

private:
    ProgressSum* setupStatusBar();
    void showProgressOfLoads(ProgressSum* bar, const Measurement& data,
                             const StackConductor& stacks);
    void showProgressOfWalk(ProgressSum* bar, const AnalysisConductor& analysis);
    QVector<std::pair<QString, QWidget*>> keptWindows() const;
    void nameReferenceDialogs();
    QString fileKind(const LateDialog& dialog) const;
    void groupDialogs();
    void groupDialog(LateDialog* dialog);
    void takeReferenceRow();

    QMainWindow& window_;
    Windows& windows_;
    QMap<QString, FDGroup*> dialogGroups_; ///< by the kind of file; children of this
    bool keepsWindows_ = false;            ///< places of windows are written at the end
};
