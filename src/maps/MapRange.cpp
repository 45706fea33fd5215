// What the values of a map say about how it is shown.
#include "maps/Analyzed2DRes.h"
#include "maps/SomePositions.h"

#include <algorithm>
#include <cmath>

int Analyzed2DRes::positionsWithoutEdge() const
{
    if (withoutEdge_)
        return *withoutEdge_;
    int count = 0;
    AnalyzeCond at = stepper;
    at.start();
    do {
        count += isWithoutEdge(at.cx, at.cy) ? 1 : 0;
    } while (at.next());
    withoutEdge_ = count;
    return count;
}

/// Positions in rows that a walk has not reached yet have no value.
std::vector<double> Analyzed2DRes::valuesWithEdge() const
{
    std::vector<double> values;
    if (!hasValues_ || qint64(stepper.columns()) * stepper.rows() > maxPositions)
        return values;
    forSomePositions(stepper, [&](int x, int y) {
        if (!contains(x, y))
            return;
        const auto at = std::size_t(y) * std::size_t(stepper.width) + std::size_t(x);
        if (at < writtenFrom_ || at >= writtenTo_ || isWithoutEdge(x, y) ||
            (faint_ && (*faint_)[at] != 0))
            return;
        const double v = shownValueAt(x, y);
        if (std::isfinite(v))
            values.push_back(v);
    });
    return values;
}

std::optional<Middle> Analyzed2DRes::middle() const
{
    const std::vector<double> values = valuesWithEdge();
    return values.empty() ? std::nullopt : std::optional<Middle>(middleOf(values));
}

/// "All" is what it says; only percentiles are held within the spreads.
Analyzed2DRes::Scale Analyzed2DRes::automaticScale() const
{
    if (automatic_)
        return *automatic_;
    const RangeRule rule = display_.range.rule;
    std::vector<double> values = valuesWithEdge();
    Scale range = ruledRange(values, rule).value_or(fieldScale());
    if (rule != RangeRule::All)
        range = withinSpreads(range, values);
    automatic_ = range;
    return range;
}

void Analyzed2DRes::setFaint(const PositionMask& faint)
{
    faint_ = faint && faint->size() == data_.size() ? faint : nullptr;
    automatic_.reset();
}

void Analyzed2DRes::setDisplay(const MapDisplay& display)
{
    display_ = display;
    automatic_.reset();
    if (imgValid)
        genImg();
}
