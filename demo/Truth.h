#pragma once

#include "Phantom.h"

#include <QString>

class QTextStream;

/// The planted fields as compare reads them back.
struct Truth
{
    Difficulty difficulty = Difficulty::Easy;
    int size = 0;             ///< width and height of the images
    int halfWidth = 0;        ///< half width of the blocks that the batch analyses
    QVector<bool> usable;     ///< false for bad pixels and where there is no beam
    QVector<double> edgeStep; ///< per pixel, row after row
    std::array<QVector<double>, speciesCount> fractions;
    QVector<double> shift; ///< [eV]
};

/// Text of truth.dat: "# Experiment easy|hard", "# Size w h", "# HalfWidth n", then a line "x y
/// usable step f0 f1 f2 shift" for each pixel, row after row.
QString truthText(const Phantom& phantom);

/// Reads that text. False, with a sentence in `error`, when it is not whole.
bool readTruth(QTextStream& in, Truth* truth, QString* error);

/// What the fit of a block should give.
///
/// A weight is the species' share of the block's edge step, so the fraction at each pixel counts by
/// the edge step there. The fit sees the sum of the counts, not of the absorptions. Over fields as
/// smooth as these that changes weights by 0.0025 (rms, without noise), and by up to 0.02 in blocks
/// across the sample's rim.
struct BlockTruth
{
    bool lit = false;       ///< inside the image, no unusable pixel
    double shift = 0.0;     ///< mean over a lit block [eV]
    bool usable = false;    ///< lit, with sample at every pixel
    double edgeStep = 0.0;  ///< mean over a usable block
    double leastStep = 0.0; ///< smallest and largest edge step of a pixel in a lit block
    double mostStep = 0.0;
    std::array<double, speciesCount> fractions{};
};

BlockTruth blockTruth(const Truth& truth, int x, int y, int halfWidth);
