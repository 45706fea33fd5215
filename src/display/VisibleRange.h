#pragma once

#include "display/PlotRange.h"

/// The part of an axis that is in view. It is the full range, and goes along with that, until it is
/// panned or zoomed; from then on it stays until reset().
class VisibleRange
{
public:
    double min() const { return visible_.min; }
    double max() const { return visible_.max; }
    const PlotRange& full() const { return full_; }

    /// The range must have an extent.
    void setFull(const PlotRange& full)
    {
        full_ = full;
        if (!chosen_)
            visible_ = full;
    }

    void pan(double d) { choose({visible_.min + d, visible_.max + d}); }

    /// Multiplies the range by `factor` round `centre`, which stays in its place.
    void zoom(double centre, double factor)
    {
        choose(
            {(visible_.min - centre) * factor + centre, (visible_.max - centre) * factor + centre});
    }

    void reset()
    {
        chosen_ = false;
        visible_ = full_;
    }

private:
    /// Ranges so narrow or wide that numbers no longer resolve them are passed over.
    void choose(const PlotRange& range)
    {
        const double width = range.max - range.min;
        if (!(width > narrowest && width < widest))
            return;
        chosen_ = true;
        visible_ = range;
    }

    static constexpr double narrowest = 1e-6;
    static constexpr double widest = 1e12;

    PlotRange visible_{0.0, 1.0};
    PlotRange full_{0.0, 1.0};
    bool chosen_ = false;
};
