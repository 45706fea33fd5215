#pragma once

#include <benchmark/benchmark.h>

/// Adds the counter waited_ms to a benchmark that is timed by the clock: how long threads of this
/// process were ready in an iteration, but other processes had the processors.
///
/// Other builds make a walk of 1.1 s last 5 to 16 s, from one walk to the next, while its
/// processor time stays. Only this counter tells that from a walk that has become slower. Made
/// directly before the iterations; threads must live until its end to be counted.
class ProcessorWaits
{
public:
    explicit ProcessorWaits(benchmark::State& state);
    ~ProcessorWaits();
    ProcessorWaits(const ProcessorWaits&) = delete;
    ProcessorWaits& operator=(const ProcessorWaits&) = delete;

private:
    benchmark::State& state_;
    double before_;
};
