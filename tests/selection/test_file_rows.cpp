#include "common/Bragg.h"
#include "display/FileDialogs.h"
#include "image/ErrPoints.h"
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
                    {"\\d\\d\\d\\d\\.\\d", 1, "/run9000.5/a.tif", 9000.5}, // the path counts too
                    {"\\d\\d\\d\\d_\\d\\d", 10, "a.tif", 70},              // no match: the number
                    {"\\d", 0, "a.tif", 7},
                    {"((", 1, "((", 7}};
        EnergyRule rule;
        rule.source = EnergyRule::ByName;
        for (const auto& row : rows) {
            rule.pattern = row.pattern;
            rule.factor = row.factor;
            QCOMPARE(energyOfFile(rule, row.name, 7), row.energy);
        }
        rule.pattern = "(a+)+$"; // runs away, and is given up
        QCOMPARE(energyOfFile(rule, QString(5000, 'a') + '!', 3), 3.0);
    }

    void energyByCalculation()
    {
        const double d = EnergyRule().spacing;
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
        rule.points = 10;
        for (const auto& row : rows) {
            rule.unit = int(row[0]);
            rule.evenInEnergy = row[1] > 0;
            rule.start = row[2];
            rule.delta = row[3];
            rule.end = row[4];
            QVERIFY(std::abs(energyOfFile(rule, {}, 5) - row[5]) < 1e-6);
        }
        rule.unit = 0;
        rule.start = 100; // out of the crystal's reach: -1 degree, deliberately no error
        QVERIFY(std::abs(energyOfFile(rule, {}, 0) - energyOfAngle(-1.0, d)) < 1e-6);
    }

    void scanFiles()
    {
        const QVector<QPair<QByteArray, QVector<double>>> rows{
            {"  9809 scan\nD= 3.1\n Offset 0 0\n1 12.5 0\n2 12.4 0\n", {12.5, 12.4}},
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
            rule.refEnergies = readRefEnergies(buffer, 3.13553);
            QCOMPARE(rule.refEnergies.size(), row.second.size());
            for (int i = -1; i <= row.second.size() && !row.second.isEmpty(); ++i) // clamped
                QCOMPARE(energyOfFile(rule, {}, i),
                         energyOfAngle(row.second[qBound(0, i, row.second.size() - 1)], 3.13553));
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
        row.findChild<QRadioButton*>("AddFiles")->click();
        Q_EMIT row.dialog()->filesSelected({"b", "a"});
        QCOMPARE(selected.value(0), (QVariantList{QStringList{"b", "a"}, false}));
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
        const LogCapture log;
        for (const char* pattern : {"((", "\\d_kev", "\\d_kev"})
            setup.setPattern(pattern);
        QCOMPARE(log.linesWith("does not compile"), 1);
        QCOMPARE(setup.rule().factor, 1000.0);
        QCOMPARE(setup.findChild<QComboBox*>("Patterns")->count(), 12);
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
