#include "selection/EnergyPreview.h"

#include <cmath>

namespace {

QString textOf(const QVector<double>& energies)
{
    const int n = energies.size();
    if (n == 0)
        return EnergyPreview::tr("no files");
    if (n == 1)
        return EnergyPreview::tr("1 file at %1 eV").arg(shownEnergy(energies.first()));
    if (n == 2)
        return EnergyPreview::tr("2 files at %1 and %2 eV")
            .arg(shownEnergy(energies.first()), shownEnergy(energies.last()));
    return EnergyPreview::tr("%1 files at %2, %3 ... %4 eV")
        .arg(QString::number(n), shownEnergy(energies.at(0)), shownEnergy(energies.at(1)),
             shownEnergy(energies.last()));
}

/// Place of the first energy that does not lie above the one before; 0 when all do.
int firstNotRising(const QVector<double>& energies)
{
    for (int i = 1; i < energies.size(); ++i) {
        if (!(energies.at(i) > energies.at(i - 1)))
            return i;
    }
    return 0;
}

} // namespace

QString shownEnergy(double eV)
{
    QString text = QString::number(eV, 'f', 3);
    while (text.contains(QLatin1Char('.')) &&
           (text.endsWith(QLatin1Char('0')) || text.endsWith(QLatin1Char('.'))))
        text.chop(1);
    return text;
}

EnergyPreview previewOf(const QVector<double>& energies)
{
    EnergyPreview preview;
    preview.text = textOf(energies);
    for (const double eV : energies) {
        if (!(eV >= leastScanEnergy) || !std::isfinite(eV)) {
            preview.doubt = EnergyPreview::tr("no energies of X-rays");
            return preview;
        }
    }
    const int at = firstNotRising(energies);
    if (at == 0)
        return preview;
    preview.first = at - 1;
    preview.second = at;
    preview.doubt = EnergyPreview::tr("energies do not rise: %1, then %2 eV")
                        .arg(shownEnergy(energies.at(at - 1)), shownEnergy(energies.at(at)));
    return preview;
}
