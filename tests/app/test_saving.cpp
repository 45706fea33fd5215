#include "BodyFixture.h"

#include "analysis/lcf/LCFReference.h"
#include "display/ColorBar.h"
#include "display/ImgDispA.h"
#include "display/RowMark.h"
#include "support/LogCapture.h"

#include <QCheckBox>

/// What the main window saves of its maps, under which names, and what it tells of that.
class TestSaving : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        body_ = std::make_unique<DrivenBody>();
        dir_ = std::make_unique<QTemporaryDir>();
        QVERIFY(body_->load(experiment_));
    }

    void eachMapHasFilesOfItsOwn()
    {
        const QString text = "save_data " + in("s_0.25");
        QVERIFY(analyse());
        QVERIFY(body_->runAll({"saveDataCfg_save_as_text", "analyzer_select_image 0", text,
                               "analyzer_select_image 1", text, "analyzer_select_image 7", text,
                               "save_data_as_tiff " + in("told.dat")}));
        QCOMPARE(files(),
                 (QStringList{"s_0.25-0.dat", "s_0.25-1.dat", "s_0.25-Zansa.dat", "told-0.tif"}));
        QVERIFY(contents("s_0.25-0.dat") != contents("s_0.25-1.dat"));
    }

    void aFileThatAnotherMapTakesIsTold()
    {
        QVERIFY(analyse());
        const QString save = "save_data " + in("map.tif");
        const LogCapture log;
        QVERIFY(body_->runAll({"analyzer_select_image 1", "analyzer_select_image_type 0", save,
                               save, "analyzer_exec_LCF", save}));
        QCOMPARE(log.linesWith(" held map "), 0);
        QVERIFY(body_->runAll({"analyzer_select_image_type 1", save}));
        QCOMPARE(log.linesWith("map-1.tif\" held map 1-1 and now holds map 1-0"), 1);
    }

    void nothingToSaveCostsALineAndWritesNothing_data()
    {
        QTest::addColumn<QString>("command");
        for (const char* command : {"save_data", "save_data_as_tiff", "save_all_data", "save_image",
                                    "save_all_images", "calib_save_map"})
            QTest::newRow(command) << command;
        QTest::newRow("row without values") << "row 2";
    }

    void nothingToSaveCostsALineAndWritesNothing()
    {
        QFETCH(QString, command);
        QVERIFY(body_->run("select_disp_image 3"));
        if (command == "row 2") {
            QVERIFY(analyse() && body_->run("analyzer_select_image 2"));
            command = "save_data";
        }
        const FailureCount& failures = body_->batchCtrl()->failures();
        QVERIFY(body_->run(command + ' ' + in("nothing.tif")));
        QCOMPARE(failures.count, 1);
        QVERIFY(failures.first.reason.contains("nothing"));
        QCOMPARE(files(), QStringList());
    }

    void allDataIsEveryFinishedMap()
    {
        QVERIFY(analyse());
        QVERIFY(body_->runAll({"saveDataCfg_save_as_float_tiff", "save_all_data " + in("all")}));
        QStringList expected;
        for (const char* label : {"0-0", "0-1", "1-0", "1-1", "Outcomes", "Zansa"})
            expected << QString("all-%1--cBar.tif").arg(label) << QString("all-%1.tif").arg(label);
        expected.sort();
        QCOMPARE(files(), expected);
    }

    void theBarBesideTheNumbersTellsTheirScale()
    {
        QVERIFY(analyse());
        QVERIFY(body_->runAll({"analyzer_select_image 0", "saveDataCfg_tiff_scale_min -3",
                               "saveDataCfg_tiff_scale_max 7", "saveDataCfg_tiff_fix_scale 1",
                               "save_data " + in("map")}));
        auto* bar = body_->findChild<ColorBar*>("CBar");
        const QImage expected = bar->barImage(-3, 7);
        QCOMPARE(QImage(in("map-0--cBar.tif")).convertToFormat(expected.format()), expected);
        QVERIFY(expected != bar->barImage(-3, 8));
    }

    void pictureAndBarAreOfTheBarAsItStands()
    {
        QVERIFY(analyse());
        auto* bar = body_->findChild<ColorBar*>("CBar");
        bar->highHandle = 0.5;
        QVERIFY(body_->runAll({"analyzer_select_image 0", "save_all_images " + in("m")}));
        for (const int kind : {0, 1}) {
            Analyzed2DRes* map = body_->map(*rowMapKind(kind));
            map->genImg();
            QCOMPARE(QImage(in(QString("m-0-%1.png").arg(kind)))
                         .convertToFormat(QImage::Format_Grayscale8),
                     *map->img());
        }
        bar->highHandle = 1.0;
        for (const int height : {100, 900}) { // of the window's bar
            bar->resize(bar->width(), height);
            bar->paintCBar();
            const QImage ramp = bar->barPixmap.toImage();
            for (const double part : {0.25, 0.7})
                QCOMPARE(qGray(ramp.pixel(0, int((1.0 - part) * ramp.height()) - 1)),
                         int(part * 256));
        }
    }

    void mapsOfAStoppedWalkAreMarkedAndTold()
    {
        auto* mark = body_->analyzer()->findChild<RowMark*>("AskAnalyzeMark");
        body_->setMaxPositionsPerRequest(1);
        const auto stop = connect(&body_->analysis(), &AnalysisConductor::progressed, this,
                                  [this] { body_->stop2DAnalysis(); });
        body_->start2DAnalysis();
        QVERIFY(QTest::qWaitFor([mark] { return !mark->reasons().isEmpty(); }));
        disconnect(stop);
        body_->setMaxPositionsPerRequest(4096);
        const LogCapture log;
        const QString save = "save_data " + in("map.dat");
        QVERIFY(body_->runAll({"analyzer_select_image 0", save}));
        QCOMPARE(log.linesWith("is not complete"), 1);
        QVERIFY(analyse() && mark->reasons().isEmpty() && body_->run(save));
        QCOMPARE(log.linesWith("is not complete"), 1);
    }

private:
    bool analyse() { return body_->run("analyzer_exec_LCF"); }
    QString in(const QString& name) const { return dir_->filePath(name); }
    QStringList files() const { return QDir(dir_->path()).entryList(QDir::Files, QDir::Name); }
    QByteArray contents(const QString& name) const
    {
        QFile file(in(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    SmallExperiment experiment_;
    std::unique_ptr<DrivenBody> body_;
    std::unique_ptr<QTemporaryDir> dir_;
};

QTEST_MAIN(TestSaving)
#include "test_saving.moc"
