#pragma once

#include "analysis/AnalyzeProc.h"
#include "batch/CmdLine.h"
#include "calibration/CalibBlock.h"
#include "calibration/ShiftMap.h"
#include "calibration/ShiftMapFile.h"
#include "conduct/SourceReader.h"
#include "image/BlockSpectrum.h"
#include "image/LoadTiff.h"
#include "image/Measurement.h"
#include "maps/AnalyzeCond.h"
#include "maps/Analyzed2DRes.h"
#include "maps/WalkRuns.h"
#include "output/MapExport.h"
#include "output/WrittenMaps.h"
#include "spectrum/XafsSpectrum.h"

#include <QHash>
#include <QMainWindow>
#include <QMap>
#include <QQueue>
#include <QThread>

#include <memory>
#include <optional>
#include <utility>

class Analyzer;
class BatchCtrl;
class BatchDispatcher;
class CalibCtrl;
class DataBox;
class FDGroup;
class ImageBox;
class LateDialog;
class Messages;
class ProgressSum;
class QMenu;
class SaveBox;
class SaveDataCfg;
class SelectDataFiles;
class SpectrumBox;
class Ui_Body;
class XafsView;
struct LabelledMap;
struct SectionSource;

/// The main window: owner of all data (stacks, dark image, maps) and conductor of all other parts.
/// Panels, and the boxes of its form, hold settings and results of their own and talk to it through
/// signals. A slot asks a box for a record, calls the core and shows the result; it computes
/// nothing itself.
///
/// Everything here runs on the GUI thread. Two loader threads and the batch thread belong to it;
/// their results come in as queued signals, by value.
///
/// The slots stand in files by subject: Body.cpp construction and wiring, BodyStacks.cpp stacks and
/// browsing, BodyEnergies.cpp energies of the images, BodyCursor.cpp spectrum and sections at the
/// cursor, BodyCalibration.cpp energy calibration, BodyShiftMap.cpp the map that it fills,
/// BodyDark.cpp dark, background and total I0,
/// BodyAnalysis.cpp the walk over the map, BodySave.cpp output, BodyCommands.cpp and
/// BodyPanelCommands.cpp batch commands, BodyMenu.cpp menus and keys, BodyShell.cpp what else
/// surrounds the form.
class Body : public QMainWindow
{
    Q_OBJECT
public:
    explicit Body(QWidget* parent = nullptr);
    ~Body() override;

    /// Brings the windows to where they stood when a session that called this was closed, shown or
    /// hidden as they were; at the end of this one that is kept anew.
    void restoreWindows();

    BatchCtrl* batchCtrl() const { return batchCtrl_; }
    const TiffStack& i1Stack() const { return data_.i1.images; }
    const TiffStack& i0Stack() const { return data_.i0.images; }
    Analyzer* analyzer() const { return analyzer_; }

    const SourceReader& reader() const { return *reader_; }

    /// Sections of the current image of I1 (useI1, as absorption with the I0 stack) or of I0 (plain
    /// sums), with blocks of half widths hw, vw: along row y, points (x, value), and along column
    /// x, points (height - y, value). Empty without an image.
    Spectrum hCrossAt(int y, int hw, int vw, bool useI1) const;
    Spectrum vCrossAt(int x, int hw, int vw, bool useI1) const;

