#pragma once

#include "spectrum/XafsSpectrum.h"

#include <algorithm>
#include <cmath>
#include <random>

// The rules of a spectrum, on top of its two fitted lines, in the plainest form that states them:
// one accessor per value, one search per query, no shared work. The program's quick forms are held
// against these to the last bit.
namespace plain {
using Values = QVector<double>;

/// Equal as numbers, or both nan.
inline bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

/// First index of the greatest f above zero, or `none`.
template<class F>
int greatest(int from, int to, int none, F f)
{
    double best = 0.0;
    for (int i = from; i < to; ++i) {
        if (f(i) > best) {
            best = f(i);
            none = i;
        }
    }
    return none;
}

inline double interpolate(const Values& x, const Values& y, double query)
{
    if (x.size() < 2)
        return y.value(0);
    int lo = 0;
    int hi = x.size() - 1;
    if (x[0] >= query)
        hi = 1;
    else if (query >= x[hi])
        lo = hi - 1;
    while (lo + 1 < hi) {
        const int mid = (lo + hi) / 2;
        (x[mid] > query ? hi : lo) = mid;
    }
    if (x[hi] == x[lo])
        return (y[lo] + y[hi]) / 2;
    return (y[hi] - y[lo]) / (x[hi] - x[lo]) * (query - x[lo]) + y[lo];
}

/// A running sum, so that its rounding is part of the rule.
inline Values smoothed(const Values& y, int h)
{
    Values result;
    double sum = 0.0;
    int count = 0;
    for (int i = -h; i < y.size(); ++i) {
        if (i + h < y.size()) {
            sum += y[i + h];
            ++count;
        }
        if (i >= 0)
            result.append(sum / count);
        if (i - h >= 0) {
            sum -= y[i - h];
            --count;
        }
    }
    return result;
}

/// A spectrum with all that normalisation gives it.
struct Spectrum
{
    double shift = 0.0;
    SuggestElm elm;
    Values rawX, x, mu, smooth; ///< x with the shift taken off
    VictLine pre, post;
    double midx = 0.0;
    double dMut = 0.0;
    bool outOfRange = false;
    bool noisy = false;
    Outcome outcome = Outcome::NoPoints;
    Values curves[4]; ///< pre base, double pre base, post base, double post base

    double X(int i) const { return x.value(i); }
    double M(double E) const { return (pre.at(E) + post.at(E)) * 0.5; }
    double S(int i) const { return interpolate(x, smooth, X(i) + shift); }

    int steepest() const
    {
        int start = 0;
        int end = x.size() - 1;
        if (elm.use && end > 0) {
            start = end;
            for (int i = x.size() - 2; i >= 0; --i) {
                const double middle = (rawX[i] + rawX[i + 1]) * 0.5;
                start = middle > elm.edgeE + elm.preEnd + shift ? i : start;
                end = middle > elm.edgeE + elm.postStart + shift ? i : end;
            }
        }
        return greatest(start, end, 0, [&](int i) { return smooth[i + 1] - smooth[i]; });
    }

    double findMidx() const
    {
        const int i = greatest(1, x.size() - 1, 0, [&](int k) {
            const double m = M(X(k));
            return m > S(k - 1) && S(k + 1) > m ? S(k + 1) - S(k - 1) : 0.0;
        });
        const double xm = X(i - 1);
        const double dm = M(xm) - S(i - 1);
        const double d0 = M(X(i)) - S(i);
        const double dp = M(X(i + 1)) - S(i + 1);
        const double a = (X(i) - xm) / (dm - d0) * dm + xm;
        const double b = (X(i + 1) - X(i)) / (d0 - dp) * d0 + xm;
        const double c = (X(i + 1) - xm) / (dm - dp) * dm + xm;
        return (a + b + c) / 3.0;
    }

    void normalize(int mode)
    {
        ::Spectrum curve;
        curve.setPoints(x.data(), mu.data(), x.size());
        smooth = smoothed(mu, 2);
        midx = X(steepest());
        pre.fit(curve, X(0), midx + (elm.use ? elm.preEnd : -10.0), mode);
        post.fit(curve, midx + (elm.use ? elm.postStart : 10.0), X(x.size() - 1), mode);
        const double gap = post.at(midx) - pre.at(midx);
        if (gap < 0) {
            pre.c0 -= 0.55 * gap;
            post.c0 += 0.55 * gap;
        }
        pre.genCorrectedInPost(post);
        post.genCorrectedInPre(pre);
        midx = findMidx();
        dMut = post.at(midx) - pre.at(midx);
        for (Values& values : curves)
            values.clear();
        for (int i = 0; i < x.size(); ++i) {
            const double l = pre.at(x[i]);
            const double u = post.at(x[i]);
            curves[0].append((mu[i] - u) / dMut + 1);
            curves[1].append((mu[i] - l) / (u - l));
            curves[2].append((mu[i] - u) / dMut);
            curves[3].append((mu[i] - u) / (u - l));
        }
        outOfRange = elm.use && (midx < elm.edgeE + elm.preEnd || midx > elm.edgeE + elm.postStart);
        noisy = elm.use && pre.rms * elm.thJump > dMut && post.rms * elm.thJump > dMut;
        outcome = why();
        if (outcome != Outcome::Fitted && elm.use)
            midx = elm.edgeE;
        if (outcome != Outcome::Fitted && (elm.use || outcome != Outcome::NoStep))
            dMut = 0.0;
    }

    Outcome why() const
    {
        const auto [least, greatest] = std::minmax_element(x.begin(), x.end());
        const std::pair<bool, Outcome> reasons[] = {
            {!pre.ok, Outcome::NoPreEdge},
            {!post.ok, Outcome::NoPostEdge},
            {!(dMut > 0.0) || std::isinf(dMut), Outcome::NoStep},
            {outOfRange, Outcome::OutsideWindow},
            {midx < *least || midx > *greatest, Outcome::OutsideScan},
            {noisy, Outcome::TooNoisy},
            {true, Outcome::Fitted}};
        return std::find_if(std::begin(reasons), std::end(reasons),
                            [](const auto& reason) { return reason.first; })
            ->second;
    }

    double innerProduct(double byShift, const Spectrum& ref) const
    {
        double tt = 0.0;
        double rr = 0.0;
        double tr = 0.0;
        const auto [low, high] = std::minmax_element(ref.rawX.begin(), ref.rawX.end());
        for (int i = 0; i < rawX.size(); ++i) {
            const double e = rawX[i] - byShift;
            if (e < *low || e > *high)
                continue;
            const double r = interpolate(ref.x, ref.curves[1], e);
            tt += curves[1][i] * curves[1][i];
            rr += r * r;
            tr += curves[1][i] * r;
        }
        return tt > 0 && rr > 0 ? tr / std::sqrt(tt * rr) : 0.0;
    }

    double findBestShift(const Spectrum& ref, double range, double step, double minStep) const
    {
        double best = -1e300;
        double bestShift = 0.0;
        while (step >= minStep) {
            double d = -range;
            while (d <= range) {
                const double v = innerProduct(midx - ref.midx + d, ref);
                bestShift = v > best ? midx - ref.midx + d : bestShift;
                best = v > best ? v : best;
                d += step;
            }
            step *= 0.1;
            range *= 0.1;
        }
        return bestShift;
    }
};
} // namespace plain
