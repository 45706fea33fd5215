#include "maps/OutcomeColours.h"

#include "maps/Analyzed2DRes.h"

#include <optional>

namespace {

/// Qualitative colours after P. Tol, "Colour Schemes", scheme "muted": made to be told apart with
/// any kind of colour vision.
const std::vector<QRgb> colours = {
    qRgb(0x20, 0x20, 0x20), // NotWalked
    qRgb(0x44, 0xAA, 0x99), // Fitted
    qRgb(0xDD, 0xDD, 0xDD), // NoPoints
    qRgb(0x33, 0x22, 0x88), // NoPreEdge
    qRgb(0x88, 0xCC, 0xEE), // NoPostEdge
    qRgb(0xCC, 0x66, 0x77), // NoStep
    qRgb(0xDD, 0xCC, 0x77), // OutsideWindow
    qRgb(0x99, 0x99, 0x33), // OutsideScan
    qRgb(0xAA, 0x44, 0x99), // TooNoisy
    qRgb(0x88, 0x22, 0x55), // GapUnsound
    qRgb(0x11, 0x77, 0x33), // Undefined
    qRgb(0xEE, 0x88, 0x66), // OffImage
};

std::optional<Outcome> outcomeOf(double value)
{
    if (!(value >= 0.0 && value < double(outcomeKinds)) || value != double(int(value)))
        return std::nullopt;
    return Outcome(int(value));
}

} // namespace

const std::vector<QRgb>& outcomeColours()
{
    Q_ASSERT(colours.size() == std::size_t(outcomeKinds));
    return colours;
}

OutcomeCounts outcomesOf(const Analyzed2DRes& map)
{
    OutcomeCounts counts;
    if (!map.whyNotSaved(true).isEmpty())
        return counts;
    AnalyzeCond walk = map.stepper;
    walk.start();
    do {
        if (const std::optional<Outcome> outcome = outcomeOf(map.shownValueAt(walk.cx, walk.cy)))
            counts.add(*outcome);
    } while (walk.next());
    return counts;
}

QString outcomeLabel(double value)
{
    const std::optional<Outcome> outcome = outcomeOf(value);
    return outcome ? QStringLiteral("%1 %2").arg(int(*outcome)).arg(outcomeWords(*outcome))
                   : QString();
}
