#include "analysis/lcf/LcfWalk.h"

#include "maps/Analyzed2DRes.h"

LcfKernel::LcfKernel(const LcfRequest& conditions, const QVector<int>& rows)
    : conditions_(conditions)
    , rows_(rows)
    , places_(conditions.rows.size(), -1)
{
    for (int place = 0; place < rows_.size(); ++place)
        places_[rows_.at(place)] = place;
}

std::unique_ptr<WalkKernel> LcfKernel::forWorker() const
{
    return std::make_unique<LcfKernel>(conditions_, rows_);
}

LcfPlan& LcfKernel::plan()
{
    if (!plan_)
        plan_ = std::make_unique<LcfPlan>(conditions_);
    return *plan_;
}

void LcfKernel::plain(const PlainPosition& at, int lane, TileResult& out)
{
    const LcfResult fit = plan().fit(at.spectrum);
    out.outcomes[std::size_t(lane)] = fit.outcome;
    out.gapHeld[std::size_t(lane)] = fit.gapHeld ? 1 : 0;
    if (!fit.fitted)
        return;
    for (int k = 0; k < fit.activeRows.size(); ++k) {
        const int place = places_.at(fit.activeRows.at(k));
        out.set(2 * place, lane, fit.dMuts.value(k, 0.0));
        out.set(2 * place + 1, lane, fit.ratios.value(k, 0.0));
    }
    out.set(2 * rows_.size(), lane, fit.zansa);
}

ShownResult LcfKernel::shown(const XafsSpectrum& spectrum)
{
    const LcfResult fit = plan().fit(spectrum);
    ShownResult shown{fit.outcome, fit.gapHeld, {}, {}, fit.fit};
    if (!fit.fitted)
        return shown;
    shown.rows = fit.activeRows;
    for (int k = 0; k < fit.activeRows.size(); ++k)
        shown.values << fit.dMuts.at(k) << fit.ratios.at(k);
    shown.values << fit.zansa;
    return shown;
}

QStringList LcfKernel::valueNames() const
{
    QStringList names;
    for (const int row : rows_)
        names << QStringLiteral("jump of row %1").arg(row)
              << QStringLiteral("weight of row %1").arg(row);
    return names << QStringLiteral("residual");
}

Lanes LcfKernel::lanes(const Tile& tile, TileResult& out)
{
    if (!laneFit_)
        laneFit_ = std::make_unique<LcfLaneFit>(plan(), tile.plan);
    Lanes done;
    if (!laneFit_->isUsable())
        return done;
    const LcfLaneFits& fits = laneFit_->fit(tile);
    for (int lane = 0; lane < tile.count; ++lane) {
        if (!isDone(tile.edges, fits, lane))
            continue;
        take(fits, tile.edges, lane, out);
        done.set(std::size_t(lane));
    }
    return done;
}

bool LcfKernel::isDone(const EdgeLanes& edges, const LcfLaneFits& fits, int lane) const
{
    if (edges.odd[lane] != 0)
        return false;
    const auto outcome = Outcome(edges.outcome[lane]);
    if (!conditions_.fitsAll() && outcome != Outcome::Fitted)
        return true;
    // A line that is not fitted stays as it was in the plain form alone.
    return fits.odd[lane] == 0 && outcome != Outcome::NoPreEdge && outcome != Outcome::NoPostEdge;
}

void LcfKernel::take(const LcfLaneFits& fits, const EdgeLanes& edges, int lane,
                     TileResult& out) const
{
    auto outcome = Outcome(edges.outcome[lane]);
    if (outcome == Outcome::Fitted && fits.unsound[lane] != 0 && !conditions_.isMlcf())
        outcome = Outcome::GapUnsound;
    if (fits.undefined[lane] != 0)
        outcome = Outcome::Undefined;
    out.outcomes[std::size_t(lane)] = outcome;
    if (!conditions_.fitsAll() && outcome != Outcome::Fitted)
        return;
    out.gapHeld[std::size_t(lane)] = fits.held[lane];
    const QVector<int>& fitted = plan_->activeRows();
    for (int k = 0; k < fitted.size(); ++k) {
        const int place = places_.at(fitted.at(k));
        out.set(2 * place, lane, fits.jumps[k][lane]);
        out.set(2 * place + 1, lane, fits.weights[k][lane]);
    }
    out.set(2 * rows_.size(), lane, fits.zansa[lane]);
}

LcfSink::LcfSink(const LcfRequest& conditions, const Maps& maps)
    : maps_(maps)
    , fitsAll_(conditions.fitsAll())
    , ownWeights_(conditions.ownWeights)
{
    const QVector<int> fitted = conditions.fittedRows();
    for (const int row : maps_.rows)
        isFitted_.push_back(fitted.contains(row) ? 1 : 0);
}

void LcfSink::take(const WalkRun& run, const TileResult& result)
{
    AnalyzeCond at = run.first;
    for (int lane = 0; lane < run.count; ++lane, at.next())
        recordResForAPoint(at, lane, result);
}

/// Rows that are left out of the fit get a value, 0, only where nothing is fitted. What is recorded
/// there is no result, and is marked as such.
void LcfSink::recordResForAPoint(const AnalyzeCond& at, int lane, const TileResult& result)
{
    const Outcome outcome = result.outcomes[std::size_t(lane)];
    const bool fitted = isResult(outcome);
    const auto record = [&](Analyzed2DRes* map, double value) {
        map->setData(at.cx, at.cy, at.halfX, at.halfY, value);
        if (!fitted)
            map->markWithoutEdge(at.cx, at.cy, at.halfX, at.halfY);
    };
    for (int k = 0; k < maps_.rows.size(); ++k) {
        if (fitted && isFitted_[std::size_t(k)] == 0)
            continue;
        record(maps_.jumps.at(k), result.value(2 * k, lane));
        record(maps_.weights.at(k), result.value(2 * k + 1, lane));
    }
    record(maps_.zansa, residualToRecord(lane, result));
    if (maps_.outcomes != nullptr)
        maps_.outcomes->add(outcome, result.gapHeld[std::size_t(lane)] != 0);
}

bool LcfSink::isResult(Outcome outcome) const
{
    return fitsAll_ ? outcome != Outcome::NoPoints : outcome == Outcome::Fitted;
}

/// A position that is not fitted shows the residual of the one before, but 0 where each position
/// has its own and there is no edge.
double LcfSink::residualToRecord(int lane, const TileResult& result)
{
    const Outcome outcome = result.outcomes[std::size_t(lane)];
    if (isResult(outcome))
        zansa_ = result.value(2 * maps_.rows.size(), lane);
    else if (ownWeights_ && outcome != Outcome::GapUnsound)
        zansa_ = 0.0;
    return zansa_;
}
