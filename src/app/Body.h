#pragma once

#include "calibration/ShiftMap.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"

#include <QMainWindow>

#include <memory>

class AnalysisConductor;
class Analyzer;
class BatchConductor;
class BatchCtrl;
class CalibConductor;
class CommandBook;
class CursorConductor;
class DarkConductor;
class MenuBar;
class SaveConductor;
class Shell;
class SourceReader;
class StackConductor;
class Ui_Body;
class ViewConductor;
class WalkConductor;
struct Windows;

/// The main window. It builds all parts, wires them, and ends them in reverse: the data, the boxes
/// of its form and the windows beside it, the conductors, and the shell round them. What happens on
/// a click or a command is the conductors'; nothing is computed or decided here.
class Body : public QMainWindow
{
    Q_OBJECT
public:
    explicit Body(QWidget* parent = nullptr);
    ~Body() override;

    /// Brings the windows to where they stood when a session that called this was closed, shown or
    /// hidden as they were; at the end of this one that is kept anew.
    void restoreWindows();

    BatchCtrl* batchCtrl() const;
    Analyzer* analyzer() const;
    const Measurement& data() const { return data_; }
    MapBook& maps() { return book_; }

    const SourceReader& reader() const { return *reader_; }
    StackConductor& stacks() { return *stacks_; }
    DarkConductor& dark() { return *dark_; }
    ViewConductor& view() { return *view_; }
    CursorConductor& cursor() { return *cursor_; }
    WalkConductor& walks() { return *walks_; }
    CalibConductor& calibration() { return *calibration_; }
    AnalysisConductor& analysis() { return *analysis_; }
    SaveConductor& saving() { return *saving_; }
    BatchConductor& batch() { return *batch_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeConductors();
    void makeShell();
    void wireBatch();
    void bindCommands(CommandBook& book);
    void disableMissingWindows();
    void loadDefaultErrPoints();

    // In the order of dependence: members end in reverse.
    const std::unique_ptr<Ui_Body> ui_;
    Measurement data_;
    ShiftMap shiftMap_; ///< the one in force
    MapBook book_;
    std::unique_ptr<Windows> windows_;
    std::unique_ptr<SourceReader> reader_;
    std::unique_ptr<StackConductor> stacks_;
    std::unique_ptr<DarkConductor> dark_;
    std::unique_ptr<ViewConductor> view_;
    std::unique_ptr<CursorConductor> cursor_;
    std::unique_ptr<WalkConductor> walks_;
    std::unique_ptr<CalibConductor> calibration_;
    std::unique_ptr<AnalysisConductor> analysis_;
    std::unique_ptr<SaveConductor> saving_;
    std::unique_ptr<BatchConductor> batch_;
    std::unique_ptr<Shell> shell_;
    std::unique_ptr<MenuBar> menus_;
};
