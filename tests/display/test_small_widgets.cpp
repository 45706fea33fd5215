#include "display/CrossSView.h"
#include "display/FileDialogs.h"
#include "display/SmallWidgets.h"
#include "display/XafsFileSelect.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

/// File rows, dialogs that follow one another, and the cross sections.
class TestSmallWidgets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fileRowTellsAndForgetsItsFile();
    void dialogsOfAGroupFollowOneFolder();
    void dialogIsHeldOnceAndForgottenWhenItDies();
    void crossSectionDrawsAnythingWithoutFault_data();
    void crossSectionDrawsAnythingWithoutFault();
    void oneInfiniteValueFlattensNoCrossSection();
    void uprightWidgetsReadDownward();
};

void TestSmallWidgets::fileRowTellsAndForgetsItsFile()
{
    const QTemporaryDir dir;
    XafsFileSelect row;
    const QSignalSpy files(&row, &XafsFileSelect::newFile);
    const QSignalSpy cleared(&row, &XafsFileSelect::cleared);
    const QSignalSpy used(&row, &XafsFileSelect::changedUse);
    const QString file = dir.filePath("a.dat");
    QVERIFY(QFile(file).open(QIODevice::WriteOnly));
    row.load(file);
    QCOMPARE(files.size(), 1);
    QVERIFY(row.isFileValid());
    QCOMPARE(row.fileName(), file);
    QCOMPARE(row.dialog()->directory().canonicalPath(), QDir(dir.path()).canonicalPath());
    row.fileNameValid(false);
    QVERIFY(!row.isFileValid());
    row.setUse(false);
    row.setUse(true);
    QCOMPARE(used.size(), 2);
    QVERIFY(row.isUsed());
    QTest::mouseClick(row.findChild<QPushButton*>("Clear"), Qt::LeftButton);
    QCOMPARE(cleared.size(), 1);
    QVERIFY(row.fileName().isEmpty());
}

void TestSmallWidgets::dialogsOfAGroupFollowOneFolder()
{
    const QTemporaryDir dir;
    FileDialog a;
    SelectImgDialog b;
    FDGroup group;
    group.add(&a);
    group.add(&b);
    group.directoryEntered(dir.path());
    QCOMPARE(a.directory().absolutePath(), dir.path());
    QCOMPARE(b.directory().absolutePath(), dir.path());
    Q_EMIT a.directoryEntered(QDir::rootPath());
    QCOMPARE(b.directory().absolutePath(), QDir::rootPath());
    group.currentChanged(dir.filePath("none.tif")); // no such file: no folder to follow
    QCOMPARE(a.directory().absolutePath(), QDir::rootPath());
}

void TestSmallWidgets::dialogIsHeldOnceAndForgottenWhenItDies()
{
    FDGroup group;
    {
        FileDialog dialog;
        group.add(&dialog);
        group.add(&dialog);
        QCOMPARE(group.dialogs().size(), 1);
    }
    QVERIFY(group.dialogs().isEmpty());
    group.directoryEntered(QDir::rootPath());
}

void TestSmallWidgets::crossSectionDrawsAnythingWithoutFault_data()
{
    QTest::addColumn<QVector<QPointF>>("points");
    QTest::addColumn<bool>("marks");
    QTest::newRow("nothing stays white") << QVector<QPointF>() << false;
    QTest::newRow("one point") << QVector<QPointF>{{1, 1}} << false;
    QTest::newRow("a line") << QVector<QPointF>{{0, 0}, {50, 3}, {99, 1}} << true;
    QTest::newRow("level values") << QVector<QPointF>{{0, 2}, {9, 2}} << false;
    QTest::newRow("nan and infinity")
        << QVector<QPointF>{{0, std::nan("")}, {1, HUGE_VAL}, {2, 3}, {3, -HUGE_VAL}} << false;
}

void TestSmallWidgets::crossSectionDrawsAnythingWithoutFault()
{
    QFETCH(QVector<QPointF>, points);
    QFETCH(bool, marks);
    for (const bool vertical : {false, true}) {
        CrossSView view;
        view.setFrameShape(QFrame::NoFrame);
        view.resize(100, 60);
        view.setVertical(vertical);
        view.setPoints(points);
        view.setCursorPos(50);
        const QImage shown = view.grab().toImage();
        int coloured = 0;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x)
                coloured += shown.pixelColor(x, y) != QColor(Qt::white) ? 1 : 0;
        }
        if (points.isEmpty())
            QCOMPARE(coloured, 0);
        else if (marks)
            QVERIFY(coloured > 100);
    }
}

void TestSmallWidgets::oneInfiniteValueFlattensNoCrossSection()
{
    CrossSView view;
    view.setFrameShape(QFrame::NoFrame);
    view.resize(100, 60);
    view.setPoints({{0, 0}, {49, 4}, {50, HUGE_VAL}, {51, 2}, {100, 2}});
    view.setCursorPos(-1);
    const QImage shown = view.grab().toImage();
    QCOMPARE(shown.pixelColor(75, 30), QColor(Qt::black)); // half way between 0 and 4
    view.setPoints({{0, 7}, {100, 7}});
    QCOMPARE(view.grab().toImage().pixelColor(30, 30), QColor(Qt::black));
}

void TestSmallWidgets::uprightWidgetsReadDownward()
{
    const QString text = "Vertical";
    const QLabel flatLabel(text);
    VLabel label;
    label.setText(text);
    QCOMPARE(label.sizeHint(), flatLabel.sizeHint().transposed());
    QPushButton flatButton(text);
    VPushButton button;
    button.setText(text);
    QCOMPARE(button.text(), text);
    QCOMPARE(button.sizeHint(), flatButton.sizeHint().transposed());
    // The text stands upright: it darkens the left and right margins of neither widget.
    button.resize(60, 120);
    const QImage shown = button.grab().toImage();
    const auto darkIn = [&](int x0, int x1, int y0, int y1) {
        int dark = 0;
        for (int y = y0; y < y1; ++y) {
            for (int x = x0; x < x1; ++x)
                dark += shown.pixelColor(x, y).lightness() < 60 ? 1 : 0;
        }
        return dark;
    };
    QVERIFY(darkIn(20, 40, 35, 55) > 0);
    QVERIFY(darkIn(20, 40, 65, 85) > 0);
    QCOMPARE(darkIn(5, 15, 10, 110), 0);
    QCOMPARE(darkIn(45, 55, 10, 110), 0);
}

QTEST_MAIN(TestSmallWidgets)
#include "test_small_widgets.moc"
