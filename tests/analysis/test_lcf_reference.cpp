#include "ReferenceFiles.h"

#include "analysis/LCFReference.h"
#include "display/XafsFileSelect.h"
#include "support/LogCapture.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QtTest>

namespace {

QLineEdit* field(const LCFReference& row, const char* name)
{
    return row.findChild<QLineEdit*>(QLatin1String(name));
}

XafsFileSelect* selector(const LCFReference& row)
{
    return row.findChild<XafsFileSelect*>();
}

QCheckBox* victoreenBox(const LCFReference& row)
{
    return row.findChild<QCheckBox*>(QStringLiteral("IsVictreen"));
}

} // namespace

class TestLcfReference : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void loadsAFileAndShowsItsEdge();
    void aFileThatFailsEmptiesTheRow_data();
    void aFileThatFailsEmptiesTheRow();
    void readsAtANewShiftWithoutBuildingAnew();
    void theShiftDoesNotCountTwice();
    void changesTheBackgroundModelSilently();
    void batchFillsTheRow_data();
    void batchFillsTheRow();
    void showsResults();
    void ownsTwoMaps();
    void takesPartOnlyInUseAndLoaded();

private:
    ReferenceFiles files_;
};

void TestLcfReference::loadsAFileAndShowsItsEdge()
{
    LCFReference row;
    QSignalSpy selected(&row, &LCFReference::newFileSelected);
    QVERIFY(row.spectrum().isShifted);
    QVERIFY(!row.isActive());
    const QString fname = files_.write(QStringLiteral("a.dat"), 8990, 1.3, 9);
    selector(row)->load(fname);
    QCOMPARE(selected.count(), 1);
    QVERIFY(row.isActive());
    QVERIFY(row.spectrum().isShifted);
    XafsSpectrum plain;
    QVERIFY(plain.loadAndNormalize(fname));
    QCOMPARE(row.spectrum().doubleNormalizedPreBase.points, plain.doubleNormalizedPreBase.points);
    QCOMPARE(field(row, "DMut")->text(), QString::number(plain.dMut, 'g', 6));
    QCOMPARE(field(row, "MidE")->text(), QString::number(plain.midx, 'g', 6));
}

void TestLcfReference::aFileThatFailsEmptiesTheRow_data()
{
    QTest::addColumn<QString>("fname");
    QTest::newRow("missing") << files_.missing();
    QTest::newRow("without a point")
        << files_.writeText(QStringLiteral("empty.dat"), QStringLiteral("# nothing\n"));
    QTest::newRow("no name") << QString();
}

void TestLcfReference::aFileThatFailsEmptiesTheRow()
{
    QFETCH(QString, fname);
    LCFReference row;
    selector(row)->load(files_.write(QStringLiteral("a.dat"), 8990, 1.3, 9));
    QSignalSpy selected(&row, &LCFReference::newFileSelected);
    const LogCapture log;
    selector(row)->load(fname);
    QCOMPARE(log.linesWith(QStringLiteral("Can't read reference file")), 1);
    QVERIFY(selected.isEmpty());
    QVERIFY(!row.isActive() && row.isUsed());
    QVERIFY(row.spectrum().isEmpty());
    QCOMPARE(selector(row)->fileName(), QString());
    QCOMPARE(field(row, "DMut")->text(), QString());
}

void TestLcfReference::readsAtANewShiftWithoutBuildingAnew()
{
    LCFReference row;
    selector(row)->load(files_.write(QStringLiteral("a.dat"), 8990, 1.3, 9));
    const Spectrum before = row.spectrum().doubleNormalizedPreBase;
    QSignalSpy shifted(&row, &LCFReference::newDeltaE);
    field(row, "DeltaE")->clear();
    QTest::keyClicks(field(row, "DeltaE"), QStringLiteral("-1.25"));
    QTest::keyClick(field(row, "DeltaE"), Qt::Key_Return);
    QCOMPARE(shifted.count(), 1);
    QCOMPARE(row.spectrum().eShift, -1.25);
    QCOMPARE(row.spectrum().eOffset, -1.25);
    QCOMPARE(row.spectrum().doubleNormalizedPreBase.points, before.points);
    field(row, "DeltaE")->setText(QStringLiteral("none"));
    row.editedDeltaE();
    QCOMPARE(row.spectrum().eShift, 0.0);
}

