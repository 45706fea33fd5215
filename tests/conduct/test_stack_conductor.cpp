#include "Desk.h"

#include "display/ImgDispA.h"
#include "selection/SelectDataFiles.h"
#include "support/LogCapture.h"

/// Loading and clearing, as the conductor tells of it, without a main window.
class TestStackConductor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void eachLoadReportsItsEndOnce_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("meanwhile");
        QTest::addColumn<QString>("failure");
        const QString cleared = "the %1 images were cleared before all had come";
        for (const QString& stack : {QString("I1"), QString("I0")}) {
            const QString files =
                "load_" + stack + "_files new " + experiment_.i1.mid(0, 9).join(' ');
            const QString pattern =
                "load_" + stack + "_files_of_pattern new " + experiment_.dir.path() + "/ i0_*.img";
            for (const QString& command : {files, pattern}) {
                const auto row = [&](const char* what, const QString& meanwhile,
                                     const QString& failure) {
                    QTest::newRow(qPrintable(command.section(' ', 0, 0) + ' ' + what))
                        << command << meanwhile << failure;
                };
                row("to its end", "", "");
                row("cleared", "clear_" + stack + "_files", cleared.arg(stack));
                row("loaded anew", "load_" + stack + "_files new " + experiment_.i1[3],
                    cleared.arg(stack));
                row("let go", "end", CommandEnd::letGo);
            }
            QTest::newRow(qPrintable(stack + " none")) << "load_" + stack + "_files new /none.img"
                                                       << ""
                                                       << "Can not open (1) \"/none.img\"";
            QTest::newRow(qPrintable(stack + " without files")) << "load_" + stack + "_files new"
                                                                << "open"
                                                                << "";
        }
    }

    void eachLoadReportsItsEndOnce()
    {
        QFETCH(QString, command);
        QFETCH(QString, meanwhile);
        QFETCH(QString, failure);
        int ends = 0;
        QStringList failures;
        {
            Measurement data;
            DataBox box;
            BatchCtrl batch;
            StackConductor stacks(data, box, batch);
            CommandBook book;
            stacks.bindCommands(book);
            int ticket = 0;
            const auto run = [&](const QString& line, bool counted) {
                CmdLine cmd(line);
                cmd.ticket = ++ticket;
                book.run(exCmdId(cmd), cmd, CommandEnd([&, counted](const QStringList& why) {
                             ends += counted;
                             if (counted)
                                 failures += why;
                         }))
                    .done();
            };
            run(command, true);
            if (meanwhile.startsWith("load") || meanwhile.startsWith("clear"))
                run(meanwhile, false);
            if (meanwhile != "end" && meanwhile != "open")
                QTRY_COMPARE(ends, 1);
            if (meanwhile != "end")
                QTest::qWait(20);
        }
        QCOMPARE(ends, meanwhile == "open" ? 0 : 1); // with "open" the run waits for "Stop"
        QCOMPARE(failures.join('|'), failure);
    }

    /// Whoever forms a spectrum of a new image finds its dark level, and the image on show.
    void dataAreWholeWhenTheCursorFollows()
    {
        Desk desk;
        QVERIFY(desk.load(experiment_));
        desk.run("select_region 8 2 9 4");
        desk.dark.setI1DarkArea();
        bool whole = true;
        int formed = 0;
        connect(&desk.cursor, &CursorConductor::spectrumFormed, this,
                [&](const XafsSpectrum& spectrum) {
                    ++formed;
                    whole = whole && desk.data.i1.darkAvg.size() == spectrum.size();
                });
        desk.stacks.loadedI1(new TiffData, 0);
        QVERIFY(formed > 0 && whole);
        QCOMPARE(desk.data.i1.images.size(), experiment_.energies + 1);
        QCOMPARE(desk.dataBox.i1Row()->currentIndex(), experiment_.energies);
    }

    /// A copy of the stack keeps its energies, and shares the pixels with the one that changed.
    void copiesOfAStackStayWhatTheyWere()
    {
        Desk desk;
        QVERIFY(desk.load(experiment_));
        const SharedSource frozen = desk.reader.frozen();
        const XafsSpectrum before = frozen->spectrum(3, 3, Stage::Curve);
        QVERIFY(desk.runAll({"eng_calc_base_i1 7000", "eng_apply_i1", "Use_I0 0", "clear_I0_files",
                             "load_I1_files new " + experiment_.i1[0]}));
        QCOMPARE(desk.data.i1.images.size(), 1);
        QCOMPARE(frozen->spectrum(3, 3, Stage::Curve).doubleNormalizedPreBase.points,
                 before.doubleNormalizedPreBase.points);
        const QImage shown = desk.imageBox.area()->currentImage()->copy();
        QVERIFY(desk.runAll({"eng_calc_base_i1 7777", "eng_apply_i1", "cbar_set_all"}));
        QCOMPARE(desk.data.i1.images[0]->energy, 7777.0);
        QCOMPARE(*desk.imageBox.area()->currentImage(), shown);
    }

private:
    const SmallExperiment experiment_;
};

QTEST_MAIN(TestStackConductor)
#include "test_stack_conductor.moc"
