#pragma once

#include <QString>
#include <QVector>

class QIODevice;

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
    QString pattern;     ///< regular expression of the energy in a file's path
    double factor = 1.0; ///< multiplier of the number found; counts when above 0
    double start = 0.0;
    double delta = 0.0;
    double end = 0.0;
    int points = 0; ///< steps from start to end
    int unit = eV;
    bool evenInEnergy = true;    ///< otherwise steps are even in the monochromator's angle
    QVector<double> refEnergies; ///< [eV]
    double spacing = 3.13553;    ///< of the monochromator crystal [angstrom]
};

/// Energy [eV] of file number fNo. A name without a match gives fNo times the factor; an empty
/// reference list 8000 + fNo, visibly wrong on a plot; numbers past a list take its last energy.
double energyOfFile(const EnergyRule& rule, const QString& fileName, int fNo);

/// Energies [eV] of a scan file's angles: field 1 behind the line "Offset" of a "9809" file, field
/// 0 of any other from its first line on. Lines that begin with "#" or have too few fields are
/// passed over; a file without angles gives an empty list.
QVector<double> readRefEnergies(QIODevice& in, double spacing);
