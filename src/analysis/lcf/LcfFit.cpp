#include "analysis/lcf/LcfFit.h"

#include "spectrum/Matrix.h"

#include <QDebug>

#include <algorithm>
#include <numeric>

namespace {

/// References that one pass over the points sums up side by side. Each sum still runs over the
/// points in their order, so the result is that of one sum after the other.
constexpr std::size_t sumsAtOnce = 4;

std::size_t at(int i)
{
    return static_cast<std::size_t>(i);
}

std::size_t filledUp(std::size_t n)
{
    return (n + sumsAtOnce - 1) / sumsAtOnce * sumsAtOnce;
}

/// out[k] = sum over all points of rows[point][k] * values[point] for k below stride.
void sumProducts(const std::vector<double>& rows, std::size_t stride,
                 const std::vector<double>& values, double* out)
{
    for (std::size_t first = 0; first < stride; first += sumsAtOnce) {
        double sums[sumsAtOnce] = {};
        const double* row = rows.data() + first;
        for (const double v : values) {
            for (std::size_t k = 0; k < sumsAtOnce; ++k)
                sums[k] += row[k] * v;
            row += stride;
        }
        std::copy(sums, sums + sumsAtOnce, out + first);
    }
}

template<typename Pointer>
void pointToRows(std::vector<double>& m, std::vector<Pointer>& rows, std::size_t n,
                 std::size_t stride)
{
    m.assign(n * stride, 0.0);
    rows.resize(n);
    for (std::size_t k = 0; k < n; ++k)
        rows[k] = m.data() + k * stride;
}

} // namespace

bool LcfPlan::Energies::equal(const Spectrum& curve) const
{
    const QVector<QPointF>& points = curve.points;
    if (raw.size() != at(points.size()) || shift != curve.shift())
        return false;
    const QPointF* const p = points.constData();
    int different = 0;
    for (std::size_t i = 0; i < raw.size(); ++i)
        different |= static_cast<int>(p[i].x() != raw[i]);
    return different == 0;
}

void LcfPlan::Energies::take(const Spectrum& curve)
{
    shift = curve.shift();
    raw.resize(at(curve.size()));
    std::transform(curve.points.begin(), curve.points.end(), raw.begin(),
                   [](const QPointF& p) { return p.x(); });
}

LcfPlan::LcfPlan(const LcfRequest& request)
    : request_(request)
    , activeRows_(request.fittedRows())
    , fitRange_(request.commonRange())
    , spanEnd_(1e300)
{
    for (const int row : request_.leftOutRows())
        notes_.append({row, QStringLiteral("no point inside the fitting range, left out")});
    for (const int row : qAsConst(activeRows_)) {
        if (request_.holdGap)
            holdReference(row);
        addReference(row);
    }
    if (!activeRows_.isEmpty() && !(fitRange_.from <= fitRange_.to))
        notes_.append({activeRows_.first(), QStringLiteral("no energies in common with the others "
                                                           "inside the fitting range")});
    stride_ = filledUp(references_.size());
    const std::size_t n = backgroundColumns() + references_.size();
    columnStride_ = filledUp(n);
    pointToRows(a_, aRows_, n, columnStride_);
    pointToRows(l_, lRows_, n, columnStride_);
    pointToRows(u_, uRows_, n, columnStride_);
    pivots_.resize(n);
    b_.resize(columnStride_);
    y_.resize(n);
    x_.resize(n);
    weights_.resize(references_.size());
}

void LcfPlan::holdReference(int row)
{
    XafsSpectrum& s = request_.rows[row].spectrum;
    const HeldGap gap(s, fitRange_);
    if (gap.state() == HeldGap::Sound)
        return;
    notes_.append({row, gap.logText()});
    s.doubleNormalizedPreBase = gap.curve();
    if (gap.state() != HeldGap::Held || !request_.isMlcf())
        return;
    // Over the post-edge line everything stands a step lower.
    const Spectrum& held = s.doubleNormalizedPreBase;
    for (int i = 0; i < held.size(); ++i)
        s.doubleNormalizedPostBase.points[i].setY(held.y(i) - 1.0);
}

