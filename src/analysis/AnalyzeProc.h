#pragma once

#include "analysis/lcf/LcfFit.h"

#include <QObject>

#include <atomic>

/// Spectra to analyse, normalised, with copies of all that their analysis needs: one for a shown
/// position.
struct AnalysisRequest
{
    QVector<XafsSpectrum> spectra;
    bool lcf = false; ///< run the linear combination fit
    LcfRequest lcfConditions;
};

/// Results of a request, one entry per spectrum and in its order.
struct AnalysisResult
{
    QVector<LcfResult> lcf; ///< empty unless asked for
};

Q_DECLARE_METATYPE(AnalysisRequest)
Q_DECLARE_METATYPE(AnalysisResult)

/// Answers a request: a plain function, for any thread. Stops between positions when `stop` is set,
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
    /// On during a walk.
    void setContAccess(bool f);
    void analyzeSpectrum0(const AnalysisRequest& request);

Q_SIGNALS:
    void finished(const AnalysisResult& result);
    /// Residual of the last fit of a request.
    void newZ(double z);

private:
    bool contAccess_ = false;
    std::atomic<bool> stop_{false};
};
