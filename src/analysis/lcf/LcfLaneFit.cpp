#include "analysis/lcf/LcfLaneFit.h"

#include "common/LaneForms.h"
#include "spectrum/Matrix.h"

#include <algorithm>

void solveLcfNormal(int references, const double* a, const double* b, double* weights)
{
    constexpr int most = mostLaneReferences;
    double lower[most * most];
    double upper[most * most];
    const double* rows[most] = {};
    double* l[most] = {};
    double* u[most] = {};
    int pivots[most];
    double y[most];
    double x[most];
    for (int k = 0; k < references; ++k) {
        rows[k] = a + k * references;
        l[k] = lower + k * references;
        u[k] = upper + k * references;
    }
    // A matrix that has no inverse shows in the weights alone.
    Matrix::makeLU(references, rows, l, u, pivots);
    Matrix::solveLV(references, l, b, y, pivots);
    Matrix::solveUV(references, u, y, x, pivots);
    for (int k = 0; k < references; ++k)
        weights[k] = x[pivots[k]];
}

namespace {

bool haveSameEnergies(const LcfLaneCurve& a, const LcfLaneCurve& b)
{
    return a.segments == b.segments && a.rowShift == b.rowShift && a.curveShift == b.curveShift &&
           std::equal(a.x, a.x + a.segments + 1, b.x);
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
    task_.holdGap = plan.request().holdGap;
    task_.ownWeights = plan.request().ownWeights;
    task_.fitFrom = plan.fitRange().from;
    task_.fitTo = plan.fitRange().to;
    task_.spanFrom = plan.span().from;
    task_.spanTo = plan.span().to;
    task_.references = int(plan.references().size());
    usable_ = true;
    for (const LcfPlan::Reference& r : plan.references()) {
        usable_ = usable_ && r.table.hasSegments();
        LcfLaneCurve curve{
            r.table.xs(), r.table.ys(), r.table.slopes(), r.table.segments(), r.shift,
            r.curveShift, false};
        curve.readsLikeTheLast = !curves_.empty() && haveSameEnergies(curves_.back(), curve);
        curves_.push_back(curve);
    }
    task_.curves = curves_.data();
    takePoints(plan);
    takeFactors(plan);
    scratch_.resize(std::size_t(lcfLaneScratch(task_.edge->n, task_.references)));
    fits_ = std::make_unique<LcfLaneFits>();
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
        lower_.insert(lower_.end(), l, l + task_.references);
        upper_.insert(upper_.end(), u, u + task_.references);
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