void LcfPlan::addReference(int row)
{
    const XafsSpectrum& s = request_.rows.at(row).spectrum;
    const Spectrum& curve = s.doubleNormalizedPreBase;
    references_.push_back({CurveTable(curve), curve.shift(), s.shift()});
    const Spectrum& post = s.doubleNormalizedPostBase;
    if (request_.isMlcf())
        postReferences_.push_back({CurveTable(post), post.shift(), s.shift()});
    rowWeights_.push_back(request_.rows.at(row).weight);
    spanStart_ = std::max(spanStart_, s.x(0));
    spanEnd_ = std::min(spanEnd_, s.x(s.size() - 1));
}

/// Writes a reference's values at the energies, one every `stride` places.
static void readReference(const LcfPlan::Reference& reference, const std::vector<double>& energies,
                          double* out, std::size_t stride)
{
    int segment = 0;
    bool numbers = true;
    for (const double energy : energies) {
        const double shifted = energy + reference.shift;
        numbers &= shifted == shifted;
        *out = reference.table.at(segment, shifted + reference.curveShift);
        out += stride;
    }
    if (!numbers)
        qDebug() << "nan EeV in XafsSpectrum::doubleNormalizedPreBase";
}

bool LcfPlan::isPreparedFor(const XafsSpectrum& s) const
{
    return prepared_ && offset_ == s.eOffset && spectrumEnergies_.equal(s) &&
           curveEnergies_.equal(s.doubleNormalizedPreBase);
}

void LcfPlan::prepare(const XafsSpectrum& s)
{
    prepared_ = true;
    offset_ = s.eOffset;
    spectrumEnergies_.take(s);
    curveEnergies_.take(s.doubleNormalizedPreBase);
    energies_.resize(at(s.size()));
    std::transform(s.points.begin(), s.points.end(), energies_.begin(),
                   [&s](const QPointF& p) { return p.x() - s.shift() - s.eOffset; });
    readColumns();
    chooseFittedPoints();
    factorise();
    chooseResidualPoints();
    if (request_.inWalk) {
        // Read at energies only, so its bounds need not be known.
        Spectrum curve;
        curve.points = fitCurve(rowWeights_.data());
        sampleFit(curve);
    }
}

void LcfPlan::readColumns()
{
    rows_.assign(energies_.size() * stride_, 0.0);
    for (std::size_t j = 0; j < references_.size(); ++j)
        readReference(references_[j], energies_, rows_.data() + j, stride_);
    if (!request_.isMlcf())
        return;
    columns_.assign(energies_.size() * columnStride_, 0.0);
    double* out = columns_.data();
    for (const double energy : energies_) {
        out[0] = 1.0;
        // Counted from the middle of the range: that changes only the constant, which nobody reads,
        // and spares the weights two digits that E * E beside 1 would cost in the normal matrix.
        out[1] = energy - centre();
        out += columnStride_;
    }
    for (std::size_t j = 0; j < postReferences_.size(); ++j)
        readReference(postReferences_[j], energies_, columns_.data() + backgroundColumns() + j,
                      columnStride_);
}

void LcfPlan::chooseFittedPoints()
{
    fitted_.clear();
    fittedColumns_.resize(columns().size());
    double* out = fittedColumns_.data();
    for (std::size_t i = 0; i < energies_.size(); ++i) {
        if (!fitRange_.contains(energies_[i]))
            continue;
        fitted_.push_back(static_cast<int>(i));
        out = std::copy_n(columns().data() + i * columnStride_, columnStride_, out);
    }
    fittedValues_.resize(fitted_.size());
}

