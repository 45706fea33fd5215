#pragma once

#include "Compare.h"

struct Truth;

/// A block counts as one with an edge when each of its pixels has this edge step: six times the
/// noise of a single pixel's spectrum. One without an edge has no step in any pixel. Others, which
/// mix the two or have a weak edge, are not judged.
constexpr double hardEdgeStep = 0.3;
/// Shares of blocks whose fractions are exactly 0: of those without an edge and of those with one.
constexpr double leastRejected = 0.95;
constexpr double mostLost = 0.05;
/// Share of the weights of edges with a size below weightLimit.
constexpr double weightLimit = 2.0;
constexpr double leastSoundWeights = 0.999;
/// Limits of a species' fractions over edges that were not rejected. Found were, from 60 x 60
/// pixels on, up to 0.004 and 0.014 with straight lines, 0.010 and 0.078 with Victoreen lines; of
/// the bias 0.002 is there without noise too, for references are read on straight lines between
/// their points.
constexpr double straightBiasLimit = 0.01;
constexpr double straightRmsLimit = 0.025;
constexpr double victoreenBiasLimit = 0.02;
constexpr double victoreenRmsLimit = 0.12;

/// Holds the fractions of both fits of the hard experiment against the planted fields and prints,
/// for each, the shares above with bias and rms of each species. The half width is that of the fit
/// with straight lines, a negative one that of the experiment.
CompareResult compareHard(const QString& folder, const Truth& truth, int halfWidth,
                          QTextStream& out);
