#pragma once

#include "spectrum/CurveTable.h"
#include "spectrum/ShiftLanes.h"

class XafsSpectrum;

/// The inner product of one spectrum with a reference at many shifts: what does not depend on the
/// shift is read once. Both spectra must outlive the search and not change.
class ShiftSearch
{
public:
    ShiftSearch(const XafsSpectrum& spectrum, const XafsSpectrum& ref);
    /// The same of a spectrum given by raw energies, its normalised values and its edge, all
    /// energies raw [eV].
    ShiftSearch(const double* energies, const double* values, int n, double edge,
                const XafsSpectrum& ref);

    /// XafsSpectrum::innerProduct at this shift [eV]. Nan energies are logged once in the search's
    /// life: a nan shift makes all of them nan.
    double innerProduct(double shift);

    /// Takes the shifts centre + offsets[i] into the search: of all shifts tried so far the first
    /// one with the greatest product is the best. Offsets ascend, and those near 0 should be the
    /// likely ones: products that can't be the greatest are not worked out.
    void tryShifts(double centre, const double* offsets, int n);

    /// The whole search: centre +-range by step, then both a tenth, while step >= minStep; the best
    /// shift [eV], 0.0 for a step that is too fine from the start.
    double find(double centre, double range, double step, double minStep);

    /// Best shift of all tried [eV]; 0.0 before the first.
    double bestShift() const { return bestShift_; }

private:
    using Values = QVarLengthArray<double, 512>;

    /// Shifts worked on together.
    static constexpr int most = 64;

    struct Sums
    {
        double tt = 0.0; ///< squares of the spectrum
        double rr = 0.0; ///< squares of the reference
        double tr = 0.0;

        double innerProduct() const;
    };

    /// Sums at several shifts.
    struct Batch
    {
        int n = 0;
        double shifts[most]; ///< ascending
        double tt[most];
        double rr[most];
        double tr[most];

        Sums at(int k) const { return {tt[k], rr[k], tr[k]}; }
    };

    explicit ShiftSearch(const XafsSpectrum& ref, int n);
    void takeEdge(double edge);
    Sums sumsAt(int first, int end, double shift);
    void sumUp(int first, int end, Batch& batch);
    bool staysBelow(double product, const Sums& edge) const;
    void tryBatch(double centre, const double* offsets, int n);
    void take(double product, double shift);
    void logNan();

    Values energies_; ///< raw energies of the spectrum
    Values values_;   ///< its doubleNormalizedPreBase
    double squares_ = 0.0;
    int edgeFirst_ = 0; ///< points round the edge, which tell most shifts apart
    int edgeEnd_ = 0;
    bool rises_ = false; ///< all energies are finite and none is below the one before
    CurveTable ref_;
    double refMin_; ///< range of the reference, raw energies
    double refMax_;
    double refShift_; ///< shift of the reference's curve itself
    decltype(&lanes::sse2::sumShifts) sumShifts_;
    double best_ = -1e300;
    double bestShift_ = 0.0;
    bool nanLogged_ = false;
};
