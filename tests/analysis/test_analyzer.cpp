#include "LcfFixtures.h"

#include "analysis/Analyzer.h"
#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfSection.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "batch/CommandTable.h"
#include "display/RunRow.h"
#include "display/XafsFileSelect.h"
#include "display/XafsView.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

/// The panel and its rows of references.
class TestAnalyzer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void tellsWhichMapIsChosen()
    {
        MapBook maps;
        Analyzer panel(maps);
        const QSignalSpy changed(&panel, &Analyzer::changedSelection);
        const auto choice = [&] {
            const MapChoice c = panel.mapChoice();
            return c.fixed ? QPoint(-1, c.rows) : QPoint(c.row, c.kindIndex);
        };
        const auto click = [&](const char* name) {
            panel.findChild<QAbstractButton*>(name)->click();
            return choice();
        };
        panel.lcf().refs().at(1)->showButton()->click();
        QCOMPARE(choice(), QPoint(1, 0));
        QCOMPARE(click("SelRatio"), QPoint(1, 1));
        QCOMPARE(click("ShowZ"), QPoint(-1, 4));
        panel.selectImageById(3);
        QCOMPARE(choice(), QPoint(3, 1));
        panel.selectImageById(7); // behind the four rows: the residual
        QCOMPARE(choice(), QPoint(-1, 4));
        QCOMPARE(changed.count(), 5);
        for (int i = 0; i < 4; ++i)
            click("AddRef");
        panel.lcf().refs().at(7)->showButton()->click(); // shares its id with the residual's button
        QCOMPARE(choice(), QPoint(7, 1));
        QCOMPARE(click("ShowZ"), QPoint(-1, 8));
    }

    void theViewTellsHeldGaps()
    {
        MapBook maps;
        Analyzer panel(maps);
        Spectrum mu;
        for (int i = 0; i < 200; ++i) {
            const double E = 8900.0 + 2.0 * i;
            // A line that follows the curve before the edge crosses the flat one behind it.
            mu.append(E, E < 8985.0 ? 0.4 + 2e-5 * (E - 8900.0) * (E - 8900.0) : 0.9);
        }
        const XafsSpectrum s(mu, "held", VictLine::Victoreen, 0.0, {});
        const HeldGap gap(s, {});
        QCOMPARE(int(gap.state()), int(HeldGap::Held));
        panel.analyzeAndShowSpectrum(s, {});
        const auto* line = panel.view()->findChild<QLabel*>("ExtMsg");
        QVERIFY(line->text().endsWith(gap.words()) && gap.words().startsWith("Gap held "));
        panel.lcf().setHoldGap(false);
        panel.analyzeAndShowSpectrum(s, {});
        QVERIFY(!line->text().contains("Gap"));
    }

    void changedReferencesAnalyseTheShownSpectrumAgain()
    {
        MapBook maps;
        Analyzer panel(maps);
        load(panel);
        const QSignalSpy sent(&panel, &Analyzer::analyzeSpectrum0);
        panel.lcf().refs().at(0)->editedDeltaE(); // nothing is shown yet, nothing sent
        panel.analyzeAndShowSpectrum(sample(11.0), {});
        panel.lcf().refs().at(0)->editedDeltaE();
        panel.lcf().refs().at(1)->newFile(c_);
        QCOMPARE(sent.count(), 3);
    }

    /// A spectrum that is one of the references holds just that one, if both have the same ranges.
    void referencesTakeTheSuggestion()
    {
        MapBook maps;
        Analyzer panel(maps);
        load(panel);
        SuggestElm elm;
        elm.use = true;
        elm.edgeE = 8990;
        elm.thJump = 1.0;
        const XafsSpectrum same(panel.lcf().refs().at(0)->spectrum(), "a", VictLine::Straight, 0,
                                elm);
        const auto error = [&] {
            const LcfResult fit = fitLcf(same, panel.lcf().request({elm, {}}));
            return std::abs(fit.ratios.at(0) - 1.0) + std::abs(fit.ratios.at(1));
        };
        const double unlike = error();
        QSignalSpy changed(panel.lcf().refs().at(0), &LCFReference::changed);
        panel.setHint({elm, true});
        QVERIFY2(error() < 1e-9 && unlike > 0.01, qPrintable(QString::number(unlike)));
        elm.thJump = 1e9; // not theirs
        panel.setHint({elm, true});
        QCOMPARE(changed.count(), 1);
        QVERIFY(panel.lcf().refs().at(0)->spectrum().dMut > 0.5);
        panel.lcf().setLCFStd(4, true, 0, a_, "0");
        QCOMPARE(panel.lcf().refs().at(4)->spectrum().dPostS, 20.0);
        panel.setHint({elm, false});
        QVERIFY(error() == unlike && panel.lcf().refs().at(4)->spectrum().dPostS == 10.0);
    }

    void rowsTellWhatIsDoubtful()
    {
        QByteArray text;
        for (int E = 8970; E < 8990; ++E)
            text += QByteArray::number(E) + " " + QByteArray::number(std::atan(E - 8980)) + " 7\n";
        QVERIFY(writeBytes(dir_.filePath("three.dat"), text));
        LCFReference row;
        auto* const file = row.findChild<XafsFileSelect*>();
        file->load(dir_.filePath("three.dat"));
        const QString columns = file->mark();
        QVERIFY(columns.startsWith("3 columns"));
        row.setLeftOut("not in range");
        QCOMPARE(file->mark(), columns + "\nnot in range");
        row.setLeftOut({});
        SuggestElm elm;
        elm.use = true;
        elm.edgeE = 7112;
        row.setHint({elm, true});
        QCOMPARE(file->mark().count("suggested edge is at 7112.0 eV"), 1);
        row.setLeftOut("not in range");
        file->clear();
        QCOMPARE(file->mark(), QString());
    }

    void theViewShowsSpectrumReferencesAndFit()
    {
        MapBook maps;
        Analyzer panel(maps);
        const QVector<ViewCurve>& curves = panel.view()->others();
        load(panel);
        panel.lcf().addNewRef();
        panel.lcf().setLCFStd(4, false, 1.5, a_, "0");
        QCOMPARE(curves.size(), 6); // five rows and the fit
        QVERIFY(curves.at(0).show && !curves.at(4).show && !curves.at(5).show);
        QCOMPARE(curves.at(2).spectrum.points, panel.lcf().refs().at(2)->spectrum().points);
        QCOMPARE(curves.at(4).spectrum.eShift, 1.5);
        panel.lcf().refs().at(2)->findChild<XafsFileSelect*>()->clear();
        QVERIFY(curves.at(2).spectrum.isEmpty());
        load(panel);

        AnalyzeProc worker;
        connect(&panel, &Analyzer::analyzeSpectrum0, &worker, &AnalyzeProc::analyzeSpectrum0);
        connect(&worker, &AnalyzeProc::finished, &panel, &Analyzer::analyzeSpectrumFinished);
        const XafsSpectrum noEdge({}, "x", VictLine::Straight, 0.0, {});
        for (const XafsSpectrum& s : {sample(11.0), noEdge, sample(11.0)}) {
            panel.analyzeAndShowSpectrum(s, {});
            QCOMPARE(panel.view()->spectrum().points, s.points);
            QCOMPARE(curves.at(5).show, !s.isEmpty());
        }
        QCOMPARE(curves.at(5).spectrum.points, panel.lcf().fitResult().points);
        panel.setMode(3); // no analysis, no fit
        panel.analyzeAndShowSpectrum(sample(9.0), {});
        QVERIFY(!curves.at(5).show);
    }

    void theViewComesAndGoesWithThePanel()
    {
        MapBook maps;
        Analyzer panel(maps);
        XafsView* const view = panel.view();
        panel.findChild<QAbstractButton*>("ShowView")->click();
        QVERIFY(view->isVisible() && view->isWindow() && !panel.isVisible());
        QCOMPARE(view->windowTitle(), QString("Analyzing Spectrum"));
        panel.close();
        QVERIFY(!view->isVisible());
        CommandBook book;
        panel.bindCommands(book);
        const CmdLine show("analyzer_show_window");
        book.run(exCmdId(show), show, CommandEnd([](const QStringList&) {})).done();
        QVERIFY(view->isVisible() && panel.isVisible());
        panel.setNormalize(true);
        panel.setEnergyCorrection(true);
        for (const char* box : {"Normalized", "ECorrect"})
            QVERIFY(view->findChild<QAbstractButton*>(box)->isChecked());
    }

    void manyReferencesFindRoom()
    {
        MapBook maps;
        Analyzer panel(maps);
        panel.lcf().setLCFStd(1, true, 0, a_, "0");
        QVERIFY(writeBytes(dir_.filePath("no.dat"), "8970 1\n"));
        const QStringList many{c_, dir_.filePath("no.dat"), c_, c_, c_};
        panel.lcf().loadReferences(many);
        QCOMPARE(files(panel), (QStringList{"c.dat", "a.dat", "c.dat", "c.dat", "c.dat"}));
        Q_EMIT panel.lcf().refs().at(3)->filesDropped({a_, a_, a_});
        QCOMPARE(files(panel).mid(2), (QStringList{"c.dat", "a.dat", "a.dat", "a.dat"}));
        const LogCapture log;
        panel.lcf().loadReferences(QVector<QString>(120, a_).toList());
        QVERIFY(panel.lcf().refs().size() == 100 && log.linesWith("rows go from 0 to 99") == 1);
    }

    void theButtonTellsWhatItDoesOrWhyNot()
    {
        MapBook maps;
        Analyzer panel(maps);
        const auto* const button = panel.findChild<QAbstractButton*>("AskAnalyze");
        const auto* const line = panel.findChild<QLabel*>("AskAnalyzeText");
        panel.runRow(AnalysisWalk::Fits).setReadiness("why not", "a walk");
        QVERIFY(!button->isEnabled() && button->toolTip() == "why not");
        QCOMPARE(line->text(), QString("why not"));
        panel.setContAccess(true); // started by a batch
        QVERIFY(button->isEnabled() && button->text() == "Stop" && line->text() == "a walk");
        panel.setContAccess(false);
        QVERIFY(!button->isEnabled() && button->text() == "Analyze");
        panel.runRow(AnalysisWalk::Fits).setReadiness({}, "a walk");
        QVERIFY(button->isEnabled() && line->text() == "a walk");
        field(*panel.lcf().refs().at(2), "DeltaE")->setText("abc");
        QCOMPARE(panel.unreadable(), QStringList("dE of reference 3"));
    }

    /// Tab goes through the rows before what stands below them, also through one added later.
    void tabReadsFromTopToBottom()
    {
        MapBook maps;
        Analyzer panel(maps);
        panel.lcf().addNewRef();
        panel.show();
        int last = -1;
        QSet<QWidget*> seen;
        for (QWidget* w = panel.findChild<QWidget*>("SelMLCFAnal"); !seen.contains(w);
             w = w->nextInFocusChain()) {
            seen.insert(w);
            if (!(w->focusPolicy() & Qt::TabFocus) || !w->isVisible())
                continue;
            const int y = w->mapTo(&panel, QPoint(0, w->height() / 2)).y();
            QVERIFY2(y > last - 10, qPrintable(w->objectName()));
            last = y;
        }
        QVERIFY(last > panel.findChild<QWidget*>("SelRatio")->mapTo(&panel, QPoint()).y());
    }

    void batchAddsRowsUpToALimit()
    {
        MapBook maps;
        Analyzer panel(maps);
        for (const int row : {6, -1, 2000000000})
            panel.lcf().setLCFStd(row, true, 0.5, a_, "");
        QCOMPARE(panel.lcf().refs().size(), 7);
        QCOMPARE(panel.lcf().activeRows(), (QVector<int>{6}));
    }

    void aFileThatFailsEmptiesTheRow()
    {
        QVERIFY(writeBytes(dir_.filePath("short.dat"), "8970 1\n8980 2\n"));
        for (const char* name : {"missing.dat", "short.dat"}) {
            LCFReference row;
            row.findChild<XafsFileSelect*>()->load(a_);
            QVERIFY(row.isActive());
            const LogCapture log;
            row.findChild<XafsFileSelect*>()->load(dir_.filePath(name));
            QCOMPARE(log.linesWith("Can't read reference file"), 1);
            QVERIFY(!row.isActive() && row.spectrum().isEmpty());
        }
    }

    /// Whether dE is given before or after loading must not matter.
    void theShiftDoesNotCountTwice()
    {
        LCFReference before;
        LCFReference after;
        after.findChild<XafsFileSelect*>()->load(a_);
        for (LCFReference* row : {&before, &after}) {
            field(*row, "DeltaE")->clear();
            QTest::keyClicks(field(*row, "DeltaE"), "-2.5\r");
        }
        before.findChild<XafsFileSelect*>()->load(a_);
        QCOMPARE(QPointF(before.spectrum().eShift, after.spectrum().eShift), QPointF(-2.5, -2.5));
        QCOMPARE(before.spectrum().doubleNormalizedPreBase.points,
                 after.spectrum().doubleNormalizedPreBase.points);
        QCOMPARE(field(before, "MidE")->text(), field(after, "MidE")->text());
    }

    void batchChoosesTheBackground()
    {
        const QPair<const char*, int> rows[] = {{"", 1},  {"vIc", 1}, {"0.5", 1},
                                                {"0", 0}, {"-1", 0},  {"victoreen", 0}};
        for (const auto& row : rows) {
            LCFReference reference;
            reference.setStd(false, 1.23456789, a_, row.first);
            QVERIFY(!reference.isActive() && reference.spectrum().eShift == 1.23456789);
            QCOMPARE(field(reference, "DeltaE")->text(), QString("1.23456789"));
            QCOMPARE(reference.spectrum().pre.mode == VictLine::Victoreen, row.second == 1);
        }
    }

