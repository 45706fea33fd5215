#pragma once

#include "common/Lanes.h"

// Lane form of XafsSpectrum::normalize() as far as the edge: the same bits for each lane that it
// answers for.

/// Points that a bend is sampled at.
constexpr int bezierSamples = 100;

/// Of one line fitted over the points that a place of the steepest rise leaves for it.
struct LineTable
{
    int first; ///< points it is fitted to
    int end;
    int residualEnd; ///< points that its residual is taken over end here
    bool solvable;   ///< there are enough points, and the system can be solved
    double from;     ///< range [eV]
    double to;
    double
        factor[9]; ///< lower (by rows), then upper (by rows) triangle, rows as they are solved in
    int pivots[3];
    double middleE; ///< Victoreen: energy that the columns are centred at, their scales,
    double scale1;
    double scale2;
    double L3; ///< and powers of its wavelength
    double L4;
};

/// What does not depend on the position. Energies [eV] ascend strictly and are positive.
struct EdgeTask
{
    int n;
    const double* E;
    const double* lambda;  ///< wavelengths [angstrom]; Victoreen only, as is
    const double* lambda3; ///< their cubes
    double hc;
    bool isVictoreen;
    int firstRise; ///< the steepest rise is sought from here
    int endRise;   ///< to here
    bool isSuggested;
    double lowestMid; ///< window of the mid point [eV] and threshold of the jump, when suggested
    double highestMid;
    double thJump;
    const double* bezierWeights; ///< [sample][control point]
    const LineTable* pre;        ///< by index of the steepest rise
    const LineTable* post;
};

/// Edges of neighbouring positions. [lane], if it does not say otherwise.
struct EdgeLanes
{
    static constexpr int coefficients = 3; ///< c0, then slope, or c1 and c2

    double steepest[laneStride]; ///< index of the steepest rise
    double pre[coefficients][laneStride];
    double post[coefficients][laneStride];
    /// Of lanes with a bent line, that line [energy][laneStride]. Memory of whoever made this.
    double* bend;
    unsigned char preBent[laneStride];  ///< not 0: the pre-edge line is bent
    unsigned char postBent[laneStride]; ///< not 0: the post-edge line is; at most one of them
    double preEnd[laneStride];          ///< end of the pre-edge range [eV]
    double postStart[laneStride];       ///< start of the post-edge range [eV]
    double midx[laneStride];            ///< as in XafsSpectrum, of fitted lanes
    double dMut[laneStride];
    double heldStep[laneStride];       ///< XafsSpectrum::heldStep() of the gap at the steepest rise
    unsigned char close[laneStride];   ///< XafsSpectrum::linesClose
    unsigned char outcome[laneStride]; ///< an Outcome
    unsigned char odd[laneStride];     ///< not 0: nothing is told of this lane
};

/// Edges of the curves mu [energy][laneStride] of the lanes below `count`; what is behind them up
/// to laneStride is read and has no meaning.
DECLARE_LANE_FORM(findEdges, const EdgeTask& task, const double* mu, int count, double* scratch,
                  EdgeLanes& out)

/// Doubles of scratch memory that findEdges() wants.
constexpr int edgeLaneScratch(int energies)
{
    return (energies + 2 * bezierSamples) * mostWidth;
}
