#pragma once

#include "common/Mark.h"

#include <QMap>
#include <QObject>
#include <QTimer>

class AnalysisConductor;
class BatchConductor;
class CalibConductor;
class CommandBook;
class DiagnosticsConductor;
class FDGroup;
class FolderConductor;
class LateDialog;
class NoticeBar;
class ProgressSum;
class QMainWindow;
class QPushButton;
class ExportConductor;
class RegistrationConductor;
class SaveConductor;
class StackConductor;
struct Measurement;
struct Panels;

/// What surrounds the panels of the main window: the status bar with its line for people, its
/// progress and its Stop, and the folders of the dialogs.
class Shell : public QObject
{
    Q_OBJECT
public:
    /// What it surrounds; all of it outlives it.
    struct Parts
    {
        QMainWindow& window;
        Panels& panels;
        const Measurement& data;
        StackConductor& stacks;
        FolderConductor& folders;
        CalibConductor& calibration;
        AnalysisConductor& analysis;
        DiagnosticsConductor& diagnostics;
        ExportConductor& exporting;
        RegistrationConductor& registration;
        SaveConductor& saving;
        BatchConductor& batch;
    };
    explicit Shell(const Parts& parts);

    void bindCommands(CommandBook& book);

    /// From now on every dialog of files follows the folder in which its kind of file was last
    /// used, also in earlier sessions. Before, dialogs start in their roots.
    void groupDialogs();

public Q_SLOTS:
    /// Shows a line for people. What goes into the log is another matter.
    void notice(const QString& text, Mark mark = Mark::Done);
    /// Stops loads, walks, calibrations and the batch.
    void stopAll();

private:
    void setupStatusBar();
    void connectNotices();
    void connectProgress();
    void connectProgressOfWalks();
    void connectExport();
    void connectDarkCheck();
    void tellLoaded();
    void tellAnalysis(bool whole);
    void tellCalibration(bool running);
    void tellRegistration(bool whole);
    void showStop();
    bool isBusy() const;
    void nameReferenceDialogs();
    QString fileKind(const LateDialog& dialog) const;
    void groupDialog(LateDialog* dialog);
    void takeReferenceRow();

    const Parts parts_;
    NoticeBar* notices_ = nullptr;
    ProgressSum* progress_ = nullptr;
    QPushButton* stop_ = nullptr;
    QTimer stopShown_; ///< Stop comes and goes behind what lasts longer than a blink
    QMap<QString, FDGroup*> dialogGroups_; ///< by the kind of file; children of this
};
