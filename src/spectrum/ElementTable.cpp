#include "spectrum/ElementTable.h"

#include <QDebug>
#include <QFile>
#include <QStringList>
#include <QTextStream>

// Must be outside any namespace.
static void initElementResources()
{
    Q_INIT_RESOURCE(element_tables);
}

const std::array<Element, 111> elements = {{
    {0, QStringLiteral(" "), 0.0},        {1, QStringLiteral("H"), 1.0079},
    {2, QStringLiteral("He"), 4.0026},    {3, QStringLiteral("Li"), 6.941},
    {4, QStringLiteral("Be"), 9.0122},    {5, QStringLiteral("B"), 10.811},
    {6, QStringLiteral("C"), 12.011},     {7, QStringLiteral("N"), 14.007},
    {8, QStringLiteral("O"), 15.999},     {9, QStringLiteral("F"), 18.998},
    {10, QStringLiteral("Ne"), 20.180},   {11, QStringLiteral("Na"), 22.990},
    {12, QStringLiteral("Mg"), 24.305},   {13, QStringLiteral("Al"), 26.982},
    {14, QStringLiteral("Si"), 28.086},   {15, QStringLiteral("P"), 30.974},
    {16, QStringLiteral("S"), 32.065},    {17, QStringLiteral("Cl"), 35.453},
    {18, QStringLiteral("Ar"), 39.948},   {19, QStringLiteral("K"), 39.098},
    {20, QStringLiteral("Ca"), 40.078},   {21, QStringLiteral("Sc"), 44.956},
    {22, QStringLiteral("Ti"), 47.867},   {23, QStringLiteral("V"), 50.942},
    {24, QStringLiteral("Cr"), 51.996},   {25, QStringLiteral("Mn"), 54.938},
    {26, QStringLiteral("Fe"), 55.845},   {27, QStringLiteral("Co"), 58.933},
    {28, QStringLiteral("Ni"), 58.693},   {29, QStringLiteral("Cu"), 63.546},
    {30, QStringLiteral("Zn"), 65.38},    {31, QStringLiteral("Ga"), 69.723},
    {32, QStringLiteral("Ge"), 72.630},   {33, QStringLiteral("As"), 74.922},
    {34, QStringLiteral("Se"), 78.971},   {35, QStringLiteral("Br"), 79.904},
    {36, QStringLiteral("Kr"), 83.798},   {37, QStringLiteral("Rb"), 85.468},
    {38, QStringLiteral("Sr"), 87.62},    {39, QStringLiteral("Y"), 88.906},
    {40, QStringLiteral("Zr"), 91.224},   {41, QStringLiteral("Nb"), 92.906},
    {42, QStringLiteral("Mo"), 95.95},    {43, QStringLiteral("Tc"), 98.0},
    {44, QStringLiteral("Ru"), 101.07},   {45, QStringLiteral("Rh"), 102.91},
    {46, QStringLiteral("Pd"), 106.42},   {47, QStringLiteral("Ag"), 107.87},
    {48, QStringLiteral("Cd"), 112.41},   {49, QStringLiteral("In"), 114.82},
    {50, QStringLiteral("Sn"), 118.71},   {51, QStringLiteral("Sb"), 121.76},
    {52, QStringLiteral("Te"), 127.60},   {53, QStringLiteral("I"), 126.90},
    {54, QStringLiteral("Xe"), 131.29},   {55, QStringLiteral("Cs"), 132.91},
    {56, QStringLiteral("Ba"), 137.33},   {57, QStringLiteral("La"), 138.91},
    {58, QStringLiteral("Ce"), 140.12},   {59, QStringLiteral("Pr"), 140.91},
    {60, QStringLiteral("Nd"), 144.24},   {61, QStringLiteral("Pm"), 145.0},
    {62, QStringLiteral("Sm"), 150.36},   {63, QStringLiteral("Eu"), 151.96},
    {64, QStringLiteral("Gd"), 157.25},   {65, QStringLiteral("Tb"), 158.93},
    {66, QStringLiteral("Dy"), 162.50},   {67, QStringLiteral("Ho"), 164.93},
    {68, QStringLiteral("Er"), 167.26},   {69, QStringLiteral("Tm"), 168.93},
    {70, QStringLiteral("Yb"), 173.05},   {71, QStringLiteral("Lu"), 174.97},
    {72, QStringLiteral("Hf"), 178.49},   {73, QStringLiteral("Ta"), 180.95},
    {74, QStringLiteral("W"), 183.84},    {75, QStringLiteral("Re"), 186.21},
    {76, QStringLiteral("Os"), 190.23},   {77, QStringLiteral("Ir"), 192.22},
    {78, QStringLiteral("Pt"), 195.08},   {79, QStringLiteral("Au"), 196.97},
    {80, QStringLiteral("Hg"), 200.59},   {81, QStringLiteral("Tl"), 204.38},
    {82, QStringLiteral("Pb"), 207.2},    {83, QStringLiteral("Bi"), 208.98},
    {84, QStringLiteral("Po"), 209.0},    {85, QStringLiteral("At"), 210.0},
    {86, QStringLiteral("Rn"), 222.0},    {87, QStringLiteral("Fr"), 223.0},
    {88, QStringLiteral("Ra"), 226.0},    {89, QStringLiteral("Ac"), 227.0},
    {90, QStringLiteral("Th"), 232.04},   {91, QStringLiteral("Pa"), 231.04},
    {92, QStringLiteral("U"), 238.03},    {93, QStringLiteral("Np"), 237.0},
    {94, QStringLiteral("Pu"), 244.0},    {95, QStringLiteral("Am"), 243.0},
    {96, QStringLiteral("Cm"), 247.0},    {97, QStringLiteral("Bk"), 247.0},
    {98, QStringLiteral("Cf"), 251.0},    {99, QStringLiteral("Es"), 252.0},
    {100, QStringLiteral("Fm"), 257.0},   {101, QStringLiteral("Md"), 258.0},
    {102, QStringLiteral("No"), 259.0},   {103, QStringLiteral("Lr"), 262.0},
    {104, QStringLiteral("Rf"), 267.0},   {105, QStringLiteral("Db"), 268.0},
    {106, QStringLiteral("Sg"), 269.0},   {107, QStringLiteral("Bh"), 270.0},
    {108, QStringLiteral("Hs"), 277.0},   {109, QStringLiteral("Mt"), 278.0},
    {1, QStringLiteral("D"), 2.01355321},
}};

