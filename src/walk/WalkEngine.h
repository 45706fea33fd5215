#pragma once

#include "walk/WalkKernel.h"

#include <condition_variable>
#include <functional>
#include <mutex>

struct WalkJob
{
    std::unique_ptr<WalkKernel> kernel;
    std::unique_ptr<WalkSink> sink;
};

/// A walk over an area: all jobs share the spectra of a position.
struct WalkOrder
{
    SharedSource source;
    AnalyzeCond area; ///< with at least one position
    std::vector<WalkJob> jobs;
};

/// Where a walk's time went, over all workers, and how much of it the lane forms could do.
struct WalkShares
{
    qint64 formNs = 0;   ///< counts and mu
    qint64 edgesNs = 0;  ///< lane form of lines and edge
    qint64 kernelNs = 0; ///< lane forms of the kernels
    qint64 plainNs = 0;  ///< plain forms, of the lines and of the kernels
    qint64 recordNs = 0; ///< sinks
    qint64 positions = 0;
    qint64 plainPositions = 0; ///< that a kernel did by its plain form

    void add(const WalkShares& other);
};

/// The state of a walk between its owner and its workers. Workers take runs of positions in walking
/// order and work on them side by side; what is finished waits in a ring until the owner takes it,
/// in walking order again. So results do not depend on the number of workers, and memory is
/// bounded.
///
/// work() and park() are any thread's, each worker number one thread's at a time. All others are
/// the owner's.
class WalkEngine
{
public:
    WalkEngine(WalkOrder order, int workers, int lanes);
    ~WalkEngine();

    enum class Step
    {
        Worked, ///< a run is finished
        Full,   ///< the ring is full: the owner has to take first
        Through ///< there is nothing left to work on
    };
    Step work(int worker);
    /// Leaves the worker out until takeParked(), unless the ring has room again; whether it did.
    bool park(int worker);

    /// Called with the lock held, by a worker that has finished the run which the owner takes next.
    void setReady(std::function<void()> ready);
    /// Hands the next run in walking order to the sinks, if it is finished.
    bool take(WalkRun& run);
    /// The workers that were parked and can go on.
    std::vector<int> takeParked();
    /// All is taken.
    bool isThrough();
    /// No worker begins another run, and ready() is not called any more.
    void stop();

    /// Shares of what is taken so far; complete when it is through.
    WalkShares shares() const { return shares_; }

    /// Wait for room in the ring (workers), for the next run (owner); true at once after the end.
    void waitForRoom();
    void waitForRun();

private:
    /// A worker's own things.
    struct Worker;

    /// A place of the ring.
    struct Finished
    {
        bool ready = false;
        WalkRun run;
        std::vector<TileResult> results; ///< one a job
        WalkShares shares;
    };

    static constexpr int ringSize = 64;

    Finished form(Worker& worker, const WalkRun& run) const;
    Lanes formLanes(Worker& worker, Finished& finished) const;
    void formPlain(Worker& worker, Finished& finished, Lanes left) const;
    bool hasRoom() const { return next_ < taken_ + ringSize; }
    bool isNextReady() const { return isReady(taken_) && (!workerSinks_ || taken_ < passed_); }
    bool isReady(qint64 number) const { return ring_[std::size_t(number % ringSize)].ready; }
    void passTurnstile(std::unique_lock<std::mutex>& lock);
    void handOver(const Finished& finished, WalkSink::Where where) const;
    void tellReady();

    const WalkOrder order_;
    const int lanes_;
    bool workerSinks_ = false;    ///< some sink takes its results beside the owner
    WalkShares shares_;           ///< of the owner
    Stage stage_ = Stage::Counts; ///< the farthest that a kernel needs
    std::vector<std::unique_ptr<Worker>> workers_;

    std::mutex mutex_; ///< over all below
    std::condition_variable changed_;
    std::function<void()> ready_;
    WalkRuns runs_;
    qint64 next_ = 0;      ///< number of the run that is begun next
    qint64 taken_ = 0;     ///< number of the run that is taken next
    qint64 passed_ = 0;    ///< number of the run that the workers' sinks take next
    bool passing_ = false; ///< a worker hands runs over to them
    bool stopped_ = false;
    std::vector<Finished> ring_;
    std::vector<int> parked_;
};

/// Walks to the end on this thread and `threads` workers, without an event loop.
WalkShares runWalk(WalkOrder order, int threads, int lanes = tileLanes);