void LcfPlan::factorise()
{
    const std::size_t n = pivots_.size();
    for (std::size_t k = 0; k < n; ++k) {
        for (std::size_t p = 0; p < fittedValues_.size(); ++p)
            fittedValues_[p] = fittedColumns_[p * columnStride_ + k];
        sumProducts(fittedColumns_, columnStride_, fittedValues_, a_.data() + k * columnStride_);
    }
    // A matrix that has no inverse shows in the weights alone.
    Matrix::makeLU(static_cast<int>(n), aRows_.data(), lRows_.data(), uRows_.data(),
                   pivots_.data());
}

void LcfPlan::chooseResidualPoints()
{
    residualPoints_.clear();
    for (int i = 1; i < static_cast<int>(curveEnergies_.raw.size()) - 1; ++i) {
        // The position's offset stays in this energy, unlike in that of the fit: deliberate.
        if (fitRange_.contains(curveEnergies_.energy(i)))
            residualPoints_.push_back(i);
    }
    fitValues_.resize(residualPoints_.size());
}

QVector<QPointF> LcfPlan::fitCurve(const double* weights) const
{
    QVector<QPointF> points(static_cast<int>(energies_.size()));
    QPointF* out = points.data();
    const std::size_t n = references_.size();
    for (std::size_t i = 0; i < energies_.size(); ++i) {
        if (!(energies_[i] >= spanStart_ && energies_[i] <= spanEnd_))
            continue;
        const double* const row = rows_.data() + i * stride_;
        double sum = 0.0;
        for (std::size_t j = 0; j < n; ++j)
            sum += weights[j] * row[j];
        *out++ = {energies_[i], sum};
    }
    points.resize(static_cast<int>(out - points.data()));
    return points;
}

void LcfPlan::sampleFit(const Spectrum& fitted)
{
    const CurveTable table(fitted);
    int segment = 0;
    std::transform(residualPoints_.begin(), residualPoints_.end(), fitValues_.begin(),
                   [&](int i) { return table.at(segment, curveEnergies_.energy(i)); });
}

/// Takes the values that the spectrum is compared by; false when its lines leave nothing to
/// compare, and the values are as they are.
bool LcfPlan::takeValues(const XafsSpectrum& s, LcfResult& result)
{
    const Spectrum& curve = s.doubleNormalizedPreBase;
    const QPointF* const points = curve.points.constData();
    values_.assign(energies_.size(), 0.0);
    const std::size_t size = std::min(values_.size(), at(curve.size()));
    for (std::size_t i = 0; i < size; ++i)
        values_[i] = points[i].y();
    if (!request_.holdGap || !s.linesClose)
        return true;
    const HeldGap gap(s, fitRange_);
    if (gap.state() == HeldGap::Unsound)
        return false;
    result.gapHeld = gap.state() == HeldGap::Held;
    gap.continueOver(values_.data());
    return true;
}

void LcfPlan::solve(const XafsSpectrum& s)
{
    const QPointF* const mu = s.points.constData();
    for (std::size_t p = 0; p < fitted_.size(); ++p)
        fittedValues_[p] = request_.isMlcf() ? mu[fitted_[p]].y() : values_[at(fitted_[p])];
    sumProducts(fittedColumns_, columnStride_, fittedValues_, b_.data());
    const int n = static_cast<int>(pivots_.size());
    Matrix::solveLV(n, lRows_.data(), b_.data(), y_.data(), pivots_.data());
    Matrix::solveUV(n, uRows_.data(), y_.data(), x_.data(), pivots_.data());
    for (std::size_t j = 0; j < weights_.size(); ++j)
        weights_[j] = x_[at(pivots_[backgroundColumns() + j])];
}

void LcfPlan::takeWeights(const XafsSpectrum& s, LcfResult& result)
{
    result.activeRows = activeRows_;
    result.dMuts.resize(activeRows_.size());
    if (request_.isMlcf()) {
        takeShares(result);
    } else {
        const double step = std::max(0.0, s.dMut);
        std::transform(weights_.begin(), weights_.end(), result.dMuts.begin(),
                       [step](double w) { return w * step; });
    }
    result.ratios = QVector<double>(weights_.begin(), weights_.end());
}

