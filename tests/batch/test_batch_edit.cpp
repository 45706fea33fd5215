#include "batch/BatchCtrl.h"
#include "batch/BatchDispatcher.h"
#include "batch/BatchEdit.h"
#include "support/ImageFiles.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QTextBlock>
#include <QtTest>

/// The editor of the batch window, by keys.
class TestBatchEdit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        ctrl_ = std::make_unique<BatchCtrl>();
        ctrl_->show();
        edit_ = ctrl_->findChild<BatchEdit*>("BatchCmds");
        edit_->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(ctrl_.get()));
    }

    void wordsAreCompleted()
    {
        type("skip_i");
        QVERIFY(popup()->isVisible());
        QCOMPARE(offered(0), QString("skip_i0 <int>"));
        key(Qt::Key_Down);
        key(Qt::Key_Return);
        QVERIFY(!popup()->isVisible());
        QCOMPARE(edit_->toPlainText(), QString("skip_i1 "));
        key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(edit_->toPlainText(), QString("skip_i"));
        type("x");
        QVERIFY(!popup()->isVisible());
        edit_->setPlainText("\n");
        key(Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(popup()->isVisible() && popup()->model()->rowCount() > 150);
        key(Qt::Key_Escape);
        QVERIFY(!popup()->isVisible() && edit_->toPlainText() == "\n");
    }

    void filesAreCompletedWhereACommandTakesOne()
    {
        const QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir("a b") && writeBytes(dir.filePath("a b/c d.dat"), "1"));
        type("calib_load_std " + dir.path() + "/a");
        QCOMPARE(offered(0), QString("a b/"));
        key(Qt::Key_Tab);
        type("c");
        key(Qt::Key_Tab);
        QCOMPARE(edit_->toPlainText(), "calib_load_std \"" + dir.filePath("a b/c d.dat") + '"');
        edit_->clear();
        type("set_band_w " + dir.path() + "/a");
        QVERIFY(!popup()->isVisible());
    }

    /// The wave tells what is no word, once it can not become one.
    void unknownWordsAreUnderlined()
    {
        edit_->setPlainText(
            "skip_i1 2\n:FOR a b 1 2\nskipp 1\n# skipp\nsave_image \\\nskipp\nskipp");
        QStringList waved;
        for (QTextBlock b = edit_->document()->begin(); b.isValid(); b = b.next()) {
            if (isWaved(b))
                waved << QString::number(b.blockNumber());
        }
        QCOMPARE(waved.join(' '), QString("2 6"));
        edit_->setPlainText("");
        type("sk");
        QVERIFY(!isWaved(edit_->document()->begin()));
        type("x");
        QVERIFY(isWaved(edit_->document()->begin()));
        edit_->setPlainText("");
        type("sk");
        key(Qt::Key_Escape);
        key(Qt::Key_Return);
        QVERIFY(isWaved(edit_->document()->begin()));
    }

    void theHintTellsWhatIsNext()
    {
        const auto* const hint = ctrl_->findChild<QLabel*>("Hint");
        type("move_position 3");
        QVERIFY(hint->isVisible());
        QVERIFY2(hint->text().contains("<b><u>&lt;int x&gt;"), qPrintable(hint->text()));
        type(" ");
        QVERIFY2(hint->text().contains("<b><u>&lt;int y&gt;"), qPrintable(hint->text()));
        key(Qt::Key_Return);
        QVERIFY(!hint->isVisible());
    }

    void textsAreFound()
    {
        edit_->setPlainText("a one\nb ONE\n");
        key(Qt::Key_F, Qt::ControlModifier);
        auto* const field = ctrl_->findChild<QLineEdit*>("FindText");
        QVERIFY(field->isVisible() && field->hasFocus());
        QTest::keyClicks(field, "one");
        for (const int line : {0, 1, 0}) {
            QTest::keyClick(field, Qt::Key_Return);
            QCOMPARE(edit_->textCursor().blockNumber(), line);
        }
        QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(edit_->textCursor().blockNumber(), 1);
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(!field->isVisible() && edit_->hasFocus());
    }

    /// As long as the editor holds the text that runs.
    void theRunningLineIsMarked()
    {
        BatchDispatcher dispatcher;
        ctrl_->setDispatcher(&dispatcher);
        edit_->setPlainText(":echo a\n\nset_band_w 1\n");
        ctrl_->execCmdsSlot(); // nobody carries the command out
        QTRY_COMPARE(edit_->runningLine(), 3);
        const auto* const state = ctrl_->findChild<QLabel*>("RunState");
        QCOMPARE(state->text(), QString("Running line 3"));
        edit_->insertPlainText("# ");
        QTRY_COMPARE(edit_->runningLine(), 0);
        dispatcher.batchStopSlot();
        QTRY_COMPARE(state->text(), QString("Idle"));
        ctrl_->setDispatcher(nullptr);
    }

private:
    void type(const QString& text) { QTest::keyClicks(edit_, text); }
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWidget* const list = popup();
        QTest::keyClick(list->isVisible() ? list : edit_, Qt::Key(key), modifiers);
    }
    QAbstractItemView* popup() { return edit_->findChild<QCompleter*>()->popup(); }
    QString offered(int row) { return popup()->model()->index(row, 0).data().toString(); }
    static bool isWaved(const QTextBlock& block)
    {
        for (const QTextLayout::FormatRange& range : block.layout()->formats()) {
            if (range.format.underlineStyle() == QTextCharFormat::WaveUnderline)
                return true;
        }
        return false;
    }

    std::unique_ptr<BatchCtrl> ctrl_;
    BatchEdit* edit_ = nullptr;
};

QTEST_MAIN(TestBatchEdit)
#include "test_batch_edit.moc"