    /// Most positions of a walk in one request; 1 is the plain walk, position by position.
    void setMaxPositionsPerRequest(int count) { maxPositionsPerRequest_ = count; }

public Q_SLOTS:
    void clearI1Files();
    void clearI0Files();
    void readI1Files(const QStringList& files, bool newFile);
    void readI0Files(const QStringList& files, bool newFile);
    void finishedLoadI1Files(int jobsDone);
    void finishedLoadI0Files(int jobsDone);
    void showData(int no);
    void selectedDark(const QString& fname);
    void clearDark();
    void prev();
    void next();
    void sliderMoved(int idx);
    void draw(QPainter* p);
    void showXafsSpectrum(double x, double y);
    void showXafsSpectrum();
    void newStdFile();
    /// The button: starts a calibration of the selected area against the standard, or stops the one
    /// that runs.
    void execCalibration();
    void calibNextPoint();
    void finishCalib();
    void saveEMap(const QString& fname);
    void saveEMap(const QString& fname, const Analyzed2DRes& map);
    void loadEMap(const QString& fname);
    /// Reads a shift map's file into `map`; empH tells what its head says. Reports the end of the
    /// batch's command with the ticket.
    void loadMap(const QString& fname, Analyzed2DRes& map, EMPHeader& empH, int ticket);
    bool askAnalyzeCond(AnalyzeCond& ac) const { return reader_->askAnalyzeCond(ac); }
    void cBarUpdating();
    void cBarUpdated();
    void onMouseMovedInDispA();
    void loadedI1(TiffData* image, int fNo);
    void loadedI0(TiffData* image, int fNo);
    void start2DAnalysis();
    void stop2DAnalysis();
    void analyzeASpectrumFinished(const AnalysisResult& result);
    void generateResImages();
    void dispImgSelected();
    void selectedNewRef();
    void setupResAnalysisImage();
    void seekImage(int imgNo);
    /// Saves the part of the image or map in view, and the colour bar beside it.
    void saveImage(const QString& fname);
    /// saveImage() under the name with "-" and num in front of its extension.
    void saveImageWNum(const QString& fname, const QString& num);
    /// Saves each kind of map of the row that is shown, under "name-row-kind".
    void saveAllImages(const QString& fname);
    void showSaveDataDialog();
    void showSaveAllDataDialog();
    /// Saves the numbers of the chosen result map in the chosen form, under "name-label" (see
    /// LabelledMap), and the colour bar beside a TIFF file. A map that holds nothing, or none,
    /// costs one fault line.
    void saveData(const QString& fname);
    /// The same of every finished result map, under "name-full label".
    void saveAllData(const QString& fname);
    /// The numbers of the chosen result map alone, under "name-ext".
    void saveDataAsTiff(const QString& fname, int ext);
    void saveDataAsText(const QString& fname, int ext);
    /// Writes flat.dat (ones) and dark.dat (zeros) of the image size to the working directory.
    void saveFlatDark();
    void execCmdSlot(const CmdLine& cmd, bool inRem);
    void deglitch();
    /// Takes single outliers out of the shift map.
    void normalizeEShift();
    void clearShiftMap();
    /// Exchanges the shift map for the one that it replaced; without one costs one log line.
    void swapFormerMap();
    void showAnalyzedVals();
    void setI0DarkArea();
    void setI1DarkArea();
    void clearUpdateI0DarkArea();
    void clearUpdateI1DarkArea();
    void updateI0DarkArea();
    void updateI1DarkArea();
    void clearI0DarkArea();
    void clearI1DarkArea();
    void clearedBG();
    void selectedBG(const QString& fname);
    void newTotalI0ofI1File(const QString& fname);
    void newTotalI0ofI0File(const QString& fname);

Q_SIGNALS:
    void loadI1Files(const LoadJob& job);
    void loadI0Files(const LoadJob& job);
    void finishing();
    /// A command is about to be executed.
    void commandStarted(const CmdLine& cmd);
    /// A command has come to its end; ticket is the number of the batch's own command, 0 when a
    /// click started it.
    void finishBatchExec(int id, int ticket);
    void doCalibNextPoint();
    void doFinishCalib();
    void calibProgress(double p); ///< [%]

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    /// What a batch that waits is told of a walk or a calibration that was stopped.
    static QString stoppedText() { return QStringLiteral("stopped"); }

    struct Commands;
    friend struct Commands;
    struct MenuEntry;
    struct MenuTable;

    /// One of the two stacks with all that belongs to it.
    struct Stack
    {
        ImageStack* data;
        SelectDataFiles* row;
        int jobsSent = 0;
        int firstValidJob = 0; ///< images of earlier jobs were cleared before they came
        int jobsDone = 0;      ///< while behind jobsSent a load is under way, and plots stay quiet
    };

    /// The state of a walk over the map.
    struct Walk
    {
        bool running = false; ///< the flag that keeps a second walk from starting
        int number = 0;       ///< tells results of this walk from those of an earlier one
        SharedSource source;
        LcfRequest conditions;   ///< with copies of the rows, all as they stood at its start
        QVector<int> activeRows; ///< reference row of each fitted weight
        WalkRuns runs;           ///< the positions not yet sent
        int positionsPerRequest = 1;
        double formingMs = 0.0;  ///< time to form the spectra of the last request, a position [ms]
        int ticket = 0;          ///< of the batch command that started it
        QQueue<WalkRun> pending; ///< sent to the worker and not yet recorded
        double zansa = 0.0;      ///< residual of the last position that was fitted
        OutcomeCounts outcomes;
    };

