#include "conduct/StackConductor.h"

#include "batch/BatchCtrl.h"
#include "batch/CommandBook.h"
#include "batch/CommandFailure.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "common/FileNames.h"
#include "image/EnergyOrder.h"
#include "image/Measurement.h"
#include "selection/DataBox.h"
#include "selection/SelectDataFiles.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

bool isNewMode(const CmdLine& cmd)
{
    return cmd.arg(0).toUpper() == QLatin1String("NEW");
}

/// The files that the line asks for.
QStringList filesOf(const CmdLine& cmd, bool byPattern)
{
    if (!byPattern)
        return cmd.args.mid(1);
    const QStringList files = filesOfPattern(cmd.arg(1), cmd.args.mid(2));
    if (files.isEmpty())
        fault(QStringLiteral("No files to load: ") + cmd.simplified);
    return files;
}

/// "9010 eV in name": an image in the words of log and tool tip.
QString imageText(const TiffData& image, const QString& name)
{
    return QStringLiteral("%1 eV in ").arg(energyText(image.energy)) + name;
}

} // namespace

StackConductor::Loading::Loading(ImageStack* filled, SelectDataFiles* filesRow, EX_CMD_ID id)
    : stack(filled)
    , row(filesRow)
    , command(id)
    , loader(std::make_unique<LoadTiff>())
{
}

StackConductor::StackConductor(Measurement& data, DataBox& box, const BatchCtrl& batch,
                               QObject* parent)
    : QObject(parent)
    , data_(data)
    , batch_(batch)
    , i1_(&data.i1, box.i1Row(), ExCmdLoadI1Files)
    , i0_(&data.i0, box.i0Row(), ExCmdLoadI0Files)
{
    connect(this, &StackConductor::loadI1Files, i1_.loader.get(), &LoadTiff::loadTiffs);
    connect(this, &StackConductor::loadI0Files, i0_.loader.get(), &LoadTiff::loadTiffs);
    connect(i1_.loader.get(), &LoadTiff::loaded, this, &StackConductor::loadedI1);
    connect(i0_.loader.get(), &LoadTiff::loaded, this, &StackConductor::loadedI0);
    connect(i1_.row, &SelectDataFiles::filesSelected, this, &StackConductor::readI1Files);
    connect(i0_.row, &SelectDataFiles::filesSelected, this, &StackConductor::readI0Files);
    for (Loading* loading : {&i1_, &i0_})
        setup(*loading);
}

void StackConductor::setup(Loading& loading)
{
    connect(loading.row, &SelectDataFiles::clear, this, [this, &loading] {
        if (&loading == &i1_)
            clearI1Files();
        else
            clearI0Files();
    });
    connect(loading.row, &SelectDataFiles::energiesApplied, this, [this, &loading] {
        applyEnergies(*loading.stack);
        tellHistory(loading, ExCmdEngApplyI1, ExCmdEngApplyI0);
    });
    LoadTiff* const loader = loading.loader.get();
    loader->moveToThread(&loading.thread);
    connect(loader, &LoadTiff::progressed, this, [this, &loading](int done, int total) {
        Q_EMIT progressed(loading.stack, done, total);
    });
    connect(loader, &LoadTiff::failed, this,
            [&loading](int files) { loading.failedFiles = files; });
    connect(loader, &LoadTiff::finishLoadFiles, this,
            [this, &loading](EX_CMD_ID, int ticket, int jobsDone, const QStringList& faults) {
                finishLoad(loading, jobsDone);
                reportEnds(loading, ticket, faults);
            });
    loading.thread.start();
}

StackConductor::~StackConductor()
{
    requestStop();
    for (Loading* loading : {&i1_, &i0_}) {
        // Let go: whatever the loader still reads is of no use.
        loading->waiting.clear();
        loading->thread.quit();
        loading->thread.wait();
    }
    // Images on their way in a queued signal would have no owner otherwise; nobody hears of them.
    blockSignals(true);
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

void StackConductor::requestStop()
{
    i1_.loader->requestStop();
    i0_.loader->requestStop();
}

void StackConductor::stopLoads()
{
    for (Loading* loading : {&i1_, &i0_})
        loading->loader->stopJobs(loading->jobsSent);
}

void StackConductor::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    history_ = &book.history();
    // A load chooses its last image by itself.
    connect(this, &StackConductor::loaded, history_, &History::accept);
    for (const Loading* loading : {&i1_, &i0_})
        history_->follow([this, loading] { return stackLines(*loading); }, History::InState);
    book.action(ExCmdClearI1Files, [this](const Cmd&) { clearI1Files(); });
    book.action(ExCmdClearI0Files, [this](const Cmd&) { clearI0Files(); });
    book.action(ExCmdEngApplyI1, [this](const Cmd&) { applyEnergies(data_.i1); });
    book.action(ExCmdEngApplyI0, [this](const Cmd&) { applyEnergies(data_.i0); });
    const auto bindLoad = [&](EX_CMD_ID id, Loading& loading, bool byPattern) {
        book.later(id, [this, &loading, byPattern](const Cmd& c, CommandEnd end) {
            load(loading, byPattern, c, std::move(end));
        });
    };
    bindLoad(ExCmdLoadI1Files, i1_, false);
    bindLoad(ExCmdLoadI0Files, i0_, false);
    bindLoad(ExCmdLoadI1FilesOfPattern, i1_, true);
    bindLoad(ExCmdLoadI0FilesOfPattern, i0_, true);
}

