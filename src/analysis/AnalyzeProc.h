#pragma once

#include "analysis/LcfFit.h"

#include <QObject>

#include <atomic>

/// Spectra to analyse with copies of all that their analysis needs. One spectrum for a shown
/// position, consecutive positions of a row in a walk.
struct AnalysisRequest
{
    int walk = 0; ///< number of the walk that asks, 0 for a single spectrum
    QVector<XafsSpectrum> spectra;
    /// The spectra are raw curves that the worker normalises first, each in its mode: in a walk
    /// that leaves the GUI thread free to form the next ones.
    bool normalize = false;
    bool lcf = false; ///< run the linear combination fit
    LcfRequest lcfConditions;
};

/// Results of a request, one entry per spectrum and in its order.
struct AnalysisResult
{
    int walk = 0;
    QVector<LcfResult> lcf; ///< empty unless asked for
    double tookMs = 0.0;    ///< time that the worker spent on it [ms]
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
