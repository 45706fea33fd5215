#pragma once

#include "walk/WalkKernel.h"

class Analyzed2DRes;

/// Counts what became of a walk's positions beside a kernel's own sink, and records it in a map of
/// their numbers. Blocks that reach out of an image that was moved are told apart there, whatever
/// the kernel made of them: its own values stay.
class OutcomeSink : public WalkSink
{
public:
    /// Null for a map leaves it alone. Map and counts outlive it.
    OutcomeSink(std::unique_ptr<WalkSink> sink, const CommonArea& area, OutcomeCounts& counts,
                Analyzed2DRes* map);

    void take(const WalkRun& run, const TileResult& result) override;

private:
    Outcome outcomeAt(const AnalyzeCond& at, Outcome ofKernel) const;

    const std::unique_ptr<WalkSink> sink_;
    const CommonArea area_;
    OutcomeCounts& counts_;
    Analyzed2DRes* const map_;
};
