#include "display/FileDialogs.h"
#include "image/ErrPoints.h"
#include "selection/EOFSetup.h"
#include "selection/SelectDataFiles.h"
#include "selection/SelectDataFilesAdditionalSetup.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

/// The rows of the two stacks with their dialogs, by their real widgets.
class TestFileRows : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void filesAreListedQuietlyWithTheirEnergies();
    void selectionTellsFilesAndMode();
    void endFollowsStartDeltaAndPoints();
    void patternSetsTheFactorAndIsRemembered();
    void rulesExcludeEachOther();
    void referenceFileOfARow();
    void badPixelListOfARow();
    void darkAreaIsShownAndAskedFor();

private:
    template<typename W>
    static W* child(const QObject& parent, const char* name)
    {
        return parent.findChild<W*>(QString::fromLatin1(name));
    }
    static void type(QLineEdit* edit, const QString& text)
    {
        edit->setText(text);
        Q_EMIT edit->editingFinished();
    }
};

void TestFileRows::filesAreListedQuietlyWithTheirEnergies()
{
    SelectDataFiles row;
    const QSignalSpy changed(&row, &SelectDataFiles::currentIndexChanged);
    row.setEngCalcStart(9000);
    row.setEngCalcDelta(2);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(row.addFile(QString::number(i), 2 * i), 9000.0 + 4 * i);
    QCOMPARE(changed.size(), 0);
    QCOMPARE(row.count(), 3);
    QCOMPARE(child<QLabel>(row, "Number")->text(), QString("3"));
    QCOMPARE(child<QComboBox>(row, "Files")->itemData(1).toDouble(), 9004.0);
    row.select(1);
    row.next();
    row.next();
    row.prev();
    row.select(-1);
    row.select(3);
    QCOMPARE(row.currentIndex(), 1);
    QCOMPARE(changed.size(), 3);
    row.clearFiles();
    QCOMPARE(row.count(), 0);
    QCOMPARE(child<QLabel>(row, "Number")->text(), QString("0"));
}

void TestFileRows::selectionTellsFilesAndMode()
{
    SelectDataFiles row;
    const QSignalSpy selected(&row, &SelectDataFiles::filesSelected);
    const QStringList files{"b", "a"};
    Q_EMIT row.dialog()->filesSelected(files);
    child<QRadioButton>(row, "AddFiles")->click();
    Q_EMIT row.dialog()->filesSelected(files);
    QCOMPARE(selected[0][0].toStringList(), files);
    QCOMPARE(selected[0][1].toBool(), true);
    QCOMPARE(selected[1][1].toBool(), false);
    child<QLineEdit>(row, "Skip")->setText("x");
    QCOMPARE(row.skip(), 0);
    row.setExpTimeMS(12.3456789, true);
    row.setExpTimeMS(99, false);
    QCOMPARE(row.exposureText(), QString("12.3457"));
}

void TestFileRows::endFollowsStartDeltaAndPoints()
{
    EOFSetup setup;
    type(child<QLineEdit>(setup, "Start"), "9000");
    type(child<QLineEdit>(setup, "NumOfPoints"), "50");
    type(child<QLineEdit>(setup, "Delta"), "2");
    QCOMPARE(child<QLineEdit>(setup, "End")->text(), QString("9100"));
    type(child<QLineEdit>(setup, "End"), "9050");
    QCOMPARE(child<QLineEdit>(setup, "Delta")->text(), QString("1"));
    type(child<QLineEdit>(setup, "NumOfPoints"), "0");
    type(child<QLineEdit>(setup, "End"), "1");
    QCOMPARE(child<QLineEdit>(setup, "Delta")->text(), QString("1"));
    setup.setUnit(1);
    setup.setUnit(99);
    QCOMPARE(setup.unitName(), QString("keV"));
}

