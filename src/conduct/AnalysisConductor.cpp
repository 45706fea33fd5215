#include "conduct/AnalysisConductor.h"

#include "analysis/Analyzer.h"
#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfWalk.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/Log.h"
#include "conduct/CursorConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StopReason.h"
#include "conduct/ViewConductor.h"
#include "conduct/WalkConductor.h"
#include "display/XafsView.h"
#include "maps/FaintPositions.h"
#include "maps/MapBook.h"

#include <QCoreApplication>
#include <QDebug>

#include <cstdlib>
#include <utility>

namespace {

/// The map on show is painted no oftener than this during a walk. [ms]
constexpr int paintEveryMs = 50;

constexpr MapKey zansaKey{MapKind::Zansa, 0};
constexpr MapKey dEdgeKey{MapKind::DEdge, 0};

/// Energies that the source's spectra span.
ReadRange scanOf(const WalkSource& source)
{
    return {source.leastEnergy(), source.greatestEnergy()};
}

QStringList filesOf(const QVector<LCFReference*>& rows, const QVector<int>& active)
{
    QStringList files;
    for (const int row : active)
        files.append(rows.at(row)->fileName());
    return files;
}

} // namespace

AnalysisConductor::AnalysisConductor(const Parts& parts, ViewConductor& view,
                                     CursorConductor& cursor, WalkConductor& walks, QObject* parent)
    : QObject(parent)
    , parts_(parts)
    , view_(view)
    , proc_(std::make_unique<AnalyzeProc>())
    , walks_(walks)
{
    addMapsOfRows();
    parts_.book.at(zansaKey);
    parts_.book.at(dEdgeKey);
    startWorker();
    connectPanel(cursor);
}

AnalysisConductor::~AnalysisConductor()
{
    walks_.stop(WalkConductor::Analysis);
    proc_->requestStop();
    thread_.quit();
    thread_.wait();
}

void AnalysisConductor::startWorker()
{
    Analyzer* const panel = &parts_.panel;
    AnalyzeProc* const proc = proc_.get();
    proc->moveToThread(&thread_);
    connect(panel, &Analyzer::analyzeSpectrum0, proc, &AnalyzeProc::analyzeSpectrum0);
    connect(panel, &Analyzer::contAccessChanged, proc, &AnalyzeProc::setContAccess);
    connect(proc, &AnalyzeProc::finished, panel, &Analyzer::analyzeSpectrumFinished);
    connect(proc, &AnalyzeProc::newZ, panel, &Analyzer::noticedNewZ);
    thread_.start();
}

void AnalysisConductor::connectPanel(CursorConductor& cursor)
{
    const Analyzer* const panel = &parts_.panel;
    connect(panel, &Analyzer::askAnalyze, this, &AnalysisConductor::start2DAnalysis);
    connect(panel, &Analyzer::rowAdded, this, &AnalysisConductor::addMapsOfRows);
    connect(&cursor, &CursorConductor::spectrumFormed, this,
            [this, &cursor](const XafsSpectrum& spectrum, const SuggestElm& elm) {
                if (walk_.running)
                    return;
                parts_.panel.view()->setSpectrumName(cursor.spectrumName());
                parts_.panel.analyzeAndShowSpectrum(spectrum, elm);
            });
}

void AnalysisConductor::bindCommands(CommandBook& book)
{
    book.later(ExCmdAnalyzerExecLCF,
               [this](const CmdLine&, CommandEnd end) { startWalk(std::move(end)); });
}

/// Each row has its maps in the book from its start, so that they can be chosen.
void AnalysisConductor::addMapsOfRows()
{
    for (int row = 0; row < parts_.panel.refs().size(); ++row) {
        parts_.book.at({MapKind::LcfJump, row});
        parts_.book.at({MapKind::LcfWeight, row});
    }
}

void AnalysisConductor::start2DAnalysis()
{
    if (walk_.running)
        stop2DAnalysis();
    else
        startWalk({});
}

/// Starts a walk in place of the one that runs.
void AnalysisConductor::startWalk(CommandEnd end)
{
    stop2DAnalysis();
    AnalyzeCond area;
    const QString why = walkFault(area);
    if (!why.isEmpty()) {
        fault(QStringLiteral("2D analysis not started: ") + why);
        end.done();
        return;
    }
    takeInSingleFits();
    beginRun(area, std::move(end));
    Q_EMIT runningChanged(true);
}

