#include "app/Body.h"

#include "analysis/Analyzer.h"
#include "analysis/LCFReference.h"
#include "batch/BatchCtrl.h"
#include "common/Fault.h"
#include "common/Log.h"
#include "common/SafeInt.h"
#include "display/ImgDispA.h"
#include "ui_Body.h"

#include <QDebug>
#include <QElapsedTimer>

#include <algorithm>
#include <utility>

namespace {

/// Time that the positions of one request should take: long against a round trip between threads,
/// short against a user's patience.
constexpr double requestMs = 10.0;

/// Requests that the worker has or is about to get, so that it works while the next is formed.
constexpr int requestsUnderWay = 2;

/// Size of a walk's first request, before the time of a position is known.
constexpr int firstRequestPositions = 16;

/// Share of the value range, at its top and bottom, in which the deglitch filter may act.
constexpr double deglitchRangeRatio = 0.1;

} // namespace

bool Body::askAnalyzeCond(AnalyzeCond& ac) const
{
    return areaFault(ac).isEmpty();
}

/// Fills ac with the walk over the selected area; why there is none to walk over, or an empty text.
QString Body::areaFault(AnalyzeCond& ac) const
{
    if (i1Stack_.isEmpty())
        return QStringLiteral("no I1 images");
    const TiffData& first = *i1Stack_.first();
    const QRectF area =
        ui_->dispA->hasSelection() ? ui_->dispA->selectedArea() : QRectF(0, 0, imgW_, imgH_);
    ac = AnalyzeCond(first.width, first.height, halfWidthX(), halfWidthY(), area, -1, -1);
    const AnalyzeCond selected = ac;
    if (ac.cutToImage())
        return {};
    return QStringLiteral("the selected area (%1, %2)-(%3, %4) has no pixel of the image")
        .arg(selected.x0)
        .arg(selected.y0)
        .arg(selected.x1)
        .arg(selected.y1);
}

/// The button that starts a walk also stops it.
void Body::start2DAnalysis()
{
    if (walk_.running)
        stop2DAnalysis();
    else
        startWalk(0);
}

/// Starts a walk in place of the one that runs, for the batch command with the ticket.
void Body::startWalk(int ticket)
{
    stop2DAnalysis();
    AnalyzeCond cond;
    const QString why = walkFault(cond);
    if (!why.isEmpty()) {
        fault(QStringLiteral("2D analysis not started: ") + why);
        endCommand(ExCmdAnalyzerExecLCF, ticket, {});
        return;
    }
    analyzer_->beginWalk(suggestElm(), scanRange());
    const int number = walk_.number + 1;
    walk_ = Walk();
    walk_.running = true;
    walk_.number = number;
    walk_.ticket = ticket;
    walk_.scan = scanRange();
    walk_.ownWeights = analyzer_->ownWeights();
    walk_.positionsPerRequest = qMin(firstRequestPositions, maxPositionsPerRequest_);
    setMapsInterrupted(false);
    analyzer_->setContAccess(true);
    analyzer_->setProgress(0.0);
    logTime(QStringLiteral("2da 1:"));
    prepareMaps(cond);
    logTime(QStringLiteral("2da 2:"));
    walk_.runs = WalkRuns(cond);
    for (int i = 0; i < requestsUnderWay; ++i)
        sendNextRequest();
}

/// Fills cond with the walk over the selected area; why there is nothing to analyse, or an empty
/// text.
QString Body::walkFault(AnalyzeCond& cond) const
{
    QString why = areaFault(cond);
    if (!why.isEmpty())
        return why;
    if (!analyzer_->walkAnalysisSelected())
        return QStringLiteral("no analysis selected");
    // The fits are the only analysis that walks: without them there is nothing left to run.
    if (!analyzer_->canFit(suggestElm(), scanRange()))
        return QStringLiteral("LCF is left out, no reference in use has a point inside the fitting "
                              "range and the scan");
    return {};
}

/// Least and greatest energy of the I1 images, which there must be. [eV]
ReadRange Body::scanRange() const
{
    const auto [least, greatest] = std::minmax_element(
        i1Stack_.begin(), i1Stack_.end(),
        [](const TiffData* a, const TiffData* b) { return a->energy < b->energy; });
    return {(*least)->energy, (*greatest)->energy};
}