// Fewer than two arguments load nothing and report nothing: the run waits for "Stop", on purpose;
// but for one that nobody is there to stop.
void StackConductor::load(Loading& loading, bool byPattern, const CmdLine& cmd, CommandEnd end)
{
    if (cmd.args.size() >= 2) {
        const QStringList files = filesOf(cmd, byPattern);
        read(loading, prepareRead(loading, files, isNewMode(cmd), cmd, std::move(end)));
    } else if (batch_.isUnattended()) {
        fault(QStringLiteral("No files to load: ") + cmd.simplified);
        end.done();
    } else {
        fault(QStringLiteral("No files to load, the run waits for \"Stop\": ") + cmd.simplified);
        end.leaveOpen();
    }
}

const StackConductor::Loading& StackConductor::loadingOf(const ImageStack& stack) const
{
    return &stack == i1_.stack ? i1_ : i0_;
}

bool StackConductor::isLoading(const ImageStack& stack) const
{
    const Loading& loading = loadingOf(stack);
    return loading.jobsDone < loading.jobsSent;
}

void StackConductor::clearI1Files()
{
    clear(i1_);
    tellHistory(i1_, ExCmdClearI1Files, ExCmdClearI0Files);
}

void StackConductor::clearI0Files()
{
    clear(i0_);
    tellHistory(i0_, ExCmdClearI1Files, ExCmdClearI0Files);
}

void StackConductor::clear(Loading& loading)
{
    ImageStack& stack = *loading.stack;
    if (!stack.images.isEmpty())
        Q_EMIT aboutToChange(&stack, QStringLiteral("the %1 images are gone").arg(stack.name));
    loading.row->clearFiles();
    stack.images.clear();
    stack.darkAvg.clear();
    loading.firstValidJob = loading.jobsSent + 1;
    loading.failedFiles = 0;
    loading.jobs.clear();
    Q_EMIT cleared(&stack);
}

void StackConductor::readI1Files(const QStringList& files, bool newFile)
{
    tellLoad(i1_, files, newFile);
    read(i1_, prepareRead(i1_, files, newFile, CmdLine(), {}));
}

void StackConductor::readI0Files(const QStringList& files, bool newFile)
{
    tellLoad(i0_, files, newFile);
    read(i0_, prepareRead(i0_, files, newFile, CmdLine(), {}));
}

/// Clears the stack for a new selection; the job that reads the files.
LoadJob StackConductor::prepareRead(Loading& loading, const QStringList& files, bool newFile,
                                    const CmdLine& cmd, CommandEnd end)
{
    if (newFile) {
        clear(loading);
        if (&loading == &i1_)
            Q_EMIT quietLoadStarted();
    }
    LoadJob job = newJob(loading, files, cmd);
    loading.waiting[job.number] = {std::move(end), job.ticket};
    return job;
}

/// A job by the stack's row, counted as sent.
LoadJob StackConductor::newJob(Loading& loading, const QStringList& files, const CmdLine& cmd)
{
    const SelectDataFiles& row = *loading.row;
    LoadJob job;
    job.number = ++loading.jobsSent;
    job.files = files;
    job.ignoreLive = row.ignoreLive();
    job.skip = qMax(1, row.skip());
    job.cutFirst = qMax(0, row.cutFirst());
    job.cutLast = qMax(0, row.cutLast());
    job.errPs = row.errPoints();
    job.loadCmdId = loading.command;
    job.ticket = cmd.ticket;
    job.place = failurePlace(cmd);
    if (!files.isEmpty())
        loading.jobs.append(job);
    return job;
}

void StackConductor::read(Loading& loading, const LoadJob& job)
{
    if (&loading == &i1_)
        Q_EMIT loadI1Files(job);
    else
        Q_EMIT loadI0Files(job);
}

/// False, the image being deleted, when it comes of a job that was cleared meanwhile: a worker
/// reads a selection to its end.
bool StackConductor::take(Loading& loading, TiffData* image, int fNo)
{
    std::unique_ptr<TiffData> owned(image);
    if (!image || (image->jobNumber != 0 && image->jobNumber < loading.firstValidJob))
        return false;
    ImageStack& stack = *loading.stack;
    Q_EMIT aboutToChange(&stack, QStringLiteral("%1 images are added").arg(stack.name));
    image->energy = loading.row->addFile(image->fileName, fNo);
    stack.images.append(std::move(owned));
    return true;
}

