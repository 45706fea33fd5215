#include "walk/WalkEngine.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

TileResult::TileResult(int valueCount, int laneCount)
    : lanes(laneCount)
    , values(std::size_t(valueCount) * std::size_t(laneCount), 0.0)
    , outcomes(std::size_t(laneCount), Outcome::NoPoints)
    , gapHeld(std::size_t(laneCount), 0)
{
}

ShownResult WalkKernel::shown(const XafsSpectrum& spectrum)
{
    const WalkSource nowhere;
    TileResult result(values(), 1);
    plain({nowhere, 0, 0, spectrum}, 0, result);
    ShownResult shown;
    shown.outcome = result.outcomes.front();
    shown.gapHeld = result.gapHeld.front() != 0;
    shown.values = QVector<double>(result.values.begin(), result.values.end());
    return shown;
}

namespace {

/// Time from one stage's end to the next's.
class StageClock
{
public:
    qint64 lap()
    {
        const auto now = std::chrono::steady_clock::now();
        return std::chrono::nanoseconds(now - std::exchange(last_, now)).count();
    }

private:
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

} // namespace

void WalkShares::add(const WalkShares& other)
{
    formNs += other.formNs;
    edgesNs += other.edgesNs;
    kernelNs += other.kernelNs;
    plainNs += other.plainNs;
    recordNs += other.recordNs;
    positions += other.positions;
    plainPositions += other.plainPositions;
}

struct WalkEngine::Worker
{
    Worker(const WalkOrder& order, const std::shared_ptr<const EdgePlan>& plan)
        : tiles(order.source, plan)
    {
        for (const WalkJob& job : order.jobs)
            kernels.push_back(job.kernel->forWorker());
    }

    TileMaker tiles;
    std::vector<std::unique_ptr<WalkKernel>> kernels; ///< one a job
    std::vector<Lanes> done;                          ///< lanes of the run that each has done
    bool hasTile = false;
};

WalkEngine::WalkEngine(WalkOrder order, int workers, int lanes)
    : order_(std::move(order))
    , lanes_(std::clamp(lanes, 1, tileLanes))
    , runs_(order_.area)
    , ring_(ringSize)
{
    for (const WalkJob& job : order_.jobs) {
        stage_ = std::max(stage_, job.kernel->stage());
        workerSinks_ = workerSinks_ || job.sink->where() == WalkSink::Worker;
    }
    std::vector<double> energies;
    for (const SharedImage& image : order_.source->i1)
        energies.push_back(image->energy);
    const auto plan =
        std::make_shared<const EdgePlan>(energies, order_.source->elm, order_.source->background);
    for (int i = 0; i < std::max(workers, 1); ++i)
        workers_.push_back(std::make_unique<Worker>(order_, plan));
}

WalkEngine::~WalkEngine() = default;

WalkEngine::Finished WalkEngine::form(Worker& worker, const WalkRun& run) const
{
    Finished finished{true, run, {}, {}};
    for (const auto& kernel : worker.kernels)
        finished.results.emplace_back(kernel->values(), run.count);
    worker.done.assign(worker.kernels.size(), Lanes());
    const Lanes left = formLanes(worker, finished);
    finished.shares.positions = run.count;
    finished.shares.plainPositions = qint64(left.count());
    StageClock clock;
    formPlain(worker, finished, left);
    finished.shares.plainNs = clock.lap();
    return finished;
}

/// Lets the kernels do what they have lane forms for; the lanes that some of them have not done.
Lanes WalkEngine::formLanes(Worker& worker, Finished& finished) const
{
    Lanes all;
    for (int lane = 0; lane < finished.run.count; ++lane)
        all.set(std::size_t(lane));
    StageClock clock;
    const bool ofCounts = stage_ == Stage::Counts;
    worker.hasTile = !ofCounts && worker.tiles.formMu(finished.run);
    finished.shares.formNs = clock.lap();
    if (!ofCounts && (!worker.hasTile || !worker.tiles.hasEdges()))
        return all;
    const Tile tile = ofCounts                ? worker.tiles.ofCounts(finished.run)
                      : stage_ < Stage::Lines ? worker.tiles.ofMu()
                                              : worker.tiles.findEdges();
    finished.shares.edgesNs = clock.lap();
    Lanes doneByAll = all;
    for (std::size_t job = 0; job < worker.kernels.size(); ++job) {
        worker.done[job] = worker.kernels[job]->lanes(tile, finished.results[job]);
        doneByAll &= worker.done[job];
    }
    finished.shares.kernelNs = clock.lap();
    return all & ~doneByAll;
}

/// Does the lanes that are left, position by position.
void WalkEngine::formPlain(Worker& worker, Finished& finished, Lanes left) const
{
    if (left.none())
        return;
    const WalkSource& source = *order_.source;
    AnalyzeCond at = finished.run.first;
    for (int lane = 0; lane < finished.run.count; ++lane, at.next()) {
        const auto place = std::size_t(lane);
        if (!left[place])
            continue;
        XafsSpectrum spectrum =
            worker.hasTile ? worker.tiles.spectrum(lane) : source.spectrum(at.cx, at.cy, stage_);
        if (worker.hasTile)
            source.workOut(spectrum, stage_);
        for (std::size_t job = 0; job < worker.kernels.size(); ++job) {
            if (!worker.done[job][place])
                worker.kernels[job]->plain({source, at.cx, at.cy, spectrum}, lane,
                                           finished.results[job]);
        }
    }
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
    if (workerSinks_)
        passTurnstile(lock);
    else if (number == taken_)
        tellReady();
    return Step::Worked;
}

/// Hands what is finished over to the sinks of workers, in walking order: one worker at a time
/// does, with all that comes meanwhile.
void WalkEngine::passTurnstile(std::unique_lock<std::mutex>& lock)
{
    if (passing_)
        return;
    passing_ = true;
    while (!stopped_ && passed_ < next_ && isReady(passed_)) {
        Finished& finished =
            ring_[std::size_t(passed_ % ringSize)]; // nobody else's until it passed
        lock.unlock();
        handOver(finished, WalkSink::Worker);
        for (TileResult& result : finished.results)
            result.texts = {}; // many times the rest of a result, and written
        lock.lock();
        if (passed_++ == taken_)
            tellReady();
    }
    passing_ = false;
}

void WalkEngine::handOver(const Finished& finished, WalkSink::Where where) const
{
    for (std::size_t job = 0; job < order_.jobs.size(); ++job) {
        if (order_.jobs[job].sink->where() == where)
            order_.jobs[job].sink->take(finished.run, finished.results[job]);
    }
}

/// The owner can take.
void WalkEngine::tellReady()
{
    changed_.notify_all();
    if (ready_)
        ready_();
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
    StageClock clock;
    handOver(finished, WalkSink::Owner);
    shares_.add(finished.shares);
    shares_.recordNs += clock.lap();
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

WalkShares runWalk(WalkOrder order, int threads, int lanes)
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
    return engine.shares();
}
