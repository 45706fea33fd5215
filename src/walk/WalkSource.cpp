#include "walk/WalkSource.h"

#include <algorithm>

namespace {

bool hasLowerEnergy(const SharedImage& a, const SharedImage& b)
{
    return a->energy < b->energy;
}

} // namespace

XafsSpectrum WalkSource::unnormalized(const Spectrum& curve, double offset) const
{
    return XafsSpectrum::unnormalized(curve, QStringLiteral("block"), background, offset, elm);
}

Spectrum WalkSource::mu(int x, int y) const
{
    return rawXafs({i1, i0}, block, x, y);
}

XafsSpectrum WalkSource::spectrum(int x, int y, Stage stage) const
{
    XafsSpectrum s =
        unnormalized(stage == Stage::Counts ? rawI1(i1, block, x, y) : mu(x, y), shifts.at(x, y));
    workOut(s, stage);
    return s;
}

void WalkSource::workOut(XafsSpectrum& spectrum, Stage stage) const
{
    if (stage >= Stage::Lines)
        spectrum.normalizeIfData(background, stage == Stage::Shown ? XafsSpectrum::AllCurves
                                                                   : XafsSpectrum::FittedCurve);
}

CommonArea WalkSource::commonArea() const
{
    CommonArea area;
    area.take(i1);
    if (block.readsI0())
        area.take(i0);
    return area;
}

double WalkSource::leastEnergy() const
{
    return (*std::min_element(i1.begin(), i1.end(), hasLowerEnergy))->energy;
}

double WalkSource::greatestEnergy() const
{
    return (*std::max_element(i1.begin(), i1.end(), hasLowerEnergy))->energy;
}
