#include "analysis/AnalyzeProc.h"

#include <algorithm>

AnalysisResult analyze(const AnalysisRequest& request, const std::atomic<bool>& stop)
{
    AnalysisResult result;
    if (!request.lcf)
        return result;
    LcfPlan plan(request.lcfConditions);
    result.lcf.reserve(request.spectra.size());
    for (const XafsSpectrum& s : request.spectra) {
        if (stop)
            break;
        result.lcf.append(plan.fit(s));
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
    const AnalysisResult result = analyze(asked, stop_);
    const auto last = std::find_if(result.lcf.crbegin(), result.lcf.crend(),
                                   [](const LcfResult& fit) { return fit.fitted; });
    if (last != result.lcf.crend())
        Q_EMIT newZ(last->zansa);
    // Also after a stop: whoever waits for an answer must get one.
    Q_EMIT finished(result);
}