const std::array<QString, 4> edgeNames = {QStringLiteral("K"), QStringLiteral("LI"),
                                          QStringLiteral("LII"), QStringLiteral("LIII")};

std::array<AbsorptionRecord, 100> absorptionTable;
int absorptionRows = 0;

namespace {
/// Text columns of one shell. The wavelengths between are not read.
struct ShellColumns
{
    int edge;
    int c;
    int d;
};
constexpr std::array<ShellColumns, 5> shellColumns = {
    {{2, 4, 5}, {6, 8, 9}, {10, 12, 13}, {14, 16, 17}, {18, 19, 20}}};

/// A value of the table; what is missing ("=") and what is not positive counts as 0.
double positiveField(const QStringList& fields, int column)
{
    const double v = fields.value(column).toDouble();
    return v > 0.0 ? v : 0.0;
}

AbsorptionRecord parseRow(const QString& line)
{
    const QStringList fields = line.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    AbsorptionRecord row;
    row.z = fields.value(1).toInt();
    for (size_t shell = 0; shell < shellColumns.size(); ++shell) {
        const ShellColumns& columns = shellColumns[shell];
        row.edge[shell] = positiveField(fields, columns.edge);
        row.c[shell] = positiveField(fields, columns.c);
        row.d[shell] = positiveField(fields, columns.d);
    }
    return row;
}

bool loadTables()
{
    initElementResources();
    QFile file(QStringLiteral(":Victoreen1.txt"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qDebug() << "Cannot open [Victoreen1.txt]\n";
        return false;
    }
    QTextStream in(&file);
    in.setCodec("UTF-8");
    absorptionRows = readAbsorptionTable(in);
    return true;
}
} // namespace

int readAbsorptionTable(QTextStream& in)
{
    size_t rows = 0;
    // The title row is read like any other and fills row 0 with zeros, so that the row index equals
    // the atomic number.
    while (!in.atEnd() && rows < absorptionTable.size()) {
        const QString line = in.readLine();
        if (!line.startsWith(QLatin1Char('#')))
            absorptionTable[rows++] = parseRow(line);
    }
    return static_cast<int>(rows);
}

void loadElementTables()
{
    static const bool loaded = loadTables();
    Q_UNUSED(loaded)
}

int atomicNumber(const QString& name)
{
    for (const Element& element : elements) {
        if (element.name == name)
            return element.z;
    }
    return -1;
}

int edgeNo(const QString& name)
{
    struct Alias
    {
        QLatin1String name;
        int edge;
    };
    static const std::array<Alias, 7> aliases = {{{QLatin1String("K"), 0},
                                                  {QLatin1String("L1"), 1},
                                                  {QLatin1String("LI"), 1},
                                                  {QLatin1String("L2"), 2},
                                                  {QLatin1String("LII"), 2},
                                                  {QLatin1String("L3"), 3},
                                                  {QLatin1String("LIII"), 3}}};
    const QString upper = name.toUpper();
    for (const Alias& alias : aliases) {
        if (upper == alias.name)
            return alias.edge;
    }
    return 0;
}

double edgeEnergy(int z, int edge)
{
    loadElementTables();
    const bool known =
        z >= 0 && z < static_cast<int>(absorptionTable.size()) && edge >= 0 && edge < 5;
    if (!known)
        return 0.0;
    return 1000.0 * absorptionTable[static_cast<size_t>(z)].edge[static_cast<size_t>(edge)];
}
