#include "spectrum/Outcome.h"

#include <QCoreApplication>
#include <QStringList>

#include <numeric>

namespace {

constexpr const char* outcomeTexts[outcomeKinds] = {
    QT_TRANSLATE_NOOP("Outcome", "not walked"),
    QT_TRANSLATE_NOOP("Outcome", "fitted"),
    QT_TRANSLATE_NOOP("Outcome", "no points"),
    QT_TRANSLATE_NOOP("Outcome", "no pre-edge points"),
    QT_TRANSLATE_NOOP("Outcome", "no post-edge points"),
    QT_TRANSLATE_NOOP("Outcome", "step not above 0"),
    QT_TRANSLATE_NOOP("Outcome", "mid point outside the window"),
    QT_TRANSLATE_NOOP("Outcome", "mid point outside the scan"),
    QT_TRANSLATE_NOOP("Outcome", "too noisy for the threshold"),
    QT_TRANSLATE_NOOP("Outcome", "gap unsound"),
    QT_TRANSLATE_NOOP("Outcome", "undefined"),
    QT_TRANSLATE_NOOP("Outcome", "outside a moved image")};

} // namespace

QString outcomeText(Outcome outcome)
{
    return QLatin1String(outcomeTexts[std::size_t(outcome)]);
}

QString outcomeWords(Outcome outcome)
{
    return QCoreApplication::translate("Outcome", outcomeTexts[std::size_t(outcome)]);
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
