#pragma once

#include "common/ExCmdId.h"
#include "image/ErrPoints.h"

#include <QMetaType>
#include <QObject>
#include <QStringList>
#include <QVector>

#include <atomic>

class TiffData;

/// A list of files to load, with all that reading them needs, by value: nothing of it is shared
/// with the thread that asked.
struct LoadJob
{
    QStringList files;
    bool ignoreLive = false; ///< pass over files with "Live" in their path
    int skip = 1;            ///< step through the list
    int cutFirst = 0;        ///< files left out at the start and at the end
    int cutLast = 0;
    ErrPoints errPs;
    int number = 0;                  ///< of the stack's jobs; goes into each image
    EX_CMD_ID loadCmdId = ExCmdNone; ///< passed back at the end
    int ticket = 0;                  ///< number of the batch command that asked, 0 for a click
    QString place; ///< of that command in its batch: what its log lines of faults begin with
};

Q_DECLARE_METATYPE(LoadJob)

/// Reads the images of one stack in a thread of its own, file by file, job after job.
class LoadTiff : public QObject
{
    Q_OBJECT
public:
    explicit LoadTiff(QObject* parent = nullptr);

    /// Asks the worker to leave its work, between two rows of a file; from any thread. For the
    /// program's end: a stopped worker reads nothing more.
    void requestStop() { stop_ = true; }
    /// Has the jobs up to this number end behind the file that is being read; later ones are read.
    /// From any thread.
    void stopJobs(int upTo) { stoppedUpTo_ = upTo; }

public Q_SLOTS:
    /// Queues a job. A job whose cutFirst leaves no file reads nothing and still reports its end.
    void loadTiffs(const LoadJob& job);
    void treatQues();

Q_SIGNALS:
    void loadNext();
    /// An image; the receiver owns it. fNo is the place in the job's full list.
    void loaded(TiffData* data, int fNo);
    /// The queue has run empty: id of the last job, the last ticket among the jobs since the worker
    /// was idle, the number of jobs ended so far, and what could not be read for that ticket.
    void finishLoadFiles(EX_CMD_ID id, int ticket, int jobsDone, const QStringList& faults);
    /// Files gone through, read or not, of all files of the jobs since the worker was idle; 0 of 0
    /// when it is idle again.
    void progressed(int done, int total);
    /// Files of the jobs since the worker was idle that could not be read; comes before
    /// finishLoadFiles().
    void failed(int files);

private:
    void readNext(const LoadJob& job);
    void readOne(const LoadJob& job);
    void endJob();

    QVector<LoadJob> queue_;
    bool busy_ = false;
    int index_ = 0;
    int ticket_ = 0;
    QStringList faults_; ///< of the jobs with ticket_
    int jobsDone_ = 0;
    int filesOfEnded_ = 0; ///< files of the jobs ended since the worker was idle
    int filesOfAll_ = 0;   ///< the same with those of the queue
    int failedFiles_ = 0; ///< since the worker was idle
    std::atomic<bool> stop_{false};
    std::atomic<int> stoppedUpTo_{0};
};
