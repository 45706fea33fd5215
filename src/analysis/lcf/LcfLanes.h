#pragma once

#include "spectrum/EdgeLanes.h"

// Lane form of LcfPlan::fit() in a walk: the same bits for each lane whose edge is fitted.

/// Most references that there are lane forms for.
constexpr int mostLaneReferences = 16;

/// A reference's curve, which ascends strictly.
struct LcfLaneCurve
{
    const double* x; ///< [eV], the curve's own shift taken off
    const double* y;
    const double* slope; ///< of the segment that begins at the point
    int segments;
    double rowShift; ///< dE of the row [eV]
    double curveShift;
    bool readsLikeTheLast; ///< the reference before has the same energies and shifts
};

/// What does not depend on the position. Arrays over energies have one entry a point of the scan.
struct LcfLaneTask
{
    const EdgeTask* edge;
    bool holdGap;
    bool ownWeights;
    double fitFrom; ///< range of the fit, and the references' common span [eV]
    double fitTo;
    double spanFrom;
    double spanTo;
    int references;
    const LcfLaneCurve* curves; ///< one a reference
    const double* rowWeights;   ///< of the reference rows, which the fit curve of a walk is made of
    int residualPoints;
    const unsigned char* isResidual; ///< point of the residual against the fit curve

    // Of positions without an offset.
    int stride;                    ///< a multiple of 4, at least the references
    const double* rows;            ///< references [energy][stride], filled up with 0
    const unsigned char* isFitted; ///< point of the fit
    const double* fitValues;       ///< fit curve
    int ownResidualPoints;
    const double* lower; ///< factors [row][references], rows in the order they are solved in
    const double* upper;
    const int* pivots;
};

/// A run of positions.
struct LcfLaneRun
{
    const EdgeLanes* edges;
    const double* mu;      ///< [energy][laneStride]
    const double* offsets; ///< [lane] [eV]
    bool isShifted;        ///< some offset is not 0
    int count;
};

/// What is found, [lane]; of lanes whose edge is not fitted without meaning.
struct LcfLaneFits
{
    double weights[mostLaneReferences][laneStride];
    double zansa[laneStride];
    unsigned char held[laneStride];    ///< not 0: values were continued by the step
    unsigned char unsound[laneStride]; ///< not 0: nothing can be compared, and nothing is found
    unsigned char odd[laneStride];     ///< not 0: nothing is told of this lane
};

DECLARE_LANE_FORM(fitLcfLanes, const LcfLaneTask& task, const LcfLaneRun& run, double* scratch,
                  LcfLaneFits& out)

/// Doubles of scratch memory that fitLcfLanes() wants.
constexpr int lcfLaneScratch(int energies, int references)
{
    return energies * mostWidth * (references + 3);
}

/// Weights of the normal equations a w = b of `references` references, as the plain form solves
/// them; a row by row.
void solveLcfNormal(int references, const double* a, const double* b, double* weights);
