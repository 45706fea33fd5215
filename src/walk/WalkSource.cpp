#include "walk/WalkSource.h"

#include <algorithm>

namespace {

bool hasLowerEnergy(const SharedImage& a, const SharedImage& b)
{
    return a->energy < b->energy;
}

} // namespace

XafsSpectrum WalkSource::unnormalized(const Spectrum& curve, int x, int y) const
{
    return XafsSpectrum::unnormalized(curve, QStringLiteral("block"), background, shifts.at(x, y),
                                      elm);
}

Spectrum WalkSource::mu(int x, int y) const
{
    return rawXafs({i1, i0}, block, x, y);
}

XafsSpectrum WalkSource::spectrum(int x, int y, Stage stage) const
{
    XafsSpectrum s = unnormalized(stage == Stage::Counts ? rawI1(i1, block, x, y) : mu(x, y), x, y);
    workOut(s, stage);
    return s;
}

void WalkSource::workOut(XafsSpectrum& spectrum, Stage stage) const
{
    if (stage >= Stage::Lines)
        spectrum.normalizeIfData(background, stage == Stage::Shown ? XafsSpectrum::AllCurves
                                                                   : XafsSpectrum::FittedCurve);
}

QVector<XafsSpectrum> WalkSource::ofRun(BlockSpectra& blocks, const WalkRun& run) const
{
    AnalyzeCond at = run.first;
    QVector<XafsSpectrum> spectra;
    spectra.reserve(run.count);
    for (const Spectrum& curve : blocks.row(at.cx, at.stepX, run.count, at.cy)) {
        spectra.append(unnormalized(curve, at.cx, at.cy));
        at.next();
    }
    return spectra;
}

double WalkSource::leastEnergy() const
{
    return (*std::min_element(i1.begin(), i1.end(), hasLowerEnergy))->energy;
}

double WalkSource::greatestEnergy() const
{
    return (*std::max_element(i1.begin(), i1.end(), hasLowerEnergy))->energy;
}
