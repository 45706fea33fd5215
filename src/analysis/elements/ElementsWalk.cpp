#include "analysis/elements/ElementsWalk.h"

#include "common/LaneForms.h"
#include "maps/Analyzed2DRes.h"

#include <algorithm>
#include <cmath>

ElementsKernel::ElementsKernel(const ElementConditions& conditions)
    : conditions_(conditions)
{
}

std::unique_ptr<WalkKernel> ElementsKernel::forWorker() const
{
    return std::make_unique<ElementsKernel>(conditions_);
}

void ElementsKernel::plain(const PlainPosition& at, int lane, TileResult& out)
{
    out.outcomes[std::size_t(lane)] = at.spectrum.isEmpty() ? Outcome::NoPoints : Outcome::Fitted;
    record(analyzeElements(at.spectrum, conditions_), lane, out);
}

void ElementsKernel::record(const QVector<ElementValues>& values, int lane, TileResult& out) const
{
    const ElementPlaces places{values.size()};
    for (int row = 0; row < values.size(); ++row) {
        const ElementValues& v = values.at(row);
        const double ofMaps[elementMaps] = {v.jump,  v.jumpRatio, v.above,   v.below,
                                            v.shift, v.roi,       v.roiRatio};
        for (int map = 0; map < elementMaps; ++map)
            out.set(places.value(row, map), lane, ofMaps[map]);
        out.set(places.rawJump(row), lane, v.rawJump);
    }
    out.set(places.correlation(), lane,
            correlation(conditions_.rows, values).value_or(noCorrelation));
}

QStringList ElementsKernel::valueNames() const
{
    const ElementPlaces places{conditions_.rows.size()};
    QVector<QString> names(places.count());
    for (int row = 0; row < places.rows; ++row) {
        const QString name = conditions_.rows.at(row).name;
        const QString ofMaps[elementMaps] = {
            QStringLiteral("jump of ") + name,
            QStringLiteral("jump of %1 over the target's").arg(name),
            QStringLiteral("absorption above the edge of ") + name,
            QStringLiteral("absorption below the edge of ") + name,
            QStringLiteral("shift of the edge of %1 [eV]").arg(name),
            QStringLiteral("region of interest of ") + name,
            QStringLiteral("region of interest of %1 over the jump").arg(name)};
        std::copy(std::begin(ofMaps), std::end(ofMaps), names.begin() + places.value(row, 0));
        names[places.rawJump(row)] = QStringLiteral("jump of %1 as measured").arg(name);
    }
    names[places.correlation()] = QStringLiteral("correlation (%1: none)").arg(int(noCorrelation));
    return QStringList(names.begin(), names.end());
}

namespace {

/// The point that the segment begins at on which Spectrum::yAt() reads E: strictly ascending
/// energies, at least two.
int segmentOf(const std::vector<double>& energies, double E)
{
    // Counted like this, nan lies behind all energies.
    const auto above = std::partition_point(energies.begin(), energies.end(),
                                            [E](double known) { return !(known > E); });
    return std::clamp(int(above - energies.begin()) - 1, 0, int(energies.size()) - 2);
}

bool isNumber(double v)
{
    return !std::isnan(v);
}

} // namespace

/// What is looked up of the rows in a walk's scan.
void ElementsKernel::prepare(const std::vector<double>& energies)
{
    Spectrum grid;
    for (const double E : energies)
        grid.append(E, 0.0);
    for (std::size_t i = 0; i + 1 < energies.size(); ++i)
        middles_.push_back((energies[i] + energies[i + 1]) / 2);
    for (const ElementRow& row : conditions_.rows) {
        const double top = row.energy + row.dE;
        const double bottom = row.energy - row.dE;
        laneRows_.push_back({segmentOf(energies, top), top, segmentOf(energies, bottom), bottom,
                             firstMiddleAbove(grid, bottom), firstMiddleAbove(grid, top),
                             firstMiddleAbove(grid, row.roiFrom), firstMiddleAbove(grid, row.roiTo),
                             row.energy});
    }
    laneReadings_.resize(laneRows_.size());
}

