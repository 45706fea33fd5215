#include "walk/WalkEngine.h"

#include <algorithm>
#include <thread>
#include <utility>

TileResult::TileResult(int valueCount, int laneCount)
    : lanes(laneCount)
    , values(std::size_t(valueCount) * std::size_t(laneCount), 0.0)
    , outcomes(std::size_t(laneCount), Outcome::NoPoints)
    , gapHeld(std::size_t(laneCount), 0)
{
}

struct WalkEngine::Worker
{
    explicit Worker(const WalkOrder& order)
        : blocks({order.source->i1, order.source->i0}, order.source->block)
    {
        for (const WalkJob& job : order.jobs)
            kernels.push_back(job.kernel->forWorker());
    }

    BlockSpectra blocks;
    std::vector<std::unique_ptr<WalkKernel>> kernels; ///< one a job
};

WalkEngine::WalkEngine(WalkOrder order, int workers, int lanes)
    : order_(std::move(order))
    , lanes_(std::max(lanes, 1))
    , runs_(order_.area)
    , ring_(ringSize)
{
    for (const WalkJob& job : order_.jobs)
        stage_ = std::max(stage_, job.kernel->stage());
    for (int i = 0; i < std::max(workers, 1); ++i)
        workers_.push_back(std::make_unique<Worker>(order_));
}

WalkEngine::~WalkEngine() = default;

WalkEngine::Finished WalkEngine::form(Worker& worker, const WalkRun& run) const
{
    const WalkSource& source = *order_.source;
    Finished finished{true, run, {}};
    for (const auto& kernel : worker.kernels)
        finished.results.emplace_back(kernel->values(), run.count);
    QVector<XafsSpectrum> spectra;
    if (stage_ > Stage::Counts)
        spectra = source.ofRun(worker.blocks, run);
    AnalyzeCond at = run.first;
    for (int lane = 0; lane < run.count; ++lane, at.next()) {
        if (stage_ == Stage::Counts)
            spectra.append(source.spectrum(at.cx, at.cy, stage_));
        else
            source.workOut(spectra[lane], stage_);
        for (std::size_t job = 0; job < worker.kernels.size(); ++job)
            worker.kernels[job]->plain({source, at.cx, at.cy, spectra.at(lane)}, lane,
                                       finished.results[job]);
    }
    return finished;
}

WalkEngine::Step WalkEngine::work(int worker)
{
    std::unique_lock<std::mutex> lock(mutex_);
    if (stopped_ || runs_.atEnd())
        return Step::Through;
    if (!hasRoom())
        return Step::Full;
    const qint64 number = next_++;
    const WalkRun run = runs_.take(lanes_);
    lock.unlock();
    Finished finished = form(*workers_[std::size_t(worker)], run);
    lock.lock();
    ring_[std::size_t(number % ringSize)] = std::move(finished);
    if (number == taken_) {
        changed_.notify_all();
        if (ready_)
            ready_();
    }
    return Step::Worked;
}

bool WalkEngine::park(int worker)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (stopped_ || runs_.atEnd() || hasRoom())
        return false;
    parked_.push_back(worker);
    return true;
}

void WalkEngine::setReady(std::function<void()> ready)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    ready_ = std::move(ready);
}

bool WalkEngine::take(WalkRun& run)
{
    std::unique_lock<std::mutex> lock(mutex_);
    if (stopped_ || !isNextReady())
        return false;
    const Finished finished = std::exchange(ring_[std::size_t(taken_ % ringSize)], Finished());
    ++taken_;
    lock.unlock();
    changed_.notify_all();
    run = finished.run;
    for (std::size_t job = 0; job < order_.jobs.size(); ++job)
        order_.jobs[job].sink->take(run, finished.results[job]);
    return true;
}

std::vector<int> WalkEngine::takeParked()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return hasRoom() ? std::exchange(parked_, {}) : std::vector<int>();
}

bool WalkEngine::isThrough()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return stopped_ || (runs_.atEnd() && taken_ == next_);
}

void WalkEngine::stop()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    stopped_ = true;
    ready_ = nullptr;
    changed_.notify_all();
}

void WalkEngine::waitForRoom()
{
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait(lock, [this] { return stopped_ || runs_.atEnd() || hasRoom(); });
}

void WalkEngine::waitForRun()
{
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait(
        lock, [this] { return stopped_ || isNextReady() || (runs_.atEnd() && taken_ == next_); });
}

void runWalk(WalkOrder order, int threads, int lanes)
{
    const int count = std::max(threads, 1);
    WalkEngine engine(std::move(order), count, lanes);
    std::vector<std::thread> workers;
    workers.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i) {
        workers.emplace_back([&engine, i] {
            for (auto step = engine.work(i); step != WalkEngine::Step::Through;
                 step = engine.work(i)) {
                if (step == WalkEngine::Step::Full)
                    engine.waitForRoom();
            }
        });
    }
    WalkRun run;
    while (!engine.isThrough()) {
        engine.waitForRun();
        engine.take(run);
    }
    for (std::thread& worker : workers)
        worker.join();
}
