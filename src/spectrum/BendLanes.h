#pragma once

// For sources of lane forms: the Bezier bends of straight lines (VictLineBend.cpp), by the plain
// form's operations.

#include "spectrum/LineLanes.h"

namespace {

/// The bend of each lane's one line that has one: the pre-edge line's above its range, or the
/// post-edge line's below its range.
struct Bends
{
    M pre{};
    M post{};
    M odd{}; ///< bends that no number tells
    V x[4]{};
    V y[4]{};

    M any() const { return pre | post; }
};

/// A bend of lanes, before it is known whether they have it.
struct BendShape
{
    V share; ///< of the way to the crossing; none above 1
    V x[4];
    V y[4];
};

inline BendShape bendAbove(const LineLanes& line, const LineLanes& other, V from, V to)
{
    BendShape b;
    const V yFrom = line.c1 * from + line.c0;
    const V gap = straightAt(other, from) - yFrom;
    b.share = (-gap / (other.c1 - line.c1)) / (to - from) * 0.5;
    const V h = 0.1 * b.share * (to - from);
    const V yTo = straightAt(other, to) - b.share * (gap * 0.5);
    const V x[4] = {from, from + h, to - h, to};
    const V y[4] = {yFrom, yFrom + line.c1 * h, yTo - other.c1 * h, yTo};
    for (int k = 0; k < 4; ++k) {
        b.x[k] = x[k];
        b.y[k] = y[k];
    }
    return b;
}

inline BendShape bendBelow(const LineLanes& line, const LineLanes& other, V low, V high)
{
    BendShape b;
    const V yOther = straightAt(other, low);
    const V gap = yOther - (line.c1 * low + line.c0);
    b.share = (gap / (line.c1 - other.c1) + low - high) / (low - high) * 0.5;
    const V yHigh = line.c1 * high + line.c0;
    const V h = 0.1 * b.share * (low - high);
    const V yLow = yOther + b.share * (yHigh - straightAt(other, high)) * 0.5;
    const V x[4] = {low, low - h, high + h, high};
    const V y[4] = {yLow, yLow - other.c1 * h, yHigh + line.c1 * h, yHigh};
    for (int k = 0; k < 4; ++k) {
        b.x[k] = x[k];
        b.y[k] = y[k];
    }
    return b;
}

/// The bends of lines, whose ranges end and begin at these energies.
inline Bends bendsOf(const EdgeTask& t, const LinePair& lines, V preEnd, V postStart)
{
    const BendShape above = bendAbove(lines.pre, lines.post, preEnd, all(t.E[t.n - 1]));
    const BendShape below = bendBelow(lines.post, lines.pre, all(t.E[0]), postStart);
    Bends b;
    b.pre = ~(lines.post.c1 >= lines.pre.c1) & ~(above.share > 1.0);
    b.post = ~(lines.pre.c1 >= lines.post.c1) & ~(below.share > 1.0);
    b.odd = (b.pre & ~((above.share <= 1.0) & (preEnd < t.E[t.n - 1]))) |
            (b.post & ~((below.share <= 1.0) & (postStart > t.E[0])));
    for (int k = 0; k < 4; ++k) {
        b.x[k] = b.pre ? above.x[k] : below.x[k];
        b.y[k] = b.pre ? above.y[k] : below.y[k];
    }
    return b;
}

/// The sampled bends of the lanes, in memory for 2 * bezierSamples * width doubles.
class BendSamples
{
public:
    BendSamples(const EdgeTask& t, const Bends& bends, double* memory)
        : x_(memory)
        , y_(memory + bezierSamples * width)
    {
        V before{};
        for (int m = 0; m < bezierSamples; ++m) {
            const double* const w = t.bezierWeights + 4 * m;
            const V x = sampleOf(w, bends.x);
            store(x_ + m * width, x);
            store(y_ + m * width, sampleOf(w, bends.y));
            folded_ |= ~(x > before);
            before = x;
        }
    }

    /// The bend of lane c at E; `low` as from an energy not above E, 0 at first.
    double at(int c, double E, int& low) const
    {
        if (folded_[c] != 0) {
            low = bisected(c, E);
        } else if (!(x(0, c) >= E)) {
            while (low < bezierSamples - 2 && x(low + 1, c) <= E)
                ++low;
        }
        const double x0 = x(low, c);
        const double x1 = x(low + 1, c);
        const double y0 = y_[low * width + c];
        const double y1 = y_[(low + 1) * width + c];
        return x1 == x0 ? (y0 + y1) / 2 : (y1 - y0) / (x1 - x0) * (E - x0) + y0;
    }

private:
    static V sampleOf(const double* w, const V* points)
    {
        return w[0] * points[0] + w[1] * points[1] + w[2] * points[2] + w[3] * points[3];
    }
    double x(int m, int c) const { return x_[m * width + c]; }

    /// The segment that bisection ends at where the samples fold back.
    int bisected(int c, double E) const
    {
        if (x(0, c) >= E)
            return 0;
        int low = 0;
        int high = bezierSamples - 1;
        if (E >= x(high, c))
            return high - 1;
        while (high - 1 > low) {
            const int middle = (low + high) >> 1;
            (x(middle, c) > E ? high : low) = middle;
        }
        return low;
    }

    double* x_;
    double* y_;
    M folded_{}; ///< lanes whose samples don't ascend
};

/// Writes the bent lines of the lanes at all energies: where the bend applies, else the plain line.
inline void sampleBends(const EdgeTask& t, const LinePair& lines, const Bends& bends,
                        const BendSamples& samples, V preEnd, V postStart, double* bend)
{
    int low[width] = {};
    for (int i = 0; i < t.n; ++i) {
        const double E = t.E[i];
        V value = bends.pre ? straightAt(lines.pre, all(E)) : straightAt(lines.post, all(E));
        const M applies = (bends.pre & (E > preEnd)) | (bends.post & (E < postStart));
        for (int c = 0; c < width; ++c) {
            if (applies[c] != 0)
                value[c] = samples.at(c, E, low[c]);
        }
        store(bend + i * laneStride, value);
    }
}

} // namespace
