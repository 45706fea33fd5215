#include "ReferenceFiles.h"

#include "analysis/Analyzer.h"
#include "analysis/LCFReference.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {

QString text(const Analyzer& panel, const char* name)
{
    if (const auto* edit = panel.findChild<QLineEdit*>(QLatin1String(name)))
        return edit->text();
    return panel.findChild<QLabel*>(QLatin1String(name))->text();
}

QAbstractButton* button(const Analyzer& panel, const char* name)
{
    return panel.findChild<QAbstractButton*>(QLatin1String(name));
}

QString rowText(const LCFReference* row, const char* name)
{
    return row->findChild<QLineEdit*>(QLatin1String(name))->text();
}

AnalysisRequest walkRequest(int walk, int spectra)
{
    AnalysisRequest request;
    request.walk = walk;
    request.number = 5;
    request.spectra =
        QVector<XafsSpectrum>(spectra, edgeSpectrum(scanEnergies(200), 8991, 1.0, 9.0));
    return request;
}

} // namespace

class TestAnalyzer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void startsWithFourRowsAndItsDefaults();
    void choosesTheShownMap();
    void rowsAddedLaterKeepTheirOwnIds();
    void mapKindOfBatchCountsTheOtherWayRound();
    void modesOfBatchSwitchOneAnalysisOn();
    void scalesReachEveryMapAndTheShownOneTheBar();
    void aSingleFitFillsTheRows();
    void onlyTheNewestAnswerFillsTheRows();
    void changedReferencesAnalyseTheShownSpectrumAgain();
    void aWalkLeavesTheRowsAlone();
    void batchAddsRowsUpToALimit();
    void endsPromptlyDuringAWalk();

private:
    void loadTwo(Analyzer& panel) const
    {
        panel.setLCFStd(0, true, 0, files_.write(QStringLiteral("a.dat"), 8990, 1.0, 9),
                        QStringLiteral("0"));
        panel.setLCFStd(2, true, 0, files_.write(QStringLiteral("c.dat"), 8994, 1.0, 15),
                        QStringLiteral("0"));
    }

    ReferenceFiles files_;
};

void TestAnalyzer::startsWithFourRowsAndItsDefaults()
{
    Analyzer panel;
    QCOMPARE(panel.refs().size(), 4);
    QVERIFY(panel.activeRows().isEmpty());
    QCOMPARE(panel.firstUsedRow(), 0);
    QVERIFY(panel.walkAnalysisSelected());
    QVERIFY(!panel.displaysOnTime());
    QVERIFY(panel.selectedMap() == nullptr);
    QCOMPARE(panel.mapKindIndex(), 0);
    QCOMPARE(panel.zansaMap()->name, QStringLiteral("a2d Zansa"));
    QCOMPARE(panel.dEdgeMap()->name, QStringLiteral("a2d dEdge"));
    const LcfRequest request = panel.lcfRequest({});
    QCOMPARE(request.rangeStart, 0.0);
    QCOMPARE(request.rangeEnd, 30000.0);
    QCOMPARE(text(panel, "Progress"), QStringLiteral("0%"));
    panel.setProgress(7.25);
    QCOMPARE(text(panel, "Progress"), QStringLiteral(" 7.25"));
    QSignalSpy asked(&panel, &Analyzer::askAnalyze);
    button(panel, "AskAnalyze")->click();
    QCOMPARE(asked.count(), 1);
}

void TestAnalyzer::choosesTheShownMap()
{
    Analyzer panel;
    QSignalSpy changed(&panel, &Analyzer::changedSelection);
    panel.refs().at(1)->showButton()->click();
    QCOMPARE(panel.selectedMap(), panel.refs().at(1)->map(0));
    QCOMPARE(changed.count(), 1);
    button(panel, "SelRatio")->click();
    QCOMPARE(panel.selectedMap(), panel.refs().at(1)->map(1));
    QCOMPARE(changed.count(), 2);
    button(panel, "ShowZ")->click();
    QCOMPARE(panel.selectedMap(), panel.zansaMap());
    QVERIFY(!panel.refs().at(1)->showButton()->isChecked());
    panel.selectImageById(3);
    QCOMPARE(panel.selectedMap(), panel.refs().at(3)->map(1));
    QCOMPARE(changed.count(), 4);
    panel.selectImageById(7); // behind the four rows: the residual
    QCOMPARE(panel.selectedMap(), panel.zansaMap());
    panel.selectImageById(99);
    QCOMPARE(panel.selectedMap(), panel.zansaMap());
    QCOMPARE(changed.count(), 5);
}

