#pragma once

#include "spectrum/OutcomeCode.h"

#include <QMetaType>
#include <QString>

#include <array>

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
