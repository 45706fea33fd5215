#include "image/DisplayRange.h"

#include "image/PixelAccess.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace {

constexpr int sampledImages = 16;
constexpr int sampledPixels = 1 << 14; ///< of an image
constexpr double spreadOfMad = 1.4826;
constexpr double spreadsAside = 6.0;

/// Share of the values below the range, and above it.
double leftAway(RangeRule rule)
{
    switch (rule) {
    case RangeRule::Percent1:
        return 0.01;
    case RangeRule::Percent01:
        return 0.001;
    case RangeRule::Percent5:
        return 0.05;
    default:
        return 0.0;
    }
}

double nth(std::vector<double>& values, std::size_t n)
{
    std::nth_element(values.begin(), values.begin() + std::ptrdiff_t(n), values.end());
    return values[n];
}

double medianOf(std::vector<double>& values)
{
    return nth(values, values.size() / 2);
}

/// Every so many pixels, another column in each row, so that no pattern of columns is missed.
template<typename T>
void sample(const TiffData& image, std::vector<double>& out)
{
    const qint64 pixels = qint64(image.width) * image.height;
    const int step = int(std::ceil(std::sqrt(double(pixels) / sampledPixels)));
    for (int y = 0, row = 0; y < image.height; y += step, ++row) {
        const T* const line = image.row<T>(y);
        for (int x = (7 * row) % step; x < image.width; x += step) {
            const auto v = static_cast<double>(line[x]);
            if (std::isfinite(v))
                out.push_back(v);
        }
    }
}

std::vector<double> sampleOf(const TiffStack& images)
{
    std::vector<double> values;
    const int count = std::min(images.size(), sampledImages);
    for (int k = 0; k < count; ++k) {
        // The first and the last image are among them.
        const int no = count > 1 ? int(qint64(k) * (images.size() - 1) / (count - 1)) : 0;
        const TiffData& image = *images.at(no);
        withPixelType(image, 0, [&](auto* tag) {
            sample<std::remove_const_t<std::remove_pointer_t<decltype(tag)>>>(image, values);
            return 0;
        });
    }
    return values;
}

/// From the smallest to the largest pixel of the stack.
std::optional<ValueRange> extremesOf(const TiffStack& images)
{
    if (images.isEmpty())
        return std::nullopt;
    ValueRange range{images.first()->minVal, images.first()->maxVal};
    for (const SharedImage& image : images) {
        range.min = std::min(range.min, image->minVal);
        range.max = std::max(range.max, image->maxVal);
    }
    return range;
}

} // namespace

std::optional<ValueRange> ruledRange(std::vector<double>& values, RangeRule rule)
{
    if (values.empty())
        return std::nullopt;
    const auto away = static_cast<std::size_t>(leftAway(rule) * double(values.size() - 1));
    const ValueRange range{nth(values, away), nth(values, values.size() - 1 - away)};
    if (range.min < range.max || away == 0)
        return range;
    const auto [min, max] = std::minmax_element(values.begin(), values.end());
    return ValueRange{*min, *max};
}

Middle middleOf(std::vector<double> values)
{
    Middle middle;
    middle.median = medianOf(values);
    for (double& v : values)
        v = std::fabs(v - middle.median);
    middle.spread = spreadOfMad * medianOf(values);
    return middle;
}

ValueRange withinSpreads(const ValueRange& range, const std::vector<double>& values)
{
    if (values.empty())
        return range;
    const Middle middle = middleOf(values);
    if (!(middle.spread > 0.0))
        return range;
    const double aside = spreadsAside * middle.spread;
    return {std::max(range.min, middle.median - aside), std::min(range.max, middle.median + aside)};
}

bool StackRange::isOf(const TiffStack& images, RangeRule rule, bool growing) const
{
    if (rule != rule_ || images.first() != first_)
        return false;
    if (growing)
        return images.size() >= count_ && images.size() < 2 * count_;
    return images.size() == count_ && images.last() == last_;
}

std::optional<ValueRange> StackRange::of(const TiffStack& images, RangeRule rule, bool growing)
{
    if (images.isEmpty()) {
        *this = StackRange();
        return std::nullopt;
    }
    if (isOf(images, rule, growing))
        return range_;
    first_ = images.first();
    last_ = images.last();
    count_ = images.size();
    rule_ = rule;
    range_ = extremesOf(images);
    if (rule != RangeRule::All) {
        std::vector<double> values = sampleOf(images);
        if (const std::optional<ValueRange> ruled = ruledRange(values, rule))
            range_ = ruled;
    }
    return range_;
}
