#include "conduct/AnalysisConductor.h"

#include "analysis/Analyzer.h"
#include "analysis/LCFReference.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/Log.h"
#include "common/SafeInt.h"
#include "conduct/CursorConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "conduct/StopReason.h"
#include "conduct/ViewConductor.h"
#include "image/Measurement.h"
#include "maps/MapBook.h"

#include <QCoreApplication>
#include <QDebug>
#include <QElapsedTimer>

#include <utility>

namespace {

/// Time that the positions of one request should take: long against a round trip between threads,
/// short against a user's patience.
constexpr double requestMs = 10.0;

/// Requests that the worker has or is about to get, so that it works while the next is formed.
constexpr int requestsUnderWay = 2;

/// Size of a walk's first request, before the time of a position is known.
constexpr int firstRequestPositions = 16;

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

AnalysisConductor::AnalysisConductor(const Parts& parts, StackConductor& stacks,
                                     ViewConductor& view, CursorConductor& cursor, QObject* parent)
    : QObject(parent)
    , parts_(parts)
    , view_(view)
    , proc_(std::make_unique<AnalyzeProc>())
{
    addMapsOfRows();
    parts_.book.at(zansaKey);
    parts_.book.at(dEdgeKey);
    startWorker();
    connectPanel(stacks, cursor);
}

AnalysisConductor::~AnalysisConductor()
{
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
    connect(this, &AnalysisConductor::analyzeSpectrum0, proc, &AnalyzeProc::analyzeSpectrum0);
    connect(panel, &Analyzer::contAccessChanged, proc, &AnalyzeProc::setContAccess);
    connect(proc, &AnalyzeProc::finished, panel, &Analyzer::analyzeSpectrumFinished);
    connect(proc, &AnalyzeProc::newZ, panel, &Analyzer::noticedNewZ);
    thread_.start();
}

void AnalysisConductor::connectPanel(StackConductor& stacks, CursorConductor& cursor)
{
    const Analyzer* const panel = &parts_.panel;
    connect(panel, &Analyzer::askAnalyze, this, &AnalysisConductor::start2DAnalysis);
    connect(panel, &Analyzer::finished, this, &AnalysisConductor::analyzeASpectrumFinished);
    connect(panel, &Analyzer::rowAdded, this, &AnalysisConductor::addMapsOfRows);
    connect(&stacks, &StackConductor::aboutToChange, this,
            [this](const ImageStack* stack, const QString& what) { stackChanges(*stack, what); });
    connect(&cursor, &CursorConductor::spectrumFormed, this,
            [this](const XafsSpectrum& spectrum, const SuggestElm& elm) {
                if (!walk_.running)
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
    const int number = walk_.number + 1;
    walk_ = Run();
    walk_.running = true;
    walk_.number = number;
    walk_.end = std::move(end);
    walk_.source = parts_.reader.frozen();
    walk_.conditions = parts_.panel.beginWalk(walk_.source->elm, scanOf(*walk_.source));
    walk_.activeRows = parts_.panel.activeRows();
    walk_.positionsPerRequest = qMin(firstRequestPositions, maxPositionsPerRequest_);
    parts_.panel.setMapsInterrupted(false);
    parts_.panel.setContAccess(true);
    parts_.panel.setProgress(0.0);
    logTime(QStringLiteral("2da 1:"));
    prepareMaps(area);
    logTime(QStringLiteral("2da 2:"));
    walk_.runs = WalkRuns(area);
    for (int i = 0; i < requestsUnderWay; ++i)
        sendNextRequest();
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
    const WalkSource source = parts_.reader.source();
    if (!parts_.panel.canFit(source.elm, scanOf(source)))
        return QStringLiteral("LCF is left out, no reference in use has a point inside the fitting "
                              "range and the scan");
    return {};
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

void AnalysisConductor::prepareMaps(const AnalyzeCond& area)
{
    const QVector<LCFReference*>& rows = parts_.panel.refs();
    const MapOrigin origin{
        QStringLiteral("LCF"), filesOf(rows, walk_.activeRows), walk_.source, {}};
    for (const MapKind kind : {MapKind::LcfJump, MapKind::LcfWeight}) {
        for (int row = 0; row < rows.size(); ++row) {
            walk_.keys.append({kind, row});
            (kind == MapKind::LcfJump ? walk_.jumps : walk_.weights)
                .append(&parts_.book.at({kind, row}));
        }
    }
    walk_.keys.append({zansaKey, dEdgeKey});
    for (int no = 0; no < walk_.keys.size(); ++no) {
        parts_.book.begin(walk_.keys.at(no), area, origin);
        parts_.book.at(walk_.keys.at(no)).setNo(no);
    }
}

void AnalysisConductor::sendNextRequest()
{
    if (walk_.runs.atEnd())
        return;
    QElapsedTimer timer;
    timer.start();
    const WalkRun run = walk_.runs.take(walk_.positionsPerRequest);
    walk_.pending.enqueue(run);

    AnalysisRequest request;
    request.walk = walk_.number;
    request.spectra = walk_.source->ofRun(run);
    request.normalize = true;
    request.lcf = true;
    request.lcfConditions = walk_.conditions;
    Q_EMIT analyzeSpectrum0(request);

    walk_.formingMs = double(timer.nsecsElapsed()) * 1e-6 / run.count;
}

/// Sizes the next request by the slower of the two threads.
void AnalysisConductor::adaptRequestSize(double workerMs, int positions)
{
    const double msPerPosition = qMax(walk_.formingMs, workerMs / positions);
    walk_.positionsPerRequest =
        qBound(1, truncatedInt(requestMs / qMax(msPerPosition, 1e-6)), maxPositionsPerRequest_);
}

void AnalysisConductor::analyzeASpectrumFinished(const AnalysisResult& result)
{
    // Results of a walk that was stopped, or of one before it, are not recorded.
    if (!walk_.running || result.walk != walk_.number || walk_.pending.isEmpty())
        return;
    const WalkRun run = walk_.pending.dequeue();
    recordRequest(run, result);
    adaptRequestSize(result.tookMs, run.count);
    sendNextRequest();
    if (walk_.pending.isEmpty())
        endWalk();
    Q_EMIT progressed();
}

void AnalysisConductor::recordRequest(const WalkRun& run, const AnalysisResult& result)
{
    AnalyzeCond at = run.first;
    for (int k = 0; k < run.count; ++k) {
        recordResForAPoint(at, result.lcf.value(k));
        if (at.next() && at.newLine)
            finishRow(at);
    }
}

void AnalysisConductor::recordResForAPoint(const AnalyzeCond& at, const LcfResult& result)
{
    const QVector<int>& rows = result.fitted() ? result.activeRows : walk_.activeRows;
    for (int k = 0; k < rows.size(); ++k) {
        const int row = rows.at(k);
        walk_.jumps.at(row)->setData(at.cx, at.cy, at.halfX, at.halfY, result.dMuts.value(k, 0.0));
        walk_.weights.at(row)->setData(at.cx, at.cy, at.halfX, at.halfY,
                                       result.ratios.value(k, 0.0));
    }
    parts_.book.at(zansaKey).setData(at.cx, at.cy, at.halfX, at.halfY, residualToRecord(result));
    walk_.outcomes.add(result.outcome, result.gapHeld);
}

/// A position that is not fitted shows the residual of the one before, but 0 where each position
/// has its own and there is no edge.
double AnalysisConductor::residualToRecord(const LcfResult& result)
{
    if (result.fitted())
        walk_.zansa = result.zansa;
    else if (walk_.conditions.ownWeights && result.outcome != Outcome::GapUnsound)
        walk_.zansa = 0.0;
    return walk_.zansa;
}

void AnalysisConductor::finishRow(const AnalyzeCond& at)
{
    if (parts_.panel.displaysOnTime())
        generateResImages();
    parts_.panel.setProgress(at.progress());
}

void AnalysisConductor::generateResImages()
{
    for (const MapKey& key : qAsConst(walk_.keys))
        parts_.book.at(key).genImg();
    view_.resultsPainted();
}

void AnalysisConductor::endWalk()
{
    generateResImages();
    CommandEnd end = leaveWalk(true);
    parts_.panel.setProgress(100.0);
    logTime(QStringLiteral("2da 3:"));
    qDebug().noquote() << "2D analysis:" << walk_.outcomes.text();
    end.done();
}

/// Returns what the command that started the walk waits for.
CommandEnd AnalysisConductor::leaveWalk(bool whole)
{
    walk_.running = false;
    walk_.pending.clear();
    walk_.source.reset();
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
void AnalysisConductor::stackChanges(const ImageStack& stack, const QString& what)
{
    if (!walk_.running || !parts_.reader.holds(*walk_.source, stack))
        return;
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
    logTime(QStringLiteral("2da 4:"));
    qDebug().noquote() << QStringLiteral("2D analysis %1: %2").arg(why, walk_.outcomes.text());
    // The map on show is painted as far as it is filled.
    view_.resultsStopped();
    end.failed(why);
}
