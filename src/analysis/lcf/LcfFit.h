#pragma once

#include "spectrum/CurveTable.h"
#include "spectrum/HeldGap.h"
#include "spectrum/XafsSpectrum.h"

#include <QMetaType>
#include <QVector>

#include <memory>
#include <vector>

/// What the fit needs of one reference row, copied when a request is made: workers never see rows.
struct LcfReferenceData
{
    XafsSpectrum spectrum; ///< isShifted on; eShift is the row's dE
    bool active = false;   ///< its use box is checked and it holds a valid file
    double weight = 0.0;   ///< the weight that the row shows

    /// The reference has a point at one of these energies, its dE taken off.
    bool hasPointIn(const ReadRange& range) const;
};

/// The forms of the fit.
enum class LcfMethod
{
    Lcf,
    OldLcf, ///< positions without an edge are fitted too
    Mlcf    ///< of the absorption itself, with a straight background
};

/// Conditions of a linear combination fit.
struct LcfRequest
{
    QVector<LcfReferenceData> rows; ///< all rows of the panel, active or not
    double rangeStart = 0.0;        ///< fitting range [eV]
    double rangeEnd = 30000.0;
    ReadRange scan; ///< energies that there are spectra of: the fitting range reaches no further
    /// Spectra whose lines come too close in the fitting range are fitted with their values
    /// continued by the step; otherwise as they are.
    bool holdGap = true;
    /// During a walk the rows keep the weights of the last single fit, and the fit curve (and the
    /// residual that stands on it) is formed with those.
    bool inWalk = false;
    /// In a walk the residual is that of each position's own fit, the position's offset taken off.
    bool ownWeights = false;
    SuggestElm sElm;
    LcfMethod method = LcfMethod::Lcf;

    bool isMlcf() const { return method == LcfMethod::Mlcf; }
    /// Whatever its outcome, a spectrum with points is fitted.
    bool fitsAll() const { return method != LcfMethod::Lcf; }
    /// Rows that take part: active, with a point inside the fitting range.
    QVector<int> fittedRows() const;
    /// Active rows without a point inside the fitting range: they would leave no energy to fit.
    QVector<int> leftOutRows() const;
    /// The fitting range as far as all references that take part reach.
    ReadRange commonRange() const;
};

/// Outcome of a linear combination fit of one spectrum.
struct LcfResult
{
    bool analysed = false; ///< false: no points, or fewer than two rows; nothing else is set
    /// Of the spectrum; Undefined where there is no sum that shares could be of.
    Outcome outcome = Outcome::NoPoints;
    bool fitted = false;     ///< otherwise ratios and dMuts are zero, one a row
    bool gapHeld = false;    ///< compared by values that were continued by the step
    QVector<int> activeRows; ///< row of each entry of ratios and dMuts when fitted
    /// Weight of each active reference, not limited. MLCF: its share in the sum of all weights.
    QVector<double> ratios;
    /// Step that each carries: weight times the edge step of the spectrum, 0 for a step below 0.
    /// MLCF: the weight itself [absorption], but 0 for one below 0.
    QVector<double> dMuts;
    double zansa = 0.0;                      ///< residual; only when fitted
    std::shared_ptr<const XafsSpectrum> fit; ///< the fit curve, normalised; null during a walk
};

/// What there is to tell of a reference row before a walk.
struct LcfNote
{
    int row;
    QString text; ///< English, for the log
};

/// A linear combination fit prepared for many spectra: whatever does not change from one spectrum
/// to the next is worked out once. What depends on the energies of a spectrum and on its offset
/// (the references there, the normal matrix and its factors, the fit curve of a walk) is kept for
/// the energies seen last. Results do not depend on what was fitted before, to the last bit.
///
/// The fit is a plain least-squares one on doubleNormalizedPreBase over the fitting range as far as
/// all references that take part reach, without limits on the weights. References that can not be
/// told apart leave whatever the solver gives. References are continued by their steps where their
/// lines come too close in the fitting range, like spectra; an unsound one is read as it is.
///
/// MLCF fits the absorption itself by a constant, a slope and the references'
/// doubleNormalizedPostBase, so that the lines of the spectrum play no part in the weights. Its fit
/// curve and its residual are normalised ones all the same, those of the shares.
class LcfPlan
{
public:
    explicit LcfPlan(const LcfRequest& request);

    LcfResult fit(const XafsSpectrum& s);

    /// What became of references: held, unsound, left out.
    const QVector<LcfNote>& notes() const { return notes_; }

    struct Reference
    {
        CurveTable table;
        double curveShift; ///< of the curve itself
        double shift;      ///< dE of the row [eV]
    };

    /// Works out what depends on the energies and the offset of a spectrum.
    void prepare(const XafsSpectrum& s);

