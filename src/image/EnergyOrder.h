#pragma once

#include "image/TiffData.h"

#include <QVector>

// A stack is kept in the order in which its files came. What looks an energy up goes by an order of
// energies beside it.

/// Numbers of a stack's images by rising energy, those of one energy in the order of the stack. An
/// energy that is no number stands last.
using EnergyOrder = QVector<int>;
EnergyOrder energyOrder(const TiffStack& stack);

/// Numbers of two images.
struct ImagePair
{
    int first;
    int second;
};

/// The two images between which the stack is interpolated at energy E [eV]: those around E, beyond
/// the ends the first or last two. The stack holds two images or more.
ImagePair imagesAround(const TiffStack& stack, const EnergyOrder& order, double E);

/// Block sum of a stack at energy E [eV]: 1.0 without images, the only image's sum, else on the
/// straight line through imagesAround().
double stackBlockSum(const TiffStack& stack, const EnergyOrder& order, double E, int x, int y,
                     int hw, int vw);

/// First two neighbours of the stack of which the second does not have the higher energy, though
/// not the same one; {-1, -1} when there are none.
ImagePair fallingPair(const TiffStack& stack);

/// The two images of the lowest energy that occurs twice; {-1, -1} when there is none.
ImagePair equalPair(const TiffStack& stack);
