#pragma once

#include "ReferenceShapes.h"
#include "Scan.h"

#include <QPoint>
#include <QVector>

#include <array>

/// What an experiment is made from.
struct ExperimentConditions
{
    Difficulty difficulty = Difficulty::Easy;
    int size = 200;    ///< width and height of the images [pixels]
    int energies = 81; ///< images of a stack; the hard experiment has a number of its own
    quint64 seed = 1;  ///< fixes noise and bad pixels
    bool noise = true; ///< Poisson noise of the beam and read-out noise
    int halfWidth = 2; ///< half width of the blocks that the batch analyses [pixels]
    int drift = 0;     ///< the sample's way to the right until the scan's end [pixels]

    bool isHard() const { return difficulty == Difficulty::Hard; }
};

/// The experiment with its usual sizes. The hard one has blocks of 3 x 3 pixels: the noise of a
/// single pixel would hide a bias of its maps.
ExperimentConditions usualConditions(Difficulty difficulty);

/// The scan of an experiment.
ScanEnergies scanOf(const ExperimentConditions& conditions);

/// The planted sample, beam and detector. Fields are of size*size values, row after row.
struct Phantom
{
    ExperimentConditions conditions;
    ScanEnergies scan;
    std::array<QVector<double>, speciesCount> fractions; ///< sum 1 where there is sample, else 0
    QVector<double> edgeStep;   ///< edge step of the sample; 0 where there is none
    QVector<double> background; ///< absorption at the edge of all that has no edge, sample included
    QVector<double> beam;       ///< counts of the beam without sample at the start of the scan
    QVector<double> shift;      ///< what the beam's energy falls short of the scan's by [eV]; the
                                ///< hard experiment has no standard to find it by, and none
    int darkCorner = 0;         ///< columns and rows below this see no beam
    QVector<QPoint> hot;        ///< pixels that always read hotCount
    QVector<QPoint> dead;       ///< pixels that always read 0
};

/// How far the sample has gone when an image is taken, in whole pixels, evenly over the scan: to
/// the right, and two thirds of that up. Beam and detector stay.
QPoint driftAt(const Phantom& phantom, int index);

/// Level that every pixel reads without beam, and the reading of a hot pixel.
constexpr double darkLevel = 300.0;
constexpr quint16 hotCount = 60000;

/// Rows and columns of the corner without beam for an image size.
int darkCornerOf(int size);

Phantom makePhantom(const ExperimentConditions& conditions);

enum class Stack
{
    I1,
    I0,
    Standard ///< the standard's foil in place of the sample
};

/// The species that the standard's foil is made of.
constexpr int standardSpecies = 1;

/// Counts of one image of a stack, row after row. The noise of an image depends on the seed and on
/// which image it is, not on the images made before.
QVector<quint16> exposure(const Phantom& phantom, Stack stack, int index);
