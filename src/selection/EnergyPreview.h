#pragma once

#include <QCoreApplication>
#include <QString>
#include <QVector>

/// Energies below this are none of X-rays that a scan is made with. [eV]
constexpr double leastScanEnergy = 100.0;

/// The energies that the files of a scan have, or would get, in words for people.
struct EnergyPreview
{
    Q_DECLARE_TR_FUNCTIONS(EnergyPreview)
public:
    QString text;    ///< "81 files at 8948, 8949 ... 9028 eV"
    QString doubt;   ///< what is wrong with them, or empty
    int first = -1;  ///< of two files whose energies do not rise, the places in the list
    int second = -1; ///< else -1

    bool isSound() const { return doubt.isEmpty(); }
};

/// Energies [eV] in the order of loading. They are to lie above leastScanEnergy, to be numbers and
/// to rise from file to file; no energies at all are sound, and have a text without any.
EnergyPreview previewOf(const QVector<double>& energies);

/// An energy as people read it, to a thousandth of an eV at most and without trailing zeros.
QString shownEnergy(double eV);
