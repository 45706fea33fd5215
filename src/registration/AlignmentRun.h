#pragma once

#include "registration/StackAlignment.h"

#include <QObject>

#include <memory>

class WalkPool;

/// The search for the shifts of a stack beside the event loop of its owner's thread, on the threads
/// that the walks have; it takes turns with them, an image at a time.
class AlignmentRun : public QObject
{
    Q_OBJECT
public:
    /// The pool outlives it, and ends a piece that is begun when this is destroyed; it tells nobody
    /// then.
    AlignmentRun(AlignmentOrder order, WalkPool& pool, QObject* parent = nullptr);
    ~AlignmentRun() override;

    void start();
    /// From now on nothing is told.
    void stop();

Q_SIGNALS:
    void advanced(int done, int total);
    void found(const StackShifts& shifts);

private:
    void look();

    WalkPool& pool_;
    const std::shared_ptr<StackAlignment> alignment_; ///< the workers' too
    bool over_ = false;
};
