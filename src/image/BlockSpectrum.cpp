#include "image/BlockSpectrum.h"

#include "common/LaneForms.h"
#include "common/PortableMath.h"
#include "common/TwoPointLine.h"
#include "image/EnergyOrder.h"

#include <algorithm>
#include <cstdint>

namespace {

/// Images that are fetched ahead of the one that is summed.
constexpr int imagesAhead = 8;

bool insideImage(const BlockConditions& conditions, qint64 x, int y)
{
    return x >= 0 && y >= 0 && x < conditions.imageWidth && y < conditions.imageHeight;
}

/// Its highest bit is 1 where absorption() is no logarithm of a positive normal number. A product
/// of 0 gets its sign from taking 1 off; one of -0 comes with a ratio that has a sign or no end.
std::uint64_t signOfRare(double i0, double i1)
{
    return portable::signOfRare(i0 / i1) | (portable::bitsOf(i0 * i1) - 1);
}

} // namespace

double absorption(double i0, double i1, bool fluorescence)
{
    if (fluorescence)
        return i1 / i0;
    // The guard is the only treatment of vanished counts.
    return i0 * i1 > 0.0 ? portable::log(i0 / i1) : 1.0;
}

BlockSpectra::BlockSpectra(const StackPair& stacks, const BlockConditions& conditions)
    : stacks_(stacks)
    , conditions_(conditions)
    , blockPixels_(conditions.blockPixels())
    , logarithms_(LANE_FORM(logarithms))
    , takeOffDark_(LANE_FORM(takeOffDark))
    , countsBetween_(LANE_FORM(countsBetween))
{
    energies_.reserve(size_t(stacks_.i1.size()));
    for (const SharedImage& image : stacks_.i1)
        energies_.push_back(image->energy);
    if (conditions_.useI0)
        planI0();
    for (std::vector<double>* row : {&i1Dark_, &i0Dark_})
        row->assign(laneStride, 0.0);
    // What stands behind the positions is worked on with them.
    for (std::vector<double>* row : {&i1_, &i0_})
        row->assign(laneStride, 1.0);
}

void BlockSpectra::planI0()
{
    const TiffStack& i0 = stacks_.i0;
    if (i0.size() > 1) {
        const EnergyOrder order = energyOrder(i0);
        lines_.reserve(energies_.size());
        for (const double E : energies_) {
            const ImagePair pair = imagesAround(i0, order, E);
            const TiffData& low = *i0[pair.first];
            const TiffData& high = *i0[pair.second];
            // Whole counts on the grid need no line: it would give the same number.
            const bool isAtLow = E == low.energy && low.energy != high.energy &&
                                 low.pixelType != TiffData::Floats &&
                                 high.pixelType != TiffData::Floats;
            lines_.push_back({pair.first, pair.second, low.energy, high.energy, isAtLow});
        }
    }
    i0Sums_.resize(size_t(i0.size()) * laneStride);
    i0Formed_.resize(size_t(i0.size()));
    planI0Levels();
}

/// The dark level is that of the I0 images, so it is taken from the same line as their counts.
void BlockSpectra::planI0Levels()
{
    i0Levels_.assign(energies_.size(), 0.0);
    if (!conditions_.i0DarkAreaOn || stacks_.i0.isEmpty())
        return;
    const auto levelOf = [this](int image) {
        return conditions_.i0DarkAvg.value(image, 0.0) * blockPixels_;
    };
    for (size_t i = 0; i < energies_.size(); ++i) {
        if (lines_.empty()) {
            i0Levels_[i] = levelOf(0);
            continue;
        }
        const I0Line& line = lines_[i];
        i0Levels_[i] = twoPointLine(line.lowEnergy, levelOf(line.low), line.highEnergy,
                                    levelOf(line.high), energies_[i]);
    }
}

Spectrum BlockSpectra::at(int x, int y)
{
    Spectrum spectrum;
    if (!insideImage(conditions_, x, y))
        return spectrum;
    mu_.resize(energies_.size() * laneStride);
    formMu({x, 1, 1, y}, mu_.data());
    spectrum.setPoints(curveOf(mu_.data()));
    return spectrum;
}

bool BlockSpectra::areInside(const BlockRun& run) const
{
    return insideImage(conditions_, run.x, run.y) &&
           insideImage(conditions_, run.x + qint64(run.count - 1) * run.step, run.y);
}

void BlockSpectra::formMu(const BlockRun& run, double* mu)
{
    sumDark(run);
    std::fill(i0Formed_.begin(), i0Formed_.end(), false);
    for (int i = 0; i < stacks_.i1.size(); ++i) {
        prefetch(i + imagesAhead, run);
        stacks_.i1[i]->blockSums(run.x, run.step, run.count, run.y, conditions_.halfX,
                                 conditions_.halfY, i1_.data());
        const double level =
            conditions_.i1DarkAreaOn ? conditions_.i1DarkAvg.value(i, 0.0) * blockPixels_ : 0.0;
        takeDark(i1_.data(), run.count, level, i1Dark_);
        const double* const i0 = i0At(i, run);
        absorptions(i0, run.count, mu + size_t(i) * laneStride);
    }
}