Lanes ElementsKernel::lanes(const Tile& tile, TileResult& out)
{
    const std::vector<double>& energies = tile.plan.energies();
    if (middles_.empty())
        prepare(energies);
    const ElementLaneTask task{energies.data(), middles_.data(), int(laneRows_.size()),
                               laneRows_.data()};
    LANE_FORM(readElements)(task, tile.mu, tile.count, laneReadings_.data());
    Lanes done;
    QVector<ElementReading> readings(conditions_.rows.size());
    for (int lane = 0; lane < tile.count; ++lane) {
        bool numbers = true;
        for (int row = 0; row < readings.size(); ++row) {
            const ElementLaneReadings& of = laneReadings_[std::size_t(row)];
            readings[row] = {of.above[lane], of.below[lane], of.shift[lane], of.roi[lane]};
            const ElementReading& r = readings.at(row);
            numbers = numbers && isNumber(r.jump()) && isNumber(r.shift) && isNumber(r.roi);
        }
        // What kind of nan an operation gives is nobody's promise.
        if (!numbers)
            continue;
        out.outcomes[std::size_t(lane)] = Outcome::Fitted;
        record(judgeElements(conditions_, readings), lane, out);
        done.set(std::size_t(lane));
    }
    return done;
}

ElementsSink::ElementsSink(const ElementConditions& conditions, const Maps& maps,
                           double correlation)
    : conditions_(conditions)
    , maps_(maps)
    , correlation_(correlation)
{
}

void ElementsSink::take(const WalkRun& run, const TileResult& result)
{
    AnalyzeCond at = run.first;
    for (int lane = 0; lane < run.count; ++lane, at.next())
        recordElemsResForAPoint(at, lane, result);
}

/// What stands where a row has no edge, or the position no correlation, is no result, and is marked
/// as such.
void ElementsSink::recordElemsResForAPoint(const AnalyzeCond& at, int lane,
                                           const TileResult& result)
{
    const auto record = [&](Analyzed2DRes* map, double value, bool isResult) {
        map->setData(at.cx, at.cy, at.halfX, at.halfY, value);
        if (!isResult)
            map->markWithoutEdge(at.cx, at.cy, at.halfX, at.halfY);
    };
    const ElementPlaces places{conditions_.rows.size()};
    for (int row = 0; row < places.rows; ++row) {
        const bool hasEdge =
            result.value(places.rawJump(row), lane) > conditions_.rows.at(row).threshold;
        for (int map = 0; map < elementMaps; ++map)
            record(maps_.elements.at(map * places.rows + row),
                   result.value(places.value(row, map), lane), hasEdge);
    }
    const double found = result.value(places.correlation(), lane);
    const bool isFound = found != noCorrelation;
    if (isFound)
        correlation_ = found;
    record(maps_.correlation, correlation_, isFound);
    record(maps_.threshold, overThreshold(correlation_, conditions_), isFound);
}

double overThreshold(double correlation, const ElementConditions& conditions)
{
    return correlation < conditions.correlationThreshold ? 0.0 : correlation;
}

void correlateMaps(const ElementConditions& conditions, const QVector<const Analyzed2DRes*>& ratios,
                   Analyzed2DRes& correlation, Analyzed2DRes& threshold)
{
    AnalyzeCond at = correlation.stepper;
    at.start();
    correlation.prepare(at);
    threshold.prepare(at);
    do {
        PatternSums sums;
        for (int row = 0; row < ratios.size(); ++row) {
            if (conditions.rows.at(row).use)
                sums.add(ratios.at(row)->valueAt(at.cx, at.cy), conditions.rows.at(row).stdRatio);
        }
        const std::optional<double> found = sums.correlation();
        const double value = found.value_or(0.0);
        for (const auto& [map, v] : {std::pair(&correlation, value),
                                     std::pair(&threshold, overThreshold(value, conditions))}) {
            map->setData(at.cx, at.cy, at.halfX, at.halfY, v);
            if (!found)
                map->markWithoutEdge(at.cx, at.cy, at.halfX, at.halfY);
        }
    } while (at.next());
}
