#pragma once

#include "walk/Walk.h"

#include <QObject>

#include <array>
#include <functional>

class SourceReader;
class StackConductor;
struct ImageStack;

/// Runs the walks of the analyses, the calibrations and the exports, side by side, on one pool of threads. A
/// stack that is about to change stops those that hold it.
class WalkConductor : public QObject
{
    Q_OBJECT
public:
    /// What walks at the same time as the others.
    enum Group
    {
        Analysis,
        Calibration,
        Export, ///< of spectra, and the Fourier analysis
        Groups
    };

    /// What whoever starts a walk is told. None is called any more after a stop by stop().
    struct Told
    {
        std::function<void(const WalkRun& run)> taken; ///< the sinks have this run
        std::function<void()> done;                    ///< the sinks have all
        /// Other images are about to come or go, as `what` tells, and the walk was stopped.
        std::function<void(const QString& what)> stopped;
    };

    /// `threads` as for WalkPool. What it works on outlives it.
    WalkConductor(const SourceReader& reader, StackConductor& stacks, int threads,
                  QObject* parent = nullptr);
    ~WalkConductor() override;

    /// Starts a walk in place of the group's, of which nothing is heard any more.
    void run(Group group, WalkOrder order, const Told& told);
    /// Ends the group's walk, if one runs: at once for those who started it.
    void stop(Group group);
    bool isRunning(Group group) const { return runs_[group].walk != nullptr; }

    /// Where the time of the group's last walk went.
    WalkShares shares(Group group) const { return shares_[group]; }

    /// The threads of all walks, for other work that takes turns with them.
    WalkPool& pool() { return pool_; }

    /// Most positions that are worked on together from the next walk on.
    void setTileLanes(int lanes) { lanes_ = lanes; }

private:
    struct Run
    {
        Walk* walk = nullptr; ///< a child; null when none runs
        SharedSource source;
        Told told;
    };

    Told leave(Group group);
    void stackChanges(const ImageStack& stack, const QString& what);

    const SourceReader& reader_;
    WalkPool pool_;
    std::array<Run, Groups> runs_;
    std::array<WalkShares, Groups> shares_; ///< of the last walk
    int lanes_ = tileLanes;
};