void Body::prepareMaps(const AnalyzeCond& cond)
{
    resMaps_.clear();
    const QVector<LCFReference*>& rows = analyzer_->refs();
    for (int kind = 0; kind < LCFReference::mapKinds; ++kind) {
        for (LCFReference* row : rows) {
            Analyzed2DRes* map = row->map(kind);
            map->prepare(cond);
            map->setNo(resMaps_.size());
            resMaps_.append(map);
        }
    }
    const int rowMaps = resMaps_.size();
    analyzer_->zansaMap()->prepare(cond);
    analyzer_->zansaMap()->setNo(rowMaps);
    analyzer_->dEdgeMap()->prepare(cond);
    analyzer_->dEdgeMap()->setNo(rowMaps + 1);
    tellShowDeglitched();
}

/// Shift of an image position from the energy shift map [eV], 0 outside the map.
double Body::energyShiftAt(int x, int y) const
{
    const auto onMap = [](qint64 v) { return int(qBound<qint64>(-1, v, INT_MAX)); };
    return energyShiftMap_.valueAt(onMap(qint64(imgX0_) + x - mapX0_),
                                   onMap(qint64(imgY0_) + y - mapY0_));
}

QVector<XafsSpectrum> Body::rawSpectraOf(const WalkRun& run) const
{
    AnalyzeCond at = run.first;
    const BlockConditions conditions = blockConditions(at.halfX, at.halfY);
    const SuggestElm elm = suggestElm();
    BlockSpectra blocks({i1Stack_, i0Stack_}, conditions);
    const QVector<Spectrum> raw = blocks.row(at.cx, at.stepX, run.count, at.cy);
    const QString name = QStringLiteral("Body-AaP");
    QVector<XafsSpectrum> spectra;
    spectra.reserve(run.count);
    for (const Spectrum& curve : raw) {
        spectra.append(XafsSpectrum::unnormalized(curve, name, targetBackground(),
                                                  energyShiftAt(at.cx, at.cy), elm));
        at.next();
    }
    return spectra;
}

void Body::sendNextRequest()
{
    if (walk_.runs.atEnd())
        return;
    QElapsedTimer timer;
    timer.start();
    PendingRequest pending;
    pending.run = walk_.runs.take(walk_.positionsPerRequest);

    AnalysisRequest request;
    request.walk = walk_.number;
    request.spectra = rawSpectraOf(pending.run);
    request.normalize = true;
    pending.activeRows = analyzer_->activeRows();
    walk_.pending.enqueue(pending);
    analyzer_->analyzeInWalk(request, suggestElm(), walk_.scan);

    walk_.formingMs = double(timer.nsecsElapsed()) * 1e-6 / pending.run.count;
}

/// Sizes the next request by the slower of the two threads.
void Body::adaptRequestSize(double workerMs, int positions)
{
    const double msPerPosition = qMax(walk_.formingMs, workerMs / positions);
    walk_.positionsPerRequest =
        qBound(1, truncatedInt(requestMs / qMax(msPerPosition, 1e-6)), maxPositionsPerRequest_);
}

void Body::analyzeASpectrumFinished(const AnalysisResult& result)
{
    // Results of a walk that was stopped, or of one before it, are not recorded.
    if (!walk_.running || result.walk != walk_.number || walk_.pending.isEmpty())
        return;
    const PendingRequest pending = walk_.pending.dequeue();
    recordRequest(pending, result);
    adaptRequestSize(result.tookMs, pending.run.count);
    batchCtrl_->watch().progressed();
    if (i1Stack_.isEmpty()) {
        generateResImages();
        stopWalk(stoppedText() + QLatin1String(", the I1 images are gone"));
        return;
    }
    sendNextRequest();
    if (walk_.pending.isEmpty())
        endWalk();
}

void Body::recordRequest(const PendingRequest& pending, const AnalysisResult& result)
{
    AnalyzeCond at = pending.run.first;
    for (int k = 0; k < pending.run.count; ++k) {
        recordResForAPoint(at, pending.activeRows, result.lcf.value(k));
        if (at.next() && at.newLine)
            finishRow(at);
    }
}

