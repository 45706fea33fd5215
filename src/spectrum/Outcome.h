#pragma once

#include <QMetaType>
#include <QString>

#include <array>

/// What became of a position: fitted, or why not. Of several reasons the first in this order
/// counts. The numbers stand in saved outcome maps and never change.
enum class Outcome : uchar
{
    NotWalked,
    Fitted,
    NoPoints,      ///< outside the image
    NoPreEdge,     ///< the pre-edge line took no point or could not be solved
    NoPostEdge,    ///< the same of the post-edge line
    NoStep,        ///< the edge step is not above 0, or not finite
    OutsideWindow, ///< the mid point left the window of the suggested edge
    OutsideScan,   ///< the mid point left the energies of the scan
    TooNoisy,      ///< the step drowns in the noise of both lines
    GapUnsound,    ///< the lines come too close between their own ranges, at the edge
    Undefined      ///< shares of which there is no sum
};

constexpr int outcomeKinds = int(Outcome::Undefined) + 1;

/// The outcome in the words of the log: "fitted", "no pre-edge points".
QString outcomeText(Outcome outcome);
/// The same for people, in the language of the interface.
QString outcomeWords(Outcome outcome);

/// Positions of a walk by their outcome.
class OutcomeCounts
{
public:
    /// gapHeld: a fitted position whose curve was continued where its lines come too close.
    void add(Outcome outcome, bool gapHeld = false);

    int of(Outcome outcome) const { return counts_[std::size_t(outcome)]; }
    int gapHeld() const { return gapHeld_; }
    int total() const;

    /// "fitted 90 (gap held 3), no points 10": what there is, in the order of the outcomes, and
    /// behind it advice when the lines of more than a tenth of the edges cross.
    QString text() const;

private:
    bool linesCrossOften() const;

    std::array<int, outcomeKinds> counts_{};
    int gapHeld_ = 0;
};

Q_DECLARE_METATYPE(Outcome)
