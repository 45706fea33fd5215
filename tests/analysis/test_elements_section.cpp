#include "analysis/elements/ElementsSection.h"

#include "analysis/Analyzer.h"
#include "analysis/elements/AElemsConds.h"
#include "analysis/elements/ElemCtrl.h"
#include "analysis/elements/ElementsWalk.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "batch/CommandTable.h"
#include "display/Fold.h"
#include "display/XafsView.h"
#include "support/ClippedTexts.h"
#include "support/LogCapture.h"
#include "support/TabWalk.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLineEdit>
#include <QStyleFactory>
#include <QtTest>

/// The rows of elements in the panel, and the batch commands that fill them.
class TestElementsSection : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setStyle(QStyleFactory::create("fusion"));
        QFont font = QApplication::font();
        font.setPointSizeF(9);
        QApplication::setFont(font);
    }
    void init()
    {
        book_ = std::make_unique<CommandBook>();
        panel_ = std::make_unique<Analyzer>(maps_);
        panel_->bindCommands(*book_);
    }

    void rowsComeFromTheList()
    {
        const LogCapture log;
        run("analyzer_elems_sort_by_an 1");
        run("analyzer_target_elements Pb-L3,Xx Fe");
        QCOMPARE(rowNames(), (QStringList{"Fe-K", "Pb-L3"}));
        QCOMPARE(log.linesWith("Xx"), 1);
        QCOMPARE(section().elems().at(1)->energy(), 13035.2);
        QVERIFY(maps_.find({MapKind::ElemRoi, 1}) && !maps_.find({MapKind::ElemRoi, 2}));
        run("analyzer_elems_sort_by_an 0");
        run("analyzer_target_elements Cu");
        QCOMPARE(rowNames(), QStringList{"Cu-K"});
        QVERIFY(!maps_.find({MapKind::ElemRoi, 1}));
        QVERIFY(section().notReady({}).isEmpty());
        run("analyzer_target_elements Xx");
        QVERIFY(rowNames().isEmpty() && !section().notReady({}).isEmpty());
    }

    void commandsSetTheConditions()
    {
        run("analyzer_target_elements Fe Cu Pb-L3");
        for (const char* line : {"analyzer_elems_set_deVs 15", "analyzer_elems_roi Cu 9000 9010.5",
                                 "analyzer_elems_thdmut Pb-L3 0.25", "analyzer_elems_no_neg Cu 1",
                                 "analyzer_elems_set_use Cu 1", "analyzer_elems_select_target Pb",
                                 "analyzer_elems_select_show Cu-K",
                                 "analyzer_elems_set_corr_th 0.8", "analyzer_elems_bg_dMut x -1",
                                 "analyzer_elems_bg_dE x -2", "analyzer_elems_bg_ROI x -3"})
            run(line);
        const ElementConditions c = section().elementConditions();
        const auto told = [](const ElementRow& r) {
            return QString("%1 %2 %3 %4 %5 %6")
                .arg(r.dE)
                .arg(r.threshold)
                .arg(r.roiFrom)
                .arg(r.roiTo)
                .arg(r.noNeg)
                .arg(r.use);
        };
        QCOMPARE(told(c.rows.at(0)), QString("15 0.1 7000 7005 0 0"));
        QCOMPARE(told(c.rows.at(1)), QString("15 0.1 9000 9010.5 1 1"));
        QCOMPARE(told(c.rows.at(2)), QString("15 0.25 7000 7005 0 0"));
        QCOMPARE(c.target, 2);
        QCOMPARE(section().elementRow(), 1);
        QVERIFY(c.bgJump == -1 && c.bgDE == -2 && c.bgRoi == -3 && c.correlationThreshold == 0.8);
    }

    void whatIsUnknownIsAFault()
    {
        run("analyzer_target_elements Fe");
        const LogCapture log;
        for (const char* line : {"analyzer_elems_no_neg Cu 1", "analyzer_elems_select_target Fe-L3",
                                 "analyzer_elems_select_disp_mode 9"})
            run(line);
        QCOMPARE(log.linesWith("No element row has the name"), 2);
        QCOMPARE(log.linesWith("No map of elements has the number 9"), 1);
        QCOMPARE(section().elementConditions().target, 0);
    }

    /// The first analysis is made the standard, with which a second one is compared.
    void ratiosAreComparedWithStandardOnes()
    {
        for (const char* line : {"analyzer_target_elements Fe Cu", "analyzer_elems_set_use Fe 1",
                                 "analyzer_elems_set_use Cu 1"})
            run(line);
        const auto show = [&](double jump, double ratio) {
            QVector<double> v(ElementPlaces{2}.count(), 0.0);
            for (int row = 0; row < 2; ++row) {
                v[ElementPlaces{2}.value(row, 0)] = row ? jump * ratio : jump;
                v[ElementPlaces{2}.value(row, 1)] = row ? ratio : 1.0;
            }
            ShownResult result;
            result.values = v;
            section().show(result);
        };
        show(0.5, 3.0);
        const double unlike = section().correlation(); // with ratios of 1 and 1
        QVERIFY(qAbs(unlike - 4.0 / std::sqrt(20.0)) < 1e-12);
        panel_->findChild<QAbstractButton*>("SetSTD")->click();
        show(2.0, 3.0);
        QCOMPARE(section().correlation(), 1.0);
        QCOMPARE(panel_->findChild<QLineEdit*>("ElemsCorrelation")->text(), QString("1"));
    }

    void plotsMarkTheEdgesOfTheAnalysisInUse()
    {
        run("analyzer_target_elements Fe Cu");
        QVERIFY(section().edgeMarks().isEmpty());
        const QSignalSpy redrawn(panel_->view(), &XafsView::updated);
        section().chooser()->setChecked(true);
        QCOMPARE(redrawn.size(), 1);
        section().elems().at(1)->findChild<QLineEdit*>("Eng")->setText("8985.5");
        QCOMPARE(redrawn.size(), 2);
        const EdgeMark copper = section().edgeMarks().at(1);
        QVERIFY(copper.name == "Cu-K" && copper.energy == 8985.5);
    }

    void openRowsFitADock()
    {
        run("analyzer_target_elements Fe Pb-L3");
        section().setOpen(true);
        for (ElemCtrl* row : section().elems()) {
            row->setRoi(13035.25, 13040.75);
            row->findChild<QLineEdit*>("PrePostDE")->setText("12.5");
            row->findChild<QAbstractButton*>("More")->click();
        }
        QVERIFY2(section().minimumSizeHint().width() <= widest,
                 qPrintable(QString::number(section().minimumSizeHint().width())));
        section().setParent(nullptr);
        section().resize(widest, 900);
        section().setVisible(true);
        QVERIFY(QTest::qWaitForWindowExposed(&section()));
        QCOMPARE(clippedTexts(&section()).join("; "), QString());
        QCOMPARE(tabsBackwards(section()).join("; "), QString());
        section().setParent(panel_.get());
    }

private:
    static constexpr int widest = 340; ///< of a section in the least dock [pixels]

    ElementsSection& section() const { return panel_->elements(); }
    QStringList rowNames() const
    {
        QStringList names;
        for (const ElemCtrl* row : section().elems())
            names << row->name();
        return names;
    }
    void run(const QString& line) const
    {
        const CmdLine command(line);
        book_->run(exCmdId(command), command, CommandEnd([](const QStringList&) {})).done();
    }

    MapBook maps_;
    std::unique_ptr<CommandBook> book_;
    std::unique_ptr<Analyzer> panel_;
};

QTEST_MAIN(TestElementsSection)
#include "test_elements_section.moc"
