#include "analysis/LcfFit.h"

#include "spectrum/Matrix.h"

#include <QDebug>

#include <algorithm>

namespace {

/// References that one pass over the points sums up side by side. Each sum still runs over the
/// points in their order, so the result is that of one sum after the other.
constexpr std::size_t sumsAtOnce = 4;

std::size_t at(int i)
{
    return static_cast<std::size_t>(i);
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
    , fitStart_(request.rangeStart)
    , fitEnd_(request.rangeEnd)
    , spanEnd_(1e300)
{
    for (int i = 0; i < request_.rows.size(); ++i) {
        if (request_.rows.at(i).active) {
            activeRows_.append(i);
            addReference(request_.rows.at(i));
        }
    }
    const std::size_t n = references_.size();
    stride_ = (n + sumsAtOnce - 1) / sumsAtOnce * sumsAtOnce;
    pointToRows(a_, aRows_, n, stride_);
    pointToRows(l_, lRows_, n, stride_);
    pointToRows(u_, uRows_, n, stride_);
    pivots_.resize(n);
    b_.resize(stride_);
    y_.resize(n);
    x_.resize(n);
    weights_.resize(n);
}

void LcfPlan::addReference(const LcfReferenceData& row)
{
    const XafsSpectrum& s = row.spectrum;
    const Spectrum& curve = s.doubleNormalizedPreBase;
    references_.push_back({CurveTable(curve), curve.shift(), s.shift()});
    rowWeights_.push_back(row.weight);
    const double first = s.x(0);
    const double last = s.x(s.size() - 1);
    fitStart_ = std::max(fitStart_, first);
    fitEnd_ = std::min(fitEnd_, last);
    spanStart_ = std::max(spanStart_, first);
    spanEnd_ = std::min(spanEnd_, last);
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
    readReferences();
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

void LcfPlan::readReferences()
{
    rows_.assign(energies_.size() * stride_, 0.0);
    for (std::size_t j = 0; j < references_.size(); ++j) {
        const Reference& reference = references_[j];
        int segment = 0;
        bool numbers = true;
        double* out = rows_.data() + j;
        for (const double energy : energies_) {
            const double shifted = energy + reference.shift;
            numbers &= shifted == shifted;
            *out = reference.table.at(segment, shifted + reference.curveShift);
            out += stride_;
        }
        if (!numbers)
            qDebug() << "nan EeV in XafsSpectrum::doubleNormalizedPreBase";
    }
}

void LcfPlan::chooseFittedPoints()
{
    fitted_.clear();
    fittedRows_.resize(rows_.size());
    double* out = fittedRows_.data();
    for (std::size_t i = 0; i < energies_.size(); ++i) {
        if (energies_[i] < fitStart_ || energies_[i] > fitEnd_)
            continue;
        fitted_.push_back(static_cast<int>(i));
        out = std::copy_n(rows_.data() + i * stride_, stride_, out);
    }
    fittedValues_.resize(fitted_.size());
}

void LcfPlan::factorise()
{
    const std::size_t n = references_.size();
    for (std::size_t k = 0; k < n; ++k) {
        for (std::size_t p = 0; p < fittedValues_.size(); ++p)
            fittedValues_[p] = fittedRows_[p * stride_ + k];
        sumProducts(fittedRows_, stride_, fittedValues_, a_.data() + k * stride_);
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
        const double e = curveEnergies_.energy(i);
        if (!(e < fitStart_ || e > fitEnd_))
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

void LcfPlan::solve(const Spectrum& curve)
{
    const QPointF* const points = curve.points.constData();
    const int size = curve.size();
    for (std::size_t p = 0; p < fitted_.size(); ++p)
        fittedValues_[p] = fitted_[p] < size ? points[fitted_[p]].y() : 0.0;
    sumProducts(fittedRows_, stride_, fittedValues_, b_.data());
    const int n = static_cast<int>(references_.size());
    Matrix::solveLV(n, lRows_.data(), b_.data(), y_.data(), pivots_.data());
    Matrix::solveUV(n, uRows_.data(), y_.data(), x_.data(), pivots_.data());
    for (std::size_t j = 0; j < weights_.size(); ++j)
        weights_[j] = x_[at(pivots_[j])];
}

double LcfPlan::residual(const XafsSpectrum& s) const
{
    const QPointF* const points = s.doubleNormalizedPreBase.points.constData();
    double sum = 0.0;
    for (std::size_t p = 0; p < residualPoints_.size(); ++p) {
        const double y = points[residualPoints_[p]].y();
        const double deviation = (fitValues_[p] - y) / y;
        sum += y != 0.0 ? deviation * deviation : 1.0;
    }
    const auto count = static_cast<double>(residualPoints_.size());
    return (residualPoints_.empty() ? 0.0 : sum / count) / s.size();
}

LcfResult LcfPlan::fit(const XafsSpectrum& s)
{
    LcfResult result;
    if (s.isEmpty() || request_.rows.size() < 2)
        return result;
    result.analysed = true;
    if (s.dMut <= 0.0) {
        result.ratios.fill(0.0, request_.rows.size());
        result.dMuts = result.ratios;
        return result;
    }
    if (!isPreparedFor(s))
        prepare(s);
    solve(s.doubleNormalizedPreBase);
    result.fitted = true;
    result.activeRows = activeRows_;
    const double scale = std::max(0.0, s.dMut);
    result.ratios.resize(activeRows_.size());
    result.dMuts.resize(activeRows_.size());
    std::copy(weights_.begin(), weights_.end(), result.ratios.begin());
    std::transform(weights_.begin(), weights_.end(), result.dMuts.begin(),
                   [scale](double w) { return w * scale; });
    if (!request_.inWalk) {
        Spectrum curve;
        curve.setPoints(fitCurve(weights_.data()));
        sampleFit(curve);
        result.fit = std::make_shared<XafsSpectrum>(curve, QStringLiteral("anal-LCF"),
                                                    VictLine::Straight, 0.0, request_.sElm);
    }
    result.zansa = residual(s);
    return result;
}

LcfResult fitLcf(const XafsSpectrum& s, const LcfRequest& request)
{
    return LcfPlan(request).fit(s);
}
