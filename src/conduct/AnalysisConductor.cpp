#include "conduct/AnalysisConductor.h"

#include "analysis/Analyzer.h"
#include "analysis/lcf/LcfSection.h"
#include "batch/CmdLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/Log.h"
#include "common/SafeFile.h"
#include "conduct/CursorConductor.h"
#include "conduct/SourceReader.h"
#include "conduct/StopReason.h"
#include "conduct/ViewConductor.h"
#include "conduct/WalkConductor.h"
#include "display/RunRow.h"
#include "display/XafsView.h"
#include "maps/FaintPositions.h"
#include "maps/MapBook.h"
#include "maps/MapChoice.h"
#include "output/PictureFile.h"
#include "walk/OutcomeSink.h"

#include <QCoreApplication>
#include <QDebug>

#include <utility>

namespace {

/// The map on show is painted no oftener than this during a walk. [ms]
constexpr int paintEveryMs = 50;

constexpr MapKey outcomesKey{MapKind::Outcomes, 0};

/// Walks in the log.
constexpr const char* walkNames[analysisWalks] = {"2D analysis", "Residual absorption analysis",
                                                  "Element analysis", "Sum of images"};

EX_CMD_ID commandOf(AnalysisWalk walk)
{
    constexpr EX_CMD_ID commands[analysisWalks] = {ExCmdAnalyzerExecLCF, ExCmdAnalyzerExecRa,
                                                   ExCmdAnalyzerExecElems, ExCmdAnalyzerSumUp};
    return commands[int(walk)];
}

QString nameOf(AnalysisWalk walk)
{
    return QLatin1String(walkNames[int(walk)]);
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
    addMaps();
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
    connect(proc, &AnalyzeProc::finished, panel, &Analyzer::analyzeSpectrumFinished);
    thread_.start();
}

void AnalysisConductor::connectPanel(CursorConductor& cursor)
{
    const Analyzer* const panel = &parts_.panel;
    connect(panel, &Analyzer::askAnalyze, this, &AnalysisConductor::startOrStop);
    connect(panel, &Analyzer::rowAdded, this, &AnalysisConductor::addMaps);
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
    history_ = &book.history();
    for (int i = 0; i < analysisWalks; ++i) {
        const auto walk = AnalysisWalk(i);
        book.later(commandOf(walk), [this, walk](const CmdLine&, CommandEnd end) {
            startWalk(walk, std::move(end));
        });
    }
}

/// Each map is in the book from the start, so that it can be chosen.
void AnalysisConductor::addMaps()
{
    for (const AnalysisSection* section : parts_.panel.sections()) {
        for (const MapKey& key : section->maps())
            parts_.book.at(key);
    }
    parts_.book.at(outcomesKey);
}

void AnalysisConductor::start2DAnalysis()
{
    startOrStop(AnalysisWalk::Fits);
}

void AnalysisConductor::startRA2DAnalysis()
{
    startOrStop(AnalysisWalk::Residual);
}

void AnalysisConductor::startElems2DAnalysis()
{
    startOrStop(AnalysisWalk::Elements);
}

void AnalysisConductor::doSumUp()
{
    startOrStop(AnalysisWalk::SumUp);
}

void AnalysisConductor::startOrStop(AnalysisWalk walk)
{
    if (walk_.running)
        stop2DAnalysis();
    else
        start(walk);
}

void AnalysisConductor::start(AnalysisWalk walk)
{
    if (history_) {
        history_->settle();
        history_->add(commandOf(walk));
    }
    startWalk(walk, {});
}

/// Starts a walk in place of the one that runs.
void AnalysisConductor::startWalk(AnalysisWalk walk, CommandEnd end)
{
    stop2DAnalysis();
    AnalyzeCond area;
    const QString why = walkFault(walk, area);
    if (!why.isEmpty()) {
        fault(nameOf(walk) + QStringLiteral(" not started: ") + why);
        end.done();
        return;
    }
    takeInSingleFits();
    beginRun(walk, area, std::move(end));
    Q_EMIT runningChanged(true);
}

void AnalysisConductor::beginRun(AnalysisWalk walk, const AnalyzeCond& area, CommandEnd end)
{
    walk_ = Run();
    walk_.running = true;
    walk_.walk = walk;
    walk_.end = std::move(end);
    const SharedSource source = sourceOf(walk);
    walk_.spectra = positionsOf(*source);
    for (const WhyNot& why : reasonsOf(walk, walk_.spectra))
        qDebug().noquote() << why.log;
    walk_.sections = readySections(walk, walk_.spectra);
    for (AnalysisSection* section : qAsConst(walk_.sections))
        section->aboutToWalk(walk_.spectra);
    if (walk_.sections.contains(&parts_.panel.lcf()))
        walk_.fittedRows = parts_.panel.lcf().fittedRows(walk_.spectra).size();
    walk_.conditions =
        AnalysisConditions(*source, area, conditionsOf(walk_.sections, walk_.spectra));
    parts_.panel.setMapsInterrupted(walk, false);
    parts_.panel.setContAccess(true, walk);
    parts_.panel.setProgress(walk, 0.0);
    logStep(QStringLiteral("2da 1:"));
    makeKernels();
    prepareMaps(area, source);
    logStep(QStringLiteral("2da 2:"));
    walk_.painted.start();
    walks_.run(WalkConductor::Analysis, orderOf(area, source),
               {[this](const WalkRun& run) { positionsTaken(run); }, [this] { endWalk(); },
                [this](const QString& what) { imagesChange(what); }});
}

/// The walk of the fits tells the log of its steps.
void AnalysisConductor::logStep(const QString& word) const
{
    if (walk_.walk == AnalysisWalk::Fits)
        logTime(word);
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

void AnalysisConductor::makeKernels()
{
    for (const AnalysisSection* section : qAsConst(walk_.sections))
        walk_.kernels.emplace_back(section->analysisName(), section->kernel(walk_.spectra));
}

/// Lines are formed, and there is something to tell of what became of them.
bool AnalysisConductor::mapsOutcomes() const
{
    return !walk_.kernels.empty() && walk_.kernels.front().second->stage() >= Stage::Lines;
}

/// The maps of all analyses of the walk, also of those that take no part: what an earlier walk left
/// in them is gone.
void AnalysisConductor::prepareMaps(const AnalyzeCond& area, const SharedSource& source)
{
    for (const AnalysisSection* section : parts_.panel.sectionsOf(walk_.walk)) {
        const MapOrigin origin{
            section->analysisName(), section->files(), source, walk_.kernels, {}};
        for (const MapKey& key : section->maps()) {
            beginMap(key, area, origin);
            parts_.book.at(key).setNo(walk_.keys.size() - 1);
        }
    }
    if (mapsOutcomes()) {
        const QString& name = walk_.kernels.front().first;
        beginMap(outcomesKey, area, {name, {}, source, walk_.kernels, {}});
    }
}

void AnalysisConductor::beginMap(const MapKey& key, const AnalyzeCond& area,
                                 const MapOrigin& origin)
{
    walk_.keys.append(key);
    parts_.book.begin(key, area, origin);
}

/// The first analysis tells what became of the positions.
WalkOrder AnalysisConductor::orderOf(const AnalyzeCond& area, const SharedSource& source)
{
    WalkOrder order{source, area, {}};
    for (int i = 0; i < walk_.sections.size(); ++i) {
        const WalkKernel& kernel = *walk_.kernels[std::size_t(i)].second;
        WalkJob job{kernel.forWorker(), walk_.sections.at(i)->sink(walk_.spectra, parts_.book)};
        if (i == 0) {
            Analyzed2DRes* const map = mapsOutcomes() ? &parts_.book.at(outcomesKey) : nullptr;
            job.sink = std::make_unique<OutcomeSink>(std::move(job.sink), source->commonArea(),
                                                     walk_.outcomes, map);
        }
        order.jobs.push_back(std::move(job));
    }
    return order;
}

void AnalysisConductor::positionsTaken(const WalkRun& run)
{
    walk_.last = {run.last().cx, run.last().cy};
    const AnalyzeCond next = run.behind();
    if (next.cy < next.y1) {
        walk_.percent = next.progress();
        parts_.panel.runRow(walk_.walk).setDone(walk_.percent);
    }
    if (next.newLine && next.cy < next.y1)
        finishRow(next);
    Q_EMIT progressed();
}

void AnalysisConductor::finishRow(const AnalyzeCond& at)
{
    parts_.panel.setProgress(walk_.walk, at.progress());
    showLastPosition();
    if (!parts_.panel.displaysOnTime(walk_.walk) || walk_.painted.elapsed() < paintEveryMs)
        return;
    view_.paintShownResult();
    walk_.painted.start();
}

/// The panel shows the values of the position that was recorded last.
void AnalysisConductor::showLastPosition()
{
    for (AnalysisSection* section : qAsConst(walk_.sections))
        section->showPosition(parts_.book, walk_.last);
}

/// Maps that are made of the others, before anybody looks at them.
void AnalysisConductor::finishMaps()
{
    for (AnalysisSection* section : qAsConst(walk_.sections))
        section->finishMaps(parts_.book);
}

void AnalysisConductor::generateResImages()
{
    for (const MapKey& key : qAsConst(walk_.keys))
        parts_.book.at(key).genImg();
    view_.resultsPainted();
}

void AnalysisConductor::endWalk()
{
    finishMaps();
    if (choosesMap_)
        markFaint();
    generateResImages();
    CommandEnd end = leaveWalk(true);
    showLastPosition();
    parts_.panel.setProgress(walk_.walk, 100.0);
    logStep(QStringLiteral("2da 3:"));
    qDebug().noquote() << nameOf(walk_.walk) + QLatin1Char(':') << walk_.outcomes.text();
    const QStringList faults = saveSumUpPicture();
    chooseMap();
    Q_EMIT runningChanged(false);
    Q_EMIT ended(true);
    end.failed(faults);
}

/// A whole sum of images is kept as a picture, whatever is on show; why it could not be.
QStringList AnalysisConductor::saveSumUpPicture() const
{
    if (walk_.walk != AnalysisWalk::SumUp)
        return {};
    const FaultCollector faults;
    const auto file = QStringLiteral("sumUpImg.png");
    const QImage* const picture = parts_.book.at({MapKind::SumUp}).img();
    if (savePicture(picture ? *picture : QImage(), file))
        logWritten(file);
    return faults.faults();
}

/// The maps in front of a user take their colours from the sample.
void AnalysisConductor::markFaint()
{
    std::vector<const Analyzed2DRes*> jumps;
    for (const AnalysisSection* section : qAsConst(walk_.sections)) {
        for (const MapKey& key : section->jumpMaps())
            jumps.push_back(&parts_.book.at(key));
    }
    const PositionMask faint = faintPositions(jumps);
    for (const MapKey& key : qAsConst(walk_.keys))
        parts_.book.at(key).setFaint(faint);
}

/// Whoever starts a walk wants to see what it made, unless one of its maps is on show already.
void AnalysisConductor::chooseMap()
{
    if (!choosesMap_)
        return;
    const std::optional<MapKey> chosen = chosenMap(parts_.panel.mapChoice(), parts_.book);
    if (chosen && walk_.keys.contains(*chosen))
        return;
    for (const AnalysisSection* section : qAsConst(walk_.sections)) {
        if (const std::optional<MapKey> first = section->firstMap()) {
            parts_.panel.chooseMap(*first);
            Q_EMIT resultsWanted();
            return;
        }
    }
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
    parts_.panel.setContAccess(false, walk_.walk);
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
    finishMaps();
    generateResImages();
    stopWalk(stopReason(what));
}

/// Ends a walk before its time; the maps hold what was recorded, and get no new pictures.
void AnalysisConductor::stopWalk(const QString& why)
{
    if (!walk_.running)
        return;
    finishMaps();
    CommandEnd end = leaveWalk(false);
    parts_.panel.setMapsInterrupted(walk_.walk, true);
    parts_.panel.runRow(walk_.walk).setStoppedAt(walk_.percent);
    logStep(QStringLiteral("2da 4:"));
    qDebug().noquote()
        << QStringLiteral("%1 %2: %3").arg(nameOf(walk_.walk), why, walk_.outcomes.text());
    // The map on show is painted as far as it is filled.
    view_.resultsStopped();
    Q_EMIT runningChanged(false);
    Q_EMIT ended(false);
    end.failed(why);
}
