#pragma once

#include <QString>

#include <array>

class QTextStream;

/// One row of the element list.
struct Element
{
    int z;
    QString name; ///< chemical symbol
    double mass;  ///< standard atomic mass; of the longest-lived isotope where there is none
};

/// Rows 0 (" ", no element), 1 to 109 by atomic number, and 110, the deuteron "D" with z 1.
extern const std::array<Element, 111> elements;

/// Names of the edges by edge index: "K", "LI", "LII", "LIII".
extern const std::array<QString, 4> edgeNames;

/// One row of the absorption table. Shells in the order K, LI, LII, LIII, M1; 0 for what is
/// missing.
struct AbsorptionRecord
{
    int z = 0;
    std::array<double, 5> edge{}; ///< edge energies [keV]
    std::array<double, 5> c{};    ///< photoelectric cross section c lambda^3 - d lambda^4 [cm2/g]
    std::array<double, 5> d{};    ///< above the edge, lambda in angstrom
};

/// Indexed by atomic number; row 0 and rows past the last element known are zero.
extern std::array<AbsorptionRecord, 100> absorptionTable;
/// Rows of absorptionTable that were filled.
extern int absorptionRows;

/// Fills absorptionTable from the compiled-in table at its first call; later calls do nothing. GUI
/// thread, before any worker runs; edgeEnergy() calls it by itself.
void loadElementTables();

/// Reads rows of the table's text form into absorptionTable, as many as fit, and returns their
/// number. Lines that start with "#" are skipped.
int readAbsorptionTable(QTextStream& in);

/// Atomic number of a chemical symbol, upper and lower case as written; -1 if unknown.
int atomicNumber(const QString& name);

/// Edge index 0..3 of "K", "L1" or "LI", "L2" or "LII", "L3" or "LIII" in any case; else 0.
int edgeNo(const QString& name);

/// Energy [eV] of an edge; 0 outside the table and for an edge that the element does not have.
double edgeEnergy(int z, int edge);