/// Weights below 0 become 0, yet lessen the sum that the shares are of: deliberate, as is that
/// nothing guards the division. Shares of no sum are no numbers, or infinite.
void LcfPlan::takeShares(LcfResult& result)
{
    double sum = 0.0;
    for (double& weight : weights_) {
        sum += weight;
        weight = weight < 0.0 ? 0.0 : weight;
    }
    const double norm = std::max(0.0, sum);
    std::copy(weights_.begin(), weights_.end(), result.dMuts.begin());
    for (double& weight : weights_)
        weight /= norm;
    if (norm == 0.0)
        result.outcome = Outcome::Undefined;
}

/// Share of the squares by which a fit misses a value; all of it for a value of 0.
static double missed(double fit, double value)
{
    const double deviation = (fit - value) / value;
    return value != 0.0 ? deviation * deviation : 1.0;
}

double LcfPlan::residual(const XafsSpectrum& s) const
{
    double sum = 0.0;
    for (std::size_t p = 0; p < residualPoints_.size(); ++p)
        sum += missed(fitValues_[p], values_[at(residualPoints_[p])]);
    const auto count = static_cast<double>(residualPoints_.size());
    return (residualPoints_.empty() ? 0.0 : sum / count) / s.size();
}

/// The residual of the weights just found, at the energies that they were fitted at but for the
/// first and the last of the curve.
double LcfPlan::ownResidual(const XafsSpectrum& s) const
{
    const int last = s.doubleNormalizedPreBase.size() - 1;
    double sum = 0.0;
    int count = 0;
    for (std::size_t p = 0; p < fitted_.size(); ++p) {
        if (fitted_[p] < 1 || fitted_[p] >= last)
            continue;
        const auto i = at(fitted_[p]);
        const double* const row = rows_.data() + i * stride_;
        const double fit = std::inner_product(weights_.begin(), weights_.end(), row, 0.0);
        sum += missed(fit, values_[i]);
        ++count;
    }
    return (count == 0 ? 0.0 : sum / count) / s.size();
}

/// Outside a walk the fit curve is that of the weights just found.
void LcfPlan::makeFit(LcfResult& result)
{
    Spectrum curve;
    curve.setPoints(fitCurve(weights_.data()));
    sampleFit(curve);
    const QString name =
        request_.isMlcf() ? QStringLiteral("anal-MLCF") : QStringLiteral("anal-LCF");
    result.fit =
        std::make_shared<XafsSpectrum>(curve, name, VictLine::Straight, 0.0, request_.sElm);
}

LcfResult LcfPlan::fit(const XafsSpectrum& s)
{
    LcfResult result;
    if (s.isEmpty() || request_.rows.size() < 2)
        return result;
    result.analysed = true;
    result.outcome = s.outcome;
    if (request_.fitsAll() || s.outcome == Outcome::Fitted) {
        if (!isPreparedFor(s))
            prepare(s);
        const bool sound = takeValues(s, result);
        // What MLCF fits does not depend on the lines.
        if (!sound && !request_.isMlcf())
            result.outcome = Outcome::GapUnsound;
        result.fitted = sound || request_.fitsAll();
    }
    if (!result.fitted) {
        result.ratios.fill(0.0, request_.rows.size());
        result.dMuts = result.ratios;
        return result;
    }
    solve(s);
    takeWeights(s, result);
    if (!request_.inWalk)
        makeFit(result);
    result.zansa = request_.inWalk && request_.ownWeights ? ownResidual(s) : residual(s);
    return result;
}

LcfResult fitLcf(const XafsSpectrum& s, const LcfRequest& request)
{
    return LcfPlan(request).fit(s);
}
