#include "analysis/AnalyzeProc.h"

AnalysisResult analyze(const AnalysisRequest& request, const std::atomic<bool>& stop)
{
    AnalysisResult result;
    for (const AnalysisRequest::Task& task : request.tasks) {
        if (stop)
            break;
        result.answers.append({task.section, task.kernel ? task.kernel->shown(request.spectrum)
                                                         : ShownResult()});
    }
    return result;
}

AnalyzeProc::AnalyzeProc(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<AnalysisRequest>();
    qRegisterMetaType<AnalysisResult>();
}

void AnalyzeProc::analyzeSpectrum0(const AnalysisRequest& request)
{
    // Also after a stop: whoever waits for an answer must get one.
    Q_EMIT finished(analyze(request, stop_));
}
