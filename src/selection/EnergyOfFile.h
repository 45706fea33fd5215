#pragma once

#include "common/Crystals.h"

#include <QString>
#include <QVector>

class QIODevice;

/// The Bragg angles of a scan.
struct ScanAngles
{
    QVector<double> degrees;
    double spacing = 0.0;      ///< the scan's own crystal [angstrom]; 0 when its file tells none
    bool wrongSpacing = false; ///< it tells one that no crystal has
};

/// How the energy of the n-th file of a stack is found.
struct EnergyRule
{
    enum Source
    {
        ByCalculation,
        ByName,
        ByReference
    };
    /// Unit of start, delta and end.
    enum Unit
    {
        eV = 0,
        keV = 1,
        Degrees = 2
    };

    Source source = ByCalculation;
    QString pattern;     ///< regular expression of the energy in a file's name
    double factor = 1.0; ///< multiplier of the number found; counts when above 0
    double start = 0.0;
    double delta = 0.0;
    double end = 0.0;
    int points = 0; ///< steps from start to end
    int unit = eV;
    bool evenInEnergy = true; ///< otherwise steps are even in the monochromator's angle
    ScanAngles reference;
    double spacing = defaultCrystalSpacing; ///< of the monochromator crystal [angstrom]
};

/// What came of looking for the energy in a name.
enum class NameMatch
{
    Number,
    NoMatch,
    NoNumber ///< the text found is none
};

/// An energy [eV]; `match` is Number where no name plays a part.
struct FileEnergy
{
    double eV;
    NameMatch match;
};

/// Energy of file number fNo. By name: the text that the pattern's group "E" holds, or all that it
/// matches, in the file's own name or, failing that, in its path; "_" stands for the decimal point.
/// A name without a match gives fNo times the factor, a text that is no number 0; an empty
/// reference 8000 + fNo, visibly wrong on a plot; numbers past a list take its last angle.
FileEnergy energyOfFile(const EnergyRule& rule, const QString& fileName, int fNo);

/// Energies [eV] that the rule plans for before there are files: of its points, or of its scan
/// file's angles; by name none. A number of points that no scan has is cut.
QVector<double> plannedEnergies(const EnergyRule& rule);

/// Files whose energies were looked for in their names, and those that had none.
class NameMatches
{
public:
    void add(NameMatch match, const QString& fileName);
    /// What is wrong, in the words of the log; empty when nothing is.
    QString complaint() const;

private:
    int files_ = 0;
    int withoutMatch_ = 0;
    int withoutNumber_ = 0;
    QString first_;
};

/// Angles of a scan file: field 1 behind the line "Offset" of a "9809" file, field 0 of any other
/// from its first line on. Lines that begin with "#" or have too few fields are passed over; a file
/// without angles gives none. The head of a "9809" file may tell a spacing, as "D= 3.1".
ScanAngles readScanAngles(QIODevice& in);
