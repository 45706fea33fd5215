#pragma once

#include "ImageWriters.h"
#include "Phantom.h"

#include <QString>

/// Names of an experiment's files, all under its folder.
namespace demoFiles {
QString imagePattern(Stack stack, ImageFormat format); ///< name filter, without folder
QString imageFile(const QString& folder, Stack stack, int index, ImageFormat format);
QString referenceFile(const QString& folder, int species);
QString truthFile(const QString& folder);
/// Text form of a map as the program names it: kind is "ratio", "dmut" or, for fractions without
/// the energy shift map, "raw".
QString mapText(const QString& folder, const QString& kind, int species);
/// 16-bit form of the same map.
QString mapTiff(const QString& folder, const QString& kind, int species);
QString shiftMap(const QString& folder); ///< as the program saves it
QString pictureFolder(const QString& folder);
} // namespace demoFiles

/// Range of the 16-bit maps: 0 and 65535 stand for these values.
constexpr double mapScaleMin = -0.25;
constexpr double mapScaleMax = 1.25;

/// Text of a species' reference spectrum. Species 1 is a beamline's scan (Bragg angles with I0 and
/// I1), the others are tables of energy and absorption.
QString referenceText(int species);

/// The batch text that loads, analyses and saves the experiment in `folder` (an absolute path), and
/// ends the program.
QString batchText(const QString& folder, const Phantom& phantom, ImageFormat format);

/// Writes images, references, bad-pixel list, configuration, batch and truth into a folder, which
/// is made when missing. On failure false, with a sentence in `error`.
bool writeExperiment(const QString& folder, const ExperimentConditions& conditions,
                     ImageFormat format, QString* error);
