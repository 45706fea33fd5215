#include "conduct/SourceReader.h"

#include "calibration/CalibCtrl.h"
#include "calibration/ShiftMap.h"
#include "display/ImageBox.h"
#include "display/ImgDispA.h"
#include "image/Measurement.h"
#include "selection/DataBox.h"
#include "selection/SelectDataFiles.h"
#include "selection/SpectrumBox.h"

SourceReader::SourceReader(const Parts& parts)
    : parts_(parts)
{
}

WalkSource SourceReader::source() const
{
    const SpectrumSettings settings = parts_.spectrumBox.settings();
    WalkSource source;
    source.i1 = parts_.data.i1.images;
    source.i0 = parts_.data.i0.images;
    source.block = blockConditions(settings.halfX, settings.halfY);
    source.shifts = parts_.shiftMap.field(parts_.data.origin);
    source.elm = settings.elm;
    source.background = parts_.calibCtrl.targetBackgroundMode();
    return source;
}

SharedSource SourceReader::frozen() const
{
    WalkSource s = source();
    if (!s.block.readsI0())
        s.i0.clear();
    return std::make_shared<const WalkSource>(std::move(s));
}

SharedSource SourceReader::frozenForCalibration() const
{
    WalkSource s = *frozen();
    s.shifts = ShiftField();
    return std::make_shared<const WalkSource>(std::move(s));
}

SharedSource SourceReader::frozenForCounts() const
{
    const SpectrumSettings settings = parts_.spectrumBox.settings();
    WalkSource s;
    s.i1 = parts_.data.i1.images;
    s.block.halfX = settings.halfX;
    s.block.halfY = settings.halfY;
    s.block.imageWidth = parts_.data.size.width();
    s.block.imageHeight = parts_.data.size.height();
    return std::make_shared<const WalkSource>(std::move(s));
}

bool SourceReader::holds(const WalkSource& source, const ImageStack& stack) const
{
    return &stack == &parts_.data.i1 || source.block.readsI0();
}

QString SourceReader::areaFault(AnalyzeCond& ac) const
{
    if (parts_.data.i1.images.isEmpty())
        return QStringLiteral("no I1 images");
    const TiffData& first = *parts_.data.i1.images.first();
    const ImgDispA& shown = *parts_.imageBox.area();
    const QRectF area =
        shown.hasSelection() ? shown.selectedArea() : QRectF(QPointF(), parts_.data.size);
    const SpectrumSettings settings = parts_.spectrumBox.settings();
    ac = AnalyzeCond(first.width, first.height, settings.halfX, settings.halfY, area, -1, -1);
    const AnalyzeCond selected = ac;
    if (ac.cutToImage())
        return {};
    return QStringLiteral("the selected area (%1, %2)-(%3, %4) has no pixel of the image")
        .arg(selected.x0)
        .arg(selected.y0)
        .arg(selected.x1)
        .arg(selected.y1);
}

bool SourceReader::isAreaSelected() const
{
    return parts_.imageBox.area()->hasSelection();
}

BlockConditions SourceReader::blockConditions(int halfX, int halfY) const
{
    const Measurement& data = parts_.data;
    const SpectrumSettings settings = parts_.spectrumBox.settings();
    BlockConditions conditions;
    conditions.halfX = halfX;
    conditions.halfY = halfY;
    conditions.imageWidth = data.size.width();
    conditions.imageHeight = data.size.height();
    conditions.useI0 = settings.useI0;
    conditions.fluorescence = settings.fluorescence;
    conditions.dark = data.dark;
    // The texts of the line edits, so that the user can overrule the files' exposure.
    conditions.darkExposure = parts_.dataBox.darkExposure();
    conditions.i1Exposure = rowOf(data.i1).exposureText().toDouble();
    conditions.i0Exposure = rowOf(data.i0).exposureText().toDouble();
    conditions.i1DarkAreaOn = data.i1.darkAreaOn;
    conditions.i0DarkAreaOn = data.i0.darkAreaOn;
    conditions.i1DarkAvg = data.i1.darkAvg;
    conditions.i0DarkAvg = data.i0.darkAvg;
    conditions.totalI0Loaded = !data.totalI0ofI1.isEmpty();
    conditions.totalI0 = data.totalI0ofI1.i0Spectrum;
    return conditions;
}

Spectrum SourceReader::rawXafsAt(int x, int y, int halfX, int halfY) const
{
    const Measurement& data = parts_.data;
    return rawXafs({data.i1.images, data.i0.images}, blockConditions(halfX, halfY), x, y);
}

Spectrum SourceReader::rawXafsOfBox(int x1, int y1, int x2, int y2) const
{
    return rawXafsAt((x1 + x2) / 2, (y1 + y2) / 2, (x2 - x1) / 2, (y2 - y1) / 2);
}

Spectrum SourceReader::rawI1At(int x, int y, int halfX, int halfY) const
{
    return rawI1(parts_.data.i1.images, blockConditions(halfX, halfY), x, y);
}

double SourceReader::energyShiftAt(int x, int y) const
{
    return parts_.shiftMap.field(parts_.data.origin).at(x, y);
}

SuggestElm SourceReader::suggestElm() const
{
    return parts_.spectrumBox.settings().elm;
}

SelectDataFiles& SourceReader::rowOf(const ImageStack& stack) const
{
    return &stack == &parts_.data.i1 ? *parts_.dataBox.i1Row() : *parts_.dataBox.i0Row();
}

double SourceReader::darkFactor(const ImageStack& stack) const
{
    return rowOf(stack).exposureText().toDouble() / parts_.dataBox.darkExposure();
}
