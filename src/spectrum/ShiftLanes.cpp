#include "spectrum/ShiftLanes.h"

#include "common/LaneVector.h"

namespace {

/// Of the segments that the lanes read.
struct Segments
{
    V x;
    V y;
    V slope;
};

/// Segments apart that lanes are still told apart by comparing all with each.
constexpr int mostCompared = 4;

class SegmentReader
{
public:
    explicit SegmentReader(const ShiftCurve& curve)
        : curve_(curve)
    {
    }

    /// Of energies that fall from lane to lane and rise from call to call.
    Segments at(V E)
    {
        rise(high_, E[0]);
        rise(low_, E[width - 1]);
        return high_ - low_ > mostCompared ? oneByOne(E) : byComparing(E);
    }

private:
    void rise(int& segment, double E) const
    {
        while (segment < curve_.segments - 1 && curve_.x[segment + 1] <= E)
            ++segment;
    }

    Segments byComparing(V E) const
    {
        Segments s{all(curve_.x[low_]), all(curve_.y[low_]), all(curve_.slope[low_])};
        for (int k = low_ + 1; k <= high_; ++k) {
            const M here = E >= curve_.x[k];
            s.x = here ? all(curve_.x[k]) : s.x;
            s.y = here ? all(curve_.y[k]) : s.y;
            s.slope = here ? all(curve_.slope[k]) : s.slope;
        }
        return s;
    }

    Segments oneByOne(V E) const
    {
        Segments s{};
        int k = low_;
        for (int c = width - 1; c >= 0; --c) {
            rise(k, E[c]);
            s.x[c] = curve_.x[k];
            s.y[c] = curve_.y[k];
            s.slope[c] = curve_.slope[k];
        }
        return s;
    }

    const ShiftCurve& curve_;
    int low_ = 0;
    int high_ = 0;
};

void sumVector(const ShiftPoints& points, const ShiftCurve& curve, const ShiftSums& sums, int first)
{
    const V shifts = load(sums.shifts + first);
    SegmentReader reader(curve);
    V tt{};
    V rr{};
    V tr{};
    for (int i = 0; i < points.count; ++i) {
        const V E = points.energies[i] - shifts;
        const M outside = (E < curve.lowest) | (E > curve.highest);
        const V read = E + curve.ownShift;
        const Segments s = reader.at(read);
        const V r = s.slope * (read - s.x) + s.y;
        const V t = all(points.values[i]);
        tt += only(~outside, t * t);
        rr += only(~outside, r * r);
        tr += only(~outside, t * r);
    }
    store(sums.tt + first, tt);
    store(sums.rr + first, rr);
    store(sums.tr + first, tr);
}

} // namespace

namespace lanes::LANE_SET {

void sumShifts(const ShiftPoints& points, const ShiftCurve& curve, const ShiftSums& sums)
{
    for (int first = 0; first < sums.count; first += width)
        sumVector(points, curve, sums, first);
}

} // namespace lanes::LANE_SET
