#pragma once

#include "ImageWriters.h"
#include "Phantom.h"

#include <QString>

/// Names of an experiment's files, all under its folder.
namespace demoFiles {
QString stackName(Stack stack); ///< what the files of a stack begin with, and batch words end with
QString imagePattern(Stack stack, ImageFormat format); ///< name filter, without folder
/// The names of an uneven scan's images hold their energies.
QString imageFile(const QString& folder, const Phantom& phantom, Stack stack, int index,
                  ImageFormat format);
QString referenceFile(const QString& folder, int species);
QString kevReference(const QString& folder);
QString truthFile(const QString& folder);
/// Text form of a map as the program names it: kind is "ratio", "dmut", one of a HardRun or, for
/// fractions without the energy shift map, "raw".
QString mapText(const QString& folder, const QString& kind, int species);
/// Text of a map that no reference has, by its word, such as "dEdge".
QString analysisMap(const QString& folder, const QString& word);
/// 16-bit form of the same map.
QString mapTiff(const QString& folder, const QString& kind, int species);
QString shiftMap(const QString& folder); ///< as the program saves it
QString pictureFolder(const QString& folder);
} // namespace demoFiles

/// Range of the 16-bit maps: 0 and 65535 stand for these values.
constexpr double mapScaleMin = -0.25;
constexpr double mapScaleMax = 1.25;

/// Kinds of the maps of a fit of the hard experiment.
struct HardRun
{
    const char* ratio;
    const char* dMut;
};

constexpr HardRun straightRun{"ratio", "dmut"}; ///< blocks of the experiment's half width
constexpr HardRun victoreenRun{"victoreen-ratio", "victoreen-dmut"}; ///< single pixels

/// Writes images, references, bad-pixel list, configuration, batch and truth into a folder, which
/// is made when missing. On failure false, with a sentence in `error`.
bool writeExperiment(const QString& folder, const ExperimentConditions& conditions,
                     ImageFormat format, QString* error);
