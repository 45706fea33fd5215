#include "image/LoadTiff.h"

#include "common/Fault.h"
#include "image/TiffData.h"

#include <memory>
#include <utility>

LoadTiff::LoadTiff(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<LoadJob>();
    qRegisterMetaType<EX_CMD_ID>("EX_CMD_ID");
    // Queued even within the thread: a direct call would nest one level per file.
    connect(this, &LoadTiff::loadNext, this, &LoadTiff::treatQues, Qt::QueuedConnection);
}

void LoadTiff::loadTiffs(const LoadJob& job)
{
    queue_.append(job);
    filesOfAll_ += job.files.size();
    if (busy_)
        return;
    busy_ = true;
    index_ = job.cutFirst;
    Q_EMIT loadNext();
}

void LoadTiff::treatQues()
{
    if (queue_.isEmpty() || stop_)
        return;
    // A copy: the list may be given away below.
    const LoadJob job = queue_.first();
    if (job.ticket != 0 && job.ticket != ticket_) {
        ticket_ = job.ticket;
        faults_.clear();
    }
    const FaultCollector faults(job.place);
    readNext(job);
    if (job.ticket != 0)
        faults_ += faults.faults();
    if (index_ >= job.files.size() - job.cutLast)
        endJob();
    else
        Q_EMIT loadNext();
}

void LoadTiff::readNext(const LoadJob& job)
{
    if (job.number != 0 && job.number <= stoppedUpTo_) {
        index_ = job.files.size();
        fault(QStringLiteral("The load was stopped"));
    } else if (index_ < job.files.size()) {
        // The end is looked for behind a file only, so the first one is always tried.
        readOne(job);
        index_ = int(qMin<qint64>(qint64(index_) + qMax(1, job.skip), job.files.size()));
        Q_EMIT progressed(filesOfEnded_ + index_, filesOfAll_);
    } else if (!job.files.isEmpty()) {
        fault(QStringLiteral("No files to load: all %1 are cut off").arg(job.files.size()));
    }
}

void LoadTiff::readOne(const LoadJob& job)
{
    const QString& name = job.files[index_];
    if (job.ignoreLive && name.contains(QLatin1String("Live")))
        return;
    auto image = std::make_unique<TiffData>();
    image->jobNumber = job.number;
    if (!image->readFile(name, job.errPs, &stop_)) {
        ++failedFiles_;
        return;
    }
    Q_EMIT loaded(image.release(), index_);
}

void LoadTiff::endJob()
{
    const LoadJob ended = queue_.takeFirst();
    ++jobsDone_;
    filesOfEnded_ += ended.files.size();
    if (!queue_.isEmpty()) {
        index_ = queue_.first().cutFirst;
        Q_EMIT loadNext();
        return;
    }
    busy_ = false;
    const int ticket = ticket_;
    ticket_ = 0;
    filesOfEnded_ = filesOfAll_ = 0;
    Q_EMIT progressed(0, 0);
    Q_EMIT failed(std::exchange(failedFiles_, 0));
    Q_EMIT finishLoadFiles(ended.loadCmdId, ticket, jobsDone_, std::exchange(faults_, {}));
}