void StackConductor::loadedI1(TiffData* image, int fNo)
{
    if (!take(i1_, image, fNo))
        return;
    if (data_.i1.images.size() == 1)
        data_.takeGeometry();
    Q_EMIT imageCame(&data_.i1, !isLoading(data_.i1) || i1_.row->showLatest());
}

void StackConductor::loadedI0(TiffData* image, int fNo)
{
    if (take(i0_, image, fNo))
        Q_EMIT imageCame(&data_.i0, !isLoading(data_.i0) || i0_.row->showLatest());
}

void StackConductor::finishedLoadI1Files(int jobsDone)
{
    finishLoad(i1_, jobsDone);
}

void StackConductor::finishedLoadI0Files(int jobsDone)
{
    finishLoad(i0_, jobsDone);
}

void StackConductor::finishLoad(Loading& loading, int jobsDone)
{
    const ImageStack& stack = *loading.stack;
    loading.jobsDone = jobsDone;
    if (!stack.images.isEmpty()) {
        loading.row->setExposure(stack.images.first()->exposureMs, stack.hasUniformExposure());
        tellEnergyDoubts(loading);
    }
    Q_EMIT loaded(loading.stack);
}

/// Reports the loads that are through. The faults are those of the job with the ticket.
void StackConductor::reportEnds(Loading& loading, int ticket, const QStringList& faults)
{
    const auto end = loading.waiting.upper_bound(loading.jobsDone);
    std::map<int, Waiting> through;
    for (auto job = loading.waiting.begin(); job != end; job = loading.waiting.erase(job))
        through.insert({job->first, std::move(job->second)});
    for (auto& [number, job] : through) {
        QStringList failures = job.ticket == ticket ? faults : QStringList();
        if (number < loading.firstValidJob)
            failures.append(QStringLiteral("the %1 images were cleared before all had come")
                                .arg(loading.stack->name));
        job.end.failed(failures);
    }
}

void StackConductor::applyEnergies(ImageStack& stack)
{
    Loading& loading = &stack == i1_.stack ? i1_ : i0_;
    stack.setEnergies(loading.row->applyEnergies());
    tellEnergyDoubts(loading);
    Q_EMIT energiesApplied(&stack);
}

bool StackConductor::setShifts(ImageStack& stack, const QVector<QPoint>& shifts)
{
    for (int i = 0; i < std::min(stack.images.size(), shifts.size()); ++i) {
        const TiffData& image = *stack.images.at(i);
        const QPoint shift = shifts.at(i);
        if (std::abs(qint64(shift.x())) < image.width && std::abs(qint64(shift.y())) < image.height)
            continue;
        fault(QStringLiteral("Image %1 of %2 not moved by %3, %4: it has %5 x %6 pixels")
                  .arg(i)
                  .arg(stack.name)
                  .arg(shift.x())
                  .arg(shift.y())
                  .arg(image.width)
                  .arg(image.height));
        return false;
    }
    if (shifts == stack.shifts())
        return true;
    Q_EMIT aboutToChange(&stack, QStringLiteral("%1 images are moved").arg(stack.name));
    stack.setShifts(shifts);
    Q_EMIT moved(&stack);
    return true;
}

/// Tells what is wrong with the stack's energies: a line each, and the marks of its row.
void StackConductor::tellEnergyDoubts(Loading& loading)
{
    const ImageStack& stack = *loading.stack;
    const QString complaint = loading.row->takeNameComplaint();
    if (!complaint.isEmpty())
        qDebug().noquote() << stack.name << "energies by name:" << complaint;
    QStringList marks;
    tellPair(stack, fallingPair(stack.images), "energies do not rise from file to file:",
             tr("Energies do not rise: %1 eV (%2), then %3 eV (%4)"), marks);
    tellPair(stack, equalPair(stack.images), "has two images of one energy:",
             tr("Two images of one energy: %1 eV (%2) and %3 eV (%4)"), marks);
    loading.row->setMark(marks.join(QLatin1Char('\n')));
}

void StackConductor::tellPair(const ImageStack& stack, const ImagePair& pair, const char* line,
                              const QString& mark, QStringList& marks) const
{
    if (pair.first < 0)
        return;
    const TiffData& first = *stack.images.at(pair.first);
    const TiffData& second = *stack.images.at(pair.second);
    qDebug().noquote() << stack.name << line << imageText(first, first.fileName) << "and"
                       << imageText(second, second.fileName);
    marks.append(mark.arg(energyText(first.energy), QFileInfo(first.fileName).fileName(),
                          energyText(second.energy), QFileInfo(second.fileName).fileName()));
}
