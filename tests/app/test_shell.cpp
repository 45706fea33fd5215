#include "BodyFixture.h"
#include "analysis/lcf/LcfSection.h"
#include "app/GesturesHelp.h"
#include "app/Messages.h"
#include "app/NoticeBar.h"
#include "app/ProgressSum.h"
#include "app/TerminalProgress.h"
#include "app/Workbench.h"
#include "batch/BatchCtrl.h"
#include "common/Fault.h"
#include "common/LogRelay.h"
#include "common/Settings.h"
#include "display/FileDialogs.h"
#include "display/ImgDispA.h"
#include "display/PanelDock.h"
#include "display/XafsFileSelect.h"
#include "selection/SelectDataFiles.h"
#include "support/LogCapture.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QTableWidget>

#include <thread>

/// What surrounds the form of the main window, by its real widgets and events.
class TestShell : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { useScreenFont(); }

    void messagesOfAllThreadsAndTimesArrive()
    {
        const LogCapture previous;
        {
            const LogRelay relay;
            qDebug() << "before the window";
            Messages window;
            std::thread([] { qWarning() << "from another thread"; }).join();
            qDebug().noquote() << QString(100000, 'x');
            QTRY_VERIFY(window.text().contains("from another thread"));
            const QStringList lines = window.text().split('\n');
            QCOMPARE(lines.size(), 4);
            QVERIFY(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3}  before the window$")
                        .match(lines[0])
                        .hasMatch());
            QVERIFY(lines[2].size() < 3000);
            const QTemporaryDir dir;
            window.save(dir.filePath("log.txt"));
            QFile saved(dir.filePath("log.txt"));
            QVERIFY(saved.open(QIODevice::ReadOnly));
            QCOMPARE(QString::fromUtf8(saved.readAll()), window.text());
            qDebug() << "still waiting when the window dies";
        }
        qDebug() << "without a relay";
        QCOMPARE(previous.all().size(), 5);
        QCOMPARE(previous.all()[2].size(), 100000);
    }

    void floodOfMessagesIsShownInPortions()
    {
        const LogCapture previous;
        const LogRelay relay;
        Messages window;
        window.show();
        auto* view = window.findChild<QPlainTextEdit*>();
        const QSignalSpy portions(&window, &Messages::latest);
        const auto flood = [] {
            for (int i = 0; i < 20000; ++i)
                qDebug() << "line" << i;
        };
        std::thread other(flood);
        flood();
        other.join();
        QTRY_COMPARE(portions.size(), 1);
        QCOMPARE(portions[0][0].toString(), previous.all().last());
        QCOMPARE(view->blockCount(), LogRelay::mostLines);
        QScrollBar* bar = view->verticalScrollBar();
        QCOMPARE(bar->value(), bar->maximum());
        // Whoever reads further up stays there.
        window.clear();
        std::thread([] {
            for (int i = 0; i < 1000; ++i)
                qDebug() << "line" << i;
        }).join();
        QTRY_COMPARE(portions.size(), 2);
        bar->setValue(100);
        qDebug() << "one more";
        QTRY_COMPARE(portions.size(), 3);
        QCOMPARE(bar->value(), 100);
    }

    void progressSumsWhatRunsAtTheSameTime()
    {
        ProgressSum bar;
        const auto shown = [&bar] { return QPoint(bar.value(), bar.maximum()); };
        bar.setPart(0, 3, 10);
        bar.setPart(1, 0, 20);
        QCOMPARE(shown(), QPoint(3, 30));
        bar.setPart(0, 0, 0); // counts as done while the other is at work
        bar.setPart(1, 15, 20);
        QCOMPARE(shown(), QPoint(25, 30));
        QVERIFY(!bar.isHidden());
        bar.setPart(1, 0, 0);
        QVERIFY(bar.isHidden());
        bar.setPart(0, 1, 4);
        QCOMPARE(shown(), QPoint(1, 4));
        QVERIFY(!bar.text().contains("left")); // too early to tell
        QTest::qWait(750);
        bar.setPart(0, 2, 4);
        QCOMPARE(bar.text(), QString("50%, 1 s left"));
    }

    void progressOfALoadCountsAllFiles()
    {
        DrivenBody body;
        auto* bar = body.findChild<ProgressSum*>("Progress");
        QVector<QPoint> shown;
        connect(bar, &QProgressBar::valueChanged, this, [&](int value) {
            if (!bar->isHidden())
                shown.append({value, bar->maximum()});
        });
        QVERIFY(body.run(QStringLiteral("load_I1_files new %1 /none %2")
                             .arg(experiment_.i1[0], experiment_.i1[1])));
        QCOMPARE(shown, (QVector<QPoint>{{1, 3}, {2, 3}, {3, 3}}));
        QVERIFY(bar->isHidden());
    }

    /// People read what concerns them; the log goes elsewhere.
    void faultsStandInTheStatusBarAndLogLinesDoNot()
    {
        const LogCapture previous;
        Body body;
        const auto* notices = body.findChild<NoticeBar*>();
        qDebug() << "loading in detail";
        QCoreApplication::processEvents();
        QCOMPARE(notices->text(), QString("Ready"));
        std::thread([] { fault("<b> can't be read"); }).join();
        QTRY_COMPARE(notices->text(), QString("<b> can't be read"));
    }

    void terminalsShowABar()
    {
        QCOMPARE(TerminalProgress::bar(0.4, "40%", 10), QString("[####......] 40%"));
        QCOMPARE(TerminalProgress::bar(1.7, "", 2), QString("[##] "));
        QCOMPARE(TerminalProgress::tenths(81, 81) + TerminalProgress::tenths(8, 81), 10);
        QCOMPARE(TerminalProgress::tenths(0, 0), 0);
    }

    void menusDoWhatButtonsDo()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        auto* row = body.findChild<SelectDataFiles*>("SelectI1Files");
        action(body, "Previous Image")->trigger();
        QCOMPARE(row->currentIndex(), experiment_.energies - 2);

        QPushButton* save = body.findChild<QPushButton*>("SaveData");
        QAction* saveData = action(body, "Save Data...");
        for (const bool on : {false, true}) {
            save->setEnabled(on);
            QCOMPARE(saveData->isEnabled(), on);
        }
        save->parentWidget()->setEnabled(false);
        QVERIFY(!saveData->isEnabled());
        QPushButton* analyzer2 = body.findChild<QPushButton*>("ShowAnalyzer2");
        for (const bool on : {true, false}) {
            analyzer2->setVisible(on);
            QCOMPARE(action(body, "Analyzer2")->isVisible(), on);
        }
        auto* const diagnostics = body.findChild<QWidget*>("DiagnosticsDock");
        QVERIFY(diagnostics->isHidden());
        action(body, "Analyzer2")->trigger();
        QVERIFY(!diagnostics->isHidden());

        action(body, "Analyzer")->trigger();
        QCOMPARE(int(body.workbench().step()), int(Step::Analysis));
        const QSignalSpy runs(body.batchCtrl(), &BatchCtrl::doDispatchCmds);
        action(body, "Stop")->trigger(); // of the run at the start
        action(body, "Execute")->trigger();
        QCOMPARE(runs.size(), 1);
        action(body, "Gestures and Keys")->trigger();
        auto* table = body.findChild<GesturesHelp*>()->findChild<QTableWidget*>();
        QCOMPARE(table->findItems("+ , =", Qt::MatchExactly).size(), 1);

        // The guide has every line of it; keys it names together.
        QFile guide(SOURCE_FOLDER "/docs/user-guide.md");
        QVERIFY(guide.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(guide.readAll());
        for (int r = 0; r < table->rowCount(); ++r) {
            const auto cell = [table, r](int c) { return table->item(r, c)->text(); };
            const QString line = "| " + cell(0) + " | " + cell(1) + " | " + cell(2) + " |";
            const bool key = cell(0) == "Main window";
            QVERIFY2(text.contains(key ? cell(2) : line), qPrintable(line));
        }
    }

    void keysActOnTheImage()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        body.show();
        QVERIFY(QTest::qWaitForWindowActive(&body));
        auto* row = body.findChild<SelectDataFiles*>("SelectI1Files");
        auto* image = body.findChild<ImgDispA*>("dispA");
        QTest::mouseClick(image, Qt::LeftButton);
        QCOMPARE(QApplication::focusWidget(), image);
        QTest::keyClick(image, Qt::Key_Left);
        QTest::keyClick(image, Qt::Key_Left);
        QTest::keyClick(image, Qt::Key_Right);
        QCOMPARE(row->currentIndex(), experiment_.energies - 2);
        const QRectF whole(0, 0, experiment_.width, experiment_.height);
        for (const auto modifiers : {Qt::NoModifier, Qt::KeypadModifier}) {
            QTest::keyClick(image, Qt::Key_Plus, modifiers);
            QVERIFY(qAbs(image->viewWindow().width() - whole.width() / 1.1) < 1e-9);
            QVERIFY(qAbs(image->viewWindow().center().y() - whole.center().y()) < 1e-9);
            QTest::keyClick(image, Qt::Key_Minus);
            QVERIFY(qAbs(image->viewWindow().left()) < 1e-9);
            QTest::keyClick(image, Qt::Key_0);
            QCOMPARE(image->viewWindow(), whole);
        }
    }

    void keysStayWithTheFieldThatIsEdited()
    {
        DrivenBody body;
        QVERIFY(body.load(experiment_));
        body.show();
        QVERIFY(QTest::qWaitForWindowActive(&body));
        const auto* image = body.findChild<ImgDispA*>("dispA");
        const QRectF view = image->viewWindow();
        for (const char* name : {"HWidth", "DPreE"}) {
            auto* field = body.findChild<QLineEdit*>(name);
            field->setFocus();
            field->clear();
            QTest::keyClicks(field, "-10+");
            QTest::keyClick(field, Qt::Key_Left);
            QTest::keyClick(field, Qt::Key_Left);
            QCOMPARE(field->cursorPosition(), 2);
            QTest::keyClick(field, Qt::Key_Right);
            QCOMPARE(field->cursorPosition(), 3);
            QCOMPARE(field->text(), QString("-10+"));
        }
        auto* row = body.findChild<SelectDataFiles*>("SelectI1Files");
        QCOMPARE(row->currentIndex(), experiment_.energies - 1);
        QCOMPARE(image->viewWindow(), view);
    }

    void droppedFilesLoadAsIfSelected()
    {
        DrivenBody body;
        auto* row = body.findChild<SelectDataFiles*>("SelectI1Files");
        QSignalSpy selected(row, &SelectDataFiles::filesSelected);
        const QString note = experiment_.write("note.txt", "no image");
        // On a field of the row, out of order, with something else among them.
        QVERIFY(
            drop(row->findChild<QLineEdit*>("Skip"), {experiment_.i1[2], note, experiment_.i1[1]}));
        QCOMPARE(selected.takeFirst(), (QVariantList{QStringList(experiment_.i1.mid(1, 2)), true}));
        QTRY_COMPARE(body.i1Stack().size(), 2);
        row->findChild<QAbstractButton*>("AddFiles")->setChecked(true);
        QVERIFY(drop(row, {experiment_.i1[0]}));
        QTRY_COMPARE(body.i1Stack().size(), 3);

        // Not all that a folder holds belongs to the stack.
        QSignalSpy folders(row, &SelectDataFiles::folderDropped);
        QVERIFY(drop(row, {experiment_.dir.path()}));
        QCOMPARE(folders.takeFirst()[0].toString(), experiment_.dir.path());
        QCOMPARE(selected.size(), 1);

        QVERIFY(!drop(row, {note}));
        QVERIFY(!drop(row, {"/no/such/folder"}));
        QCOMPARE(selected.size(), 1);
    }

    void rowsOfOneFileTakeOneFile()
    {
        const LogCapture quiet;
        DrivenBody body;
        body.show(); // what is refused goes on to what lies below, by the mouse's place
        auto* total = body.findChild<XafsFileSelect*>("TotalI0ofI1XAFS");
        QVERIFY(!drop(total, experiment_.references));
        QVERIFY(!drop(total, {experiment_.dir.path()}));
        QSignalSpy loaded(total, &XafsFileSelect::newFile);
        QVERIFY(drop(total->findChild<QLineEdit*>(), {experiment_.references[0]}));
        QCOMPARE(loaded.size(), 1);
        auto* dark = body.findChild<QLineEdit*>("DarkFileName");
        QVERIFY(!drop(dark, {experiment_.write("note.txt", "no image")}));
        QVERIFY(drop(dark, {experiment_.i0[0]}));
        QCOMPARE(dark->text(), experiment_.i0[0]);
    }

    /// What is floated, closed and chosen is there again; an unattended run neither reads it nor
    /// writes it, and no session moves the window.
    void theWorkbenchComesBackAsItWasLeft()
    {
        const QTemporaryDir store;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, store.path());
        const auto dock = [](Body& body, const char* name) {
            return body.workbench().dock(QLatin1String(name));
        };
        QRect place;
        {
            Body first;
            first.attend();
            first.setWindowState(Qt::WindowNoState);
            first.setGeometry(30, 40, 1400, 780);
            first.show();
            QVERIFY(QTest::qWaitForWindowExposed(&first));
            QVERIFY(dock(first, "BatchDock")->isHidden());
            raisePanel(first.batchCtrl());
            dock(first, "FitViewDock")->close();
            first.workbench().openStep(Step::Spectrum);
            first.workbench().setImageAlone(true);
            // As a batch ends the program: the windows are closed in any order.
            Q_EMIT first.batch().finishing();
        }
        {
            Body unattended;
            unattended.show();
            QVERIFY(dock(unattended, "BatchDock")->isHidden());
            unattended.close();
        }
        for (int session = 0; session < 3; ++session) {
            Body again;
            again.attend();
            again.show();
            QVERIFY(QTest::qWaitForWindowExposed(&again));
            if (session == 0)
                place = again.geometry(); // as far as the screen has room
            QCOMPARE(again.geometry(), place);
            QVERIFY(!dock(again, "BatchDock")->isHidden());
            QVERIFY(dock(again, "FitViewDock")->isHidden());
            QCOMPARE(int(again.workbench().step()), int(Step::Spectrum));
            QVERIFY(dock(again, "DataDock")->isHidden());
            again.close();
        }
        Body reset;
        reset.attend();
        reset.show();
        reset.workbench().resetLayout();
        QVERIFY(!dock(reset, "DataDock")->isHidden());
        QVERIFY(dock(reset, "BatchDock")->isHidden());
    }

    /// Each dialog has a title of its own, and the folder in which its kind was last used, in this
    /// session or the one before.
    void dialogsOfFilesHaveTitlesAndFoldersOfTheirOwn()
    {
        const QTemporaryDir store, dir;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, store.path());
        const QStringList kinds{"Select I1 Data", "Select Reference 2", "Load Batch File",
                                "Save Energy Shift Map", "Select Bad Pixels of I0 Data"};
        const QStringList companions{"Select Dark Data", "Select Standard", "Save Batch File",
                                     "Save Image", "Select Bad Pixels of I1 Data"};
        for (const bool again : {false, true}) {
            Body body;
            body.attend();
            body.analyzer()->lcf().addNewRef(); // a later row is like the first ones
            QMap<QString, QFileDialog*> dialogs;
            for (LateDialog* late : body.findChildren<LateDialog*>()) {
                const QString title = late->get()->windowTitle();
                QVERIFY2(!title.isEmpty() && dialogs.value(title, late->get()) == late->get(),
                         qPrintable(title));
                dialogs[title] = late->get();
            }
            for (int i = 0; i < kinds.size() && !again; ++i) {
                QVERIFY(QDir(dir.path()).mkdir(QString::number(i)));
                Q_EMIT dialogs[kinds[i]]->directoryEntered(dir.filePath(QString::number(i)));
            }
            for (int i = 0; i < kinds.size(); ++i) {
                for (const QString& title : {kinds[i], companions[i]}) {
                    QVERIFY2(dialogs.contains(title), qPrintable(title));
                    QCOMPARE(dialogs[title]->directory().path(), dir.filePath(QString::number(i)));
                }
            }
        }
        // One that is gone, or was kept under another root, is not gone back to.
        const QString root = dir.filePath("0");
        QCOMPARE(folderAtStart("data", root), root);
        FDGroup("badPixels", root, nullptr).directoryEntered(dir.filePath("4"));
        QCOMPARE(folderAtStart("badPixels", root), dir.filePath("4"));
        QVERIFY(QDir(dir.path()).rmdir("4"));
        QCOMPARE(folderAtStart("badPixels", root), root);
    }

private:
    /// Folder of the first dialog of a group that begins.
    static QString folderAtStart(const QString& name, const QString& root)
    {
        FDGroup group(name, root, nullptr);
        LateDialog late([] { return new FileDialog; }, &group);
        group.add(&late);
        const std::unique_ptr<QFileDialog> dialog(late.get());
        return dialog->directory().path();
    }

    /// Drops files as a file manager does; whether they were taken.
    static bool drop(QWidget* target, const QStringList& files)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& file : files)
            urls.append(QUrl::fromLocalFile(file));
        data.setUrls(urls);
        data.setText(files.join('\n'));
        QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(target, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event(QPoint(3, 3), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(target, &event);
        return event.isAccepted() && event.dropAction() == Qt::CopyAction;
    }

    /// The menu action with this text, marks for keys left out.
    static QAction* action(const QMainWindow& window, const QString& text)
    {
        for (QAction* a : window.menuBar()->findChildren<QAction*>()) {
            if (QString(a->text()).remove('&') == text)
                return a;
        }
        return nullptr;
    }

    SmallExperiment experiment_;
};

QTEST_MAIN(TestShell)
#include "test_shell.moc"