    /// The state of a calibration.
    struct Calibration
    {
        bool running = false;
        CalibStatistics statistics;
        SharedSource source; ///< the images, the standard and the conditions are those of its start
        CalibConditions conditions;
        XafsSpectrum standard; ///< its values continued where lines cross
        AnalyzeCond at;        ///< the next position
        QVector<int> waiting;  ///< tickets of the batch commands that wait for its end
    };

    // Body.cpp
    void passSuggestion();
    void setupBatch();
    void setupStacks();
    void setupImageView();
    void setupAnalyzer();
    XafsView* newSpectrumWindow(const QString& name, const QString& title);
    void setupSpectrumViews();
    LateDialog* newSaveDialog(const QStringList& filters, const QString& suffix,
                              void (Body::*save)(const QString& fname));
    void setupSaving();
    void setupDark();
    void disableMissingWindows();
    void startConfigBatch();
    void startLoader(QThread& thread, LoadTiff& loader);

    // BodyCommands.cpp
    void finishWhenIdle();
    void runCommand(EX_CMD_ID id, const CmdLine& cmd);
    void endCommand(EX_CMD_ID id, int ticket, const QStringList& faults);

    // BodyShell.cpp
    void setupShell();
    void nameReferenceDialogs();
    QString fileKind(const LateDialog& dialog) const;
    void groupDialogs();
    void groupDialog(LateDialog* dialog);
    void takeReferenceRow();
    void setupMessages();
    void setupStatusBar();
    void showProgressOf(ProgressSum* bar);
    QVector<std::pair<QString, QWidget*>> keptWindows();
    void saveWindows();

    // BodyMenu.cpp
    static QVector<MenuTable> menuTables();
    void setupMenuBar();
    void addEntry(QMenu& menu, const MenuEntry& entry);
    void openBatchFile();
    void showGestures();
    void showAbout();

    // BodyCalibration.cpp
    void setupCalibration();
    void startCalibration();
    QString calibrationFault(AnalyzeCond& walk) const;
    void tellCalibrationDoubts() const;
    CalibConditions calibConditions() const;
    void stopCalibration(const QString& why = stoppedText());
    void stopWorkOn(const Stack& stack, const QString& what);
    void leaveCalibration(const QStringList& faults);
    void waitForCalibration(int ticket);
    bool calibrationHasBegun() const;

    // BodyShiftMap.cpp
    void putInForce(const ShiftMap& shiftMap);
    void leaveMapInForce();
    void keepAsFormer(const ShiftMap& shiftMap);
    void tellShiftMap();
    double edgeOfMap() const;
    ShiftMapRecord mapRecord(const Analyzed2DRes& map, double edge) const;
    std::optional<ShiftMap> readMap(const QString& fname, EMPHeader& empH, bool inForce) const;
    QString sizeFault(const EMPHeader& empH) const;
    void takeInForce(const ShiftMap& loaded);

    // BodyStacks.cpp
    void clearStack(Stack& stack);
    static bool isLoading(const Stack& stack);
    void setStopRedraw(bool on);
    LoadJob newJob(Stack& stack, const QStringList& files, EX_CMD_ID id, const CmdLine& cmd);
    void readI1(const QStringList& files, bool newFile, const CmdLine& cmd);
    void readI0(const QStringList& files, bool newFile, const CmdLine& cmd);
    bool takeLoaded(Stack& stack, TiffData* image, int fNo);
    void finishLoad(Stack& stack, int jobsDone);
    const Stack& shownStack() const;
    Stack& shownStack();
    bool isMapChosen() const;
    bool keepsMap() const;
    void showImage(const SharedImage& image);
    void takeImage(int no);
    void takeNoImage();
    void showLoaded(Stack& stack);
    QString emptyText() const;
    void tellShowDeglitched();
    void showMap(Analyzed2DRes* map);
    void leaveMap();
    void tellImageSize();

    // BodyEnergies.cpp
    QString stackName(const Stack& stack) const;
    void applyEnergies(Stack& stack);
    void tellEnergyDoubts(Stack& stack);

