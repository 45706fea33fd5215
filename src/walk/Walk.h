#pragma once

#include "walk/WalkEngine.h"

#include <QObject>
#include <QThreadPool>

/// The threads that all walks share: a pool of their own, for the program's painting uses the
/// global one. Waits for its threads at the end.
class WalkPool
{
public:
    /// As many threads; a number below 1 means as many as the machine has.
    explicit WalkPool(int threads = 0);

    int threads() const { return pool_.maxThreadCount(); }
    void start(QRunnable* work) { pool_.start(work); }

private:
    QThreadPool pool_;
};

/// A walk beside the event loop of its owner's thread: workers of a pool work on it, and the owner
/// takes what is finished in slices, so that its window stays alive. Walks that share a pool take
/// turns.
class Walk : public QObject
{
    Q_OBJECT
public:
    /// The pool outlives the walk; it goes on with a run that is begun when the walk is destroyed,
    /// and tells nobody.
    Walk(WalkOrder order, WalkPool& pool, int lanes = tileLanes, QObject* parent = nullptr);
    ~Walk() override;

    void start();
    /// From now on no sink is called and nothing is told.
    void stop();

    /// Of what the sinks have taken.
    WalkShares shares() const { return engine_->shares(); }

Q_SIGNALS:
    /// The sinks have this run.
    void taken(const WalkRun& run);
    /// The sinks have all.
    void done();

private:
    void takeSlice();
    void startWorker(int worker);

    WalkPool& pool_;
    const std::shared_ptr<WalkEngine> engine_; ///< the workers' too: they may outlive the walk
    const int workers_;
    bool stopped_ = false;
};
