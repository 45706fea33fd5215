#pragma once

#include "CompareParts.h"

/// Limits of the map of the edge's shift [eV] against the planted mixture. The program's mid point
/// is the mean of three straight crossings over two steps of a smoothed curve, where the rise of a
/// mixture changes from step to step: that is what the wide rms is for.
constexpr double edgeBiasLimit = 0.05;
constexpr double edgeRmsLimit = 0.3;

/// Mid point of a mixture of species in the easy scan, from the edge [eV]: where it passes one
/// half, which it does once, less a third of a step. That is because one of the three crossings
/// that the program's mid point is the mean of is counted from the point before its own, by
/// definition.
double mixtureShift(const std::array<double, speciesCount>& fractions);

/// Holds the maps of the analyses behind the fits against the planted fields of the easy
/// experiment, and writes a row for each: the shift of the edge, the jump of the residual
/// absorption and that of the element. Both jumps have the limits of the fits; of the element's,
/// half of the bias is used up by the background, which falls between its two energies.
CompareResult compareAnalyses(const QString& folder, const Blocks& blocks, QTextStream& table,
                              QTextStream& out);
