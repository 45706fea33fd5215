#pragma once

#include <QString>

class QTextStream;

/// Exit codes of a comparison.
enum CompareResult
{
    compareWithin = 0,  ///< every value within its limit
    compareOutside = 1, ///< a value outside its limit
    compareFailed = 2   ///< a file is missing or not whole
};

/// Limits of a species' map of the easy experiment against the planted field, over blocks of at
/// least leastEdgeStep.
constexpr double biasLimit = 0.02;
constexpr double rmsLimit = 0.03;
constexpr double leastEdgeStep = 0.25;
/// Limit of the energy shift map's bias [eV], over blocks without bad pixels; its spread is only
/// printed.
constexpr double shiftBiasLimit = 0.05;
/// Limit of two folders' maps against each other: the maps' text holds six digits.
constexpr double otherLimit = 1e-5;

/// Holds the maps that the program saved in `folder` against the planted fields and prints bias and
/// rms of the energy shift, and for each species, with and without the energy shift map. Only whole
/// blocks of sample away from bad pixels count. A negative half width takes that of the experiment.
/// Pictures of planted and fitted fields go to the folder's "pictures". A folder of the hard
/// experiment is judged by compareHard().
CompareResult compareWithTruth(const QString& folder, int halfWidth, QTextStream& out);

/// Holds the maps of two folders against each other, at blocks without bad pixels, and prints the
/// largest difference. The blocks to leave out are those of `folder`.
CompareResult compareFolders(const QString& folder, const QString& other, int halfWidth,
                             QTextStream& out);
