#include "walk/Walk.h"

#include <QElapsedTimer>
#include <QRunnable>
#include <QThread>

namespace {

/// What the owner takes at a time, and a worker does before others have their turn. [ms]
constexpr int ownerSliceMs = 8;
constexpr int workerSliceMs = 10;

/// A worker's turn.
class WorkSlice : public QRunnable
{
public:
    WorkSlice(std::shared_ptr<WalkEngine> engine, WalkPool& pool, int worker)
        : engine_(std::move(engine))
        , pool_(pool)
        , worker_(worker)
    {
    }

    void run() override
    {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < workerSliceMs) {
            const WalkEngine::Step step = engine_->work(worker_);
            if (step == WalkEngine::Step::Through ||
                (step == WalkEngine::Step::Full && engine_->park(worker_)))
                return;
        }
        pool_.start(new WorkSlice(engine_, pool_, worker_));
    }

private:
    const std::shared_ptr<WalkEngine> engine_;
    WalkPool& pool_;
    const int worker_;
};

} // namespace

WalkPool::WalkPool(int threads)
{
    pool_.setMaxThreadCount(threads < 1 ? QThread::idealThreadCount() : threads);
}

Walk::Walk(WalkOrder order, WalkPool& pool, int lanes, QObject* parent)
    : QObject(parent)
    , pool_(pool)
    , engine_(std::make_shared<WalkEngine>(std::move(order), pool.threads(), lanes))
    , workers_(pool.threads())
{
    engine_->setReady([this] {
        QMetaObject::invokeMethod(
            this, [this] { takeSlice(); }, Qt::QueuedConnection);
    });
}

Walk::~Walk()
{
    stop();
}

void Walk::start()
{
    for (int worker = 0; worker < workers_; ++worker)
        startWorker(worker);
}

void Walk::startWorker(int worker)
{
    pool_.start(new WorkSlice(engine_, pool_, worker));
}

void Walk::stop()
{
    stopped_ = true;
    engine_->stop();
}

void Walk::takeSlice()
{
    QElapsedTimer timer;
    timer.start();
    WalkRun run;
    bool more = false;
    while (!stopped_ && engine_->take(run)) {
        Q_EMIT taken(run);
        more = timer.elapsed() >= ownerSliceMs;
        if (more)
            break;
    }
    if (stopped_)
        return;
    for (const int worker : engine_->takeParked())
        startWorker(worker);
    if (engine_->isThrough()) {
        stopped_ = true;
        Q_EMIT done();
    } else if (more) {
        QMetaObject::invokeMethod(
            this, [this] { takeSlice(); }, Qt::QueuedConnection);
    }
}
