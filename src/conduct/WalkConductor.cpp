#include "conduct/WalkConductor.h"

#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "image/Measurement.h"

#include <utility>

WalkConductor::WalkConductor(const SourceReader& reader, StackConductor& stacks, int threads,
                             QObject* parent)
    : QObject(parent)
    , reader_(reader)
    , pool_(threads)
{
    connect(&stacks, &StackConductor::aboutToChange, this,
            [this](const ImageStack* stack, const QString& what) { stackChanges(*stack, what); });
}

WalkConductor::~WalkConductor()
{
    // In front of the pool, which waits for what workers are at.
    for (const Run& run : runs_)
        delete run.walk;
}

void WalkConductor::run(Group group, WalkOrder order, const Told& told)
{
    leave(group);
    Run& run = runs_[group];
    run.source = order.source;
    run.told = told;
    run.walk = new Walk(std::move(order), pool_, lanes_, this);
    connect(run.walk, &Walk::taken, this,
            [this, group](const WalkRun& taken) { runs_[group].told.taken(taken); });
    connect(run.walk, &Walk::done, this, [this, group] { leave(group).done(); });
    run.walk->start();
}

void WalkConductor::stop(Group group)
{
    leave(group);
}

/// What those who started the group's walk are told from now on is up to the caller.
WalkConductor::Told WalkConductor::leave(Group group)
{
    Run left = std::exchange(runs_[group], Run());
    if (left.walk) {
        left.walk->stop();
        shares_[group] = left.walk->shares();
        // It may be one of its own signals that has led here.
        left.walk->disconnect(this);
        left.walk->deleteLater();
    }
    return left.told;
}

void WalkConductor::stackChanges(const ImageStack& stack, const QString& what)
{
    for (const Group group : {Analysis, Calibration, Export}) {
        if (isRunning(group) && reader_.holds(*runs_[group].source, stack))
            leave(group).stopped(what);
    }
}