void TestFileRows::patternSetsTheFactorAndIsRemembered()
{
    EOFSetup setup;
    auto* patterns = child<QComboBox>(setup, "Patterns");
    QCOMPARE(patterns->count(), 10);
    QCOMPARE(patterns->itemText(0), setup.rule().pattern);
    setup.setPattern("\\d_kev");
    QCOMPARE(setup.rule().factor, 1000.0);
    QCOMPARE(patterns->count(), 11);
    QCOMPARE(patterns->currentText(), QString("\\d_kev"));
    const LogCapture log;
    setup.setPattern("((");
    QCOMPARE(log.linesWith("does not compile"), 1);
    setup.setPattern(patterns->itemText(2));
    QCOMPARE(setup.rule().factor, 1.0);
    QCOMPARE(patterns->count(), 12);
}

void TestFileRows::rulesExcludeEachOther()
{
    EOFSetup setup;
    QCOMPARE(int(setup.rule().source), int(EnergyRule::ByCalculation));
    setup.setByName(true);
    QCOMPARE(int(setup.rule().source), int(EnergyRule::ByName));
    setup.setByCalc(true);
    QCOMPARE(int(setup.rule().source), int(EnergyRule::ByCalculation));
    QVERIFY(!child<QRadioButton>(setup, "ByName")->isChecked());
}

void TestFileRows::referenceFileOfARow()
{
    const QTemporaryDir dir;
    const QString file = dir.filePath("scan.dat");
    QVERIFY(writeBytes(file, "12.5\n12.4\n"));
    SelectDataFiles row;
    row.setEngByRef(file);
    QVERIFY(row.addFile("a", 1) > row.addFile("b", 0));
    const LogCapture log;
    row.setEngByRef("/none");
    QCOMPARE(log.linesWith("Can't open ref file"), 1);
    QCOMPARE(row.addFile("c", 4), 8004.0);
    row.setEngByRef("/dev/zero"); // never ends
    QCOMPARE(row.addFile("c", 4), 8004.0);
    row.setEngByRef(QString());
    QCOMPARE(row.addFile("d", 0), 0.0);
}

void TestFileRows::badPixelListOfARow()
{
    const QTemporaryDir dir;
    const QString file = dir.filePath("bad.txt");
    QVERIFY(writeBytes(file, "# Size 9 9\n1 2\n"));
    SelectDataFilesAdditionalSetup setup;
    setup.errPsDefSelected(file);
    QVERIFY(setup.errPoints().contains(1, 2));
    QVERIFY(!setup.errPoints().active);
    child<QCheckBox>(setup, "UseErrPs")->click();
    QVERIFY(setup.errPoints().active);
    setup.errPsDefSelected(file);
    QVERIFY(setup.errPoints().active);
    QVERIFY(child<QLabel>(setup, "ErrPsFile")->text().endsWith("bad.txt"));
    setup.errPsDefSelected("/dev/zero"); // never ends
    QVERIFY(!setup.errPoints().active);
    setup.errPsDefSelected("/none");
    QVERIFY(!setup.errPoints().active);
    QVERIFY(child<QLabel>(setup, "ErrPsFile")->text().isEmpty());
}

void TestFileRows::darkAreaIsShownAndAskedFor()
{
    SelectDataFiles row;
    const QSignalSpy set(&row, &SelectDataFiles::setDarkArea);
    const QSignalSpy update(&row, &SelectDataFiles::updateDarkArea);
    const QSignalSpy clear(&row, &SelectDataFiles::clearDarkArea);
    for (const char* button : {"SetDarkArea", "UpdateDarkArea", "ClearDarkArea"})
        child<QPushButton>(row, button)->click();
    QCOMPARE(set.size() + 10 * update.size() + 100 * clear.size(), 111);
    row.darkArea(QRectF(1.9, 2.9, 3, -1e300));
    QCOMPARE(child<QLabel>(row, "DarkArea")->text(), QString("(1,2)-(4,-2147483648)"));
    row.noDarkArea();
    QCOMPARE(child<QLabel>(row, "DarkArea")->text(), QString("(-,-)-(-,-)"));
}

QTEST_MAIN(TestFileRows)
#include "test_file_rows.moc"