void TestAnalyzer::rowsAddedLaterKeepTheirOwnIds()
{
    Analyzer panel;
    for (int i = 0; i < 4; ++i)
        button(panel, "AddRef")->click();
    QCOMPARE(panel.refs().size(), 8);
    panel.refs().at(7)->showButton()->click(); // shares its id with the residual's button
    QCOMPARE(panel.selectedMap(), panel.refs().at(7)->map(0));
    button(panel, "ShowZ")->click();
    QCOMPARE(panel.selectedMap(), panel.zansaMap());
}

void TestAnalyzer::mapKindOfBatchCountsTheOtherWayRound()
{
    Analyzer panel;
    panel.setMapKind(0);
    QCOMPARE(panel.mapKindIndex(), 1);
    panel.setMapKind(5);
    QCOMPARE(panel.mapKindIndex(), 1);
    panel.setMapKind(1);
    QCOMPARE(panel.mapKindIndex(), 0);
}

void TestAnalyzer::modesOfBatchSwitchOneAnalysisOn()
{
    Analyzer panel;
    panel.setMode(2);
    QVERIFY(!panel.walkAnalysisSelected());
    panel.setMode(0);
    QVERIFY(panel.walkAnalysisSelected());
    for (const int none : {-1, 6})
        panel.setMode(none);
    QVERIFY(panel.walkAnalysisSelected());
}

void TestAnalyzer::scalesReachEveryMapAndTheShownOneTheBar()
{
    Analyzer panel;
    panel.refs().at(2)->showButton()->click();
    QSignalSpy shown(&panel, &Analyzer::scaleShown);
    panel.setFixedScale(true);
    QCOMPARE(shown.last(), (QVariantList{0.0, 1.0})); // of the fields, although none was edited
    panel.setDMutScaleMin(-0.5);
    panel.setDMutScaleMax(2.5);
    panel.setRatioScaleMin(0.25);
    panel.setRatioScaleMax(0.75);
    QCOMPARE(shown.last(), (QVariantList{-0.5, 2.5}));
    panel.addNewRef();
    for (const LCFReference* row : panel.refs()) {
        QCOMPARE(row->map(0)->scale().max, 2.5);
        QCOMPARE(row->map(1)->scale().min, 0.25);
    }
    QCOMPARE(panel.zansaMap()->scale().max, 0.75);
    QCOMPARE(text(panel, "DMutScaleMin"), QStringLiteral("-0.5"));
    panel.setFixedScale(false);
    QVERIFY(!panel.refs().at(0)->map(0)->fixedScale);
    QVERIFY(!panel.zansaMap()->fixedScale);
}

void TestAnalyzer::aSingleFitFillsTheRows()
{
    Analyzer panel;
    loadTwo(panel);
    QCOMPARE(panel.activeRows(), (QVector<int>{0, 2}));
    QSignalSpy finished(&panel, &Analyzer::finished);
    const XafsSpectrum s = edgeSpectrum(scanEnergies(200), 8992, 1.0, 11.0);
    panel.analyzeSpectrum(s, {});
    QVERIFY(finished.wait());
    const LcfResult expected = fitLcf(s, panel.lcfRequest({}));
    QCOMPARE(panel.refs().at(0)->weight(), expected.ratios.at(0));
    QCOMPARE(panel.refs().at(2)->weight(), expected.ratios.at(1));
    QCOMPARE(rowText(panel.refs().at(2), "T"), QString::number(expected.dMuts.at(1), 'g', 6));
    QCOMPARE(panel.refs().at(1)->weight(), 0.0);
    QCOMPARE(panel.fitResult().points, expected.fit.points);
    QCOMPARE(text(panel, "DispZansa"), QString::number(expected.zansa, 'g', 6));
}

