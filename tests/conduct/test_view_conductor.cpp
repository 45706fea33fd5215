#include "Desk.h"

#include "conduct/AnalysisConductor.h"
#include "conduct/ExplainConductor.h"
#include "display/ColorBar.h"
#include "display/CrossSView.h"
#include "display/ImgDispA.h"
#include "maps/OutcomeColours.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>

/// What the image box shows in front of a user, driven by its own fields, handles and keys.
class TestViewConductor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<Desk>();
        theColorBar = desk_->imageBox.bar();
        analysis_ = std::make_unique<AnalysisConductor>(
            AnalysisConductor::Parts{desk_->maps, desk_->reader, desk_->analyzer}, desk_->view,
            desk_->cursor, desk_->walks);
        analysis_->bindCommands(desk_->book);
        desk_->view.setUnattended(false);
        desk_->imageBox.resize(476, 690);
        QVERIFY(desk_->load(experiment_));
    }
    void cleanup()
    {
        analysis_.reset();
        theColorBar = nullptr;
        desk_.reset();
    }

    void eachKindKeepsItsRangeUntilAutoIsAsked()
    {
        const QString automatic = shown("ScaleMin");
        type("ScaleMin", "17");
        QCOMPARE(range().x(), 17.0);
        QVERIFY(desk_->imageBox.setChoice(ShowI0Id));
        QVERIFY(range().x() != 17.0);
        type("ScaleMax", "abc");
        QVERIFY(!desk_->imageBox.unreadableFields().isEmpty());
        QVERIFY(range().x() != 0.0);
        QVERIFY(desk_->imageBox.setChoice(ShowDataId));
        QVERIFY(desk_->runAll({"seek_image 3"}));
        QCOMPARE(range().x(), 17.0);
        child<QPushButton>("CBarAuto")->click();
        QCOMPARE(shown("ScaleMin"), automatic);
        QVERIFY(
            desk_->runAll({"cbar_set_range 5 9", "select_disp_image 1", "select_disp_image 0"}));
        QCOMPARE(range(), QPointF(5, 9));
        QTest::mouseDClick(desk_->imageBox.bar(), Qt::LeftButton);
        QCOMPARE(shown("ScaleMin"), automatic);
    }

    void handlesGiveTheirRangeAndReturn()
    {
        ColorBar& bar = *desk_->imageBox.bar();
        type("ScaleMin", "0");
        type("ScaleMax", "1000");
        bar.lowHandle = 0.25;
        bar.highHandle = 0.5;
        Q_EMIT bar.cBarUpdated();
        QCOMPARE(range(), QPointF(250, 500));
        QVERIFY(!bar.handlesMoved());
        QCOMPARE(shown("ScaleMax"), QString("500"));
    }

    void mapsSayWhatTheyShowAndAreChosenInTheList()
    {
        QVERIFY(desk_->imageBox.setChoice(ShowShiftMapId));
        desk_->imageBox.grab();
        QVERIFY(!desk_->imageBox.bar()->hasRange() && shown("ScaleMin").isEmpty());
        QVERIFY(desk_->runAll(
            {"analyzer_select_analysis_mode 0", "analyzer_exec_LCF", "analyzer_select_image 1"}));
        desk_->view.showResults();
        auto* const list = child<QComboBox>("ShownMap");
        QCOMPARE(list->currentText(), QString("dMut of b.dat"));
        QVERIFY(child<QLabel>("Caption")->text().startsWith("84 blocks of 1 x 1"));
        Q_EMIT list->activated(list->findText("Ratio of a.dat"));
        QCOMPARE(desk_->view.shownKey(), std::optional<MapKey>(MapKey{MapKind::LcfWeight, 0}));
        QCOMPARE(child<CrossSView>("HCross")->axis(), QString("Ratio"));
        Q_EMIT list->activated(list->findText("Residual"));
        QCOMPARE(desk_->view.shownKey(), std::optional<MapKey>(MapKey{MapKind::Zansa}));
    }

    void fixedScaleIsShownAndTypedInTheRange()
    {
        QVERIFY(desk_->runAll(
            {"analyzer_select_analysis_mode 0", "analyzer_exec_LCF", "analyzer_select_image 0"}));
        desk_->analyzer.setMapKind(0);
        desk_->analyzer.setRatioScaleMax(3.0);
        desk_->analyzer.setFixedScale(true);
        desk_->view.showResults();
        desk_->imageBox.grab();
        QCOMPARE(range(), QPointF(0, 3));
        QVERIFY(!child<QPushButton>("CBarAuto")->isEnabled());
        type("ScaleMin", "-2");
        QCOMPARE(desk_->analyzer.scales().ratio.min, -2.0);
        QCOMPARE(range(), QPointF(-2, 3));
    }

    void blocksWithoutAnEdgeAreGreyInAWindowAlone()
    {
        const MapKey key{MapKind::LcfWeight, 0};
        Analyzed2DRes& map = desk_->maps.at(key);
        for (const bool unattended : {true, false}) {
            desk_->view.setUnattended(unattended);
            desk_->maps.begin(key, AnalyzeCond(12, 7, 0, 0, QRectF(0, 0, 12, 7), -1, -1), {});
            for (int x = 0; x < 12; ++x)
                map.setData(x, 3, 0, 0, 0.5 + x);
            map.markWithoutEdge(2, 3, 0, 0);
            map.genImg();
            QCOMPARE(map.img()->pixelColor(2, 3) == QColor(96, 112, 128), !unattended);
        }
    }

    void outcomesHaveColoursWordsAndALegend()
    {
        QVERIFY(desk_->runAll({"analyzer_select_analysis_mode 0", "select_region 2 1 8 6",
                               "analyzer_exec_LCF", "analyzer_show_outcomes"}));
        desk_->view.showResults();
        desk_->imageBox.grab();
        const MapKey key{MapKind::Outcomes};
        QCOMPARE(desk_->view.shownKey(), std::optional<MapKey>(key));
        Analyzed2DRes& map = desk_->maps.at(key);
        QCOMPARE(outcomesOf(map).text(), desk_->maps.originOf(key).outcomes.text());
        const double value = map.valueAt(4, 3);
        QVERIFY(value >= 1.0);
        // Neither the bar nor a range has a say.
        desk_->view.giveRange(40, 50);
        QCOMPARE(map.img()->pixel(4, 3), outcomeColours().at(std::size_t(value)));
        QCOMPARE(map.img()->pixel(0, 0), outcomeColours().at(0));
        auto* const legend = child<QLabel>("Legend");
        QVERIFY(!legend->isHidden() && child<QWidget>("Range")->isHidden());
        const int count = outcomesOf(map).of(Outcome(int(value)));
        const QString words = outcomeLabel(value).replace(" ", "&nbsp;");
        QVERIFY(legend->text().contains(QString("%1:&nbsp;%2").arg(words).arg(count)));
        desk_->cursor.bindCommands(desk_->book);
        QVERIFY(desk_->runAll({"move_position 4 3"}));
        QCOMPARE(child<QLabel>("Value")->text(), outcomeLabel(value));
        desk_->imageBox.setChoice(ShowDataId);
        QVERIFY(legend->isHidden() && !child<QWidget>("Range")->isHidden());
    }

    void aPositionIsExplainedFromWhatItsMapWasMadeOf()
    {
        ExplainConductor explain(desk_->maps, desk_->reader, desk_->imageBox, desk_->stacks,
                                 desk_->view);
        explain.bindCommands(desk_->book);
        QString why;
        QVERIFY(explain.explanation(3, 3, why).isEmpty() && !why.isEmpty());
        QVERIFY(desk_->runAll(
            {"analyzer_select_analysis_mode 0", "analyzer_exec_LCF", "analyzer_select_image 1"}));
        desk_->view.showResults();
        const QString made = explain.explanation(3, 3, why);
        QVERIFY(made.contains("\n# Edge\n"));
        desk_->run("set_band_w 2");
        QCOMPARE(explain.explanation(3, 3, why), made);

        // By the menu of the map: a right click that takes a selection away opens none.
        ImgDispA& area = *desk_->imageBox.area();
        const auto rightClick = [&area] {
            const QPoint middle = area.rect().center();
            QTest::mousePress(&area, Qt::RightButton, Qt::NoModifier, middle);
            QContextMenuEvent menu(QContextMenuEvent::Mouse, middle, area.mapToGlobal(middle));
            QCoreApplication::sendEvent(&area, &menu);
            QTest::mouseRelease(&area, Qt::RightButton, Qt::NoModifier, middle);
        };
        QVERIFY(desk_->runAll({"select_region 2 1 8 6"}));
        rightClick();
        QVERIFY(!area.hasSelection() && !child<QMenu>("MapMenu"));
        rightClick();
        QVERIFY(child<QMenu>("MapMenu"));
        child<QMenu>("MapMenu")->actions().first()->trigger();
        QVERIFY(child<QPlainTextEdit>("")->toPlainText().startsWith("# position x y"));
        child<QMenu>("MapMenu")->close();

        // Images that come again are not those of the map.
        QVERIFY(desk_->load(experiment_));
        QVERIFY(explain.explanation(3, 3, why).isEmpty() && why.contains("1-0"));
        const QString file = experiment_.dir.filePath("none.txt");
        desk_->run("explain_position 3 3 " + file);
        QVERIFY(!QFile::exists(file));
    }

    void imageHasRoomAndSquarePixels()
    {
        desk_->imageBox.setAttribute(Qt::WA_DontShowOnScreen);
        desk_->imageBox.show();
        ImgDispA& area = *desk_->imageBox.area();
        desk_->imageBox.grab();
        QVERIFY(area.width() >= 360);
        QVERIFY(std::abs(area.width() / 12.0 - area.height() / 7.0) < 0.2);
        QCOMPARE(child<CrossSView>("HCross")->width(), area.width());
        QCOMPARE(child<CrossSView>("VCross")->y(), area.y());
        QVERIFY(desk_->runAll({"select_region 2 1 5 4", "zoom_in"}));
        QCOMPARE(area.width(), area.height());
        QVERIFY(area.width() >= 360);
        desk_->imageBox.setSquarePixels(false);
        QVERIFY(area.height() != area.width());
    }

    void keysBrowseAndMoveTheCursor()
    {
        QWidget* const area = desk_->imageBox.area();
        QVERIFY(desk_->runAll({"seek_image 10"}));
        QTest::keyClick(area, Qt::Key_Left);
        QCOMPARE(shown("ImgNo"), QString("9"));
        desk_->cursor.moveCursor(3, 2);
        QTest::keyClick(area, Qt::Key_Right, Qt::ShiftModifier);
        QTest::keyClick(area, Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(child<QLabel>("Position")->text(), QString("(   4,    1)"));
        QCOMPARE(desk_->xafsView.spectrum().size(), experiment_.energies);
        QVERIFY(child<QLabel>("Caption")->text().contains("image 9 of 61 - 8938 eV"));
    }

    void aLoadShowsNoMoreImagesThanAnEyeCanFollow()
    {
        int shownImages = 0;
        connect(&desk_->view, &ViewConductor::imageTaken, this, [&] { ++shownImages; });
        QVERIFY(desk_->runAll({"clear_I1_files"}));
        QElapsedTimer time;
        time.start();
        for (int i = 0; i < 400; ++i) {
            auto image = std::make_unique<TiffData>();
            image->allocate(12, 7, TiffData::TiffWords);
            image->fileName = QString::number(i);
            desk_->stacks.loadedI1(image.release(), i);
        }
        QTRY_COMPARE(desk_->view.currentNumber(desk_->data.i1), 399);
        QVERIFY(shownImages <= 2 * (2 + time.elapsed() / 50));
    }

private:
    template<typename T>
    T* child(const char* name) const
    {
        return desk_->imageBox.findChild<T*>(name);
    }
    QString shown(const char* field) const
    {
        desk_->imageBox.area()->tellRange();
        return child<QLineEdit>(field)->text();
    }
    void type(const char* name, const QString& text)
    {
        auto* const field = child<QLineEdit>(name);
        desk_->imageBox.area()->tellRange();
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }
    QPointF range() const
    {
        desk_->imageBox.area()->tellRange();
        return {desk_->imageBox.bar()->rangeMin, desk_->imageBox.bar()->rangeMax};
    }

    const SmallExperiment experiment_;
    std::unique_ptr<Desk> desk_;
    std::unique_ptr<AnalysisConductor> analysis_;
};

QTEST_MAIN(TestViewConductor)
#include "test_view_conductor.moc"
