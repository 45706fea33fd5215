#include "common/Bragg.h"
#include "selection/EnergyOfFile.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QtTest>

#include <cmath>

/// The three rules that give the n-th file its energy.
class TestEnergyOfFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void energyInTheName_data();
    void energyInTheName();
    void patternThatRunsAwayIsGivenUp();
    void energyByCalculation_data();
    void energyByCalculation();
    void angleStepsFromAStartBelowTheCrystalsReach();
    void referenceListIsClampedAtBothEnds();
    void scanFiles_data();
    void scanFiles();
};

void TestEnergyOfFile::energyInTheName_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("energy");
    const QString keV = "\\d\\d_\\d\\d\\d\\d\\d\\dKeV";
    QTest::newRow("decimal by underscore")
        << "\\d\\d\\d\\d_\\d\\d" << 1.0 << "/d/0123_45.tif" << 123.45;
    QTest::newRow("unit is taken away")
        << "\\d\\d\\d\\d\\.\\d\\deV" << 1.0 << "a_7112.50eV.img" << 7112.5;
    QTest::newRow("keV by the factor") << keV << 1000.0 << "07_112500KeV.dat" << 7112.5;
    QTest::newRow("optional digit")
        << "(\\d|)\\d\\d\\d\\d_\\d\\d\\d\\d" << 1.0 << "x10123_2500" << 10123.25;
    QTest::newRow("the path counts too")
        << "\\d\\d\\d\\d\\.\\d" << 1.0 << "/run9000.5/a.tif" << 9000.5;
    QTest::newRow("no match gives the number") << "\\d\\d\\d\\d_\\d\\d" << 10.0 << "a.tif" << 70.0;
    QTest::newRow("factor 0 does not count") << "\\d\\d\\d\\d_\\d\\d" << 0.0 << "a.tif" << 7.0;
    QTest::newRow("broken pattern does not match") << "((" << 1.0 << "((" << 7.0;
}

void TestEnergyOfFile::energyInTheName()
{
    EnergyRule rule;
    rule.source = EnergyRule::ByName;
    QFETCH(QString, pattern);
    QFETCH(double, factor);
    QFETCH(QString, name);
    rule.pattern = pattern;
    rule.factor = factor;
    QTEST(energyOfFile(rule, name, 7), "energy");
}

void TestEnergyOfFile::patternThatRunsAwayIsGivenUp()
{
    EnergyRule rule;
    rule.source = EnergyRule::ByName;
    rule.pattern = "(a+)+$";
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(energyOfFile(rule, QString(5000, 'a') + '!', 3), 3.0);
    QVERIFY(timer.elapsed() < 5000);
}

void TestEnergyOfFile::energyByCalculation_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("even");
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("delta");
    QTest::addColumn<double>("end");
    QTest::addColumn<double>("energy"); // of file 5 of 10 steps
    QTest::newRow("eV") << 0 << true << 9000.0 << 2.0 << 9020.0 << 9010.0;
    QTest::newRow("keV") << 1 << true << 9.0 << 0.002 << 9.02 << 9010.0;
    const double d = 3.13553;
    const double half = (std::asin(12398.424360387684 / 9000 / 2 / d) +
                         std::asin(12398.424360387684 / 9020 / 2 / d)) /
                        2;
    const double middle = 12398.424360387684 / (2 * d * std::sin(half));
    QTest::newRow("eV, even in angle") << 0 << false << 9000.0 << 2.0 << 9020.0 << middle;
    QTest::newRow("keV, even in angle") << 1 << false << 9.0 << 2.0 << 9.02 << middle;
    const double degrees = 12398.424360387684 / (2 * d * std::sin(12.5 / 180 * 3.1415926535));
    QTest::newRow("degrees") << 2 << true << 12.0 << 0.1 << 13.0 << degrees;
    QTest::newRow("degrees, whatever the evenness") << 2 << false << 12.0 << 0.1 << 13.0 << degrees;
}

void TestEnergyOfFile::energyByCalculation()
{
    QFETCH(int, unit);
    QFETCH(bool, even);
    QFETCH(double, start);
    QFETCH(double, delta);
    QFETCH(double, end);
    QFETCH(double, energy);
    EnergyRule rule;
    rule.unit = unit;
    rule.evenInEnergy = even;
    rule.start = start;
    rule.delta = delta;
    rule.end = end;
    rule.points = 10;
    QVERIFY(std::abs(energyOfFile(rule, QString(), 5) - energy) < 1e-6);
}

void TestEnergyOfFile::angleStepsFromAStartBelowTheCrystalsReach()
{
    EnergyRule rule;
    rule.evenInEnergy = false;
    rule.start = 100.0;
    rule.end = 9000.0;
    rule.points = 10;
    // The angle of the start is -1 degree, deliberately no error.
    QVERIFY(std::abs(energyOfFile(rule, QString(), 0) - energyOfAngle(-1.0, rule.spacing)) < 1e-6);
}

void TestEnergyOfFile::referenceListIsClampedAtBothEnds()
{
    EnergyRule rule;
    rule.source = EnergyRule::ByReference;
    QCOMPARE(energyOfFile(rule, QString(), 3), 8003.0);
    rule.refEnergies = {1, 2, 3, 4, 5};
    QCOMPARE(energyOfFile(rule, QString(), -1), 1.0);
    QCOMPARE(energyOfFile(rule, QString(), 2), 3.0);
    QCOMPARE(energyOfFile(rule, QString(), 7), 5.0);
}

void TestEnergyOfFile::scanFiles_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QVector<double>>("angles");
    const QVector<double> two{12.5, 12.4};
    QTest::newRow("9809") << QByteArray("  9809 scan\nD= 3.1\n Offset 0 0\n1 12.5 0\n2 12.4 0\n")
                          << two;
    QTest::newRow("9809 without Offset") << QByteArray("9809\n1 12.5\n") << QVector<double>();
    QTest::newRow("plain, from its first line on") << QByteArray("12.5 1\n# no\n\n12.4\n") << two;
    QTest::newRow("empty") << QByteArray() << QVector<double>();
    QTest::newRow("binary") << QByteArray("\xff\xfe\n", 3) << QVector<double>{0.0};
}

void TestEnergyOfFile::scanFiles()
{
    QFETCH(QByteArray, text);
    QFETCH(QVector<double>, angles);
    QBuffer buffer(&text);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    const QVector<double> energies = readRefEnergies(buffer, 3.13553);
    QCOMPARE(energies.size(), angles.size());
    for (int i = 0; i < angles.size(); ++i)
        QCOMPARE(energies[i], energyOfAngle(angles[i], 3.13553));
}

QTEST_GUILESS_MAIN(TestEnergyOfFile)
#include "test_energy_of_file.moc"
