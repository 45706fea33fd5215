#pragma once

#include "spectrum/Outcome.h"
#include "spectrum/Spectrum.h"

#include <QVector>

#include <optional>

/// An element whose edge is looked for in a scan, as its row stands. Energies in eV.
struct ElementRow
{
    QString name;           ///< "Fe-K"
    double energy = 0.0;    ///< of the edge
    double dE = 20.0;       ///< the jump is that from energy - dE to energy + dE
    double threshold = 0.1; ///< only a jump above it is an edge
    double roiFrom = 7000.0;
    double roiTo = 7005.0;
    bool noNeg = false; ///< a mean of the region of interest below 0 is none
    bool use = false;   ///< takes part in the correlation
    double stdRatio = 1.0;
};

/// What an element analysis goes by.
struct ElementConditions
{
    QVector<ElementRow> rows;
    int target = 0;      ///< row whose jump all others are divided by
    double bgJump = 0.0; ///< of a row without an edge: for its jump and both absorptions
    double bgDE = 0.0;   ///< for the shift of its edge
    double bgRoi = 0.0;  ///< for both values of the region of interest
    double correlationThreshold = 0.999;
};

/// What is read off a curve for a row, whatever the size of the jump.
struct ElementReading
{
    double above = 0.0; ///< absorption at energy + dE
    double below = 0.0; ///< at energy - dE
    double shift = 0.0; ///< mean energy of the crossings of their mean, less energy; 0 without one
    double roi = 0.0;   ///< mean over the region of interest, less `below`; 0 without a point
    double jump() const { return above - below; }
};

/// What becomes of a row at a position; background values where it has no edge.
struct ElementValues
{
    double jump = 0.0;
    double jumpRatio = 0.0; ///< jump over the target's
    double above = 0.0;
    double below = 0.0;
    double shift = 0.0; ///< of the edge [eV]
    double roi = 0.0;
    double roiRatio = 0.0; ///< roi over the jump
    double rawJump = 0.0;  ///< without background value
};

/// First point whose middle with the next one lies above E, the points as they were measured; the
/// last point for none, 0 without points.
int firstMiddleAbove(const Spectrum& s, double E);

/// Reads a row off the absorption. The curve's own shift is added to all energies that are looked
/// for. Those of jumps are then looked up among the shifted energies, which counts it twice, those
/// of crossings and of the region of interest among the measured ones: deliberate, curves of a
/// position have none, and others are read as they always were.
ElementReading readElement(const Spectrum& s, const ElementRow& row);

/// What the readings of all rows mean. jumpRatio is the jump itself where that of the target is
/// exactly 0.
QVector<ElementValues> judgeElements(const ElementConditions& conditions,
                                     const QVector<ElementReading>& readings);

/// The element analysis of a curve without lines: the truth about a position.
QVector<ElementValues> analyzeElements(const Spectrum& s, const ElementConditions& conditions);

/// How like the standard pattern some ratios are: their normalised inner product, 1 for the same
/// pattern.
class PatternSums
{
public:
    void add(double ratio, double stdRatio)
    {
        ratios_ += ratio * ratio;
        standards_ += stdRatio * stdRatio;
        products_ += ratio * stdRatio;
    }
    /// None where either pattern is nothing.
    std::optional<double> correlation() const;

private:
    double ratios_ = 0.0;
    double standards_ = 0.0;
    double products_ = 0.0;
};

/// The correlation of the rows in use.
std::optional<double> correlation(const QVector<ElementRow>& rows,
                                  const QVector<ElementValues>& values);
