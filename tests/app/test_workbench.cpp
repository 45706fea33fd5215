#include "BodyFixture.h"
#include "analysis/lcf/LcfSection.h"
#include "app/NoticeBar.h"
#include "app/Sessions.h"
#include "app/StepBar.h"
#include "app/StepButton.h"
#include "app/StepWatch.h"
#include "app/Translation.h"
#include "app/Workbench.h"
#include "common/Settings.h"
#include "display/Fold.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "display/PanelDock.h"
#include "display/XafsFileSelect.h"
#include "selection/SelectDataFiles.h"
#include "support/ClippedTexts.h"
#include "support/ImageFiles.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSettings>
#include <QTranslator>

namespace {

/// Somebody in front of the window: presses keys, clicks and types, and each counts as one action.
class User
{
public:
    explicit User(QWidget& window)
        : window_(window)
    {
    }

    int actions() const { return actions_; }

    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        ++actions_;
        QTest::keyClick(target(), Qt::Key(key), modifiers);
    }
    void type(const QString& text)
    {
        ++actions_;
        QTest::keyClicks(target(), text);
    }
    void click(QWidget* widget)
    {
        bringIntoSight(widget);
        ++actions_;
        // On the box of a check box or radio button, which may be wider than its text.
        const bool box = qobject_cast<QCheckBox*>(widget) || qobject_cast<QRadioButton*>(widget);
        QTest::mouseClick(widget, Qt::LeftButton, {},
                          box ? QPoint(8, widget->height() / 2) : widget->rect().center());
    }
    void drag(QWidget* widget, const QPoint& from, const QPoint& to)
    {
        ++actions_;
        QTest::mousePress(widget, Qt::LeftButton, {}, from);
        for (const QPoint& at : {(from + to) / 2, to}) {
            QMouseEvent move(QEvent::MouseMove, at, widget->mapToGlobal(at), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(widget, &move);
        }
        QTest::mouseRelease(widget, Qt::LeftButton, {}, to);
    }

private:
    QWidget* target() const
    {
        // What a window manager does when a dialog goes; the offscreen platform has none.
        if (!QApplication::activeWindow())
            QApplication::setActiveWindow(&window_);
        QWidget* const focus = QApplication::focusWidget();
        return focus ? focus : &window_;
    }

    /// A turn of the wheel, when it is needed.
    void bringIntoSight(QWidget* widget)
    {
        QTest::qWait(30); // what was folded out is laid out
        if (!widget->visibleRegion().contains(widget->rect().center())) {
            for (QWidget* w = widget->parentWidget(); w; w = w->parentWidget()) {
                if (auto* const area = qobject_cast<QScrollArea*>(w)) {
                    area->ensureWidgetVisible(widget);
                    ++actions_;
                    break;
                }
            }
        }
    }

    QWidget& window_;
    int actions_ = 0;
};

} // namespace

