#pragma once

#include "image/TiffData.h"

#include <optional>
#include <vector>

// The range of values that a picture spans is a thing of its own: it follows from what is shown, or
// was typed. Saved numbers never follow it.

/// Values at the bottom and the top of the colour bar. They may stand in either order.
struct ValueRange
{
    double min;
    double max;
};

inline bool operator==(const ValueRange& a, const ValueRange& b)
{
    return a.min == b.min && a.max == b.max;
}

/// Which values an automatic range spans.
enum class RangeRule
{
    Percent1,  ///< from 1 to 99 % of the values, one range for all images of a stack
    Percent01, ///< 0.1 to 99.9 %
    Percent5,  ///< 5 to 95 %
    All,       ///< of all values
    Own        ///< each image by itself, from its smallest to its largest pixel; a map alike
};
constexpr int rangeRules = 5;

/// How a kind of what is shown gets its range: as given, or by a rule.
struct RangeChoice
{
    RangeRule rule = RangeRule::Own;
    std::optional<ValueRange> given;
};

/// Range of the values by a rule; they are put out of order. Of few different values that fall
/// together it is that of all; none without values. All must be finite.
std::optional<ValueRange> ruledRange(std::vector<double>& values, RangeRule rule);

/// Middle and spread of values: the median, and 1.4826 of the median distance from it, which is the
/// standard deviation of a normal distribution and does not heed a few values far off.
struct Middle
{
    double median = 0.0;
    double spread = 0.0;
};

/// Of at least one value, all finite; they are put out of order.
Middle middleOf(std::vector<double> values);

/// The same range as far as it lies within the median +- 6 spreads: noise that stands out in less
/// of the values than the rule leaves away would else take all colours. Nothing is cut where most
/// values are equal.
ValueRange withinSpreads(const ValueRange& range, const std::vector<double>& values);

/// The range of a stack, kept until the stack is another. The percentiles are of a sample of up to
/// 262144 pixels, evenly spread over up to 16 of its images: a few milliseconds once a stack, and
/// nothing for an image.
class StackRange
{
public:
    /// The range by a rule other than RangeRule::Own; none without pixels. While a stack grows, the
    /// range stays until there are twice as many images.
    std::optional<ValueRange> of(const TiffStack& images, RangeRule rule, bool growing);

private:
    bool isOf(const TiffStack& images, RangeRule rule, bool growing) const;

    SharedImage first_;
    SharedImage last_;
    int count_ = 0;
    RangeRule rule_ = RangeRule::Own;
    std::optional<ValueRange> range_;
};
