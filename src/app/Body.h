#pragma once

#include "calibration/ShiftMap.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"

#include <QMainWindow>

#include <memory>

class AnalysisConductor;
class ArithmeticConductor;
class Analyzer;
class BatchConductor;
class BatchCtrl;
class CalibConductor;
class CommandBook;
class CoverPages;
class CursorConductor;
class DarkConductor;
class DiagnosticsConductor;
class ExplainConductor;
class FolderConductor;
class MenuBar;
class ExportConductor;
class RegistrationConductor;
class SaveConductor;
class SelectDataFiles;
class Sessions;
class Shell;
class SourceReader;
class StackConductor;
class StepWatch;
class ViewConductor;
class WalkConductor;
class Workbench;
enum class Mend;
struct Panels;

/// The main window. It builds all parts, wires them, and ends them in reverse: the data, the boxes
/// of its form and the windows beside it, the conductors, and the shell round them. What happens on
/// a click or a command is the conductors'; nothing is computed or decided here.
class Body : public QMainWindow
{
    Q_OBJECT
public:
    explicit Body(QWidget* parent = nullptr);
    ~Body() override;

    /// A user sits in front of it: the workbench comes up as it was left, and is kept at the end;
    /// pictures follow what a user likes to see, and the first map shows itself. Otherwise the
    /// program writes what no user's taste has a part in.
    void attend();
    /// Closes all windows, and asks nothing: the program ends by a batch, a signal or on its own.
    void endQuietly();

    BatchCtrl* batchCtrl() const;
    Analyzer* analyzer() const;
    const Measurement& data() const { return data_; }
    MapBook& maps() { return book_; }

    const SourceReader& reader() const { return *reader_; }
    StackConductor& stacks() { return *stacks_; }
    DarkConductor& dark() { return *dark_; }
    ViewConductor& view() { return *view_; }
    CursorConductor& cursor() { return *cursor_; }
    FolderConductor& folders() { return *folders_; }
    WalkConductor& walks() { return *walks_; }
    CalibConductor& calibration() { return *calibration_; }
    AnalysisConductor& analysis() { return *analysis_; }
    DiagnosticsConductor& diagnostics() { return *diagnostics_; }
    ExportConductor& exporting() { return *exporting_; }
    RegistrationConductor& registration() { return *registration_; }
    SaveConductor& saving() { return *saving_; }
    BatchConductor& batch() { return *batch_; }
    Workbench& workbench() { return *workbench_; }
    const StepWatch& steps() const { return *steps_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeConductors();
    void makeWorkConductors();
    void makeShell();
    void wireSteps();
    void wireBatch();
    void bindCommands(CommandBook& book);
    void loadDefaultErrPoints();
    void mend(Mend mend);
    SelectDataFiles& rowInDoubt() const;
    bool keepsUnsavedMaps();
    void closeWhenSaved();

    // In the order of dependence: members end in reverse.
    Measurement data_;
    ShiftMap shiftMap_; ///< the one in force
    MapBook book_;
    std::unique_ptr<Panels> panels_;
    Workbench* workbench_ = nullptr;   ///< a child of this, as its docks are
    CoverPages* coverPages_ = nullptr; ///< a child of what it covers
    std::unique_ptr<SourceReader> reader_;
    std::unique_ptr<StackConductor> stacks_;
    std::unique_ptr<DarkConductor> dark_;
    std::unique_ptr<ViewConductor> view_;
    std::unique_ptr<CursorConductor> cursor_;
    std::unique_ptr<FolderConductor> folders_;
    std::unique_ptr<WalkConductor> walks_;
    std::unique_ptr<CalibConductor> calibration_;
    std::unique_ptr<AnalysisConductor> analysis_;
    std::unique_ptr<ArithmeticConductor> arithmetic_;
    std::unique_ptr<DiagnosticsConductor> diagnostics_;
    std::unique_ptr<ExplainConductor> explaining_;
    std::unique_ptr<SaveConductor> saving_;
    std::unique_ptr<ExportConductor> exporting_;
    std::unique_ptr<RegistrationConductor> registration_;
    std::unique_ptr<BatchConductor> batch_;
    std::unique_ptr<Shell> shell_;
    std::unique_ptr<MenuBar> menus_;
    Sessions* sessions_ = nullptr; ///< a child
    std::unique_ptr<StepWatch> steps_;
    bool attended_ = false;
    bool endsQuietly_ = false;
    bool closesWhenSaved_ = false; ///< the user wants to save first
};
