// Tests of texts are full of them: plain literals read better here.
#undef QT_NO_CAST_FROM_ASCII

#include "batch/BatchCtrl.h"
#include "batch/BatchDispatcher.h"

#include <QtTest>

#include <QFileDialog>
#include <QPlainTextEdit>
#include <QPushButton>

#include <memory>

class TestBatchCtrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void loadedTextEndsWithALineEnd_data();
    void loadedTextEndsWithALineEnd();
    void fileThatCantBeShownLeavesTheText();
    void savedTextComesBack();
    void failedSaveIsLogged();
    void execGivesTheLinesOfTheEditor();
    void stopThenExecRunsTheText();
    void unattendedStartWaitsForTheFirstRun();
    void unattendedStartAfterTheFirstRunIsAtOnce();
    void stopCallsAWaitingStartOff();
    void logIsAppendedAndCleared();
    void dialogsShowBatchFiles();

private:
    void useDispatcher();
    void click(const char* name)
    {
        QTest::mouseClick(ctrl_->findChild<QPushButton*>(name), Qt::LeftButton);
    }
    QPlainTextEdit* editor() { return ctrl_->findChild<QPlainTextEdit*>("BatchCmds"); }
    QPlainTextEdit* log() { return ctrl_->findChild<QPlainTextEdit*>("BatchLogs"); }
    QString write(const QByteArray& bytes);

    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<BatchDispatcher> dispatcher_;
    std::unique_ptr<BatchCtrl> ctrl_;
    QStringList commands_;
    bool reports_ = true;
};

void TestBatchCtrl::init()
{
    dir_ = std::make_unique<QTemporaryDir>();
    ctrl_ = std::make_unique<BatchCtrl>();
    commands_.clear();
    reports_ = true;
}

void TestBatchCtrl::cleanup()
{
    ctrl_.reset();
    dispatcher_.reset();
}

/// On this thread: the order of queued events is the same as between threads.
void TestBatchCtrl::useDispatcher()
{
    dispatcher_ = std::make_unique<BatchDispatcher>();
    ctrl_->setDispatcher(dispatcher_.get());
    connect(
        dispatcher_.get(), &BatchDispatcher::execCmdSig, this,
        [this](const CmdLine& cmd) {
            commands_.append(cmd.arg(0));
            if (reports_)
                dispatcher_->finishBatchExec(0, cmd.ticket);
        },
        Qt::QueuedConnection);
}

QString TestBatchCtrl::write(const QByteArray& bytes)
{
    QFile file(dir_->filePath("x.bat"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("can't write a test file");
    return file.fileName();
}

void TestBatchCtrl::loadedTextEndsWithALineEnd_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("missing") << QByteArray("a\nb") << "a\nb\n";
    QTest::newRow("present") << QByteArray("a\n\nb\n") << "a\n\nb\n";
    QTest::newRow("other line ends") << QByteArray("a\r\nb\r\n") << "a\nb\n";
    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("UTF-8") << QByteArray("\xe6\xb8\xac") << QString::fromUtf8("\u6e2c\n");
}

void TestBatchCtrl::loadedTextEndsWithALineEnd()
{
    QFETCH(QByteArray, bytes);
    editor()->setPlainText("old");
    ctrl_->load(write(bytes));
    QTEST(editor()->toPlainText(), "text");
}

void TestBatchCtrl::fileThatCantBeShownLeavesTheText()
{
    editor()->setPlainText("old");
    const auto refused = [this](const QString& name, const char* message) {
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(message));
        ctrl_->setBatchFile(name);
        QCOMPARE(editor()->toPlainText(), "old");
    };
    refused("/no/such.bat", "Can't open batch file.*such");
    refused(dir_->path(), "Can't open batch file");
    refused(write(QByteArray(70000000, '\n')), "x.bat is too long");
    refused(write(QByteArray(2000000, 'x')), "x.bat has a line that is too long");
    refused(write(QByteArray(2000000, '\n')), "x.bat has too many lines");

    // Anything else is shown, whatever it means.
    QByteArray binary;
    for (int i = 0; i < 100000; ++i)
        binary.append(char(i * 7 % 256));
    ctrl_->show();
    ctrl_->load(write(binary));
    QVERIFY(editor()->toPlainText() != "old");
    ctrl_->load(write(QByteArray("zoom_in\n").repeated(100000)));
    QCOMPARE(editor()->blockCount(), 100001);
}