private:
    static QLineEdit* field(const LCFReference& row, const char* name)
    {
        return row.findChild<QLineEdit*>(name);
    }
    static QStringList files(const Analyzer& panel)
    {
        QStringList names;
        for (const LCFReference* row : panel.lcf().refs()) {
            if (!row->spectrum().isEmpty())
                names.append(QFileInfo(row->fileName()).fileName());
        }
        return names;
    }
    static XafsSpectrum sample(double wiggle)
    {
        return edgeSpectrum(scanEnergies(200), 8992, 1.0, wiggle);
    }
    void load(Analyzer& panel) const
    {
        panel.lcf().setLCFStd(0, true, 0, a_, "0");
        panel.lcf().setLCFStd(2, true, 0, c_, "0");
    }
    QString write(const QString& name, double wiggle) const
    {
        QByteArray text;
        for (const double E : scanEnergies(220))
            text += QByteArray::number(E, 'g', 17) + ' ' +
                    QByteArray::number(edgeShape(E, 8990, 1.0, wiggle), 'g', 17) + '\n';
        return writeBytes(dir_.filePath(name), text) ? dir_.filePath(name) : QString();
    }

    QTemporaryDir dir_;
    const QString a_ = write("a.dat", 9);
    const QString c_ = write("c.dat", 15);
};

QTEST_MAIN(TestAnalyzer)
#include "test_analyzer.moc"
