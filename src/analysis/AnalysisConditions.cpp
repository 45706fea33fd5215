#include "analysis/AnalysisConditions.h"

#include <tuple>

namespace {

auto key(const AnalyzeCond& area)
{
    return std::tie(area.width, area.height, area.halfX, area.halfY, area.x0, area.x1, area.stepX,
                    area.y0, area.y1, area.stepY);
}

auto key(const BlockConditions& block)
{
    return std::tie(block.halfX, block.halfY, block.imageWidth, block.imageHeight, block.useI0,
                    block.fluorescence, block.dark, block.darkExposure, block.i1Exposure,
                    block.i0Exposure, block.i1DarkAreaOn, block.i0DarkAreaOn, block.i1DarkAvg,
                    block.i0DarkAvg, block.totalI0Loaded, block.totalI0.points);
}

auto key(const SuggestElm& elm)
{
    return std::tie(elm.z, elm.edge, elm.edgeE, elm.preEnd, elm.postStart, elm.thJump);
}

bool areAlike(const SuggestElm& a, const SuggestElm& b)
{
    return a.use == b.use && (!a.use || key(a) == key(b));
}

/// Only whether the field is the same one: its nan are unlike themselves, and a map that was worked
/// out anew is another.
bool areAlike(const ShiftField& a, const ShiftField& b)
{
    if (a.values.isEmpty() && b.values.isEmpty())
        return true;
    return a.values.constData() == b.values.constData() && a.size == b.size &&
           a.origin - a.imageOrigin == b.origin - b.imageOrigin;
}

} // namespace

AnalysisConditions::AnalysisConditions(const WalkSource& source, const AnalyzeCond& area,
                                       const QVector<SectionConditions>& analyses)
    : area_(area)
    , i1_(imagesOf(source.i1))
    , block_(source.block)
    , shifts_(source.shifts)
    , elm_(source.elm)
    , background_(source.background)
    , analyses_(analyses)
{
    if (block_.readsI0())
        i0_ = imagesOf(source.i0);
    leaveOutIdleDark();
}

QVector<AnalysisConditions::Image> AnalysisConditions::imagesOf(const TiffStack& stack)
{
    QVector<Image> images;
    images.reserve(stack.size());
    for (const SharedImage& image : stack)
        images.append({image->fileName, image->jobNumber, image->energy,
                       QPoint(image->shiftX, image->shiftY)});
    return images;
}

/// Exposures scale the dark image alone, and what is off or unread has no averages.
void AnalysisConditions::leaveOutIdleDark()
{
    const bool readsI0 = block_.readsI0();
    if (!block_.dark)
        block_.darkExposure = block_.i1Exposure = 0.0;
    if (!block_.dark || !readsI0)
        block_.i0Exposure = 0.0;
    if (!readsI0)
        block_.i0DarkAreaOn = false;
    if (!block_.i1DarkAreaOn)
        block_.i1DarkAvg.clear();
    if (!block_.i0DarkAreaOn)
        block_.i0DarkAvg.clear();
    if (!block_.totalI0Loaded)
        block_.totalI0 = Spectrum();
}

bool AnalysisConditions::Image::operator==(const Image& other) const
{
    return job == other.job && energy == other.energy && shift == other.shift && file == other.file;
}

bool AnalysisConditions::operator==(const AnalysisConditions& other) const
{
    return key(area_) == key(other.area_) && hasSameSpectra(other) && analyses_ == other.analyses_;
}

bool AnalysisConditions::hasSameSpectra(const AnalysisConditions& other) const
{
    return key(block_) == key(other.block_) && i1_ == other.i1_ && i0_ == other.i0_ &&
           areAlike(shifts_, other.shifts_) && areAlike(elm_, other.elm_) &&
           background_ == other.background_;
}
