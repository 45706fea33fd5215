#pragma once

#include "analysis/AnalyzeProc.h"
#include "batch/CommandEnd.h"
#include "maps/Analyzed2DRes.h"
#include "maps/MapKinds.h"
#include "maps/WalkRuns.h"
#include "walk/WalkSource.h"

#include <QObject>
#include <QQueue>
#include <QThread>

#include <memory>

class Analyzer;
class CommandBook;
class CursorConductor;
class MapBook;
class SourceReader;
class StackConductor;
class ViewConductor;
struct ImageStack;

/// Runs the analyses: single spectra for the panel, and walks over the map, whose results it
/// records in the book. The worker AnalyzeProc with its thread is its own.
///
/// A walk works on what it was started with. Its spectra are formed here, request by request, while
/// the worker normalises and fits those of the request before.
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
    AnalysisConductor(const Parts& parts, StackConductor& stacks, ViewConductor& view,
                      CursorConductor& cursor, QObject* parent = nullptr);
    /// Stops the worker within a position and waits for its thread.
    ~AnalysisConductor() override;

    void bindCommands(CommandBook& book);

    bool isWalking() const { return walk_.running; }

    /// Most positions of a walk in one request; 1 is the plain walk, position by position.
    void setMaxPositionsPerRequest(int count) { maxPositionsPerRequest_ = count; }

public Q_SLOTS:
    /// The button: starts a walk over the selected area, or stops the one that runs.
    void start2DAnalysis();
    void stop2DAnalysis();
    void analyzeASpectrumFinished(const AnalysisResult& result);
    void generateResImages();

Q_SIGNALS:
    void analyzeSpectrum0(const AnalysisRequest& request);
    void progressed(); ///< some positions are done

private:
    /// The walk that runs, or ran last. Nothing that changes after its start reaches it.
    struct Run
    {
        bool running = false;
        int number = 0; ///< tells results of this walk from those of an earlier one
        CommandEnd end; ///< of the batch command that started it
        SharedSource source;
        LcfRequest conditions;   ///< with copies of the rows
        QVector<int> activeRows; ///< reference row of each fitted weight
        WalkRuns runs;           ///< the positions not yet sent
        QQueue<WalkRun> pending; ///< sent to the worker and not yet recorded
        int positionsPerRequest = 1;
        double formingMs = 0.0; ///< time to form the spectra of the last request, a position [ms]
        QVector<MapKey> keys;   ///< of its maps
        QVector<Analyzed2DRes*> jumps; ///< by reference row
        QVector<Analyzed2DRes*> weights;
        double zansa = 0.0; ///< residual of the last position that was fitted
        OutcomeCounts outcomes;
    };

    void startWorker();
    void connectPanel(StackConductor& stacks, CursorConductor& cursor);
    void addMapsOfRows();
    void startWalk(CommandEnd end);
    QString walkFault(AnalyzeCond& area) const;
    void takeInSingleFits();
    void prepareMaps(const AnalyzeCond& area);
    void sendNextRequest();
    void adaptRequestSize(double workerMs, int positions);
    void recordRequest(const WalkRun& run, const AnalysisResult& result);
    void recordResForAPoint(const AnalyzeCond& at, const LcfResult& result);
    double residualToRecord(const LcfResult& result);
    void finishRow(const AnalyzeCond& at);
    void endWalk();
    void stackChanges(const ImageStack& stack, const QString& what);
    void stopWalk(const QString& why);
    CommandEnd leaveWalk(bool whole);

    const Parts parts_;
    ViewConductor& view_;
    QThread thread_;
    const std::unique_ptr<AnalyzeProc> proc_; ///< lives in thread_
    Run walk_;
    int maxPositionsPerRequest_ = 4096;
};