/// The one window in front of a user, by real events.
class TestWorkbench : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        useScreenFont();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, store_.path());
        QCOMPARE(QProcess::execute(MORVENKITE_DEMO, {"write", demo_.path()}), 0);
        DataRoot = demo_.path();
    }

    void init()
    {
        body_ = std::make_unique<DrivenBody>();
        body_->attend();
        body_->setWindowState(Qt::WindowNoState);
        body_->resize(1280, 800);
        body_->show();
        QVERIFY(QTest::qWaitForWindowActive(body_.get()));
    }
    void cleanup()
    {
        body_->endQuietly();
        body_.reset();
        QSettings(QStringLiteral("Tessmoor Lab"), QStringLiteral("Morvenkite")).clear();
    }

    void keysLeadToAFirstMap_data()
    {
        QTest::addColumn<bool>("smallBlocks");
        QTest::addColumn<int>("most");
        QTest::newRow("as it comes") << false << 6;
        QTest::newRow("blocks of 5 x 5") << true << 10;
    }

    void keysLeadToAFirstMap()
    {
        QFETCH(const bool, smallBlocks);
        QFETCH(const int, most);
        User user(*body_);
        openDemo(user);
        if (smallBlocks) {
            user.key(Qt::Key_2, Qt::ControlModifier);
            user.type("2");
            user.key(Qt::Key_Tab);
            user.type("2");
        }
        user.key(Qt::Key_F5);
        QTRY_VERIFY_WITH_TIMEOUT(body_->steps().states()[3].isDone(), 60000);
        QCOMPARE(int(body_->findChild<ImageBox*>()->choice()), int(ShowResAnalysisId));
        QVERIFY(body_->findChild<QRadioButton*>("SelRatio")->isChecked());
        // It has contrast: neither the noise beside the sample nor a failed block spans the range.
        const Analyzed2DRes* map = body_->selectedMap();
        QVERIFY(map && body_->view().shownMap() == map);
        qInfo() << "first map:" << user.actions() << "actions";
        QVERIFY(user.actions() <= most);
        if (smallBlocks)
            QCOMPARE(body_->steps().states()[1].line.left(11), QString("block 5 x 5"));
    }

    /// References from elsewhere, dark areas of both stacks, a calibration, and then the map.
    void theWholeRoadIsShort()
    {
        User user(*body_);
        walkTheRoad(user);
        qInfo() << "the whole road:" << user.actions() << "actions";
        QVERIFY(user.actions() <= 34);
    }

    /// What was done by mouse and keys is done again by its history, in a fresh program without a
    /// display: the saved files are the same.
    void theHistoryDoesTheRoadAgain()
    {
        User user(*body_);
        walkTheRoad(user);
        const QTemporaryDir saved;
        user.key(Qt::Key_5, Qt::ControlModifier);
        for (const char* form : {"SaveAsFloatTiff", "SaveAsTextData"}) {
            user.click(body_->findChild<QRadioButton*>(form));
            user.click(body_->findChild<QPushButton*>("SaveData"));
            QTRY_VERIFY(openDialog());
            openDialog()->findChild<QLineEdit*>()->setFocus();
            user.type(saved.filePath(form));
            user.key(Qt::Key_Return);
            QTRY_VERIFY(!openDialog());
        }
        const QMap<QString, QByteArray> byHand = filesIn(saved.path());
        QCOMPARE(byHand.size(), 3); // a bar stands beside the TIFF
        for (const QString& file : byHand.keys())
            QVERIFY(QFile::remove(file));
        const QStringList lines = body_->batch().book().history().lines();
        const QString batch = store_.filePath("history.bat");
        QVERIFY(writeBytes(batch, lines.join('\n').toUtf8() + '\n'));
        QProcess program;
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(MORVENKITE_PROGRAM, {"-b", batch, "-x"});
        QVERIFY(program.waitForFinished(120000));
        QVERIFY2(program.exitCode() == 0,
                 program.readAll().right(2000) + lines.join('\n').toUtf8());
        const QMap<QString, QByteArray> again = filesIn(saved.path());
        QCOMPARE(again.keys(), byHand.keys());
        for (const QString& file : byHand.keys()) {
            if (!file.contains("cBar")) // a picture, over a range of its own
                QVERIFY2(again[file] == byHand[file], qPrintable(file + '\n' + lines.join('\n')));
        }
    }

    /// Also in a window where other work was done.
    void aSessionBringsTheWorkBack()
    {
        User user(*body_);
        walkTheRoad(user);
        const QString shiftMap = store_.filePath("shift.emp");
        QVERIFY(body_->run("calib_save_map " + shiftMap));
        const QString file = store_.filePath("work.session");
        body_->findChild<Sessions*>()->save(file);
        const QStringList state = body_->batch().book().history().state();
        cleanup();
        init();
        body_->runAll({"set_fluo_type 1", "dark_exposure 77", "analyzer_target_elements Fe"});
        const QSignalSpy ended(body_->batchCtrl(), &BatchCtrl::batchStop); // and before the start
        body_->findChild<Sessions*>()->open(file);
        QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 2, 60000);
        const QStringList again = body_->batch().book().history().state();
        for (int i = 0; i < std::max(state.size(), again.size()); ++i)
            QCOMPARE(again.value(i), state.value(i));
        QCOMPARE(body_->i1Stack().size(), 81);
        QVERIFY(body_->data().i0.darkAreaOn && body_->calibration().mapWhole());
        QCOMPARE(body_->batchCtrl()->failures().count, 0);
    }

    void whatCantWorkSaysWhy()
    {
        for (const char* name : {"AskAnalyze", "ExecCalib", "SaveData", "ZoomIn"}) {
            const auto* button = body_->findChild<QPushButton*>(name);
            QVERIFY2(!button->isEnabled() && !button->toolTip().isEmpty(), name);
        }
        User user(*body_);
        openDemo(user);
        // Not the number that was meant: told in the strip of its step.
        auto* width = body_->findChild<QLineEdit*>("HWidth");
        width->setText("abc");
        QTRY_VERIFY(strip(Step::Spectrum).contains("No number, and counts as 0"));
        width->setText("2");
        // Switched off by hand: the step says so, and its button switches it on again.
        body_->findChild<QCheckBox*>("UseI0")->setChecked(false);
        QTRY_COMPARE(strip(Step::Data), QString("I0 is loaded and not used"));
        body_->workbench().openStep(Step::Data);
        user.click(mendButton(Step::Data));
        QVERIFY(body_->findChild<QCheckBox*>("UseI0")->isChecked());
        QTRY_VERIFY(body_->steps().states()[0].isDone());
    }

    void unsavedMapsAreAskedForOnce()
    {
        User user(*body_);
        openDemo(user);
        user.key(Qt::Key_F5);
        QTRY_VERIFY_WITH_TIMEOUT(body_->steps().states()[3].isDone(), 60000);
        answer(QMessageBox::Cancel);
        QVERIFY(!body_->close());
        QVERIFY(asked_ && body_->isVisible());
        const QTemporaryDir dir;
        QVERIFY(body_->run("save_data " + dir.filePath("map.tif")));
        QTRY_COMPARE(body_->steps().facts().savedMaps, 1);
        answer(QMessageBox::Cancel);
        QVERIFY(body_->close());
        QVERIFY(!asked_);
    }

    /// No window is larger than its screen, nothing that holds a number is cut off, and the image
    /// has room.
    void everythingIsSeenOnEveryScreen_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<bool>("japanese");
        QTest::addColumn<double>("font");
        for (const QSize& size :
             {QSize(1280, 800), QSize(1366, 768), QSize(1920, 1080), QSize(2560, 1440)}) {
            for (const bool japanese : {false, true})
                QTest::addRow("%d x %d, %s", size.width(), size.height(),
                              japanese ? "Japanese" : "English")
                    << size << japanese << 1.0;
        }
        for (const bool japanese : {false, true})
            QTest::newRow(japanese ? "large letters, Japanese" : "large letters, English")
                << QSize(1920, 1080) << japanese << 1.25;
    }

    void everythingIsSeenOnEveryScreen()
    {
        QFETCH(const QSize, screen);
        QFETCH(const bool, japanese);
        QFETCH(const double, font);
        body_.reset();
        useScreenFont(font);
        QTranslator translator;
        QVERIFY(!japanese || installTranslation(translator));
        init();
        body_->resize(screen);
        User user(*body_);
        openDemo(user);
        user.key(Qt::Key_F5);
        QTRY_VERIFY_WITH_TIMEOUT(body_->steps().states()[3].isDone(), 60000);
        QStringList faults;
        const ImgDispA* area = body_->findChild<ImgDispA*>("dispA");
        if (area->width() < 360 || area->height() < 360)
            faults << QString("image of %1 x %2").arg(area->width()).arg(area->height());
        for (PanelDock* dock : body_->findChildren<PanelDock*>()) {
            dock->bringUp();
            openAllFolds(*dock);
            // Layouts settle in their own time, which a busy machine stretches.
            const bool settled =
                QTest::qWaitFor([&] { return clippedTexts(dock).isEmpty(); }, 2000);
            if (!settled)
                faults += clippedTexts(dock);
            if (body_->size() != screen)
                faults << QString("%1 makes it %2 x %3")
                              .arg(dock->objectName())
                              .arg(body_->width())
                              .arg(body_->height());
        }
        faults += clippedTexts(body_->findChild<StepBar*>());
        faults += clippedTexts(body_->centralWidget());
        useScreenFont();
        faults.removeDuplicates();
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
    }

