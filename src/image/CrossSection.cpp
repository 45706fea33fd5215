#include "image/CrossSection.h"

#include "image/BlockSpectrum.h"

namespace {

double sectionValue(const SectionSource& source, int x, int y, int hw, int vw)
{
    const double counts = source.image.blockSum(x, y, hw, vw);
    if (!source.i0)
        return counts;
    const double i0 = stackBlockSum(*source.i0, source.image.energy, x, y, hw, vw);
    return absorption(i0, counts, source.fluorescence);
}

} // namespace

Spectrum hCross(const SectionSource& source, int width, int y, int hw, int vw)
{
    Spectrum section;
    section.points.reserve(qMax(0, width));
    for (int x = 0; x < width; ++x)
        section.append(x, sectionValue(source, x, y, hw, vw));
    return section;
}

Spectrum vCross(const SectionSource& source, int height, int x, int hw, int vw)
{
    Spectrum section;
    section.points.reserve(qMax(0, height));
    for (int y = 0; y < height; ++y)
        section.append(height - y, sectionValue(source, x, y, hw, vw));
    return section;
}
