#include "Desk.h"

#include "conduct/ExportConductor.h"
#include "display/RunRow.h"
#include "support/LogCapture.h"

#include <QPushButton>
#include <QSignalSpy>

/// Exports of spectra and the Fourier analysis as their conductor runs them.
class TestExportConductor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<Desk>();
        exporting_ = std::make_unique<ExportConductor>(
            ExportConductor::Parts{desk_->data, desk_->reader, desk_->saveBox}, desk_->stacks,
            desk_->walks, window_);
        exporting_->bindCommands(desk_->book);
    }
    void cleanup()
    {
        exporting_.reset();
        desk_.reset();
        for (const QString& name : out_.entryList(QDir::Files))
            QVERIFY(out_.remove(name));
    }

    void eachCheckedFormHasAFile()
    {
        QVERIFY(desk_->runAll(experiment_.loadingLines()));
        const QSignalSpy saved(exporting_.get(), &ExportConductor::saved);
        QVERIFY(desk_->runAll({"export_raw 1", "export_spectra " + path("one")}));
        QCOMPARE(out_.entryList(QDir::Files), QStringList("one.dat"));
        QVERIFY(desk_->runAll({"export_normalized 1", "export_raw_xafs 1", "select_region 2 1 5 4",
                               "export_spectra " + path("all.txt")}));
        QCOMPARE(out_.entryList(QDir::Files),
                 QStringList({"all-norm.txt", "all-raw.txt", "all-rawxafs.txt", "one.dat"}));
        QCOMPARE(saved.size(), 4);
        const QList<QByteArray> lines = bytesOf(path("all-rawxafs.txt")).split('\n');
        QCOMPARE(lines.at(1), QByteArray("# X-Range (x0, x1), steps : 2 5 3"));
        const QList<QByteArray> first = lines.at(7).split(' ');
        QCOMPARE(first.size(), 3 + 2 * SmallExperiment::energies);
        QVERIFY(first.mid(0, 5).join(' ').startsWith("2 1 0 8920 0.2"));
        const double f = SmallExperiment::fraction(2, 1);
        const double E = first.at(3 + 2 * 31).toDouble();
        QVERIFY(std::abs(first.at(4 + 2 * 31).toDouble() - f * SmallExperiment::mu0(E) -
                         (1 - f) * SmallExperiment::mu1(E)) < 1e-5);
    }

    /// One line each, nothing left behind, and the batch goes on.
    void whatCannotBeDoneIsTold()
    {
        const auto told = [this](const QString& line) {
            desk_->failures.clear();
            const LogCapture log;
            return desk_->runAll({line}) ? log.all().join('|') : QString();
        };
        QVERIFY(told("export_spectra " + path("x")).contains("Spectra not saved: no I1 images"));
        QVERIFY(told("fourier_analysis").contains("Fourier analysis not started: no I1 images"));
        QVERIFY(!row().button()->isEnabled());
        QVERIFY(desk_->runAll(experiment_.loadingLines()));
        QVERIFY(!row().button()->isEnabled() && row().button()->toolTip().contains("Check what"));
        QVERIFY(told("export_spectra " + path("x")).contains("none of \"Normalized XAFS\""));
        QVERIFY(desk_->runAll({"export_normalized 1", "export_raw 1"}));
        QVERIFY(row().button()->isEnabled());
        QVERIFY(told("export_spectra /no/such/x.dat").contains("Can't open \"/no/such/x-norm.dat"));
        QVERIFY(!exporting_->isRunning() && out_.entryList(QDir::Files).isEmpty());
    }

    void aStopWritesNothingAndIsAFailure()
    {
        QVERIFY(desk_->runAll(experiment_.loadingLines()));
        QVERIFY(desk_->runAll({"export_normalized 1"}));
        QVERIFY(writeBytes(path("kept.dat"), "former"));
        desk_->walks.setTileLanes(1); // more runs than may wait for this thread
        for (const bool byImages : {false, true}) {
            desk_->failures.clear();
            const auto over = std::make_shared<bool>(false);
            desk_->run("export_spectra " + path("kept.dat"), over);
            QVERIFY(exporting_->isRunning() && row().button()->text() == "Stop");
            if (byImages)
                desk_->stacks.clearI0Files();
            else
                row().button()->click();
            QVERIFY(*over && !exporting_->isRunning());
            QVERIFY(desk_->failures.join(' ').contains("stopped"));
        }
        QTest::qWait(50); // workers that were at a run
        QCOMPARE(bytesOf(path("kept.dat")), QByteArray("former"));
        QCOMPARE(out_.entryList(QDir::Files | QDir::Hidden), QStringList("kept.dat"));
    }

    void theFourierAnalysisLogsEachFrequency()
    {
        QVERIFY(desk_->runAll(experiment_.loadingLines()));
        const LogCapture log;
        QVERIFY(desk_->runAll({"fourier_analysis"}));
        QCOMPARE(log.linesWith("2da FA 1:"), 1);
        QCOMPARE(log.linesWith("Res "), SmallExperiment::energies);
    }

private:
    RunRow& row() const { return desk_->saveBox.spectraRow(); }
    QString path(const QString& name) const { return out_.filePath(name); }

    const SmallExperiment experiment_;
    const QTemporaryDir outDir_;
    QDir out_{outDir_.path()};
    QWidget window_;
    std::unique_ptr<Desk> desk_;
    std::unique_ptr<ExportConductor> exporting_;
};

QTEST_MAIN(TestExportConductor)
#include "test_export_conductor.moc"
