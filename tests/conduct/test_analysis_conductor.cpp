#include "Desk.h"

#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfSection.h"
#include "conduct/AnalysisConductor.h"
#include "conduct/CalibConductor.h"
#include "support/LogCapture.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// Single fits and walks as their conductor runs them with the panel, without a main window.
class TestAnalysisConductor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<Desk>();
        analysis_ = std::make_unique<AnalysisConductor>(
            AnalysisConductor::Parts{desk_->maps, desk_->reader, desk_->analyzer}, desk_->view,
            desk_->cursor, desk_->walks);
        analysis_->bindCommands(desk_->book);
        desk_->walks.setTileLanes(1);
        QVERIFY(desk_->load(experiment_));
    }
    void cleanup()
    {
        analysis_.reset();
        desk_.reset();
    }

    /// Each answer fills the rows in its turn: an older one that can be fitted must not be lost to
    /// a newer one that can't, whenever it comes.
    void answersFillTheRowsInTheirOrder()
    {
        Analyzer& panel = desk_->analyzer;
        const XafsSpectrum first = spectrumAt(1, 1);
        const XafsSpectrum second = spectrumAt(9, 5);
        settle();
        QVector<double> seen;
        connect(&panel, &Analyzer::finished, this,
                [&] { seen.append(panel.lcf().refs().at(0)->weight()); });
        panel.analyzeSpectrum(first, {});
        panel.analyzeSpectrum(second, {});
        panel.analyzeSpectrum(XafsSpectrum(), {});
        QTRY_COMPARE(seen.size(), 3);
        const double last = fitLcf(second, panel.lcf().request({})).ratios.at(0);
        const double before = fitLcf(first, panel.lcf().request({})).ratios.at(0);
        QCOMPARE(seen, (QVector<double>{before, last, last}));
        const LcfResult shown = fitLcf(second, panel.lcf().request({}));
        QCOMPARE(panel.lcf().refs().at(1)->weight(), shown.ratios.at(1));
        QCOMPARE(panel.lcf().fitResult().points, shown.fit->points);
    }

    void aWalkLeavesTheRowsAlone()
    {
        Analyzer& panel = desk_->analyzer;
        settle();
        desk_->run("analyzer_exec_LCF");
        const double weight = panel.lcf().refs().at(0)->weight();
        desk_->cursor.showXafsSpectrum(9, 5); // not analysed during a walk
        QTRY_VERIFY(!analysis_->isWalking());
        QCOMPARE(panel.lcf().refs().at(0)->weight(), weight);
        desk_->cursor.showXafsSpectrum(9, 5);
        QTRY_VERIFY(panel.lcf().refs().at(0)->weight() != weight);
    }

    void aWalkReportsOnceHoweverItEnds_data()
    {
        addEndings(experiment_, "analyzer_exec_LCF");
        QTest::newRow("refused") << "no area"
                                 << "";
    }

    void aWalkReportsOnceHoweverItEnds()
    {
        QFETCH(QString, meanwhile);
        QFETCH(QString, failure);
        if (meanwhile == "no area")
            desk_->run("select_region 40 2 50 6");
        int reports = 0;
        QStringList failures;
        const LogCapture log;
        desk_->book
            .run(ExCmdAnalyzerExecLCF, CmdLine("analyzer_exec_LCF"),
                 CommandEnd([&](const QStringList& why) {
                     ++reports;
                     failures += why;
                 }))
            .done();
        QCOMPARE(reports, meanwhile == "no area" ? 1 : 0);
        if (meanwhile == "button")
            desk_->analyzer.findChild<QPushButton*>("AskAnalyze")->click();
        else if (meanwhile == "end")
            analysis_.reset();
        else if (meanwhile == "image")
            desk_->stacks.loadedI0(new TiffData, 0);
        else if (!meanwhile.isEmpty())
            desk_->run(meanwhile);
        QTRY_COMPARE(reports, 1);
        QCOMPARE(failures.join('|'), failure);
        if (!failure.isEmpty() && analysis_)
            QCOMPARE(log.linesWith("2D analysis " + failure), 1);
        QTest::qWait(20);
        QCOMPARE(reports, 1);
    }

    void everyAnalysisStopsRestartsAndClears_data()
    {
        QTest::addColumn<QString>("prepare");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("valueKind");
        QTest::addColumn<double>("tolerance"); // of the planted value
        QTest::newRow("edge shift") << "analyzer_select_analysis_mode 5"
                                    << "analyzer_exec_LCF"
                                    << "AskAnalyze" << int(MapKind::DEdge) << int(MapKind::DEdge)
                                    << SmallExperiment::energyStep;
        QTest::newRow("residual") << "analyzer_set_ra_energy 8940"
                                  << "analyzer_exec_ra"
                                  << "AskRAAnalyze" << int(MapKind::ResidualRatio)
                                  << int(MapKind::ResidualJump) << 0.01;
        QTest::newRow("elements") << "analyzer_target_elements Cu, Ni"
                                  << "analyzer_exec_elems"
                                  << "AskAnalyzeElems" << int(MapKind::ElemsCorTh)
                                  << int(MapKind::ElemJump) << 0.01;
    }

    /// A started walk ends once: by its button, by another start, by images that go, with the
    /// conductor; and at its end its maps are whole and hold what was planted.
    void everyAnalysisStopsRestartsAndClears()
    {
        QFETCH(QString, prepare);
        QFETCH(QString, start);
        QFETCH(QString, button);
        QFETCH(int, kind);
        QFETCH(int, valueKind);
        QFETCH(double, tolerance);
        const MapKey key{MapKind(kind)};
        for (const char* box : {"SelRAA", "SelElemA"})
            desk_->analyzer.findChild<QAbstractButton*>(box)->setChecked(true);
        desk_->run(prepare);
        auto* const press = desk_->analyzer.findChild<QPushButton*>(button);
        const auto over = std::make_shared<bool>(false);
        desk_->run(start, over);
        QVERIFY(analysis_->isWalking() && desk_->maps.stateOf(key) == MapState::Filling);
        press->click();
        QVERIFY(*over && !analysis_->isWalking());
        QVERIFY(desk_->maps.stateOf(key) == MapState::Stopped);
        QCOMPARE(desk_->failures.takeFirst(), QString("stopped"));

        *over = false;
        desk_->run(start, over);
        const auto again = std::make_shared<bool>(false);
        desk_->run(start, again);
        QVERIFY(*over && !*again);
        QTRY_VERIFY(*again);
        QVERIFY(desk_->maps.stateOf(key) == MapState::Whole);
        const MapKey shown{MapKind(valueKind)};
        const double edge = desk_->spectrumBox.settings().elm.edgeE;
        const double expected = shown.kind == MapKind::DEdge ? 8980.0 - edge : 1.0;
        const double found = desk_->maps.find(shown)->valueAt(3, 3);
        QVERIFY2(std::abs(found - expected) < tolerance,
                 qPrintable(QString("%1, not %2").arg(found).arg(expected)));

        *over = false;
        desk_->run(start, over);
        desk_->run("clear_I1_files");
        QVERIFY(*over && desk_->maps.stateOf(key) == MapState::Stopped);
        analysis_->tellReadiness();
        QVERIFY(!press->isEnabled());
    }

    /// Forms, references and the shift map are those of the start, for every position.
    void nothingThatChangesReachesAWalk()
    {
        QVERIFY(desk_->runAll({"analyzer_exec_LCF"}));
        const QVector<double> undisturbed = mapValues();
        desk_->run("analyzer_exec_LCF");
        int answers = 0;
        connect(analysis_.get(), &AnalysisConductor::progressed, this, [&] {
            if (++answers != 40)
                return;
            desk_->shiftMap.prepare(desk_->maps.at({MapKind::Zansa}).stepper);
            desk_->shiftMap.shifts.fill(3.5);
            QVERIFY(desk_->runAll(
                {"Use_I0 0", "set_fluo_type 1", "set_band_w 2", "Suggest_Elm 1",
                 "eng_calc_base_i1 9000", "eng_apply_i1", "hold_gap 0", "calib_target_background 0",
                 "analyzer_set_LCF_std 0 0 5 " + experiment_.references[1],
                 "analyzer_set_LCF_std 4 0 0 " + experiment_.references[1],
                 "analyzer_zansa_own_weights 1", "analyzer_select_analysis_mode 3"}));
            desk_->analyzer.findChild<QLineEdit*>("LCFRange1")->setText("8990");
        });
        QTRY_VERIFY(!analysis_->isWalking());
        QVERIFY(answers == 84);
        QCOMPARE(mapValues(), undisturbed);
        QVERIFY(desk_->maps.stateOf({MapKind::LcfWeight, 1}) == MapState::Whole);
        QCOMPARE(desk_->maps.stateOf({MapKind::LcfWeight, 4}), MapState::Empty);
        QCOMPARE(desk_->maps.originOf({MapKind::Zansa}).references, experiment_.references);
    }

    /// Each on its own source; a calibration changes the shifts of what comes later alone.
    void aCalibrationRunsBesideAWalk()
    {
        QVERIFY(desk_->runAll({"analyzer_exec_LCF"}));
        const QVector<double> undisturbed = mapValues();
        CalibConductor calibration({desk_->data, desk_->shiftMap, desk_->maps, desk_->reader,
                                    desk_->spectrumBox, desk_->calibCtrl},
                                   desk_->cursor, desk_->walks);
        calibration.bindCommands(desk_->book);
        QVERIFY(desk_->runAll({"calib_load_std " + experiment_.references[1], "calib_type 1"}));
        desk_->run("calib_exec");
        desk_->run("analyzer_exec_LCF");
        QVERIFY(calibration.isRunning() && analysis_->isWalking());
        QTRY_VERIFY(!calibration.isRunning() && !analysis_->isWalking());
        QCOMPARE(mapValues(), undisturbed);
        QVERIFY(desk_->shiftMap.statistics && desk_->reader.energyShiftAt(3, 3) != 0.0);
    }

    /// Each of them would make other maps; what is undone, or plays no part, would not.
    void mapsAreOutOfDateOnceSomethingIsAnother_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("differs");
        const auto add = [](const QString& line, bool differs) {
            QTest::newRow(qPrintable(line.section(' ', 0, 2))) << line << differs;
        };
        for (const char* line : {"set_band_w 1", "Use_I0 0", "set_fluo_type 1", "hold_gap 0",
                                 "Suggest_Elm 1", "select_region 2 2 6 6", "clear_I1_files",
                                 "calib_target_background 0", "analyzer_zansa_own_weights 1"})
            add(line, true);
        const QString reference = "analyzer_set_LCF_std %1 %2 %3 " + experiment_.references[1];
        add(reference.arg(2).arg(0).arg(0), true);
        add(reference.arg(1).arg(0).arg(2.5), true);
        add(reference.arg(1).arg(1).arg(0), true); // Victoreen lines
        add("eng_calc_base_i1 9000", false);       // not applied yet
        add("analyzer_select_image 1", false);
        add("analyzer_set_fixed_scale 1", false);
    }

    void mapsAreOutOfDateOnceSomethingIsAnother()
    {
        QFETCH(QString, line);
        QFETCH(bool, differs);
        QVERIFY(!analysis_->conditionsDiffer()); // from no walk
        QVERIFY(desk_->runAll({"analyzer_exec_LCF"}));
        desk_->cursor.showXafsSpectrum(9, 5);
        QVERIFY(!analysis_->conditionsDiffer() && analysis_->mapsWhole());
        QVERIFY(desk_->runAll({line}));
        QCOMPARE(analysis_->conditionsDiffer(), differs);
        if (!differs || line.startsWith("clear"))
            return;
        QVERIFY(desk_->runAll({"analyzer_exec_LCF"}));
        QVERIFY(!analysis_->conditionsDiffer());
    }

    void whatKeepsAWalkFromStartingIsTold()
    {
        auto* const box = desk_->analyzer.findChild<QAbstractButton*>("SelMLCFAnal");
        QCOMPARE(analysis_->whyNotReady(AnalysisWalk::Fits), QString());
        QCOMPARE(analysis_->walkText(), QString("84 blocks of 1 x 1 pixels, whole image"));
        desk_->run("select_region 0 0 6 6");
        desk_->run("set_band_w 1");
        QCOMPARE(analysis_->walkText(), QString("12 blocks of 3 x 1 pixels, selected area"));
        desk_->run("select_region 40 2 50 6");
        QVERIFY(analysis_->whyNotReady(AnalysisWalk::Fits).contains("outside") &&
                analysis_->walkText().isEmpty());
        desk_->run("select_region 0 0 6 6");
        auto* const start = desk_->analyzer.findChild<QLineEdit*>("LCFRange1");
        start->setText("20000");
        QVERIFY(analysis_->whyNotReady(AnalysisWalk::Fits).contains("range"));
        start->setText("0");
        for (const int row : {0, 1})
            desk_->analyzer.lcf().refs().at(row)->findChild<QAbstractButton*>("Use")->click();
        QVERIFY(analysis_->whyNotReady(AnalysisWalk::Fits).startsWith("No reference in use"));
        box->click();
        QVERIFY(analysis_->whyNotReady(AnalysisWalk::Fits).startsWith("No analysis"));
        desk_->run("clear_I1_files");
        QVERIFY(analysis_->whyNotReady(AnalysisWalk::Fits).startsWith("No images"));
        analysis_->tellReadiness();
        QVERIFY(!desk_->analyzer.findChild<QAbstractButton*>("AskAnalyze")->isEnabled());
    }

    void aStoppedWalkKeepsItsShare()
    {
        const QSignalSpy ended(analysis_.get(), &AnalysisConductor::ended);
        const auto* const shown = desk_->analyzer.findChild<QLabel*>("Progress");
        auto* const button = desk_->analyzer.findChild<QPushButton*>("AskAnalyze");
        int answers = 0;
        connect(analysis_.get(), &AnalysisConductor::progressed, this, [&] {
            if (++answers == 3 * experiment_.width + 1)
                button->click();
        });
        button->click();
        QTRY_COMPARE(ended.size(), 1);
        QVERIFY(!ended.first().first().toBool() && analysis_->mapsStopped());
        QCOMPARE(shown->text(), QString("stopped at 42 %"));
        QVERIFY(qAbs(analysis_->percent() - 300.0 / 7) < 1e-9);
        button->click();
        QTRY_COMPARE(ended.size(), 2);
        QVERIFY(analysis_->mapsWhole() && analysis_->rowsOfMaps() == 2);
        QCOMPARE(shown->text(), QString("100.00"));
    }

    void aFirstMapIsChosenWhenAskedTo()
    {
        const QSignalSpy wanted(analysis_.get(), &AnalysisConductor::resultsWanted);
        const auto choice = [this] { return desk_->analyzer.mapChoice(); };
        QVERIFY(desk_->runAll({"analyzer_exec_LCF"}));
        QVERIFY(choice().row == -1 && wanted.isEmpty());
        desk_->analyzer.lcf().refs().at(0)->findChild<QAbstractButton*>("Use")->click();
        analysis_->setChoosesMap(true);
        QVERIFY(desk_->runAll({"analyzer_exec_LCF"}));
        QVERIFY(choice().row == 1 && choice().kindIndex == 1 && wanted.size() == 1);
        desk_->analyzer.findChild<QAbstractButton*>("ShowZ")->click(); // another choice stays
        QVERIFY(desk_->runAll({"analyzer_exec_LCF"}));
        QVERIFY(choice().fixed && wanted.size() == 1);
    }

private:
    XafsSpectrum spectrumAt(int x, int y) const
    {
        return desk_->reader.source().spectrum(x, y, Stage::Curve);
    }

    /// Until the fits that loading caused are in.
    void settle()
    {
        QSignalSpy finished(&desk_->analyzer, &Analyzer::finished);
        desk_->cursor.showXafsSpectrum(0, 0);
        while (finished.wait(300)) {
        }
    }

    QVector<double> mapValues() const
    {
        QVector<double> values;
        for (const MapKey& key : desk_->maps.resultKeys()) {
            const Analyzed2DRes& map = desk_->maps.at(key);
            for (int i = 0; map.data() && i < 12 * 7; ++i)
                values.append(map.data()[i]);
        }
        return values;
    }

    const SmallExperiment experiment_;
    std::unique_ptr<Desk> desk_;
    std::unique_ptr<AnalysisConductor> analysis_;
};

QTEST_MAIN(TestAnalysisConductor)
#include "test_analysis_conductor.moc"
