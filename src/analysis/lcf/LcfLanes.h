#pragma once

#include "spectrum/EdgeLanes.h"

// Lane form of LcfPlan::fit() in a walk: the same bits for each lane whose lines are fitted.

/// Most references that there are lane forms for, and most columns of a fit.
constexpr int mostLaneReferences = 16;
constexpr int mostLaneColumns = mostLaneReferences + 2;

/// What is fitted, as in LcfMethod.
enum class LcfLaneMethod
{
    Normalised, ///< the curve that is compared; jumps are weights times the step
    Absorption  ///< with a straight background; jumps are the weights
};

/// A reference's curve, which ascends strictly.
struct LcfLaneCurve
{
    const double* x; ///< [eV], the curve's own shift taken off
    const double* y;
    const double* slope;   ///< of the segment that begins at the point
    const double* fittedY; ///< the same of the curve that the fit takes, where that is another one
    const double* fittedSlope;
    int segments;
    double rowShift; ///< dE of the row [eV]
    double curveShift;
    bool readsLikeTheLast; ///< the reference before has the same energies and shifts
};

/// What does not depend on the position. Arrays over energies have one entry a point of the scan.
struct LcfLaneTask
{
    const EdgeTask* edge;
    LcfLaneMethod method;
    bool holdGap;
    bool ownWeights;
    double fitFrom; ///< range of the fit, and the references' common span [eV]
    double fitTo;
    double spanFrom;
    double spanTo;
    int references;
    const LcfLaneCurve* curves; ///< one a reference
    double centre;              ///< energy that the slope of the background is counted from [eV]
    const double* rowWeights;   ///< of the reference rows, which the fit curve of a walk is made of
    int residualPoints;
    const unsigned char* isResidual; ///< point of the residual against the fit curve

    // Of positions without an offset.
    int stride;                    ///< a multiple of 4, at least the references
    const double* rows;            ///< references [energy][stride], filled up with 0
    int columnStride;              ///< stride and what stands in front of the references
    const double* columns;         ///< of the fit, [energy][columnStride], filled up with 0
    const unsigned char* isFitted; ///< point of the fit
    const double* fitValues;       ///< fit curve
    int ownResidualPoints;
    const double* lower; ///< factors [row][columns], rows in the order they are solved in
    const double* upper;
    const int* pivots;

    bool isOfAbsorption() const { return method == LcfLaneMethod::Absorption; }
    /// Columns of the fit in front of the references.
    int backgroundColumns() const { return isOfAbsorption() ? 2 : 0; }
    int columnCount() const { return backgroundColumns() + references; }
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

/// What is found, [lane]; of lanes whose lines are not fitted without meaning.
struct LcfLaneFits
{
    double jumps[mostLaneReferences][laneStride];
    double weights[mostLaneReferences][laneStride];
    double zansa[laneStride];
    unsigned char held[laneStride];      ///< not 0: values were continued by the step
    unsigned char unsound[laneStride];   ///< not 0: values are as they are, and too close to a pole
    unsigned char undefined[laneStride]; ///< not 0: there is no sum that the weights are shares of
    unsigned char odd[laneStride];       ///< not 0: nothing is told of this lane
};

DECLARE_LANE_FORM(fitLcfLanes, const LcfLaneTask& task, const LcfLaneRun& run, double* scratch,
                  LcfLaneFits& out)

/// Doubles of scratch memory that fitLcfLanes() wants.
constexpr int lcfLaneScratch(int energies, int references)
{
    return energies * mostWidth * (2 * references + 5);
}

/// Solution of the normal equations a x = b of n columns, as the plain form solves them; a row by
/// row.
void solveLcfNormal(int n, const double* a, const double* b, double* solution);