void TestAnalyzer::onlyTheNewestAnswerFillsTheRows()
{
    Analyzer panel;
    loadTwo(panel);
    QSignalSpy finished(&panel, &Analyzer::finished);
    QVector<double> seen;
    connect(&panel, &Analyzer::finished, this, [&] { seen.append(panel.refs().at(0)->weight()); });
    const XafsSpectrum first = edgeSpectrum(scanEnergies(200), 8990, 1.0, 9.0);
    const XafsSpectrum second = edgeSpectrum(scanEnergies(200), 8994, 1.0, 15.0);
    panel.analyzeSpectrum(first, {});
    panel.analyzeSpectrum(second, {});
    QTRY_COMPARE(finished.count(), 2);
    QCOMPARE(seen.at(0), 0.0);
    QCOMPARE(seen.at(1), fitLcf(second, panel.lcfRequest({})).ratios.at(0));
}

void TestAnalyzer::changedReferencesAnalyseTheShownSpectrumAgain()
{
    Analyzer panel;
    loadTwo(panel);
    QSignalSpy sent(&panel, &Analyzer::analyzeSpectrum0);
    panel.reAnalyzeSpectrum(); // nothing is shown yet
    panel.refs().at(0)->editedDeltaE();
    QCOMPARE(sent.count(), 0);
    SuggestElm elm;
    elm.z = 47;
    panel.analyzeAndShowSpectrum(edgeSpectrum(scanEnergies(200), 8992, 1.0, 11.0), elm);
    panel.refs().at(0)->editedDeltaE();
    panel.refs().at(1)->newFile(files_.write(QStringLiteral("b.dat"), 8991, 1.0, 12));
    QCOMPARE(sent.count(), 3);
    const auto last = sent.last().first().value<AnalysisRequest>();
    QCOMPARE(last.lcfConditions.sElm.z, 47);
    panel.setMode(1);
    panel.reAnalyzeSpectrum();
    QCOMPARE(sent.count(), 3);
}

void TestAnalyzer::aWalkLeavesTheRowsAlone()
{
    Analyzer panel;
    loadTwo(panel);
    QSignalSpy finished(&panel, &Analyzer::finished);
    panel.analyzeSpectrum(edgeSpectrum(scanEnergies(200), 8994, 1.0, 15.0), {});
    QVERIFY(finished.wait());
    const double weight = panel.refs().at(0)->weight();
    panel.setContAccess(true);
    QSignalSpy sent(&panel, &Analyzer::analyzeSpectrum0);
    panel.analyzeSpectrum(edgeSpectrum(scanEnergies(200), 8990, 1.0, 9.0), {});
    QCOMPARE(sent.count(), 0);
    panel.analyzeInWalk(walkRequest(3, 4), {});
    QTRY_COMPARE(finished.count(), 2);
    const auto result = finished.last().first().value<AnalysisResult>();
    QCOMPARE(result.walk, 3);
    QCOMPARE(result.number, 5);
    QCOMPARE(result.lcf.size(), 4);
    QVERIFY(result.lcf.at(3).fitted);
    QCOMPARE(panel.refs().at(0)->weight(), weight);
    // The residual of a walk stands on the weights of the rows.
    QCOMPARE(result.lcf.at(0).zansa,
             fitLcf(walkRequest(3, 1).spectra.first(), panel.lcfRequest({})).zansa);
}

void TestAnalyzer::batchAddsRowsUpToALimit()
{
    Analyzer panel;
    const QString fname = files_.write(QStringLiteral("a.dat"), 8990, 1.0, 9);
    panel.setLCFStd(6, true, 0.5, fname, QString());
    QCOMPARE(panel.refs().size(), 7);
    QCOMPARE(panel.activeRows(), (QVector<int>{6}));
    panel.setLCFStd(-1, true, 0.5, fname, QString());
    panel.setLCFStd(2000000000, true, 0.5, fname, QString());
    QCOMPARE(panel.refs().size(), 7);
}

void TestAnalyzer::endsPromptlyDuringAWalk()
{
    QElapsedTimer timer;
    {
        Analyzer panel;
        loadTwo(panel);
        panel.setContAccess(true);
        const AnalysisRequest request = walkRequest(1, 4000);
        for (int i = 0; i < 30; ++i)
            panel.analyzeInWalk(request, {});
        QTest::qWait(5);
        timer.start();
    }
    QVERIFY2(timer.elapsed() < 100, qPrintable(QString::number(timer.elapsed())));
}

QTEST_MAIN(TestAnalyzer)
#include "test_analyzer.moc"
