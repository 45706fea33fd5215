#pragma once

#include <QMetaType>

/// The element and edge that the user names, and the window round it in which an edge is looked
/// for. A plain record, passed by value through signals.
struct SuggestElm
{
    bool use = false;          ///< search the edge only in the window and apply its guards
    int z = 29;                ///< atomic number; -1 for an unknown element
    int edge = 0;              ///< 0 K, 1 LI, 2 LII, 3 LIII
    double edgeE = 8984.36029; ///< edge energy [eV]
    double preEnd = -20.0;   ///< end of the pre-edge range relative to edgeE [eV], lower window end
    double postStart = 20.0; ///< start of the post-edge range [eV], upper window end
    double thJump = 1.0;     ///< threshold of the edge jump in units of the lines' rms
};

Q_DECLARE_METATYPE(SuggestElm)
