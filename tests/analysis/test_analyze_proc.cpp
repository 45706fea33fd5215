#include "LcfFixtures.h"

#include "analysis/AnalyzeProc.h"

#include <QtTest>

#include <thread>

namespace {

AnalysisRequest requestOf(int spectra, int walk = 0)
{
    AnalysisRequest request;
    request.walk = walk;
    request.number = 17;
    request.lcf = true;
    request.lcfConditions = fourRows();
    const XafsSpectrum s = edgeSpectrum(scanEnergies(200), 8995, 1.0, 9.0);
    request.spectra = QVector<XafsSpectrum>(spectra, s);
    return request;
}

/// A worker in a thread of its own, as the panel holds it.
class Worker
{
public:
    Worker()
    {
        proc.moveToThread(&thread);
        thread.start();
    }
    ~Worker()
    {
        proc.requestStop();
        thread.quit();
        thread.wait();
    }
    Q_DISABLE_COPY(Worker)

    void send(const AnalysisRequest& request)
    {
        QMetaObject::invokeMethod(
            &proc, [this, request] { proc.analyzeSpectrum0(request); }, Qt::QueuedConnection);
    }
    void setContAccess(bool f)
    {
        QMetaObject::invokeMethod(
            &proc, [this, f] { proc.setContAccess(f); }, Qt::QueuedConnection);
    }

    AnalyzeProc proc;

private:
    QThread thread;
};

} // namespace

class TestAnalyzeProc : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void answersEverySpectrumInItsOrder();
    void oneRequestCanServeSeveralThreads();
    void stopsBetweenPositions();
    void answersAcrossTheQueueAndTellsTheResidual();
    void leavesTheResidualAloneDuringAWalk();
    void aSpectrumWithoutPointsStillGetsItsAnswer();
    void endsPromptlyInTheMiddleOfARequest();
};

void TestAnalyzeProc::answersEverySpectrumInItsOrder()
{
    AnalysisRequest request = requestOf(3, 4);
    request.spectra[1] = XafsSpectrum();
    request.spectra[2].dMut = 0.0;
    const std::atomic<bool> stop{false};
    AnalysisResult result;
    std::thread worker([&] { result = analyze(request, stop); });
    worker.join();
    QCOMPARE(result.walk, 4);
    QCOMPARE(result.number, 17);
    QCOMPARE(result.lcf.size(), 3);
    QVERIFY(result.lcf.at(0).fitted);
    QCOMPARE(result.lcf.at(0).ratios, fitLcf(request.spectra.at(0), request.lcfConditions).ratios);
    QVERIFY(!result.lcf.at(1).analysed);
    QVERIFY(result.lcf.at(2).analysed && !result.lcf.at(2).fitted);
    request.lcf = false;
    QVERIFY(analyze(request, stop).lcf.isEmpty());
}

void TestAnalyzeProc::oneRequestCanServeSeveralThreads()
{
    const AnalysisRequest request = requestOf(50, 1);
    const std::atomic<bool> stop{false};
    AnalysisResult results[2];
    std::thread first([&] { results[0] = analyze(request, stop); });
    std::thread second([&] { results[1] = analyze(request, stop); });
    first.join();
    second.join();
    for (int i = 0; i < 50; ++i)
        QCOMPARE(results[0].lcf.at(i).ratios, results[1].lcf.at(i).ratios);
}

void TestAnalyzeProc::stopsBetweenPositions()
{
    const AnalysisRequest request = requestOf(200000, 1);
    std::atomic<bool> stop{false};
    AnalysisResult result;
    std::thread worker([&] { result = analyze(request, stop); });
    stop = true;
    worker.join();
    QVERIFY(result.lcf.size() < request.spectra.size());
    QCOMPARE(result.walk, 1);
}

void TestAnalyzeProc::answersAcrossTheQueueAndTellsTheResidual()
{
    Worker worker;
    QSignalSpy finished(&worker.proc, &AnalyzeProc::finished);
    QSignalSpy newZ(&worker.proc, &AnalyzeProc::newZ);
    worker.send(requestOf(1));
    QVERIFY(finished.count() > 0 || finished.wait());
    const auto result = finished.first().first().value<AnalysisResult>();
    QCOMPARE(newZ.count(), 1);
    QCOMPARE(newZ.first().first().toDouble(), result.lcf.first().zansa);
    QVERIFY(result.lcf.first().fit && !result.lcf.first().fit->isEmpty());
}

void TestAnalyzeProc::leavesTheResidualAloneDuringAWalk()
{
    Worker worker;
    QSignalSpy finished(&worker.proc, &AnalyzeProc::finished);
    QSignalSpy newZ(&worker.proc, &AnalyzeProc::newZ);
    worker.setContAccess(true);
    worker.send(requestOf(3, 2));
    QVERIFY(finished.count() > 0 || finished.wait());
    QVERIFY(newZ.isEmpty());
    const auto result = finished.first().first().value<AnalysisResult>();
    // With the rows' weights, not the fitted ones.
    LcfRequest walk = fourRows();
    walk.inWalk = true;
    QCOMPARE(result.lcf.at(2).zansa, fitLcf(requestOf(1).spectra.first(), walk).zansa);
    QVERIFY(!result.lcf.at(2).fit);
}

void TestAnalyzeProc::aSpectrumWithoutPointsStillGetsItsAnswer()
{
    Worker worker;
    QSignalSpy finished(&worker.proc, &AnalyzeProc::finished);
    AnalysisRequest request = requestOf(1);
    request.spectra[0] = XafsSpectrum();
    worker.send(request);
    QVERIFY(finished.count() > 0 || finished.wait());
    QVERIFY(!finished.first().first().value<AnalysisResult>().lcf.first().analysed);
}

void TestAnalyzeProc::endsPromptlyInTheMiddleOfARequest()
{
    QElapsedTimer timer;
    {
        Worker worker;
        worker.setContAccess(true);
        worker.send(requestOf(40000, 1));
        QTest::qWait(5);
        timer.start();
    }
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_GUILESS_MAIN(TestAnalyzeProc)
#include "test_analyze_proc.moc"