private:
    static void openAllFolds(const QWidget& panel)
    {
        for (auto* const list : panel.findChildren<QLineEdit*>("AElemNames")) {
            list->setText("Cu Pb-L3");
            Q_EMIT list->editingFinished();
        }
        for (Fold* const fold : panel.findChildren<Fold*>())
            fold->setOpen(true);
        for (auto* const row : panel.findChildren<QAbstractButton*>("More"))
            row->setChecked(true);
    }

    static QFileDialog* openDialog()
    {
        return qobject_cast<QFileDialog*>(QApplication::activeWindow());
    }

    void walkTheRoad(User& user)
    {
        user.key(Qt::Key_O, Qt::ControlModifier);
        QTRY_VERIFY(openDialog());
        user.key(Qt::Key_Return);
        QTRY_VERIFY(body_->findChild<QWidget*>("FolderLoad")->isVisible());
        user.type("8948");
        user.click(body_->findChild<QCheckBox*>("FolderReferences"));
        user.key(Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(int(body_->workbench().step()), int(Step::Analysis), 30000);
        // References of another place.
        user.click(body_->findChild<QPushButton*>("LoadRefs"));
        chooseFiles(user, {"species-0.dat", "species-1.dat", "species-2.dat"});
        QCOMPARE(body_->analyzer()->lcf().activeRows().size(), 3);
        // The corner without beam is dark.
        ImgDispA* area = body_->findChild<ImgDispA*>("dispA");
        user.key(Qt::Key_1, Qt::ControlModifier);
        for (const char* name : {"SelectI1Files", "SelectI0Files"}) {
            auto* row = body_->findChild<SelectDataFiles*>(name);
            user.drag(area, QPoint(6, 6), QPoint(30, 30));
            user.click(row->findChild<QPushButton*>("AddSetup"));
            user.click(row->findChild<QPushButton*>("SetDarkArea"));
        }
        QVERIFY(body_->data().i1.darkAreaOn && body_->data().i0.darkAreaOn);
        calibrate(user);
        user.key(Qt::Key_2, Qt::ControlModifier);
        user.type("2");
        user.key(Qt::Key_Tab);
        user.type("2");
        user.key(Qt::Key_F5);
        QTRY_VERIFY_WITH_TIMEOUT(body_->steps().states()[3].isDone(), 60000);
    }

    static QMap<QString, QByteArray> filesIn(const QString& folder)
    {
        QMap<QString, QByteArray> files;
        for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files)) {
            QFile file(info.filePath());
            if (file.open(QIODevice::ReadOnly))
                files[info.filePath()] = file.readAll();
        }
        return files;
    }

    /// From the start to images in front of the user, with their references.
    void openDemo(User& user)
    {
        user.key(Qt::Key_O, Qt::ControlModifier);
        QTRY_VERIFY(openDialog());
        user.key(Qt::Key_Return);
        QTRY_VERIFY(body_->findChild<QWidget*>("FolderLoad")->isVisible());
        user.type("8948");
        user.key(Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(int(body_->workbench().step()), int(Step::Analysis), 30000);
    }

    /// Types names into the file dialog that is open, and Enter.
    void chooseFiles(User& user, const QStringList& names)
    {
        QTRY_VERIFY(openDialog());
        QStringList quoted;
        for (const QString& name : names)
            quoted << '"' + demo_.filePath("references/" + name) + '"';
        openDialog()->findChild<QLineEdit*>()->setFocus();
        user.type(names.size() == 1 ? demo_.filePath("references/" + names[0]) : quoted.join(' '));
        user.key(Qt::Key_Return);
        QTRY_VERIFY(!openDialog());
    }

    void calibrate(User& user)
    {
        user.key(Qt::Key_3, Qt::ControlModifier);
        user.click(
            body_->findChild<XafsFileSelect*>("SelectStd")->findChild<QPushButton*>("Select"));
        chooseFiles(user, {"species-1.dat"});
        auto* exec = body_->findChild<QPushButton*>("ExecCalib");
        QTRY_VERIFY(exec->isEnabled());
        user.click(exec);
        QTRY_VERIFY_WITH_TIMEOUT(body_->calibration().mapWhole(), 60000);
    }

    QString strip(Step step) const { return body_->steps().states()[std::size_t(step)].sentence; }
    QPushButton* mendButton(Step step) const
    {
        return body_->workbench().stepDock(step)->findChild<QPushButton*>("MendIt");
    }

    /// Answers the question that comes next, and tells whether one came.
    void answer(QMessageBox::StandardButton button)
    {
        asked_ = false;
        QTimer::singleShot(300, body_.get(), [this, button] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                asked_ = true;
                box->button(button)->click();
            }
        });
    }

    const QTemporaryDir store_, demo_;
    std::unique_ptr<DrivenBody> body_;
    bool asked_ = false;
};

QTEST_MAIN(TestWorkbench)
#include "test_workbench.moc"
