#pragma once

#include "batch/CommandEnd.h"
#include "calibration/ShiftMap.h"
#include "walk/WalkSource.h"

#include <QObject>

#include <optional>
#include <vector>

class Analyzed2DRes;
class CalibCtrl;
class CalibKernel;
class CommandBook;
class CursorConductor;
class History;
class MapBook;
class SourceReader;
class SpectrumBox;
class WalkConductor;
struct EMPHeader;
struct Measurement;
struct ShiftMapRecord;

/// Runs the calibration, and looks after the shift map in force: its file, the one that it
/// replaced, and its outliers.
class CalibConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it.
    struct Parts
    {
        Measurement& data;
        ShiftMap& shiftMap; ///< the one in force, whose picture is the book's
        MapBook& book;
        const SourceReader& reader;
        const SpectrumBox& spectrumBox;
        CalibCtrl& panel;
    };
    CalibConductor(const Parts& parts, CursorConductor& cursor, WalkConductor& walks,
                   QObject* parent = nullptr);
    ~CalibConductor() override;

    void bindCommands(CommandBook& book);

    bool isRunning() const { return run_.running; }
    /// Share of the calibration that runs, or ran last, that is done [%].
    double percent() const { return run_.percent; }
    /// The map in force: there is one with all positions, or one of a calibration that was stopped.
    bool mapWhole() const;
    bool mapStopped() const;
    /// The map in force was made with another standard than the one that is loaded now.
    bool standardChangedSince() const;
    /// Of the map in force; see ShiftMap::medianAndSpread().
    std::optional<ShiftMap::MedianAndSpread> medianAndSpread() const { return spread_; }
    /// Why a calibration can not start, in people's words; empty when it can.
    QString whyNotReady() const;
    /// Stops the calibration that runs, if any. The map stays as far as it is filled, without
    /// statistics; before the first position that is no map, and the one before stays.
    void stop();

public Q_SLOTS:
    void newStdFile();
    /// The button: starts a calibration of the selected area against the standard, or stops the one
    /// that runs.
    void execCalibration();
    void finishCalib();
    void saveEMap(const QString& fname);
    void saveEMap(const QString& fname, const Analyzed2DRes& map);
    void loadEMap(const QString& fname);
    /// Reads a shift map's file into `map`, which comes into force when it is the picture of the
    /// one that is; empH tells what its head says.
    void loadMap(const QString& fname, Analyzed2DRes& map, EMPHeader& empH);
    void clearShiftMap();
    /// Exchanges the shift map for the one that it replaced; without one costs one log line.
    void swapFormerMap();
    /// Takes single outliers out of the shift map.
    void normalizeEShift();
    /// Shows whyNotReady() in the panel.
    void tellReadiness();
    /// A run is through: a calibration of it that other images stopped, and that no command waited
    /// for, is a fault.
    void tellUnheardStop();

Q_SIGNALS:
    void calibProgress(double p); ///< [%]
    void progressed();            ///< some positions are done
    void runningChanged(bool running);
    /// Another map is in force: every spectrum has another shift.
    void shiftMapChanged();

private:
    /// The calibration that runs, or ran last.
    struct Run
    {
        bool running = false;
        bool ofBatch = false; ///< a command started it
        bool begun = false;   ///< a position of it is in the map
        double percent = 0.0;
        CalibStatistics statistics;
        std::vector<CommandEnd> waiting; ///< of the batch commands that wait for its end
    };

    // CalibConductor.cpp
    void connectPanel();
    void tellHistory();
    QStringList mapLines() const;
    void startCalibration(bool ofBatch);
    void startWalk(const AnalyzeCond& walk, const SharedSource& source, const CalibKernel& kernel);
    QString calibrationFault(AnalyzeCond& walk) const;
    void tellCalibrationDoubts() const;
    CalibConditions conditions() const;
    void positionsTaken(const WalkRun& run);
    void imagesChange(const QString& what);
    void stopCalibration(const QString& why);
    void leaveCalibration(const QString& why);
    void waitForEnd(CommandEnd end);

    // CalibConductorMap.cpp
    Analyzed2DRes& picture() const;
    void putInForce(const ShiftMap& shiftMap);
    void tellShiftMap();
    void tellMapReasons();
    void leaveMapInForce();
    void keepAsFormer(const ShiftMap& shiftMap);
    double edgeOfMap() const;
    ShiftMapRecord mapRecord(const Analyzed2DRes& map, double edge) const;
    std::optional<ShiftMap> readMap(const QString& fname, EMPHeader& empH, bool inForce) const;
    QString sizeFault(const EMPHeader& empH) const;
    void takeInForce(const ShiftMap& loaded);

    const Parts parts_;
    CursorConductor& cursor_;
    WalkConductor& walks_;
    XafsSpectrum stdSpectrum_; ///< copy of the panel's standard
    Run run_;
    std::optional<ShiftMap::MedianAndSpread> spread_; ///< of the map in force, once it is filled
    History* history_ = nullptr;                      ///< once commands are bound
    ShiftMap replacedMap_;                            ///< by the calibration that runs
    std::optional<ShiftMap> formerMap_;               ///< none as long as no map was replaced
    QString unheardStop_; ///< why a batch's was stopped by other images, until the batch is told
};