void TestLcfReference::theShiftDoesNotCountTwice()
{
    // Whether dE is given before or after loading or a change of the model must not matter.
    const QString fname = files_.write(QStringLiteral("a.dat"), 8990, 1.3, 9);
    LCFReference before;
    field(before, "DeltaE")->setText(QStringLiteral("2.5"));
    before.editedDeltaE();
    selector(before)->load(fname);
    LCFReference after;
    selector(after)->load(fname);
    field(after, "DeltaE")->setText(QStringLiteral("2.5"));
    after.editedDeltaE();
    const auto same = [&] {
        return before.spectrum().eShift == 2.5 && after.spectrum().eShift == 2.5 &&
               before.spectrum().doubleNormalizedPreBase.points ==
                   after.spectrum().doubleNormalizedPreBase.points;
    };
    QVERIFY(same());
    QCOMPARE(field(before, "MidE")->text(), field(after, "MidE")->text());
    after.toggledIsVictreen(false);
    QVERIFY(same());
}

void TestLcfReference::changesTheBackgroundModelSilently()
{
    LCFReference row;
    selector(row)->load(files_.write(QStringLiteral("a.dat"), 8990, 1.3, 9));
    const auto straight = row.spectrum().doubleNormalizedPreBase.points;
    QSignalSpy selected(&row, &LCFReference::newFileSelected);
    QSignalSpy shifted(&row, &LCFReference::newDeltaE);
    victoreenBox(row)->click();
    QCOMPARE(row.spectrum().pre.mode, int(VictLine::Victoreen));
    QVERIFY(row.spectrum().doubleNormalizedPreBase.points != straight);
    QCOMPARE(row.spectrum().doubleNormalizedPreBase.size(), straight.size());
    QVERIFY(selected.isEmpty() && shifted.isEmpty());
}

void TestLcfReference::batchFillsTheRow_data()
{
    QTest::addColumn<QString>("isVic");
    QTest::addColumn<bool>("victoreen");
    QTest::newRow("empty") << "" << true;
    QTest::newRow("VIC in any case") << "vIc" << true;
    QTest::newRow("a number") << "0.5" << true;
    QTest::newRow("zero") << "0" << false;
    QTest::newRow("below zero") << "-1" << false;
    QTest::newRow("another word") << "victoreen" << false;
}

void TestLcfReference::batchFillsTheRow()
{
    QFETCH(QString, isVic);
    QFETCH(bool, victoreen);
    const QString fname = files_.write(QStringLiteral("a.dat"), 8990, 1.3, 9);
    LCFReference row;
    row.setStd(false, 1.23456789, fname, isVic);
    QVERIFY(!row.isUsed() && !row.isActive());
    QCOMPARE(selector(row)->fileName(), fname);
    QCOMPARE(victoreenBox(row)->isChecked(), victoreen);
    QCOMPARE(row.spectrum().pre.mode, int(victoreen ? VictLine::Victoreen : VictLine::Straight));
    QCOMPARE(row.spectrum().eShift, 1.23456789);
    QCOMPARE(row.spectrum().eOffset, 1.23456789);
    QCOMPARE(field(row, "DeltaE")->text(), QStringLiteral("1.23457"));
    row.setStd(true, 0, fname, isVic);
    QVERIFY(row.isActive());
}

void TestLcfReference::showsResults()
{
    LCFReference row;
    QCOMPARE(row.weight(), 0.0);
    row.setWeight(0.30004);
    row.setResult(0.12345678);
    QCOMPARE(row.weight(), 0.30004);
    QCOMPARE(row.data().weight, 0.30004);
    QCOMPARE(field(row, "R")->text(), QStringLiteral("30.00"));
    QCOMPARE(field(row, "T")->text(), QStringLiteral("0.123457"));
    row.setWeight(0.025);
    QCOMPARE(field(row, "R")->text(), QStringLiteral(" 2.50"));
}

void TestLcfReference::ownsTwoMaps()
{
    LCFReference row;
    QCOMPARE(row.map(0)->name, QStringLiteral("LCF Ref 1"));
    QCOMPARE(row.map(1)->name, QStringLiteral("LCF Ref 2"));
    QCOMPARE(row.map(2), row.map(0));
    QCOMPARE(row.map(-1), row.map(0));
}

void TestLcfReference::takesPartOnlyInUseAndLoaded()
{
    LCFReference row;
    selector(row)->load(files_.write(QStringLiteral("a.dat"), 8990, 1.3, 9));
    QVERIFY(row.data().active);
    selector(row)->setUse(false);
    QVERIFY(!row.data().active);
    QCOMPARE(row.spectrum().isMute, 0);
    selector(row)->setUse(true);
    QCOMPARE(row.spectrum().isMute, 1);
    selector(row)->clear();
    QVERIFY(!row.data().active);
}

QTEST_MAIN(TestLcfReference)
#include "test_lcf_reference.moc"
