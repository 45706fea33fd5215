#pragma once

#include "analysis/AnalyzeProc.h"
#include "batch/CommandEnd.h"
#include "maps/MapKinds.h"
#include "walk/WalkEngine.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QThread>

#include <memory>

class Analyzer;
class CommandBook;
class CursorConductor;
class MapBook;
class SourceReader;
class ViewConductor;
class WalkConductor;

/// Runs the analyses: single spectra for the panel, and walks over the map, whose results it
/// records in the book. The worker of single spectra,
/// AnalyzeProc, is its own, with its thread.
///
/// A walk works on what it was started with, on the threads of the walks; here its results are
/// recorded and painted.
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

public Q_SLOTS:
    /// The button: starts a walk over the selected area, or stops the one that runs.
    void start2DAnalysis();
    void stop2DAnalysis();
    void generateResImages();

Q_SIGNALS:
    void progressed(); ///< some positions are done

private:
    /// The walk that runs, or ran last.
    struct Run
    {
        bool running = false;
        CommandEnd end;       ///< of the batch command that started it
        QVector<MapKey> keys; ///< of its maps
        OutcomeCounts outcomes;
        QPoint last;           ///< position that was recorded last
        QElapsedTimer painted; ///< since the map on show was painted last
    };

    void startWorker();
    void connectPanel(CursorConductor& cursor);
    void addMapsOfRows();
    void startWalk(CommandEnd end);
    QString walkFault(AnalyzeCond& area) const;
    void takeInSingleFits();
    void prepareMaps(const AnalyzeCond& area, const SharedSource& source);
    WalkOrder orderOf(const AnalyzeCond& area, const SharedSource& source,
                      const LcfRequest& conditions);
    void positionsTaken(const WalkRun& run);
    void finishRow(const AnalyzeCond& at);
    void tellResidual();
    void endWalk();
    void imagesChange(const QString& what);
    void stopWalk(const QString& why);
    CommandEnd leaveWalk(bool whole);

    const Parts parts_;
    ViewConductor& view_;
    QThread thread_;
    const std::unique_ptr<AnalyzeProc> proc_; ///< lives in thread_
    WalkConductor& walks_;
    Run walk_;
};
