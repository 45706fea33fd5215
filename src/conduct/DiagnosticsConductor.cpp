#include "conduct/DiagnosticsConductor.h"

#include "analysis/diagnostics/Analyzer2.h"
#include "analysis/diagnostics/DarkCheckFiles.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "conduct/DarkConductor.h"
#include "conduct/StackConductor.h"
#include "conduct/StopReason.h"
#include "display/RunRow.h"
#include "image/Measurement.h"

#include <QDebug>
#include <QThread>

#include <utility>

/// A check that runs. Its thread reads what it starts with, and writes what it finds, which is read
/// once the thread is through.
struct DiagnosticsConductor::Run
{
    TiffStack images;
    DarkCheckSettings settings;
    ErrPoints badPixels;
    int threads = 1;
    std::atomic<bool> stop = false;

    bool whole = false; ///< found; else stopped
    QStringList faults; ///< of the files
    int dark = 0;
    int onlyDark = 0;
    int onlyListed = 0;

    void work(const std::function<void(double percent)>& done)
    {
        const auto result = checkDark(images, settings, threads, stop, done);
        if (!result || stop)
            return;
        whole = true;
        const DarkCheckDifferences differences = differencesOf(*result, badPixels);
        dark = result->points.size();
        onlyDark = differences.onlyDark.size();
        onlyListed = differences.onlyListed.size();
        const FaultCollector collector(QStringLiteral("Dark check: "));
        writeDarkCheck(*result, settings, differences);
        faults = collector.faults();
    }
};

DiagnosticsConductor::DiagnosticsConductor(const Parts& parts, StackConductor& stacks,
                                           DarkConductor& dark, QObject* parent)
    : QObject(parent)
    , parts_(parts)
{
    const Analyzer2* const panel = &parts_.panel;
    connect(panel, &Analyzer2::startCollectQInfo, this, &DiagnosticsConductor::startCollectQInfo);
    connect(this, &DiagnosticsConductor::doCollectQInfo, panel, &Analyzer2::doCollectQInfo);
    connect(panel, &Analyzer2::askedDarkCheck, this, &DiagnosticsConductor::darkCheck);
    connect(panel, &Analyzer2::useErrPMaskToggled, &dark, &DarkConductor::useErrPMaskToggled);
    for (const auto signal : {&StackConductor::cleared, &StackConductor::loaded})
        connect(&stacks, signal, this, &DiagnosticsConductor::tellReadiness);
    connect(&stacks, &StackConductor::imageCame, this, &DiagnosticsConductor::tellReadiness);
    tellReadiness();
}

DiagnosticsConductor::~DiagnosticsConductor()
{
    stop();
    if (thread_)
        thread_->wait();
}

void DiagnosticsConductor::bindCommands(CommandBook& book)
{
    history_ = &book.history();
    book.later(ExCmdAnalyzer2DarkCheck,
               [this](const CmdLine&, CommandEnd end) { start(std::move(end)); });
}

void DiagnosticsConductor::showErrPMask()
{
    const ErrPoints& list = defaultErrPoints();
    parts_.panel.setUseErrPMaskEnabled(!list.fileName.isEmpty());
    parts_.panel.setErrPMaskFileName(list.fileName);
    parts_.panel.setUseErrPMaskChecked(list.active);
}

void DiagnosticsConductor::darkCheck()
{
    if (run_) {
        stop();
        return;
    }
    if (history_) {
        history_->settle();
        history_->add(ExCmdAnalyzer2DarkCheck);
    }
    start({});
}

void DiagnosticsConductor::stop()
{
    if (run_)
        run_->stop = true;
}

/// Why there is nothing to check; empty when there is.
QString DiagnosticsConductor::checkFault() const
{
    if (run_)
        return QStringLiteral("another one runs");
    if (parts_.data.i1.images.isEmpty())
        return QStringLiteral("no I1 images");
    return parts_.panel.darkCheckSettings().fault();
}

void DiagnosticsConductor::start(CommandEnd end)
{
    const QString why = checkFault();
    if (!why.isEmpty()) {
        fault(QStringLiteral("Dark check not started: ") + why);
        end.done();
        return;
    }
    run_ = std::make_shared<Run>();
    run_->images = parts_.data.i1.images;
    run_->settings = parts_.panel.darkCheckSettings();
    run_->badPixels = defaultErrPoints();
    run_->threads = parts_.threads < 1 ? QThread::idealThreadCount() : parts_.threads;
    end_ = std::move(end);
    parts_.panel.setDarkOutcome({});
    parts_.panel.darkRun().setRunning(true);
    parts_.panel.darkRun().setProgress(0.0);
    const auto done = [this](double percent) {
        QMetaObject::invokeMethod(
            this, [this, percent] { takeProgress(percent); }, Qt::QueuedConnection);
    };
    thread_.reset(QThread::create([run = run_, done] { run->work(done); }));
    connect(thread_.get(), &QThread::finished, this, &DiagnosticsConductor::finish);
    thread_->start();
    Q_EMIT runningChanged(true);
}

void DiagnosticsConductor::takeProgress(double percent)
{
    if (!run_)
        return;
    parts_.panel.darkRun().setDone(percent);
    parts_.panel.darkRun().setProgress(percent);
    Q_EMIT progressed(percent);
}

void DiagnosticsConductor::finish()
{
    thread_->wait();
    const std::shared_ptr<Run> run = std::exchange(run_, nullptr);
    parts_.panel.darkRun().setRunning(false);
    QStringList faults = run->faults;
    outcome_.clear();
    if (!run->whole) {
        faults << stopReason();
        qDebug().noquote() << "Dark check" << stopReason();
    } else if (faults.isEmpty()) {
        outcome_ = tr("Pixels that are dark in all %2 images: %1; of them not on the list of bad "
                      "pixels: %3; on the list and not dark: %4")
                       .arg(run->dark)
                       .arg(run->images.size())
                       .arg(run->onlyDark)
                       .arg(run->onlyListed);
    }
    parts_.panel.setDarkOutcome(outcome_);
    Q_EMIT runningChanged(false);
    std::exchange(end_, CommandEnd()).failed(faults);
}

void DiagnosticsConductor::tellReadiness()
{
    const ImageStack& i1 = parts_.data.i1;
    if (i1.images.isEmpty()) {
        parts_.panel.darkRun().setReadiness(tr("No images: load them in step 1"), {});
        return;
    }
    const TiffData& first = *i1.images.first();
    parts_.panel.darkRun().setReadiness(
        {},
        tr("%1 images of %2 x %3 pixels").arg(i1.images.size()).arg(first.width).arg(first.height));
}