    // BodyCursor.cpp
    const TiffData* currentImage(const Stack& stack) const;
    double darkLevel(const Stack& stack, int x, int y) const;
    SectionSource sectionSource(const TiffData& image, bool useI1) const;
    void moveCursor(int x, int y);
    void showPixel(int x, int y);
    void showSections(int x, int y);
    void showImageSections(int x, int y);
    void showMapSections(int x, int y);
    bool isMapFilled() const;
    void showSectionsInView();
    QSize shownSize() const;
    void refreshCursor();

    // BodySave.cpp
    void showSaveDialogOfForm(LateDialog& dialog);
    bool writeMap(Analyzed2DRes& map, const QString& file, MapForm form) const;
    bool saveMap(const LabelledMap& map, const QString& file, MapForm form);
    void tellSaved(const Analyzed2DRes& map, const QString& label, const QString& file);
    void saveMapWithBar(const LabelledMap& map, const QString& file, MapForm form);
    void saveShownMap(const QString& fname, const QString& label, MapForm form);

    // BodyDark.cpp
    void setDarkArea(Stack& stack);
    void fillDarkAverages(Stack& stack);
    void refillDarkAverages(Stack& stack);
    void newExposure(Stack& stack);
    void clearDarkArea(Stack& stack);
    void loadDefaultErrPoints();
    static bool loadTotalI0(XafsSpectrum& total, const QString& fname);

    // BodyAnalysis.cpp
    void startWalk(int ticket);
    QString walkFault(AnalyzeCond& cond) const;
    void stopWalk(const QString& why);
    void prepareMaps(const AnalyzeCond& cond);
    void sendNextRequest();
    void recordResForAPoint(const AnalyzeCond& at, const LcfResult& result);
    void adaptRequestSize(double workerMs, int positions);
    void recordRequest(const WalkRun& run, const AnalysisResult& result);
    double residualToRecord(const LcfResult& result);
    void finishRow(const AnalyzeCond& at);
    void endWalk();
    int leaveWalk();
    void setMapsInterrupted(bool f);

    std::unique_ptr<Ui_Body> ui_;
    DataBox* dataBox_; ///< of the form, like the other boxes
    SpectrumBox* spectrumBox_;
    SaveBox* saveBox_;
    ImageBox* imageBox_;

    QThread i1LoadThread_;
    QThread i0LoadThread_;
    QThread batchThread_;
    std::unique_ptr<LoadTiff> i1Loader_;
    std::unique_ptr<LoadTiff> i0Loader_;
    std::unique_ptr<BatchDispatcher> dispatcher_;

    Measurement data_;
    std::unique_ptr<SourceReader> reader_;
    Stack i1_;
    Stack i0_;
    SharedImage shownImage_; ///< image of a stack in the image area, or null
    Analyzed2DRes energyShiftMap_;
    int curX_ = 0; ///< image pixel of the last mouse position
    int curY_ = 0;

    Analyzer* analyzer_ = nullptr;
    XafsView* xafsView_ = nullptr; ///< the spectrum at the cursor
    XafsView* bgView_ = nullptr;   ///< holds the background spectrum
    CalibCtrl* calibCtrl_ = nullptr;
    BatchCtrl* batchCtrl_ = nullptr;
    SaveDataCfg* saveDataCfg_ = nullptr;
    Messages* messages_ = nullptr;
    QVector<QWidget*> windows_; ///< windows of their own, owned, closed with the main window
    LateDialog* saveDataDialog_ = nullptr;
    LateDialog* saveAllDataDialog_ = nullptr;

    QHash<int, CmdLine> commandsUnderWay_; ///< by ticket, those whose ends are reported later
    QMap<QString, FDGroup*> dialogGroups_; ///< by the kind of file; children of this window

    Walk walk_;
    bool mapsInterrupted_ = false; ///< the last walk ended before its last position
    WrittenMaps writtenMaps_;
    Calibration calibration_;
    XafsSpectrum stdSpectrum_;          ///< copy of the panel's standard
    ShiftMap shiftMap_;                 ///< the one in force
    ShiftMap replacedMap_;              ///< by the running calibration
    std::optional<ShiftMap> formerMap_; ///< none as long as no map was replaced
    bool keepsWindows_ = false;         ///< places of windows are written at the end
    bool finishesWhenIdle_ = false;     ///< an unattended run is through
    bool closing_ = false;              ///< the window is closed: no command is run any more
    QVector<Analyzed2DRes*> resMaps_;   ///< [kind of map][reference row], not owned
    int maxPositionsPerRequest_ = 4096;
};
