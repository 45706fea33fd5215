#include "spectrum/Outcome.h"

#include <QStringList>

#include <numeric>

namespace {

constexpr const char* outcomeTexts[outcomeKinds] = {"not walked",
                                                    "fitted",
                                                    "no points",
                                                    "no pre-edge points",
                                                    "no post-edge points",
                                                    "step not above 0",
                                                    "mid point outside the window",
                                                    "mid point outside the scan",
                                                    "too noisy for the threshold",
                                                    "gap unsound",
                                                    "undefined"};

} // namespace

QString outcomeText(Outcome outcome)
{
    return QLatin1String(outcomeTexts[std::size_t(outcome)]);
}

void OutcomeCounts::add(Outcome outcome, bool gapHeld)
{
    ++counts_[std::size_t(outcome)];
    if (gapHeld)
        ++gapHeld_;
}

int OutcomeCounts::total() const
{
    return std::accumulate(counts_.begin(), counts_.end(), 0);
}

/// Lines that cross in a tenth of the positions with an edge are the choice of ranges, not noise.
bool OutcomeCounts::linesCrossOften() const
{
    const qint64 unsound = of(Outcome::GapUnsound);
    return 10 * (gapHeld_ + unsound) > of(Outcome::Fitted) + unsound;
}

QString OutcomeCounts::text() const
{
    QStringList parts;
    for (int i = 0; i < outcomeKinds; ++i) {
        const auto outcome = Outcome(i);
        if (of(outcome) == 0 && outcome != Outcome::Fitted)
            continue;
        QString part = outcomeText(outcome) + QStringLiteral(" %1").arg(of(outcome));
        if (outcome == Outcome::Fitted && gapHeld_ > 0)
            part += QStringLiteral(" (gap held %1)").arg(gapHeld_);
        parts.append(part);
    }
    QString text = parts.join(QLatin1String(", "));
    if (linesCrossOften())
        text += QStringLiteral("; lines cross in the fitting range: narrow it, widen the pre-edge "
                               "range or use straight lines");
    return text;
}
