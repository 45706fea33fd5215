#include "image/CrossSection.h"

#include "image/BlockSpectrum.h"
#include "image/EnergyOrder.h"

namespace {

/// The values of a section, with the order of the I0 energies worked out once.
class SectionValues
{
public:
    explicit SectionValues(const SectionSource& source)
        : source_(source)
        , order_(source.i0 ? energyOrder(*source.i0) : EnergyOrder())
    {
    }

    double at(int x, int y, int hw, int vw) const
    {
        const double counts = source_.image.blockSum(x, y, hw, vw);
        if (!source_.i0)
            return counts;
        const double i0 = stackBlockSum(*source_.i0, order_, source_.image.energy, x, y, hw, vw);
        return absorption(i0, counts, source_.fluorescence);
    }

private:
    const SectionSource& source_;
    const EnergyOrder order_;
};

} // namespace

Spectrum hCross(const SectionSource& source, int width, int y, int hw, int vw)
{
    const SectionValues values(source);
    Spectrum section;
    section.points.reserve(qMax(0, width));
    for (int x = 0; x < width; ++x)
        section.append(x, values.at(x, y, hw, vw));
    return section;
}

Spectrum vCross(const SectionSource& source, int height, int x, int hw, int vw)
{
    const SectionValues values(source);
    Spectrum section;
    section.points.reserve(qMax(0, height));
    for (int y = 0; y < height; ++y)
        section.append(height - y, values.at(x, y, hw, vw));
    return section;
}
