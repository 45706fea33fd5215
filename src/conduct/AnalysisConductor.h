#pragma once

#include "analysis/AnalysisSection.h"
#include "analysis/AnalyzeProc.h"
#include "batch/CommandEnd.h"
#include "maps/MapKinds.h"
#include "walk/ExplainPosition.h"
#include "walk/WalkEngine.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QThread>

#include <array>
#include <memory>

class Analyzer;
class CommandBook;
class History;
struct MapOrigin;
class CursorConductor;
class MapBook;
class SourceReader;
class ViewConductor;
class WalkConductor;

/// Runs the analyses: single spectra for the panel, and the walks over the map, one at a time,
/// whose results it records in the book. The worker of single spectra, AnalyzeProc, is its own,
/// with its thread.
///
/// A walk works on what it was started with, on the threads of the walks; here its results are
/// recorded and painted. What an analysis is, its section of the panel knows.
class AnalysisConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it.
    struct Parts
    {
        MapBook& book;
        const SourceReader& reader;
        Analyzer& panel;
    };
    AnalysisConductor(const Parts& parts, ViewConductor& view, CursorConductor& cursor,
                      WalkConductor& walks, QObject* parent = nullptr);
    /// Stops a walk, and the worker within a position, and waits for its thread.
    ~AnalysisConductor() override;

    void bindCommands(CommandBook& book);

    bool isWalking() const { return walk_.running; }
    /// Share of the walk that runs, or ran last, that is done [%].
    double percent() const { return walk_.percent; }
    /// The maps hold every position of the last walk, or it was stopped before; neither before the
    /// first walk and while one runs.
    bool mapsWhole() const;
    bool mapsStopped() const;
    /// Number of references that the last walk fitted; 0 for another analysis.
    int rowsOfMaps() const { return walk_.fittedRows; }
    /// Another walk would make other maps than the last one has made; false before the first. It
    /// looks at everything that spectra and fits go by, and is not for every move of the mouse.
    bool conditionsDiffer() const;

    /// The walk that runs or ran last; before any, the first one that can start, or that of the
    /// fits.
    AnalysisWalk walkToStart() const;
    /// That walk fits references, or would if somebody chose what it is to do.
    bool fitsReferences() const;
    /// Why a walk can not start, in people's words; empty when it can.
    QString whyNotReady(AnalysisWalk walk) const;
    /// The walk that the button would start, in people's words; empty without images.
    QString walkText() const;

    /// Whether the map of the first reference is chosen after a whole walk when none is. Off at
    /// start: what a run writes must not depend on it.
    void setChoosesMap(bool f) { choosesMap_ = f; }

public Q_SLOTS:
    void start(AnalysisWalk walk);
    /// The buttons: start a walk over the selected area, or stop the one that runs.
    void start2DAnalysis();
    void startRA2DAnalysis();
    void startElems2DAnalysis();
    void doSumUp();
    void stop2DAnalysis();
    void generateResImages();
    /// Shows whyNotReady() and walkText() in the panel.
    void tellReadiness();

Q_SIGNALS:
    void progressed(); ///< some positions are done
    void runningChanged(bool running);
    /// A walk has ended, at its last position (whole) or before.
    void ended(bool whole);
    /// A map was chosen after a walk, and the results are to be shown.
    void resultsWanted();

private:
    /// The walk that runs, or ran last.
    struct Run
    {
        bool running = false;
        AnalysisWalk walk = AnalysisWalk::Fits;
        CommandEnd end;                     ///< of the batch command that started it
        QVector<AnalysisSection*> sections; ///< that take part
        SpectraInfo spectra;
        std::vector<NamedKernel> kernels; ///< of the sections
        QVector<MapKey> keys;             ///< of its maps
        int fittedRows = 0;               ///< references that take part
        AnalysisConditions conditions;
        double percent = 0.0;
        OutcomeCounts outcomes;
        QPoint last;           ///< position that was recorded last
        QElapsedTimer painted; ///< since the map on show was painted last
    };

    void startWorker();
    void connectPanel(CursorConductor& cursor);
    void addMaps();
    void startOrStop(AnalysisWalk walk);
    void startWalk(AnalysisWalk walk, CommandEnd end);
    void beginRun(AnalysisWalk walk, const AnalyzeCond& area, CommandEnd end);
    QString walkFault(AnalysisWalk walk, AnalyzeCond& area) const;
    SharedSource sourceOf(AnalysisWalk walk) const;
    QVector<AnalysisSection*> readySections(AnalysisWalk walk, const SpectraInfo& spectra) const;
    QVector<WhyNot> reasonsOf(AnalysisWalk walk, const SpectraInfo& spectra) const;
    QVector<SectionConditions> conditionsOf(const QVector<AnalysisSection*>& sections,
                                            const SpectraInfo& spectra) const;
    void takeInSingleFits();
    void makeKernels();
    bool mapsOutcomes() const;
    void prepareMaps(const AnalyzeCond& area, const SharedSource& source);
    void beginMap(const MapKey& key, const AnalyzeCond& area, const MapOrigin& origin);
    WalkOrder orderOf(const AnalyzeCond& area, const SharedSource& source);
    void positionsTaken(const WalkRun& run);
    void finishRow(const AnalyzeCond& at);
    void showLastPosition();
    void finishMaps();
    void logStep(const QString& word) const;
    void endWalk();
    void imagesChange(const QString& what);
    void stopWalk(const QString& why);
    CommandEnd leaveWalk(bool whole);
    QStringList saveSumUpPicture() const;
    void chooseMap();
    void markFaint();

    const Parts parts_;
    ViewConductor& view_;
    QThread thread_;
    const std::unique_ptr<AnalyzeProc> proc_; ///< lives in thread_
    WalkConductor& walks_;
    History* history_ = nullptr; ///< once commands are bound
    Run walk_;
    bool choosesMap_ = false;
};