void TestBatchCtrl::savedTextComesBack()
{
    const QString text = QString::fromUtf8("save_image \"\u00b5.png\"\n\n  # end");
    editor()->setPlainText(text);
    ctrl_->save(dir_->filePath("out.bat"));
    click("Clear");
    QCOMPARE(editor()->toPlainText(), QString());
    ctrl_->load(dir_->filePath("out.bat"));
    QCOMPARE(editor()->toPlainText(), text + '\n');
}

void TestBatchCtrl::failedSaveIsLogged()
{
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Can't write batch file.*no/such"));
    ctrl_->save("/no/such/folder/x.bat");
}

void TestBatchCtrl::execGivesTheLinesOfTheEditor()
{
    QSignalSpy spy(ctrl_.get(), &BatchCtrl::doDispatchCmds);
    editor()->setPlainText("a\n\nb\n");
    click("Exec");
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy[0][0].toStringList(), QStringList({"a", "", "b", ""}));
}

void TestBatchCtrl::stopThenExecRunsTheText()
{
    useDispatcher();
    Q_EMIT ctrl_->doDispatchCmds({});
    QCoreApplication::processEvents();
    editor()->setPlainText("zoom_in a\nzoom_in b\n");
    click("Exec");
    QTest::qWait(20);
    QCOMPARE(commands_, QStringList());
    click("Stop");
    click("Exec");
    QTRY_COMPARE(commands_, QStringList({"a", "b"}));
    QTRY_COMPARE(log()->toPlainText(), "zoom_in : a\nzoom_in : b\n");
}

void TestBatchCtrl::unattendedStartWaitsForTheFirstRun()
{
    useDispatcher();
    reports_ = false;
    Q_EMIT ctrl_->doDispatchCmds({"zoom_in config", "zoom_in config2"});
    ctrl_->setBatchFile(write("zoom_in file"));
    ctrl_->execBatchSlot();
    QTRY_COMPARE(commands_, QStringList("config"));
    QTest::qWait(20);
    QCOMPARE(commands_, QStringList("config"));
    reports_ = true;
    dispatcher_->finishBatchExec(0, 1);
    QTRY_COMPARE(commands_, QStringList({"config", "config2", "file"}));
}

void TestBatchCtrl::unattendedStartAfterTheFirstRunIsAtOnce()
{
    useDispatcher();
    QSignalSpy ended(dispatcher_.get(), &BatchDispatcher::runEnded);
    Q_EMIT ctrl_->doDispatchCmds({});
    QTRY_COMPARE(ended.size(), 1);
    editor()->setPlainText("zoom_in editor");
    ctrl_->execBatchSlot();
    QTRY_COMPARE(commands_, QStringList("editor"));
    // The start was for once: the end of its own run starts nothing.
    QTRY_COMPARE(ended.size(), 2);
    QTest::qWait(20);
    QCOMPARE(commands_, QStringList("editor"));
}

void TestBatchCtrl::stopCallsAWaitingStartOff()
{
    useDispatcher();
    reports_ = false;
    Q_EMIT ctrl_->doDispatchCmds({"zoom_in config"});
    ctrl_->execBatchSlot();
    QTRY_COMPARE(commands_, QStringList("config"));
    reports_ = true;
    editor()->setPlainText("zoom_in editor");
    click("Stop");
    click("Exec");
    QTest::qWait(20);
    QCOMPARE(commands_, QStringList({"config", "editor"}));
}

void TestBatchCtrl::logIsAppendedAndCleared()
{
    ctrl_->Log("one ");
    log()->selectAll();
    ctrl_->Log("two\n");
    // What the user has selected stays.
    QVERIFY(log()->toPlainText().contains("one "));
    QVERIFY(log()->toPlainText().contains("two\n"));
    click("ClearLog");
    ctrl_->showCmdErr(CmdLine("  no   such # x"));
    ctrl_->Log("next\n");
    QCOMPARE(log()->toPlainText(), "Err: no such \nnext\n");
}

void TestBatchCtrl::dialogsShowBatchFiles()
{
    const auto dialogs = ctrl_->findChildren<QFileDialog*>();
    QCOMPARE(dialogs.size(), 2);
    for (QFileDialog* dialog : dialogs) {
        QCOMPARE(dialog->nameFilters(), QStringList({"Batch File (*.bat)", "Any Files (* *.*)"}));
        QVERIFY(!dialog->isVisible());
    }
    click("Load");
    click("Save");
    for (QFileDialog* dialog : dialogs)
        QVERIFY(dialog->isVisible());
}

QTEST_MAIN(TestBatchCtrl)
#include "test_batch_ctrl.moc"