    /// What prepare() has worked out, until it is called again.
    struct Prepared
    {
        const std::vector<double>& rowWeights; ///< weights that the rows show
        const std::vector<double>& rows;       ///< references [energy][stride], filled up with 0
        std::size_t stride;
        const std::vector<double>& columns; ///< of the fit, [energy][columnStride], likewise
        std::size_t columnStride;
        const std::vector<int>& fitted;
        const std::vector<int>& residualPoints;
        const std::vector<double>& fitValues; ///< fit curve of a walk at residualPoints
        const std::vector<double*>& lower;    ///< factors of the normal matrix, by rows
        const std::vector<double*>& upper;
        const std::vector<int>& pivots;
    };
    Prepared prepared() const
    {
        return {rowWeights_,     rows_,      stride_, columns(), columnStride_, fitted_,
                residualPoints_, fitValues_, lRows_,  uRows_,    pivots_};
    }

    const LcfRequest& request() const { return request_; }
    /// The references as the fit curve is made of them.
    const std::vector<Reference>& references() const { return references_; }
    /// The same as the fit takes them.
    const std::vector<Reference>& fittedReferences() const
    {
        return request_.isMlcf() ? postReferences_ : references_;
    }
    /// Columns of the fit in front of the references.
    std::size_t backgroundColumns() const { return request_.isMlcf() ? 2 : 0; }
    /// Energy that the slope of the background is counted from. [eV]
    double centre() const { return (fitRange_.from + fitRange_.to) * 0.5; }
    const QVector<int>& activeRows() const { return activeRows_; }
    /// The fitting range within the references' common span, and that span, where the fit curve is.
    const ReadRange& fitRange() const { return fitRange_; }
    ReadRange span() const { return {spanStart_, spanEnd_}; }

private:
    Q_DISABLE_COPY(LcfPlan)

    /// Energies of a curve as they were when the plan last looked.
    struct Energies
    {
        std::vector<double> raw;
        double shift = 0.0;

        double energy(int i) const { return raw[static_cast<std::size_t>(i)] - shift; }
        bool equal(const Spectrum& curve) const;
        void take(const Spectrum& curve);
    };

    void holdReference(int row);
    void addReference(int row);
    bool isPreparedFor(const XafsSpectrum& s) const;
    void readColumns();
    const std::vector<double>& columns() const { return request_.isMlcf() ? columns_ : rows_; }
    void chooseFittedPoints();
    void factorise();
    void chooseResidualPoints();
    QVector<QPointF> fitCurve(const double* weights) const;
    void sampleFit(const Spectrum& fitted);
    bool takeValues(const XafsSpectrum& s, LcfResult& result);
    void solve(const XafsSpectrum& s);
    void takeWeights(const XafsSpectrum& s, LcfResult& result);
    void takeShares(LcfResult& result);
    double residual(const XafsSpectrum& s) const;
    double ownResidual(const XafsSpectrum& s) const;
    void makeFit(LcfResult& result);

    LcfRequest request_; ///< owns the curves that references_ read
    std::vector<Reference> references_;
    std::vector<Reference> postReferences_; ///< MLCF
    QVector<LcfNote> notes_;
    QVector<int> activeRows_; ///< that take part
    std::vector<double> rowWeights_;
    ReadRange fitRange_;     ///< fitting range within the references' common span
    double spanStart_ = 0.0; ///< common span of the references, where the fit curve is formed
    double spanEnd_;

    // Of the energies seen last.
    bool prepared_ = false;
    Energies spectrumEnergies_;
    Energies curveEnergies_;
    double offset_ = 0.0;
    std::vector<double> energies_; ///< of all points, offset taken off
    std::size_t stride_;           ///< values kept a point: one a reference, filled up with zeros
    std::vector<double> rows_;     ///< references at energies_
    std::size_t columnStride_;     ///< the same of the fit's columns
    std::vector<double> columns_;  ///< MLCF: of the fit at energies_; otherwise rows_ are
    std::vector<int> fitted_;      ///< points inside the fitting range
    std::vector<double> fittedColumns_; ///< columns of the fit at fitted_
    std::vector<int> residualPoints_;
    std::vector<double> fitValues_; ///< fit curve at the energies of residualPoints_
    std::vector<double> values_;    ///< of the spectrum at all its points, as they are compared

    // Normal equations; the matrices row by row.
    std::vector<double> a_, l_, u_, b_, y_, x_;
    std::vector<double*> lRows_, uRows_;
    std::vector<const double*> aRows_;
    std::vector<int> pivots_;
    std::vector<double> fittedValues_; ///< that are fitted, at fitted_
    std::vector<double> weights_;      ///< found; MLCF: the shares
};

/// Fits a single spectrum: a plan used once.
LcfResult fitLcf(const XafsSpectrum& s, const LcfRequest& request);

Q_DECLARE_METATYPE(LcfRequest)
Q_DECLARE_METATYPE(LcfResult)