void Body::recordResForAPoint(const AnalyzeCond& at, const QVector<int>& activeRows,
                              const LcfResult& result)
{
    const int refCount = resMaps_.size() / LCFReference::mapKinds;
    const QVector<int>& rows = result.fitted() ? result.activeRows : activeRows;
    for (int k = 0; k < rows.size(); ++k) {
        const int row = rows[k];
        if (row >= refCount)
            continue; // a row added since the walk began has no map in it
        resMaps_[row]->setData(at.cx, at.cy, at.halfX, at.halfY, result.dMuts.value(k, 0.0));
        resMaps_[row + refCount]->setData(at.cx, at.cy, at.halfX, at.halfY,
                                          result.ratios.value(k, 0.0));
    }
    analyzer_->zansaMap()->setData(at.cx, at.cy, at.halfX, at.halfY, residualToRecord(result));
    walk_.outcomes.add(result.outcome, result.gapHeld);
}

/// A position that is not fitted shows the residual of the one before, but 0 where each position
/// has its own and there is no edge.
double Body::residualToRecord(const LcfResult& result)
{
    if (result.fitted())
        walk_.zansa = result.zansa;
    else if (walk_.ownWeights && result.outcome != Outcome::GapUnsound)
        walk_.zansa = 0.0;
    return walk_.zansa;
}

void Body::finishRow(const AnalyzeCond& at)
{
    if (analyzer_->displaysOnTime())
        generateResImages();
    analyzer_->setProgress(at.progress());
}

void Body::generateResImages()
{
    if (resMaps_.isEmpty())
        return;
    for (Analyzed2DRes* map : qAsConst(resMaps_))
        map->genImg();
    analyzer_->zansaMap()->genImg();
    analyzer_->dEdgeMap()->genImg();
    ui_->dispA->setAnalyzedRes(analyzer_->selectedMap());
    if (ui_->dispA->shownMap())
        showPixel(curX_, curY_);
}

void Body::endWalk()
{
    generateResImages();
    ui_->dispA->update();
    const int ticket = leaveWalk();
    analyzer_->setProgress(100.0);
    logTime(QStringLiteral("2da 3:"));
    qDebug().noquote() << "2D analysis:" << walk_.outcomes.text();
    endCommand(ExCmdAnalyzerExecLCF, ticket, {});
}

/// Returns the ticket of the command that waits for the walk's end.
int Body::leaveWalk()
{
    walk_.running = false;
    walk_.pending.clear();
    analyzer_->setContAccess(false);
    return std::exchange(walk_.ticket, 0);
}

void Body::stop2DAnalysis()
{
    stopWalk(stoppedText());
}

/// Ends a walk before its time; the maps hold what was recorded, without pictures.
void Body::stopWalk(const QString& why)
{
    if (!walk_.running)
        return;
    const int ticket = leaveWalk();
    setMapsInterrupted(true);
    logTime(QStringLiteral("2da 4:"));
    qDebug().noquote() << QStringLiteral("2D analysis %1: %2").arg(why, walk_.outcomes.text());
    endCommand(ExCmdAnalyzerExecLCF, ticket, {why});
    // The map on show is painted as far as it is filled.
    if (!closing_ && ui_->ShowResAnalysis->isChecked())
        dispImgSelected(true);
}

void Body::setMapsInterrupted(bool f)
{
    mapsInterrupted_ = f;
    analyzer_->setMapsInterrupted(f);
}

void Body::setupResAnalysisImage()
{
    if (Analyzed2DRes* map = analyzer_->selectedMap())
        map->genImg();
}

void Body::deglitch()
{
    Analyzed2DRes* map = analyzer_->selectedMap();
    if (!map)
        return;
    // Only the top and bottom tenth of the value range is replaced.
    map->setDeglitchConds(map->deglitchFactor, deglitchRangeRatio);
    map->deglitch();
    ui_->dispA->update();
}

void Body::showAnalyzedVals()
{
    const Analyzed2DRes* map = analyzer_->selectedMap();
    if (!map || !map->data())
        return;
    qDebug() << "vals of" << map->name;
    const double* const filtered = map->procData() ? map->procData() : map->data();
    const int width = map->stepper.width;
    for (int y = 0; y < map->stepper.height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int at = y * width + x;
            qDebug().noquote() << QString::asprintf("%4d %4d %15.6f %15.6f", x, y, map->data()[at],
                                                    filtered[at]);
        }
    }
}
