#include "analysis/residual/ResidualWalk.h"

#include "common/Constants.h"
#include "maps/Analyzed2DRes.h"

ResidualKernel::ResidualKernel(double energy, double factor)
    : energy_(energy)
    , factor_(factor)
{
}

std::unique_ptr<WalkKernel> ResidualKernel::forWorker() const
{
    return std::make_unique<ResidualKernel>(energy_, factor_);
}

QStringList ResidualKernel::valueNames() const
{
    return {QStringLiteral("gap of the lines"), QStringLiteral("rest of the absorption")};
}

void ResidualKernel::set(double pre, double post, int lane, TileResult& out) const
{
    const double gap = post - pre;
    out.set(0, lane, gap);
    out.set(1, lane, pre - factor_ * gap);
}

void ResidualKernel::plain(const PlainPosition& at, int lane, TileResult& out)
{
    const XafsSpectrum& s = at.spectrum;
    out.outcomes[std::size_t(lane)] = s.outcome;
    if (s.outcome == Outcome::NoPoints)
        return;
    // Twice the shift: deliberate.
    const double E = energy_ - 2.0 * s.shift();
    set(s.preAt(E), s.postAt(E), lane, out);
}

Lanes ResidualKernel::lanes(const Tile& tile, TileResult& out)
{
    Lanes done;
    for (int lane = 0; lane < tile.count; ++lane) {
        const auto outcome = Outcome(tile.edges.outcome[lane]);
        // A line that is not fitted stays as it was in the plain form alone.
        if (tile.edges.odd[lane] != 0 || outcome == Outcome::NoPreEdge ||
            outcome == Outcome::NoPostEdge)
            continue;
        out.outcomes[std::size_t(lane)] = outcome;
        takeLines(tile, lane);
        set(pre_.at(energy_), post_.at(energy_), lane, out);
        done.set(std::size_t(lane));
    }
    return done;
}

/// Both lines of a lane; bent, as they came to be, only where the energy falls on the bend.
void ResidualKernel::takeLines(const Tile& tile, int lane)
{
    const EdgeLanes& edges = tile.edges;
    const EdgeTask& task = tile.plan.task();
    const auto take = [&](VictLine& line, const double(&c)[EdgeLanes::coefficients][laneStride]) {
        line.mode = task.isVictoreen ? VictLine::Victoreen : VictLine::Straight;
        line.c0 = c[0][lane];
        (task.isVictoreen ? line.c1 : line.slope) = c[1][lane];
        line.c2 = c[2][lane];
        line.corrected = false;
    };
    take(pre_, edges.pre);
    take(post_, edges.post);
    pre_.endE = edges.preEnd[lane];
    post_.startE = edges.postStart[lane];
    const bool onPreBend = edges.preBent[lane] != 0 && energy_ > pre_.endE;
    const bool onPostBend = edges.postBent[lane] != 0 && energy_ < post_.startE;
    if (!onPreBend && !onPostBend)
        return;
    // A bend adds its samples behind those of an earlier one.
    pre_.clear();
    post_.clear();
    pre_.startE = task.E[0];
    post_.endE = task.E[task.n - 1];
    pre_.genCorrectedInPost(post_);
    post_.genCorrectedInPre(pre_);
}

ResidualSink::ResidualSink(Analyzed2DRes& jump, Analyzed2DRes& rest)
    : jump_(jump)
    , rest_(rest)
{
}

void ResidualSink::take(const WalkRun& run, const TileResult& result)
{
    AnalyzeCond at = run.first;
    for (int lane = 0; lane < run.count; ++lane, at.next()) {
        if (result.outcomes[std::size_t(lane)] == Outcome::NoPoints) {
            jump_.leaveOut(at.cx, at.cy, at.halfX, at.halfY);
            rest_.leaveOut(at.cx, at.cy, at.halfX, at.halfY);
            continue;
        }
        jump_.setData(at.cx, at.cy, at.halfX, at.halfY, result.value(0, lane));
        rest_.setData(at.cx, at.cy, at.halfX, at.halfY, result.value(1, lane));
    }
}

void fillResidualRatio(const Analyzed2DRes& jump, const Analyzed2DRes& rest, Analyzed2DRes& ratio)
{
    const int width = rest.stepper.width;
    const int height = rest.stepper.height;
    const double* const field = rest.data();
    if (field == nullptr)
        return;
    double least = runningMinStart;
    for (qint64 i = 0; i < qint64(width) * height; ++i)
        least = field[i] < least ? field[i] : least;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double r = rest.valueAt(x, y) - least;
            ratio.setData(x, y, 0, 0, r / (jump.valueAt(x, y) + r));
        }
    }
}