/// The same place of many images is no stream that the processor would see by itself.
void BlockSpectra::prefetch(int image, const BlockRun& run) const
{
    if (image >= stacks_.i1.size())
        return;
    const auto fetch = [&](const TiffData& of) {
        of.prefetchBlocks(run.x, run.step, run.count, run.y, conditions_.halfX, conditions_.halfY);
    };
    fetch(*stacks_.i1[image]);
    if (!lines_.empty() && conditions_.readsI0())
        fetch(*stacks_.i0[lines_[size_t(image)].low]);
}

/// absorption() of each position. The lane form has no branch; what is not common is done again.
void BlockSpectra::absorptions(const double* i0, int count, double* mu) const
{
    const double* const i1 = i1_.data();
    std::uint64_t rare = 1;
    if (!conditions_.fluorescence)
        logarithms_(i0, i1, count, mu, rare);
    if (rare == 0)
        return;
    for (int k = 0; k < count; ++k) {
        if (conditions_.fluorescence || signOfRare(i0[k], i1[k]) >> 63 != 0)
            mu[k] = absorption(i0[k], i1[k], conditions_.fluorescence);
    }
}

/// Without dark terms the counts stay as they are.
void BlockSpectra::takeDark(double* counts, int count, double level,
                            const std::vector<double>& dark) const
{
    if (conditions_.dark || level != 0.0)
        takeOffDark_(counts, count, level, dark.data());
}

QVector<QPointF> BlockSpectra::curveOf(const double* mu) const
{
    QVector<QPointF> curve(stacks_.i1.size());
    QPointF* points = curve.data();
    for (size_t i = 0; i < energies_.size(); ++i)
        points[i] = QPointF(energies_[i], mu[i * laneStride]);
    return curve;
}

void BlockSpectra::sumDark(const BlockRun& run)
{
    if (!conditions_.dark)
        return;
    double sums[mostLanes];
    conditions_.dark->blockSums(run.x, run.step, run.count, run.y, conditions_.halfX,
                                conditions_.halfY, sums);
    for (int k = 0; k < run.count; ++k) {
        const double perMs = sums[k] / conditions_.darkExposure;
        i1Dark_[size_t(k)] = perMs * conditions_.i1Exposure;
        i0Dark_[size_t(k)] = perMs * conditions_.i0Exposure;
    }
}

/// Block sums of an I0 image at the positions, formed when they are first asked for.
const double* BlockSpectra::i0Sums(int image, const BlockRun& run)
{
    double* const sums = &i0Sums_[size_t(image) * laneStride];
    if (!i0Formed_[size_t(image)]) {
        stacks_.i0[image]->blockSums(run.x, run.step, run.count, run.y, conditions_.halfX,
                                     conditions_.halfY, sums);
        i0Formed_[size_t(image)] = true;
    }
    return sums;
}

/// Counts of the I0 images at the energy of I1 image `image`.
void BlockSpectra::readI0(int image, const BlockRun& run)
{
    double* const i0 = i0_.data();
    if (stacks_.i0.isEmpty()) {
        std::fill_n(i0, run.count, 1.0);
        return;
    }
    if (lines_.empty()) {
        std::copy_n(i0Sums(0, run), run.count, i0);
        return;
    }
    const I0Line& line = lines_[size_t(image)];
    const double E = energies_[size_t(image)];
    const double* const low = i0Sums(line.low, run);
    if (line.isAtLow) {
        std::copy_n(low, run.count, i0);
        return;
    }
    const double* const high = i0Sums(line.high, run);
    if (line.lowEnergy != line.highEnergy) {
        countsBetween_({low, high, line.lowEnergy, line.highEnergy, E}, run.count, i0);
        return;
    }
    for (int k = 0; k < run.count; ++k)
        i0[k] = twoPointLine(line.lowEnergy, low[k], line.highEnergy, high[k], E);
}

/// I0 counts, dark taken off, of the positions at the energy of I1 image `image`.
const double* BlockSpectra::i0At(int image, const BlockRun& run)
{
    double* const i0 = i0_.data();
    if (conditions_.totalI0Loaded) {
        std::fill_n(i0, run.count, conditions_.totalI0.y(image));
        return i0;
    }
    if (!conditions_.useI0) {
        std::fill_n(i0, run.count, blockPixels_);
        return i0;
    }
    const double level = i0Levels_[size_t(image)];
    const bool isBare = !conditions_.dark && level == 0.0;
    if (isBare && !lines_.empty() && lines_[size_t(image)].isAtLow)
        return i0Sums(lines_[size_t(image)].low, run);
    readI0(image, run);
    takeDark(i0, run.count, level, i0Dark_);
    return i0;
}

Spectrum rawXafs(const StackPair& stacks, const BlockConditions& conditions, int x, int y)
{
    return BlockSpectra(stacks, conditions).at(x, y);
}

Spectrum rawI1(const TiffStack& i1, const BlockConditions& conditions, int x, int y)
{
    Spectrum spectrum;
    if (!insideImage(conditions, x, y))
        return spectrum;
    spectrum.points.reserve(i1.size());
    for (const SharedImage& image : i1) {
        spectrum.append(image->energy, image->blockSum(x, y, conditions.halfX, conditions.halfY));
    }
    return spectrum;
}