void AnalysisConductor::beginRun(const AnalyzeCond& area, CommandEnd end)
{
    walk_ = Run();
    walk_.running = true;
    walk_.end = std::move(end);
    const SharedSource source = parts_.reader.frozen();
    LcfRequest conditions = parts_.panel.beginWalk(source->elm, scanOf(*source));
    walk_.fittedRows = conditions.fittedRows();
    walk_.conditions = AnalysisConditions(*source, area, conditions);
    conditions.inWalk = true;
    parts_.panel.setMapsInterrupted(false);
    parts_.panel.setContAccess(true);
    parts_.panel.setProgress(0.0);
    logTime(QStringLiteral("2da 1:"));
    prepareMaps(area, source);
    logTime(QStringLiteral("2da 2:"));
    walk_.painted.start();
    walks_.run(WalkConductor::Analysis, orderOf(area, source, conditions),
               {[this](const WalkRun& run) { positionsTaken(run); }, [this] { endWalk(); },
                [this](const QString& what) { imagesChange(what); }});
}

/// Fills area with the walk over the selected area; why there is nothing to analyse, or an empty
/// text.
QString AnalysisConductor::walkFault(AnalyzeCond& area) const
{
    QString why = parts_.reader.areaFault(area);
    if (!why.isEmpty())
        return why;
    if (!parts_.panel.walkAnalysisSelected())
        return QStringLiteral("no analysis selected");
    // The fits are the only analysis that walks: without them there is nothing left to run.
    if (!canFit())
        return QStringLiteral("LCF is left out, no reference in use has a point inside the fitting "
                              "range and the scan");
    return {};
}

/// There must be images.
bool AnalysisConductor::canFit() const
{
    const WalkSource source = parts_.reader.source();
    return parts_.panel.canFit(source.elm, scanOf(source));
}

QString AnalysisConductor::whyNotReady() const
{
    AnalyzeCond area;
    const bool hasArea = parts_.reader.askAnalyzeCond(area);
    if (parts_.reader.source().i1.isEmpty())
        return tr("No images: load them in step 1");
    if (!parts_.panel.walkAnalysisSelected())
        return tr("No analysis is chosen: check the box above");
    if (parts_.panel.activeRows().isEmpty())
        return tr("No reference in use: load one above");
    if (!hasArea)
        return tr("The selected area lies outside the image");
    if (!canFit())
        return tr("No reference in use has a point inside the fitting range and the scan");
    return {};
}

QString AnalysisConductor::walkText() const
{
    AnalyzeCond area;
    if (!parts_.reader.askAnalyzeCond(area))
        return {};
    const QString text = parts_.reader.isAreaSelected()
                             ? tr("%1 blocks of %2 x %3 pixels, selected area")
                             : tr("%1 blocks of %2 x %3 pixels, whole image");
    return text.arg(qint64(area.columns()) * area.rows())
        .arg(2 * std::abs(qint64(area.halfX)) + 1)
        .arg(2 * std::abs(qint64(area.halfY)) + 1);
}

void AnalysisConductor::tellReadiness()
{
    parts_.panel.setReadiness(whyNotReady(), walkText());
}

bool AnalysisConductor::mapsWhole() const
{
    return parts_.book.stateOf(zansaKey) == MapState::Whole;
}

bool AnalysisConductor::mapsStopped() const
{
    return parts_.book.stateOf(zansaKey) == MapState::Stopped;
}

bool AnalysisConductor::conditionsDiffer() const
{
    if (walk_.keys.isEmpty())
        return false;
    const WalkSource source = parts_.reader.source();
    AnalyzeCond area;
    if (!parts_.reader.askAnalyzeCond(area))
        return true;
    return AnalysisConditions(source, area, parts_.panel.walkRequest(source.elm, scanOf(source))) !=
           walk_.conditions;
}

/// What the rows show during and after a walk must not depend on which thread was faster.
void AnalysisConductor::takeInSingleFits()
{
    // The worker has answered all that was asked before this call is its turn; the answers wait in
    // this thread's queue then.
    QMetaObject::invokeMethod(
        proc_.get(), [] {}, Qt::BlockingQueuedConnection);
    QCoreApplication::sendPostedEvents(&parts_.panel, QEvent::MetaCall);
}

void AnalysisConductor::prepareMaps(const AnalyzeCond& area, const SharedSource& source)
{
    const QVector<LCFReference*>& rows = parts_.panel.refs();
    const MapOrigin origin{
        QStringLiteral("LCF"), filesOf(rows, parts_.panel.activeRows()), source, {}};
    for (const MapKind kind : {MapKind::LcfJump, MapKind::LcfWeight}) {
        for (int row = 0; row < rows.size(); ++row)
            walk_.keys.append({kind, row});
    }
    walk_.keys.append({zansaKey, dEdgeKey});
    for (int no = 0; no < walk_.keys.size(); ++no) {
        parts_.book.begin(walk_.keys.at(no), area, origin);
        parts_.book.at(walk_.keys.at(no)).setNo(no);
    }
}

