#include "spectrum/ElementTable.h"

#include <QFile>
#include <QTextStream>
#include <QtTest>

#include <cmath>

namespace {
/// Photoelectric cross section of copper by the coefficients of a shell.
double copperSection(size_t shell, double keV)
{
    const AbsorptionRecord& copper = absorptionTable[29];
    const double l = 12.398424360387684 / keV;
    return copper.c[shell] * std::pow(l, 3) - copper.d[shell] * std::pow(l, 4);
}
} // namespace

class TestElementTable : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void edgeEnergiesComeFromTheTable_data();
    void edgeEnergiesComeFromTheTable();
    void rowIndexIsTheAtomicNumber();
    void coefficientsJumpAtTheCopperEdge();
    void namesBecomeNumbers();
    void elementListRunsInOrder();
    void shortAndLongTablesAreTaken();
    void lineTableIsCompiledIn();
};

void TestElementTable::edgeEnergiesComeFromTheTable_data()
{
    QTest::addColumn<int>("z");
    QTest::addColumn<int>("edge");
    QTest::addColumn<double>("energy");
    QTest::newRow("Cu K, to the last digit") << 29 << 0 << 1000.0 * 8.98436029;
    QTest::newRow("U LIII") << 92 << 3 << 17168.0;
    QTest::newRow("H has no LI") << 1 << 1 << 0.0;
    QTest::newRow("past the elements known") << 95 << 0 << 0.0;
    QTest::newRow("past the table") << 100 << 0 << 0.0;
    QTest::newRow("unknown element") << -1 << 0 << 0.0;
    QTest::newRow("no such edge") << 29 << 5 << 0.0;
    QTest::newRow("negative edge") << 29 << -1 << 0.0;
}

void TestElementTable::edgeEnergiesComeFromTheTable()
{
    QFETCH(int, z);
    QFETCH(int, edge);
    QFETCH(double, energy);
    QVERIFY(edgeEnergy(z, edge) == energy);
}

void TestElementTable::rowIndexIsTheAtomicNumber()
{
    loadElementTables();
    QCOMPARE(absorptionRows, 93);
    QCOMPARE(absorptionTable[0].edge[0], 0.0);
    for (int z = 1; z <= 92; ++z) {
        const AbsorptionRecord& row = absorptionTable[static_cast<size_t>(z)];
        QCOMPARE(row.z, z);
        // Inner shells are bound tighter, and the K edge rises with the atomic number.
        QVERIFY(row.edge[0] > absorptionTable[static_cast<size_t>(z - 1)].edge[0]);
        for (size_t shell = 1; shell < 5; ++shell)
            QVERIFY(row.edge[shell] <= row.edge[shell - 1]);
    }
}

void TestElementTable::coefficientsJumpAtTheCopperEdge()
{
    // Photoelectric cross sections of copper from the usual tables [cm2/g]. Two coefficients follow
    // them to some 8 percent at the ends of the long range between the LI and the K edge.
    loadElementTables();
    QVERIFY(std::abs(copperSection(1, 8.97) / 36.7 - 1) < 0.1);
    QVERIFY(std::abs(copperSection(0, 9.0) / 275.0 - 1) < 0.05);
    QVERIFY(std::abs(copperSection(0, 22.16) / 24.8 - 1) < 0.05);
}

void TestElementTable::namesBecomeNumbers()
{
    QCOMPARE(atomicNumber(QStringLiteral("Cu")), 29);
    QCOMPARE(atomicNumber(QStringLiteral("cu")), -1);
    QCOMPARE(atomicNumber(QString()), -1);
    QCOMPARE(atomicNumber(QStringLiteral("Mt")), 109);
    const std::pair<const char*, int> edges[] = {{"K", 0},   {"L1", 1}, {"lI", 1}, {"l2", 2},
                                                 {"LII", 2}, {"L3", 3}, {"", 0},   {"liii", 3},
                                                 {"M1", 0},  {"L 2", 0}};
    for (const auto& [name, number] : edges)
        QCOMPARE(edgeNo(QString::fromLatin1(name)), number);
    for (int i = 0; i < 4; ++i)
        QCOMPARE(edgeNo(edgeNames[static_cast<size_t>(i)]), i);
}

void TestElementTable::elementListRunsInOrder()
{
    QCOMPARE(elements[0].name, QStringLiteral(" "));
    for (int z = 0; z < 110; ++z)
        QCOMPARE(elements[static_cast<size_t>(z)].z, z);
    QCOMPARE(elements[78].name, QStringLiteral("Pt"));
    QCOMPARE(elements[110].name, QStringLiteral("D"));
    QCOMPARE(elements[110].mass, 2.01355321);
}

void TestElementTable::shortAndLongTablesAreTaken()
{
    const auto before = absorptionTable;
    QString text = QStringLiteral("# comment\nXx 0 1.5 - -2 3 =\n\n");
    QTextStream shortTable(&text);
    QCOMPARE(readAbsorptionTable(shortTable), 2);
    QCOMPARE(absorptionTable[0].edge[0], 1.5);
    QCOMPARE(absorptionTable[0].c[0], 0.0); // negative
    QCOMPARE(absorptionTable[0].d[0], 3.0);
    QCOMPARE(absorptionTable[0].edge[1], 0.0); // "="
    QString longText = QStringLiteral("A 1 1\n").repeated(1000);
    QTextStream longTable(&longText);
    QCOMPARE(readAbsorptionTable(longTable), 100);
    absorptionTable = before;
}

void TestElementTable::lineTableIsCompiledIn()
{
    loadElementTables();
    QFile file(QStringLiteral(":xray-KLIII.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().trimmed().split('\n');
    QCOMPARE(lines.size(), 96);
    QCOMPARE(lines.at(1).simplified().split(' ').size(), 13);
}

QTEST_APPLESS_MAIN(TestElementTable)
#include "test_element_table.moc"
