#pragma once

#include "walk/WalkKernel.h"

#include <QObject>

#include <atomic>

/// A shown spectrum, normalised, with the analyses to make of it.
struct AnalysisRequest
{
    struct Task
    {
        int section;                        ///< of the panel, that asks
        std::shared_ptr<WalkKernel> kernel; ///< the worker's alone from now on; null gives nothing
    };

    XafsSpectrum spectrum;
    QVector<Task> tasks;
};

/// What came of a request's tasks, in their order.
struct AnalysisResult
{
    struct Answer
    {
        int section;
        ShownResult result;
    };

    QVector<Answer> answers;
};

Q_DECLARE_METATYPE(AnalysisRequest)
Q_DECLARE_METATYPE(AnalysisResult)

/// Answers a request: a plain function, for any thread. Stops between tasks when `stop` is set,
/// leaving the result shorter than the request.
AnalysisResult analyze(const AnalysisRequest& request, const std::atomic<bool>& stop);

/// The analysis worker: carries requests and results across its thread's queue.
class AnalyzeProc : public QObject
{
    Q_OBJECT
public:
    explicit AnalyzeProc(QObject* parent = nullptr);

    /// Asks the worker to leave the request it works on; from any thread.
    void requestStop() { stop_ = true; }

public Q_SLOTS:
    void analyzeSpectrum0(const AnalysisRequest& request);

Q_SIGNALS:
    void finished(const AnalysisResult& result);

private:
    std::atomic<bool> stop_{false};
};
