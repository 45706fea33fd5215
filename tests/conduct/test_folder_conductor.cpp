#include "Desk.h"

#include "analysis/lcf/LCFReference.h"
#include "analysis/lcf/LcfSection.h"
#include "conduct/FolderConductor.h"
#include "display/FileDialogs.h"
#include "display/FolderDrop.h"
#include "display/SignLine.h"
#include "selection/FolderQuestion.h"
#include "selection/SelectDataFiles.h"
#include "selection/SeriesTable.h"
#include "support/LogCapture.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>

/// A measurement's folder, from the question to the images on show, without a main window.
class TestFolderConductor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aTypedStartAndEnterLoadAMeasurement()
    {
        experiment_.write("bad.txt", "# Size 12 7\n3 1\n");
        Opened o(experiment_.dir.path());
        QCOMPARE(o.opened.size(), 1);
        QCOMPARE(o.field("FolderStart"), o.window.focusWidget());
        QCOMPARE(o.button("FolderLoad")->text(), QString("Load 61 + 61 images"));
        QTest::keyClicks(o.window.focusWidget(), "8920");
        QTest::keyClick(o.window.focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(o.window.focusWidget(), "2");
        QCOMPARE(o.line("FolderPreview")->text(), QString("61 files at 8920, 8922 ... 9040 eV"));
        QTest::keyClick(o.window.focusWidget(), Qt::Key_Return);
        QCOMPARE(o.closed.size(), 1);
        QVERIFY(o.loaded.wait());

        const Desk& desk = o.desk;
        QCOMPARE(desk.data.i1.images.size(), 61);
        QCOMPARE(desk.data.i0.images.size(), 61);
        QCOMPARE(desk.data.i1.images.last()->energy, 9040.0);
        QCOMPARE(desk.data.i0.images.last()->energy, 9040.0);
        QCOMPARE(desk.data.i0.images.first()->errPs.points(), QVector<QPoint>{QPoint(3, 1)});
        QVERIFY(desk.data.i1.images.first()->errPs.active);
        QVERIFY(desk.spectrumBox.settings().useI0);
        QCOMPARE(desk.analyzer.lcf().activeRows(), QVector<int>({0, 1}));
        QCOMPARE(desk.analyzer.lcf().refs()[1]->fileName(), experiment_.references[1]);
        QCOMPARE(desk.dataBox.i1Row()->currentIndex(), 30);
        QCOMPARE(desk.imageBox.choice(), ShowDataId);
        QCOMPARE(o.spectrum, desk.reader.source().spectrum(6, 3, Stage::Shown).points);
        QCOMPARE(o.folders.takeFirst()[0].toString(), experiment_.dir.path());
    }

    void energiesInNamesNeedOneKey()
    {
        const QTemporaryDir dir;
        for (const char* name : {"s_8948.5.img", "s_8949.img", "s_8950.25.img", "dark.img"})
            QVERIFY(writeBytes(dir.filePath(name), image(4)));
        Opened o(dir.path());
        QCOMPARE(o.button("FolderLoad"), o.window.focusWidget());
        QTest::keyClick(o.window.focusWidget(), Qt::Key_Enter);
        QVERIFY(o.loaded.wait());
        QCOMPARE(o.desk.data.i1.images.size(), 3);
        QCOMPARE(o.desk.data.i1.images.last()->energy, 8950.25);
        QVERIFY(!o.desk.spectrumBox.settings().useI0);
        QVERIFY(o.desk.data.dark != nullptr);
    }

    void whatPreventsLoadingIsSaid()
    {
        const LogCapture quiet;
        const QTemporaryDir dir;
        for (const char* name : {"i1_1.img", "i1_2.img", "x_1.img"})
            QVERIFY(writeBytes(dir.filePath(name), image(4)));
        QVERIFY(writeBytes(dir.filePath("i0_1.img"), image(8)));
        Opened o(dir.path());
        auto* const table = o.window.findChild<SeriesTable*>();
        QVERIFY(!o.button("FolderLoad")->isEnabled());
        QVERIFY(o.line("FolderWhyNot")->text().contains("8 x 3"));
        QTest::keyClick(table, Qt::Key_Return);
        QCOMPARE(o.closed.size(), 0);

        // Another series takes the use over, and the wheel changes none by accident.
        QComboBox* const box = table->uses().last();
        QWheelEvent wheel(QPointF(3, 3), box->mapToGlobal(QPointF(3, 3).toPoint()), QPoint(),
                          QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentText(), QString("-"));
        box->setCurrentText("I0");
        QCOMPARE(table->uses().first()->currentText(), QString("-"));
        QVERIFY(o.button("FolderLoad")->isEnabled());
        QCOMPARE(o.line("FolderPreview")->sign(), Mark::LookHere); // no start

        QTest::keyClick(o.window.focusWidget(), Qt::Key_Escape);
        QCOMPARE(o.closed.size(), 1);
        QVERIFY(o.desk.data.i1.images.isEmpty());
        const QTemporaryDir empty;
        o.conductor.open(empty.path());
        o.conductor.open(empty.filePath("none"));
        QCOMPARE(o.notices.size(), 2);
        QCOMPARE(o.opened.size(), 1);
    }

    /// Whoever goes on to other images while a folder loads is left with those.
    void anotherLoadEndsTheWait()
    {
        Opened o(experiment_.dir.path());
        QTest::keyClick(o.window.focusWidget(), Qt::Key_Return);
        QVERIFY(o.desk.runAll({"load_I1_files new " + experiment_.i1.mid(0, 3).join(' ')}));
        QTest::qWait(50);
        QCOMPARE(o.loaded.size(), 0);
        QCOMPARE(o.desk.dataBox.i1Row()->currentIndex(), 2);
    }

    void enterTakesTheFolderThatTheDialogShows()
    {
        Opened o(experiment_.dir.path());
        QSignalSpy chosen(o.conductor.dialog(), &LateDialog::fileSelected);
        o.conductor.dialog()->setFolder(experiment_.dir.path());
        for (int i = 1; i <= 2; ++i) {
            o.conductor.chooseFolder();
            QFileDialog* const dialog = o.conductor.dialog()->made();
            QTRY_VERIFY(dialog->isVisible());
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
            QCOMPARE(chosen.size(), i);
            QCOMPARE(chosen.last()[0].toString(), experiment_.dir.path());
        }
    }

    void aDropMeansAFolder()
    {
        const auto folderOf = [](const QStringList& paths) {
            QMimeData data;
            QList<QUrl> urls;
            for (const QString& path : paths)
                urls.append(QUrl::fromLocalFile(path));
            data.setUrls(urls);
            return FolderDrop::folderOf(data);
        };
        const QString folder = experiment_.dir.path();
        QCOMPARE(folderOf({folder}), folder);
        QCOMPARE(folderOf(experiment_.i1), folder);
        QCOMPARE(folderOf({experiment_.i1[0], "/elsewhere/a.img"}), QString());
        QCOMPARE(folderOf({folder + "/run.bat"}), QString());
    }

private:
    /// A question about a folder, on show.
    struct Opened
    {
        explicit Opened(const QString& folder)
        {
            window.resize(476, 600);
            QObject::connect(&desk.cursor, &CursorConductor::spectrumFormed, &conductor,
                             [this](const XafsSpectrum& formed) { spectrum = formed.points; });
            window.show();
            QApplication::setActiveWindow(&window);
            conductor.open(folder);
        }
        QLineEdit* field(const char* name) { return window.findChild<QLineEdit*>(name); }
        QPushButton* button(const char* name) { return window.findChild<QPushButton*>(name); }
        SignLine* line(const char* name) { return window.findChild<SignLine*>(name); }

        Desk desk;
        QWidget window;
        FolderQuestion question{&window};
        FolderConductor conductor{
            {desk.data, desk.dataBox, desk.spectrumBox, desk.imageBox, desk.analyzer, question},
            desk.stacks,
            desk.dark,
            desk.view,
            desk.cursor};
        QSignalSpy opened{&conductor, &FolderConductor::questionOpened};
        QSignalSpy closed{&conductor, &FolderConductor::questionClosed};
        QSignalSpy loaded{&conductor, &FolderConductor::loaded};
        QSignalSpy notices{&conductor, &FolderConductor::notice};
        QSignalSpy folders{&conductor, &FolderConductor::folderOpened};
        QVector<QPointF> spectrum;
    };

    static QByteArray image(int width)
    {
        return imgBytes(width, 3, "", 2, [](int x, int) { return x; });
    }

    const SmallExperiment experiment_;
};

QTEST_MAIN(TestFolderConductor)
#include "test_folder_conductor.moc"
