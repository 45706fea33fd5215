#pragma once

#include "walk/WalkKernel.h"

class Analyzed2DRes;

/// Counts what became of a walk's positions beside a kernel's own sink, and records it in a map of
/// their numbers.
class OutcomeSink : public WalkSink
{
public:
    /// Null for a map leaves it alone. Map and counts outlive it.
    OutcomeSink(std::unique_ptr<WalkSink> sink, OutcomeCounts& counts, Analyzed2DRes* map);

    void take(const WalkRun& run, const TileResult& result) override;

private:
    const std::unique_ptr<WalkSink> sink_;
    OutcomeCounts& counts_;
    Analyzed2DRes* const map_;
};
