#include "analysis/lcf/LcfLaneFit.h"

#include "common/LaneForms.h"
#include "spectrum/Matrix.h"

#include <algorithm>

void solveLcfNormal(int n, const double* a, const double* b, double* solution)
{
    constexpr int most = mostLaneColumns;
    double lower[most * most];
    double upper[most * most];
    const double* rows[most] = {};
    double* l[most] = {};
    double* u[most] = {};
    int pivots[most];
    double y[most];
    double x[most];
    for (int k = 0; k < n; ++k) {
        rows[k] = a + k * n;
        l[k] = lower + k * n;
        u[k] = upper + k * n;
    }
    // A matrix that has no inverse shows in the solution alone.
    Matrix::makeLU(n, rows, l, u, pivots);
    Matrix::solveLV(n, l, b, y, pivots);
    Matrix::solveUV(n, u, y, x, pivots);
    for (int k = 0; k < n; ++k)
        solution[k] = x[pivots[k]];
}

namespace {

bool haveSameEnergies(const LcfLaneCurve& a, const LcfLaneCurve& b)
{
    return a.segments == b.segments && a.rowShift == b.rowShift && a.curveShift == b.curveShift &&
           std::equal(a.x, a.x + a.segments + 1, b.x);
}

LcfLaneCurve curveOf(const LcfPlan::Reference& r)
{
    return {r.table.xs(),       r.table.ys(), r.table.slopes(), nullptr, nullptr,
            r.table.segments(), r.shift,      r.curveShift,     false};
}

} // namespace

LcfLaneFit::LcfLaneFit(LcfPlan& plan, const EdgePlan& edges)
    : fit_(LANE_FORM(fitLcfLanes))
{
    if (!edges.isUsable() || plan.references().empty() ||
        plan.references().size() > std::size_t(mostLaneReferences) ||
        plan.request().rows.size() < 2)
        return;
    XafsSpectrum grid;
    for (const double E : edges.energies())
        grid.append(E, 0.0);
    grid.doubleNormalizedPreBase.points = grid.points;
    plan.prepare(grid);
    task_.edge = &edges.task();
    task_.method = plan.request().isMlcf() ? LcfLaneMethod::Absorption : LcfLaneMethod::Normalised;
    task_.centre = plan.centre();
    task_.holdGap = plan.request().holdGap;
    task_.ownWeights = plan.request().ownWeights;
    task_.fitFrom = plan.fitRange().from;
    task_.fitTo = plan.fitRange().to;
    task_.spanFrom = plan.span().from;
    task_.spanTo = plan.span().to;
    task_.references = int(plan.references().size());
    usable_ = true;
    takeCurves(plan);
    takePoints(plan);
    takeColumns(plan);
    takeFactors(plan);
    scratch_.resize(std::size_t(lcfLaneScratch(task_.edge->n, task_.references)));
    fits_ = std::make_unique<LcfLaneFits>();
}

/// The fit takes other curves than the fit curve only over the same energies.
void LcfLaneFit::takeCurves(const LcfPlan& plan)
{
    for (std::size_t k = 0; k < plan.references().size(); ++k) {
        const LcfPlan::Reference& reference = plan.references()[k];
        const LcfPlan::Reference& fitted = plan.fittedReferences()[k];
        usable_ = usable_ && reference.table.hasSegments() && fitted.table.hasSegments();
        if (!usable_)
            return;
        LcfLaneCurve curve = curveOf(reference);
        curve.fittedY = fitted.table.ys();
        curve.fittedSlope = fitted.table.slopes();
        curve.readsLikeTheLast = !curves_.empty() && haveSameEnergies(curves_.back(), curve);
        curves_.push_back(curve);
        usable_ = haveSameEnergies(curve, curveOf(fitted));
    }
    task_.curves = curves_.data();
}

void LcfLaneFit::takeColumns(const LcfPlan& plan)
{
    const LcfPlan::Prepared prepared = plan.prepared();
    task_.columnStride = task_.backgroundColumns() + task_.stride;
    const auto stride = std::size_t(task_.columnStride);
    const auto n = std::size_t(task_.edge->n);
    columns_.assign(n * stride, 0.0);
    for (std::size_t i = 0; i < n; ++i)
        std::copy_n(prepared.columns.data() + i * prepared.columnStride, task_.columnCount(),
                    columns_.data() + i * stride);
    task_.columns = columns_.data();
}

void LcfLaneFit::takePoints(const LcfPlan& plan)
{
    const auto n = std::size_t(task_.edge->n);
    const LcfPlan::Prepared prepared = plan.prepared();
    rowWeights_ = prepared.rowWeights;
    rows_ = prepared.rows;
    isFitted_.assign(n, 0);
    isResidual_.assign(n, 0);
    fitValues_.assign(n, 0.0);
    for (const int i : prepared.fitted) {
        isFitted_[std::size_t(i)] = 1;
        task_.ownResidualPoints += i >= 1 && i < task_.edge->n - 1 ? 1 : 0;
    }
    for (std::size_t p = 0; p < prepared.residualPoints.size(); ++p) {
        const auto i = std::size_t(prepared.residualPoints[p]);
        isResidual_[i] = 1;
        fitValues_[i] = prepared.fitValues[p];
    }
    task_.rowWeights = rowWeights_.data();
    task_.residualPoints = int(prepared.residualPoints.size());
    task_.isResidual = isResidual_.data();
    task_.stride = int(prepared.stride);
    task_.rows = rows_.data();
    task_.isFitted = isFitted_.data();
    task_.fitValues = fitValues_.data();
}

void LcfLaneFit::takeFactors(const LcfPlan& plan)
{
    const LcfPlan::Prepared prepared = plan.prepared();
    pivots_ = prepared.pivots;
    for (const int row : pivots_) {
        const double* const l = prepared.lower[std::size_t(row)];
        const double* const u = prepared.upper[std::size_t(row)];
        lower_.insert(lower_.end(), l, l + task_.columnCount());
        upper_.insert(upper_.end(), u, u + task_.columnCount());
    }
    task_.lower = lower_.data();
    task_.upper = upper_.data();
    task_.pivots = pivots_.data();
}

const LcfLaneFits& LcfLaneFit::fit(const Tile& tile)
{
    fit_(task_, {&tile.edges, tile.mu, tile.offsets, tile.isShifted, tile.count}, scratch_.data(),
         *fits_);
    return *fits_;
}
