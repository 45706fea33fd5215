#pragma once

#include "analysis/lcf/LcfFit.h"
#include "image/BlockSpectrum.h"
#include "image/TiffData.h"

#include <QString>
#include <QVector>

#include <memory>

/// The fixed input of all benchmarks: stacks of 512x512 pixels and 200 energies round the Cu K
/// edge, mixed of three reference spectra, with noise from a fixed seed.
namespace synthetic {

constexpr int side = 512;
constexpr int energies = 200;
constexpr double firstEnergy = 8880.0; ///< [eV]
constexpr double energyStep = 1.25;    ///< [eV]
constexpr int references = 3;

/// mu(E) of reference r.
double referenceMu(int r, double E);

std::unique_ptr<TiffData> i1Image(int number);
std::unique_ptr<TiffData> i0Image(int number);

/// Both stacks, made once and kept.
StackPair stacks();

/// Conditions of a block of the given half width in both directions, with I0.
BlockConditions conditions(int half);

/// Writes reference r as a text file into a folder; its name.
QString writeReference(const QString& folder, int r);

/// The references as a request's rows: three active ones and an empty fourth.
QVector<LcfReferenceData> referenceRows();

} // namespace synthetic
