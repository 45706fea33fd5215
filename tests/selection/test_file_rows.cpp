#include "common/Bragg.h"
#include "display/FileDialogs.h"
#include "image/ErrPoints.h"
#include "selection/DataBox.h"
#include "selection/EOFSetup.h"
#include "selection/SelectDataFiles.h"
#include "selection/SelectDataFilesAdditionalSetup.h"
#include "support/ImageFiles.h"
#include "support/LogCapture.h"

#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include <cmath>

/// The rules that give the n-th file its energy, and the rows of the two stacks.
class TestFileRows : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void energyInTheName()
    {
        const struct
        {
            const char* pattern;
            double factor;
            const char* name;
            double energy;
        } rows[] = {{"\\d\\d\\d\\d_\\d\\d", 1, "/d/0123_45.tif", 123.45},
                    {"\\d\\d\\d\\d\\.\\d\\deV", 1, "a_7112.50eV.img", 7112.5},
                    {"\\d\\d_\\d\\d\\d\\d\\d\\dKeV", 1000, "07_112500KeV.dat", 7112.5},
                    {"(\\d|)\\d\\d\\d\\d_\\d\\d\\d\\d", 1, "x10123_2500", 10123.25},
                    {"\\d\\d\\d\\d\\.\\d", 1, "/run9000.5/a.tif", 9000.5}, // of need
                    {"\\d\\d\\d\\d\\.\\d", 1, "/run9000.5/9001.5.tif", 9001.5},
                    {"_(?<E>[0-9.]+)eV", 1, "/d/s_12_8984.36029eV.tif", 8984.36029},
                    {"E(?<E>.*)K", 1, "E8_5K.tif", 8.5},
                    {"\\d\\d\\d\\d_\\d\\d", 10, "a.tif", 70}, // no match: the number
                    {"\\d", 0, "a.tif", 7},
                    {"((", 1, "((", 7},
                    {"a|nan|inf", 1, "a.tif", 0}, // no number
                    {"a|nan|inf", 1, "nan.tif", 0}};
        EnergyRule rule;
        NameMatches matches;
        rule.source = EnergyRule::ByName;
        for (const auto& row : rows) {
            rule.pattern = row.pattern;
            rule.factor = row.factor;
            const FileEnergy energy = energyOfFile(rule, row.name, 7);
            matches.add(energy.match, row.name);
            QCOMPARE(energy.eV, row.energy);
        }
        QCOMPARE(matches.complaint(),
                 QString("no energy in 5 of 13 file names (3 without a match, 2 with a text that "
                         "is no number), first a.tif"));
        rule.pattern = "(a+)+$"; // runs away, and is given up
        QCOMPARE(energyOfFile(rule, QString(5000, 'a') + '!', 3).eV, 3.0);
    }

    void energyByCalculation()
    {
        const double d = 1.637478;
        const auto angle = [d](double eV) { return std::asin(12398.424360387684 / eV / 2 / d); };
        const double middle =
            12398.424360387684 / (2 * d * std::sin((angle(9000) + angle(9020)) / 2));
        const double degrees = 12398.424360387684 / (2 * d * std::sin(12.5 / 180 * 3.1415926535));
        const double rows[][6] = {// unit, even in energy, start, delta, end; energy of file 5 of 10
                                  {0, 1, 9000, 2, 9020, 9010},
                                  {1, 1, 9, 0.002, 9.02, 9010},
                                  {0, 0, 9000, 2, 9020, middle},
                                  {1, 0, 9, 2, 9.02, middle},
                                  {2, 0, 12, 0.1, 13, degrees}};
        EnergyRule rule;
        rule.spacing = d;
        rule.points = 10;
        for (const auto& row : rows) {
            rule.unit = int(row[0]);
            rule.evenInEnergy = row[1] > 0;
            rule.start = row[2];
            rule.delta = row[3];
            rule.end = row[4];
            QVERIFY(std::abs(energyOfFile(rule, {}, 5).eV - row[5]) < 1e-6);
        }
        rule.unit = 0;
        rule.start = 100; // out of the crystal's reach: -1 degree, deliberately no error
        QVERIFY(std::abs(energyOfFile(rule, {}, 0).eV - energyOfAngle(-1.0, d)) < 1e-6);
    }

    void scanFiles()
    {
        const QVector<QPair<QByteArray, QVector<double>>> rows{
            {"  9809 scan\nD= 3.1\n Offset 0 0\n1 12.5 0\n2 12.4 0\n", {12.5, 12.4}},
            {"9809\n Mono D= x\n Offset\n1 12.5\n", {12.5}},
            {"9809\n1 12.5\n", {}},
            {"12.5 1\n# no\n\n12.4\n", {12.5, 12.4}},
            {"", {}},
            {QByteArray("\xff\xfe\n", 3), {0.0}}};
        for (const auto& row : rows) {
            QBuffer buffer;
            buffer.setData(row.first);
            QVERIFY(buffer.open(QIODevice::ReadOnly));
            EnergyRule rule;
            rule.source = EnergyRule::ByReference;
            rule.spacing = 1.7;
            rule.reference = readScanAngles(buffer);
            QCOMPARE(rule.reference.degrees, row.second);
            QCOMPARE(rule.reference.wrongSpacing, row.first.contains("D= x"));
            const double d = row.first.contains("D= 3.1") ? 3.1 : 1.7;
            for (int i = -1; i <= row.second.size() && !row.second.isEmpty(); ++i) // clamped
                QCOMPARE(energyOfFile(rule, {}, i).eV,
                         energyOfAngle(row.second[qBound(0, i, row.second.size() - 1)], d));
        }
    }

    void filesAreListedQuietlyWithTheirEnergies()
    {
        SelectDataFiles row;
        const QSignalSpy changed(&row, &SelectDataFiles::currentIndexChanged);
        const QSignalSpy selected(&row, &SelectDataFiles::filesSelected);
        row.setEngCalcStart(9000);
        row.setEngCalcDelta(2);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(row.addFile(QString::number(i), 2 * i), 9000.0 + 4 * i);
        QCOMPARE(changed.size(), 0);
        for (const int i : {2, 1, -1, 3}) // out of the list: nothing happens
            row.select(i);
        QCOMPARE(row.currentIndex(), 1);
        row.setEngCalcDelta(3);
        QCOMPARE(row.applyEnergies(), (QVector<double>{9000, 9006, 9012}));
        row.findChild<QRadioButton*>("AddFiles")->click();
        Q_EMIT row.dialog()->get()->filesSelected({"b", "a10", "a9"});
        QCOMPARE(selected.value(0), (QVariantList{QStringList{"a9", "a10", "b"}, false}));
        row.darkArea(QRectF(1.9, 2.9, 3, -1e300));
        QCOMPARE(row.findChild<QLabel*>("DarkArea")->text(), QString("(1,2)-(4,-2147483648)"));
    }

    void setupFollowsWhatIsTyped()
    {
        EOFSetup setup;
        const auto typed = [&](const char* name, const char* text) {
            setup.findChild<QLineEdit*>(name)->setText(text);
            Q_EMIT setup.findChild<QLineEdit*>(name)->editingFinished();
            return QPointF(setup.rule().delta, setup.rule().end);
        };
        typed("Start", "9000");
        typed("NumOfPoints", "50");
        QCOMPARE(typed("Delta", "2"), QPointF(2, 9100));
        QCOMPARE(typed("End", "9050"), QPointF(1, 9050));
        typed("NumOfPoints", "0");
        QCOMPARE(typed("End", "1").x(), 1.0);
        // All digits, but not those of rounding.
        const auto text = [&](const char* name) {
            return setup.findChild<QLineEdit*>(name)->text();
        };
        setup.setNumOfPoints(81);
        setup.setDelta(0.1);
        setup.setStart(8948);
        QCOMPARE(text("End"), QString("8956.1"));
        Q_EMIT setup.findChild<QLineEdit*>("End")->editingFinished();
        QCOMPARE(text("Delta"), QString("0.1"));
        setup.setStart(8984.3602912345);
        QCOMPARE(text("Start"), QString("8984.3602912345"));
        setup.setNumOfPoints(3);
        setup.setEnd(9000);
        QCOMPARE(setup.rule().delta, (9000 - 8984.3602912345) / 3);
        const LogCapture log;
        for (const char* pattern : {"((", "\\d_kev", "\\d_kev"})
            setup.setPattern(pattern);
        QCOMPARE(log.linesWith("does not compile"), 1);
        QCOMPARE(setup.rule().factor, 1000.0);
        QCOMPARE(setup.findChild<QComboBox*>("Patterns")->count(), 12);
    }

    void crystalIsTypedOrChosenAndServesTheReference()
    {
        EOFSetup setup;
        auto* list = setup.findChild<QComboBox*>("Crystals");
        auto* spacing = setup.findChild<QLineEdit*>("Spacing");
        QVERIFY(spacing->text() == "3.13553" && list->currentIndex() == -1);
        Q_EMIT list->activated(1);
        QCOMPARE(setup.rule().spacing, 1.637478);
        const LogCapture log;
        for (const char* wrong : {"0", "-1", "Si", "inf", ""})
            setup.setSpacing(wrong);
        QCOMPARE(log.linesWith("Crystal spacing"), 5);
        QVERIFY(spacing->text() == "1.637478" && list->currentText() == "Si(311)");
        const QTemporaryDir dir;
        QVERIFY(writeBytes(dir.filePath("scan"), "30\n31\n"));
        setup.setReference(dir.filePath("scan"));
        setup.setSpacing("2.5"); // also after the file was read
        QCOMPARE(setup.energyOf({}, 0).eV, energyOfAngle(30, 2.5));
        QVERIFY(writeBytes(dir.filePath("scan"), "9809\nD= 0\nOffset\n0 30\n"));
        setup.setReference(dir.filePath("scan"));
        QCOMPARE(log.linesWith("the setup's holds"), 1);
        QCOMPARE(setup.energyOf({}, 0).eV, energyOfAngle(30, 2.5));
    }

    void setupPreviewsIsCopiedAndIsApplied()
    {
        DataBox box;
        SelectDataFiles& i1 = *box.i1Row();
        SelectDataFiles& i0 = *box.i0Row();
        const auto part = [](SelectDataFiles& row, const char* name) {
            return row.findChild<QWidget*>(name);
        };
        const auto preview = [](SelectDataFiles& row) {
            return row.findChild<QLabel*>("Preview")->text();
        };
        box.show();
        QTest::mouseClick(part(i1, "Setup"), Qt::LeftButton);
        QCOMPARE(preview(i1), QString("100 files at 0, 1 ... 99 eV: no energies of X-rays"));
        for (int i = 0; i < 3; ++i) { // the second file failed
            i1.addFile(QString::number(i), 2 * i);
            i0.addFile(QString::number(i), 2 * i);
        }
        QTRY_COMPARE(preview(i1), QString("3 files at 0, 2 ... 4 eV: no energies of X-rays"));
        QVERIFY(part(i1, "PreviewMark")->isVisible());
        QCOMPARE(i1.findChild<QLabel*>("Energies")->text(), QString("0 - 4 eV"));
        i1.showEnergySetup();
        auto* start = i1.findChild<QLineEdit*>("Start");
        start->selectAll();
        QTest::keyClicks(start, "8948");
        QCOMPARE(preview(i1), QString("3 files at 8948, 8950 ... 8952 eV"));
        QVERIFY(!part(i1, "PreviewMark")->isVisible());
        QTest::keyClick(start, Qt::Key_Escape);
        QVERIFY(start->isVisible());
        QVERIFY(!part(i0, "CopyToI0")->isVisible());
        i1.findChild<QComboBox*>("Unit")->setCurrentIndex(1);
        i1.setEngByNameRegExp("E(?<E>.*)keV");
        i1.setEngByName(true);
        QTest::mouseClick(part(i1, "CopyToI0"), Qt::LeftButton);
        const EnergyRule rule = i0.energySetup().rule();
        QVERIFY(rule.source == EnergyRule::ByName && rule.pattern == "E(?<E>.*)keV");
        QVERIFY(rule.factor == 1000.0 && rule.start == 8948.0 && rule.unit == EnergyRule::keV);
        QVERIFY(part(i0, "Apply")->isVisible());
        QCOMPARE(i0.energies(), (QVector<double>{0, 2, 4}));
        connect(&i0, &SelectDataFiles::energiesApplied, &i0, &SelectDataFiles::applyEnergies);
        QTest::mouseClick(part(i0, "Apply"), Qt::LeftButton);
        QCOMPARE(i0.energies(), (QVector<double>{0, 2000, 4000})); // names without energies
        QCOMPARE(i0.findChild<QLabel*>("Energies")->text(), QString("0 - 4000 eV"));
    }

    void enterInTheSetupEndsAFieldAndPressesNoButton()
    {
        EOFSetup setup;
        QVector<QSignalSpy*> clicks;
        for (QPushButton* button : setup.findChildren<QPushButton*>())
            clicks.append(new QSignalSpy(button, &QPushButton::clicked));
        QVERIFY(!clicks.isEmpty());
        setup.show();
        auto* points = setup.findChild<QLineEdit*>("NumOfPoints");
        points->setText("81");
        QTest::keyClick(points, Qt::Key_Return);
        QCOMPARE(setup.rule().end, setup.rule().start + 81 * setup.rule().delta);
        QVERIFY(setup.isVisible());
        for (const QSignalSpy* spy : qAsConst(clicks))
            QVERIFY(spy->isEmpty());
        qDeleteAll(clicks);
    }

    void filesThatNeverEndOrAreMissingLeaveNothing()
    {
        const QTemporaryDir dir;
        const QString file = dir.filePath("file");
        QVERIFY(writeBytes(file, "12.5\n12.4\n"));
        SelectDataFiles row;
        row.setEngByRef(file);
        QVERIFY(row.addFile("a", 1) > row.addFile("b", 0));
        QVERIFY(writeBytes(file, "# Size 9 9\n1 2\n"));
        SelectDataFilesAdditionalSetup setup;
        setup.findChild<QCheckBox*>("UseErrPs")->click();
        for (const char* wrong : {"/none", "/dev/zero"}) {
            setup.errPsDefSelected(file);
            QVERIFY(setup.errPoints().active && setup.errPoints().contains(1, 2));
            setup.errPsDefSelected(wrong);
            QVERIFY(!setup.errPoints().active);
            row.setEngByRef(wrong);
            QCOMPARE(row.addFile("c", 4), 8004.0);
        }
    }
};

QTEST_MAIN(TestFileRows)
#include "test_file_rows.moc"
