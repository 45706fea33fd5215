#include "image/BlockSpectrum.h"

#include "common/PortableMath.h"
#include "common/TwoPointLine.h"
#include "image/EnergyOrder.h"

#include <algorithm>
#include <cstdint>

namespace {

/// Positions worked on together: several cache lines of 16-bit pixels one after the other, which
/// the processor fetches ahead, and few enough that what is kept of them, image by image, stays
/// within the cache.
constexpr int chunkPositions = 128;

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

/// absorption() of each position. The first loop has no branch, so that the compiler can let it
/// work on several positions at a time; what is not common is done again.
void absorptions(const double* i0, const double* i1, int count, bool fluorescence, double* mu)
{
    std::uint64_t signs = 0;
    for (int k = 0; k < count; ++k) {
        signs |= signOfRare(i0[k], i1[k]);
        mu[k] = portable::logOfCommon(i0[k] / i1[k]);
    }
    if (!fluorescence && signs >> 63 == 0)
        return;
    for (int k = 0; k < count; ++k) {
        if (fluorescence || signOfRare(i0[k], i1[k]) >> 63 != 0)
            mu[k] = absorption(i0[k], i1[k], fluorescence);
    }
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
{
    energies_.reserve(size_t(stacks_.i1.size()));
    for (const SharedImage& image : stacks_.i1)
        energies_.push_back(image->energy);
    if (conditions_.useI0)
        planI0();
    i1Dark_.assign(chunkPositions, 0.0);
    i0Dark_.assign(chunkPositions, 0.0);
}

void BlockSpectra::planI0()
{
    const TiffStack& i0 = stacks_.i0;
    std::vector<bool> used(size_t(i0.size()), i0.size() == 1);
    if (i0.size() > 1) {
        const EnergyOrder order = energyOrder(i0);
        lines_.reserve(energies_.size());
        for (const double E : energies_) {
            const ImagePair pair = imagesAround(i0, order, E);
            lines_.push_back(
                {pair.first, pair.second, i0[pair.first]->energy, i0[pair.second]->energy});
            used[size_t(pair.first)] = true;
            used[size_t(pair.second)] = true;
        }
    }
    for (int i = 0; i < i0.size(); ++i) {
        if (used[size_t(i)])
            usedI0_.push_back(i);
    }
    i0Sums_.resize(size_t(i0.size()) * chunkPositions);
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
    if (insideImage(conditions_, x, y))
        formChunk(x, 1, 1, y, &spectrum);
    return spectrum;
}

QVector<Spectrum> BlockSpectra::row(int x, int step, int count, int y)
{
    QVector<Spectrum> spectra(count);
    Spectrum* out = spectra.data();
    const auto positionX = [&](int k) { return qint64(x) + qint64(k) * step; };
    // Positions outside keep their empty spectra; those inside are consecutive.
    int first = 0;
    while (first < count && !insideImage(conditions_, positionX(first), y))
        ++first;
    int end = first;
    while (end < count && insideImage(conditions_, positionX(end), y))
        ++end;
    for (int k = first; k < end; k += chunkPositions)
        formChunk(int(positionX(k)), step, std::min(chunkPositions, end - k), y, out + k);
    return spectra;
}

void BlockSpectra::formChunk(int x, int step, int count, int y, Spectrum* out)
{
    const int images = stacks_.i1.size();
    sumDark(x, step, count, y);
    sumI0(x, step, count, y);
    mu_.resize(size_t(images) * size_t(count));
    double i1[chunkPositions];
    double i0[chunkPositions];
    for (int i = 0; i < images; ++i) {
        stacks_.i1[i]->blockSums(x, step, count, y, conditions_.halfX, conditions_.halfY, i1);
        const double level =
            conditions_.i1DarkAreaOn ? conditions_.i1DarkAvg.value(i, 0.0) * blockPixels_ : 0.0;
        i0At(i, count, i0);
        for (int k = 0; k < count; ++k)
            i1[k] -= level + i1Dark_[size_t(k)];
        absorptions(i0, i1, count, conditions_.fluorescence, &mu_[size_t(i) * size_t(count)]);
    }
    for (int k = 0; k < count; ++k)
        out[k].setPoints(curveOf(k, count));
}

/// The curve at one of `count` positions. Each is written as a whole: a whole chunk
/// of them side by side would leave the cache.
QVector<QPointF> BlockSpectra::curveOf(int position, int count) const
{
    const int images = stacks_.i1.size();
    QVector<QPointF> curve(images);
    QPointF* points = curve.data();
    const double* mu = mu_.data() + position;
    for (int i = 0; i < images; ++i)
        points[i] = QPointF(energies_[size_t(i)], mu[size_t(i) * size_t(count)]);
    return curve;
}

void BlockSpectra::sumDark(int x, int step, int count, int y)
{
    if (!conditions_.dark)
        return;
    double sums[chunkPositions];
    conditions_.dark->blockSums(x, step, count, y, conditions_.halfX, conditions_.halfY, sums);
    for (int k = 0; k < count; ++k) {
        const double perMs = sums[k] / conditions_.darkExposure;
        i1Dark_[size_t(k)] = perMs * conditions_.i1Exposure;
        i0Dark_[size_t(k)] = perMs * conditions_.i0Exposure;
    }
}

void BlockSpectra::sumI0(int x, int step, int count, int y)
{
    for (const int image : usedI0_) {
        stacks_.i0[image]->blockSums(x, step, count, y, conditions_.halfX, conditions_.halfY,
                                     &i0Sums_[size_t(image) * chunkPositions]);
    }
}

/// I0 counts, dark taken off, of the chunk's positions at the energy of I1 image `image`.
void BlockSpectra::i0At(int image, int count, double* i0) const
{
    if (conditions_.totalI0Loaded) {
        std::fill(i0, i0 + count, conditions_.totalI0.y(image));
        return;
    }
    if (!conditions_.useI0) {
        std::fill(i0, i0 + count, blockPixels_);
        return;
    }
    const double level = i0Levels_[size_t(image)];
    if (stacks_.i0.isEmpty()) {
        for (int k = 0; k < count; ++k)
            i0[k] = 1.0 - (level + i0Dark_[size_t(k)]);
        return;
    }
    if (lines_.empty()) {
        for (int k = 0; k < count; ++k)
            i0[k] = i0Sums_[size_t(k)] - (level + i0Dark_[size_t(k)]);
        return;
    }
    const I0Line& line = lines_[size_t(image)];
    const double* low = &i0Sums_[size_t(line.low) * chunkPositions];
    const double* high = &i0Sums_[size_t(line.high) * chunkPositions];
    const double E = energies_[size_t(image)];
    for (int k = 0; k < count; ++k) {
        i0[k] = twoPointLine(line.lowEnergy, low[k], line.highEnergy, high[k], E) -
                (level + i0Dark_[size_t(k)]);
    }
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