WalkOrder AnalysisConductor::orderOf(const AnalyzeCond& area, const SharedSource& source,
                                     const LcfRequest& conditions)
{
    LcfSink::Maps maps{
        parts_.panel.activeRows(), {}, {}, &parts_.book.at(zansaKey), &walk_.outcomes};
    for (const int row : qAsConst(maps.rows)) {
        maps.jumps.append(&parts_.book.at({MapKind::LcfJump, row}));
        maps.weights.append(&parts_.book.at({MapKind::LcfWeight, row}));
    }
    WalkOrder order{source, area, {}};
    order.jobs.push_back({std::make_unique<LcfKernel>(conditions, maps.rows),
                          std::make_unique<LcfSink>(conditions, maps)});
    return order;
}

void AnalysisConductor::positionsTaken(const WalkRun& run)
{
    walk_.last = {run.last().cx, run.last().cy};
    const AnalyzeCond next = run.behind();
    if (next.cy < next.y1)
        walk_.percent = next.progress();
    if (next.newLine && next.cy < next.y1)
        finishRow(next);
    Q_EMIT progressed();
}

void AnalysisConductor::finishRow(const AnalyzeCond& at)
{
    parts_.panel.setProgress(at.progress());
    tellResidual();
    if (!parts_.panel.displaysOnTime() || walk_.painted.elapsed() < paintEveryMs)
        return;
    view_.paintShownResult();
    walk_.painted.start();
}

/// The panel shows the residual of the position that was recorded last.
void AnalysisConductor::tellResidual()
{
    parts_.panel.noticedNewZ(parts_.book.at(zansaKey).valueAt(walk_.last.x(), walk_.last.y()));
}

void AnalysisConductor::generateResImages()
{
    for (const MapKey& key : qAsConst(walk_.keys))
        parts_.book.at(key).genImg();
    view_.resultsPainted();
}

void AnalysisConductor::endWalk()
{
    if (choosesMap_)
        markFaint();
    generateResImages();
    CommandEnd end = leaveWalk(true);
    tellResidual();
    parts_.panel.setProgress(100.0);
    logTime(QStringLiteral("2da 3:"));
    qDebug().noquote() << "2D analysis:" << walk_.outcomes.text();
    chooseMap();
    Q_EMIT runningChanged(false);
    Q_EMIT ended(true);
    end.done();
}

/// The maps in front of a user take their colours from the sample.
void AnalysisConductor::markFaint()
{
    std::vector<const Analyzed2DRes*> jumps;
    for (const int row : qAsConst(walk_.fittedRows))
        jumps.push_back(&parts_.book.at({MapKind::LcfJump, row}));
    const PositionMask faint = faintPositions(jumps);
    for (const MapKey& key : qAsConst(walk_.keys))
        parts_.book.at(key).setFaint(faint);
}

/// A first walk would otherwise leave an empty view behind.
void AnalysisConductor::chooseMap()
{
    if (!choosesMap_ || parts_.panel.isMapShown() || walk_.fittedRows.isEmpty())
        return;
    parts_.panel.showRatioOf(walk_.fittedRows.first());
    Q_EMIT resultsWanted();
}

/// Returns what the command that started the walk waits for.
CommandEnd AnalysisConductor::leaveWalk(bool whole)
{
    walk_.running = false;
    if (whole)
        walk_.percent = 100.0;
    walks_.stop(WalkConductor::Analysis);
    for (const MapKey& key : qAsConst(walk_.keys))
        parts_.book.end(key, whole, walk_.outcomes);
    parts_.panel.setContAccess(false);
    return std::move(walk_.end);
}

void AnalysisConductor::stop2DAnalysis()
{
    stopWalk(stopReason());
}

/// The walk's own images stay, but its maps would no longer belong to what is shown. Their pictures
/// are made, since nobody may be there to ask for them.
void AnalysisConductor::imagesChange(const QString& what)
{
    generateResImages();
    stopWalk(stopReason(what));
}

/// Ends a walk before its time; the maps hold what was recorded, and get no new pictures.
void AnalysisConductor::stopWalk(const QString& why)
{
    if (!walk_.running)
        return;
    CommandEnd end = leaveWalk(false);
    parts_.panel.setMapsInterrupted(true);
    parts_.panel.setStoppedAt(walk_.percent);
    logTime(QStringLiteral("2da 4:"));
    qDebug().noquote() << QStringLiteral("2D analysis %1: %2").arg(why, walk_.outcomes.text());
    // The map on show is painted as far as it is filled.
    view_.resultsStopped();
    Q_EMIT runningChanged(false);
    Q_EMIT ended(false);
    end.failed(why);
}
