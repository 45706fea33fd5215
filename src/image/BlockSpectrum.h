#pragma once

#include "image/BlockLanes.h"
#include "image/TiffData.h"
#include "spectrum/Spectrum.h"

#include <cmath>
#include <vector>

/// Absorption of two counts: ln(I0 / I1), 1.0 where I0 * I1 is not above 0; for fluorescence I1 /
/// I0.
double absorption(double i0, double i1, bool fluorescence);

/// The images that a block spectrum is formed from; not owned, and unchanged while in use.
struct StackPair
{
    const TiffStack& i1;
    const TiffStack& i0;
};

/// All conditions of a block spectrum, gathered once from wherever they are kept.
struct BlockConditions
{
    int halfX = 0; ///< the block spans 2*halfX+1 by 2*halfY+1 pixels
    int halfY = 0;
    int imageWidth = -1; ///< positions outside give an empty spectrum
    int imageHeight = 0;
    bool useI0 = false; ///< divide by I0, else by the number of pixels
    bool fluorescence = false;

    SharedImage dark;          ///< dark image or null, scaled to each stack's exposure
    double darkExposure = 0.0; ///< [ms]; 0 makes the dark terms infinite, nothing guards it
    double i1Exposure = 0.0;   ///< [ms]
    double i0Exposure = 0.0;

    bool i1DarkAreaOn = false; ///< mean of the dark area per image, taken off each pixel
    bool i0DarkAreaOn = false;
    QVector<double> i1DarkAvg; ///< by the number of the image; values past the end count as 0
    QVector<double> i0DarkAvg; ///< of the I0 images, and interpolated in energy with them

    bool totalI0Loaded = false; ///< totalI0 replaces I0, point i for image i, 0 past its end
    Spectrum totalI0;

    /// Counts of the I0 images play a part.
    bool readsI0() const { return useI0 && !totalI0Loaded; }

    /// Number of pixels in a block, also where it hangs over the edge.
    double blockPixels() const
    {
        return (2.0 * std::abs(double(halfX)) + 1.0) * (2.0 * std::abs(double(halfY)) + 1.0);
    }
};

/// Forms the absorption spectra mu(E) of blocks. What does not depend on the position (the I0
/// images and lines that each energy needs, dark levels) is worked out at construction, so one
/// object serves a whole row or walk. Stacks and conditions must not change meanwhile.
///
/// mu is absorption() of the two counts. Points are in the order of the I1 stack; I0 images may
/// stand in any order.
class BlockSpectra
{
public:
    BlockSpectra(const StackPair& stacks, const BlockConditions& conditions);

    /// Spectrum of the block round (x, y); empty outside the image.
    Spectrum at(int x, int y);

    /// Positions x, x+step, ... of row y, at most mostLanes.
    struct BlockRun
    {
        int x;
        int step;
        int count;
        int y;
    };
    /// All of them lie in the image.
    bool areInside(const BlockRun& run) const;
    /// mu of positions inside the image, [I1 image][laneStride]: the values of at(). What stands
    /// behind the positions of a row has no meaning.
    void formMu(const BlockRun& run, double* mu);
    /// Energies of the I1 images [eV].
    const std::vector<double>& energies() const { return energies_; }
    /// The curve of one position, given its column of what formMu() formed.
    QVector<QPointF> curveOf(const double* mu) const;

private:
    /// Energy of an I1 image on the line through two I0 images.
    struct I0Line
    {
        int low;
        int high;
        double lowEnergy;
        double highEnergy;
        bool isAtLow; ///< the counts are those of `low` itself
    };

    void planI0();
    void planI0Levels();
    void prefetch(int image, const BlockRun& run) const;
    void absorptions(const double* i0, int count, double* mu) const;
    void takeDark(double* counts, int count, double level, const std::vector<double>& dark) const;
    void sumDark(const BlockRun& run);
    const double* i0Sums(int image, const BlockRun& run);
    void readI0(int image, const BlockRun& run);
    const double* i0At(int image, const BlockRun& run);

    const StackPair stacks_;
    const BlockConditions conditions_;
    const double blockPixels_;
    decltype(&lanes::sse2::logarithms) logarithms_;
    decltype(&lanes::sse2::takeOffDark) takeOffDark_;
    decltype(&lanes::sse2::countsBetween) countsBetween_;
    std::vector<double> energies_;
    std::vector<I0Line> lines_;    ///< one an I1 image, when two or more I0 images exist
    std::vector<double> i0Levels_; ///< dark area's level of a block, one an I1 image
    std::vector<double> i0Sums_;   ///< [I0 image][laneStride] of the run
    std::vector<char> i0Formed_;   ///< its sums are those of the run, one an I0 image
    std::vector<double> i1Dark_;   ///< dark term per position of the run
    std::vector<double> i0Dark_;
    std::vector<double> i1_; ///< counts of the run at an energy
    std::vector<double> i0_;
    std::vector<double> mu_; ///< [I1 image][laneStride]
};

/// Spectrum of the block round (x, y).
Spectrum rawXafs(const StackPair& stacks, const BlockConditions& conditions, int x, int y);

/// (energy, sum of I1 over the block), without dark or I0; empty outside the image.
Spectrum rawI1(const TiffStack& i1, const BlockConditions& conditions, int x, int y);
