#include "analysis/AnalyzeProc.h"

#include <QElapsedTimer>

#include <algorithm>

namespace {

XafsSpectrum normalized(const XafsSpectrum& raw)
{
    XafsSpectrum s = raw;
    s.normalizeIfData(s.mode, XafsSpectrum::FittedCurve);
    return s;
}

} // namespace

AnalysisResult analyze(const AnalysisRequest& request, const std::atomic<bool>& stop)
{
    AnalysisResult result;
    result.walk = request.walk;
    if (!request.lcf)
        return result;
    LcfPlan plan(request.lcfConditions);
    result.lcf.reserve(request.spectra.size());
    for (const XafsSpectrum& s : request.spectra) {
        if (stop)
            break;
        result.lcf.append(request.normalize ? plan.fit(normalized(s)) : plan.fit(s));
    }
    return result;
}

AnalyzeProc::AnalyzeProc(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<AnalysisRequest>();
    qRegisterMetaType<AnalysisResult>();
}

void AnalyzeProc::setContAccess(bool f)
{
    contAccess_ = f;
}

void AnalyzeProc::analyzeSpectrum0(const AnalysisRequest& request)
{
    AnalysisRequest asked = request;
    asked.lcfConditions.inWalk = contAccess_;
    QElapsedTimer timer;
    timer.start();
    AnalysisResult result = analyze(asked, stop_);
    result.tookMs = double(timer.nsecsElapsed()) * 1e-6;
    const auto last = std::find_if(result.lcf.crbegin(), result.lcf.crend(),
                                   [](const LcfResult& fit) { return fit.fitted(); });
    if (last != result.lcf.crend())
        Q_EMIT newZ(last->zansa);
    // Also after a stop: whoever waits for an answer must get one.
    Q_EMIT finished(result);
}
