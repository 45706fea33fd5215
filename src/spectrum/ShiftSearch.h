#pragma once

#include <QVarLengthArray>

class Spectrum;
class XafsSpectrum;

/// The inner product of one spectrum with a reference at many shifts: what does not depend on the
/// shift is read once. Both spectra must outlive the search and not change.
class ShiftSearch
{
public:
    ShiftSearch(const XafsSpectrum& spectrum, const XafsSpectrum& ref);

    /// XafsSpectrum::innerProduct at this shift [eV]. Nan energies are logged once in the search's
    /// life: a nan shift makes all of them nan.
    double innerProduct(double shift);

private:
    using Values = QVarLengthArray<double, 512>;

    void tabulate();
    int segmentFrom(int low, double E) const;
    void logNan();

    Values energies_; ///< raw energies of the spectrum
    Values values_;   ///< its doubleNormalizedPreBase
    const Spectrum& refCurve_;
    double refMin_; ///< range of the reference, raw energies
    double refMax_;
    double refShift_;        ///< shift of the reference's curve itself
    bool tabulated_ = false; ///< the three tables hold the curve, which strictly ascends
    Values refX_;
    Values refY_;
    Values slopes_; ///< of the segment that starts at the point
    bool nanLogged_ = false;
};
