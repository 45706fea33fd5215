#pragma once

#include "spectrum/XafsSpectrum.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

// The rules of a spectrum in the plainest form that states them: one accessor per value, one search
// per query, no shared work. The program's quick forms are held against these to the last bit.
namespace plain {
using Values = std::vector<double>;

/// Equal as numbers, or both nan.
inline bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

inline double line(double x0, double y0, double x1, double y1, double x)
{
    return x1 == x0 ? (y0 + y1) / 2 : (y1 - y0) / (x1 - x0) * (x - x0) + y0;
}

inline double interpolate(const Values& x, const Values& y, double query)
{
    const size_t n = x.size();
    if (n == 0)
        return 0.0;
    if (n == 1)
        return y[0];
    size_t lo = 0;
    size_t hi = n - 1;
    if (x[0] >= query) {
        hi = 1;
    } else if (query >= x[n - 1]) {
        lo = n - 2;
    } else {
        while (lo + 1 < hi) {
            const size_t mid = (lo + hi) / 2;
            (x[mid] > query ? hi : lo) = mid;
        }
    }
    return line(x[lo], y[lo], x[hi], y[hi], query);
}

inline Values smoothed(const Values& y, int h)
{
    const int n = static_cast<int>(y.size());
    const auto at = [&](int i) { return y[static_cast<size_t>(i)]; };
    Values result;
    double sum = 0.0;
    int count = 0;
    for (int i = 0; i <= h && i < n; ++i, ++count)
        sum += at(i);
    for (int i = 0; i < n; ++i) {
        result.push_back(count < 1 ? 0.0 : sum / count);
        if (i - h >= 0) {
            sum -= at(i - h);
            --count;
        }
        if (i + h + 1 < n) {
            sum += at(i + h + 1);
            ++count;
        }
    }
    return result;
}

/// Gaussian elimination with row exchange; false for a zero pivot.
inline bool solve(std::vector<Values> a, Values b, Values& x)
{
    const size_t n = b.size();
    for (size_t k = 0; k < n; ++k) {
        size_t pivot = k;
        double greatest = 0.0;
        for (size_t i = k; i < n; ++i) {
            if (std::abs(a[i][k]) > greatest) {
                greatest = std::abs(a[i][k]);
                pivot = i;
            }
        }
        std::swap(a[k], a[pivot]);
        std::swap(b[k], b[pivot]);
        if (a[k][k] == 0.0)
            return false;
        for (size_t i = k + 1; i < n; ++i) {
            const double factor = a[i][k] / a[k][k];
            for (size_t j = k + 1; j < n; ++j)
                a[i][j] -= factor * a[k][j];
            b[i] -= b[k] * factor;
        }
    }
    x = b;
    for (size_t left = n; left > 0; --left) {
        const size_t k = left - 1;
        x[k] /= a[k][k];
        for (size_t row = 0; row < k; ++row)
            x[row] -= x[k] * a[row][k];
    }
    return true;
}

struct Line
{
    int mode = 1;
    double c0 = 0.0;
    double c1 = 0.0;
    double c2 = 0.0;
    double slope = 0.0;
    double rms = 0.0;
    double startE = 0.0;
    double endE = 0.0;
    bool bent = false;
    bool above = true;
    Values bendX;
    Values bendY;

    double straightAt(double E) const
    {
        if (mode != 0)
            return c0 + slope * E;
        const double l = 12398.424360387684 / E;
        return c0 + (c1 + c2 * l) * (l * l * l);
    }
    double at(double E) const
    {
        if (bent && (above ? E > endE : E < startE))
            return interpolate(bendX, bendY, E);
        return straightAt(E);
    }
    void fit(const Values& x, const Values& mu, double from, double to, int fitMode);
    void bezier(double xa, double ya, double sa, double xb, double yb, double sb, double h);
};

/// Sum over the walk of the fitted range of f(i).
template<class F>
double rangeSum(const Values& x, double from, double to, F f)
{
    double sum = 0.0;
    for (size_t i = 0; i < x.size() && !(x[i] >= to); ++i) {
        if (x[i] >= from)
            sum += f(i);
    }
    return sum;
}

inline void Line::fit(const Values& x, const Values& mu, double from, double to, int fitMode)
{
    mode = fitMode;
    startE = from;
    endE = to;
    if (x.size() < (mode != 0 ? 3U : 4U))
        return;
    const auto sum = [&](auto f) { return rangeSum(x, from, to, f); };
    const auto l3 = [&](size_t i) {
        const double l = 12398.424360387684 / x[i];
        return l * l * l;
    };
    const auto l4 = [&](size_t i) { return l3(i) * (12398.424360387684 / x[i]); };
    const double n = sum([](size_t) { return 1.0; });
    const double sumMu = sum([&](size_t i) { return mu[i]; });
    Values solution;
    if (mode == 0) {
        const double s3 = sum(l3);
        const double s4 = sum(l4);
        const double s34 = sum([&](size_t i) { return l3(i) * l4(i); });
        if (solve({{n, s3, s4},
                   {s3, sum([&](size_t i) { return l3(i) * l3(i); }), s34},
                   {s4, s34, sum([&](size_t i) { return l4(i) * l4(i); })}},
                  {sumMu, sum([&](size_t i) { return l3(i) * mu[i]; }),
                   sum([&](size_t i) { return l4(i) * mu[i]; })},
                  solution)) {
            c0 = solution[0];
            c1 = solution[1];
            c2 = solution[2];
        }
    } else if (n < 2) {
        slope = 0.0;
        c0 = sumMu;
    } else {
        const double sumE = sum([&](size_t i) { return x[i]; });
        if (solve({{sum([&](size_t i) { return x[i] * x[i]; }), sumE}, {sumE, n}},
                  {sum([&](size_t i) { return x[i] * mu[i]; }), sumMu}, solution)) {
            slope = solution[0];
            c0 = solution[1];
        }
    }
    double squares = 0.0;
    int count = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        if (from <= x[i] && (mode != 0 ? x[i] < to : x[i] <= to)) {
            const double r = mu[i] - straightAt(x[i]);
            squares += r * r;
            ++count;
        }
    }
    rms = count == 0 ? 1.0 : std::sqrt(squares / count);
}

inline void Line::bezier(double xa, double ya, double sa, double xb, double yb, double sb, double h)
{
    double t = 0.0;
    for (int i = 0; i < 100; ++i, t += 0.01) {
        const double u = 1 - t;
        const auto mix = [&](double p0, double p1, double p2, double p3) {
            return u * u * u * p0 + 3 * (u * u) * t * p1 + 3 * u * (t * t) * p2 + t * t * t * p3;
        };
        bendX.push_back(mix(xa, xa + h, xb - h, xb));
        bendY.push_back(mix(ya, ya + sa * h, yb - sb * h, yb));
    }
    bent = true;
}

inline void bendPre(Line& pre, const Line& post)
{
    pre.bent = false;
    const double from = pre.endE;
    const double to = post.endE;
    if (pre.mode == 0 || post.slope >= pre.slope || from == to)
        return;
    const double y = pre.slope * from + pre.c0;
    const double d = post.straightAt(from) - y;
    const double f = (-d / (post.slope - pre.slope)) / (to - from) * 0.5;
    if (f > 1.0)
        return;
    const double end = post.straightAt(to) - f * (d * 0.5);
    pre.bezier(from, y, pre.slope, to, end, post.slope, 0.1 * f * (to - from));
    pre.above = true;
}

inline void bendPost(Line& post, const Line& pre)
{
    post.bent = false;
    const double low = pre.startE;
    const double high = post.startE;
    if (post.mode == 0 || pre.slope >= post.slope || low == high)
        return;
    const double y = pre.straightAt(low);
    const double g = y - (post.slope * low + post.c0);
    const double f = (g / (post.slope - pre.slope) + low - high) / (low - high) * 0.5;
    if (f > 1.0)
        return;
    const double yHigh = post.slope * high + post.c0;
    const double yLow = y + f * (yHigh - pre.straightAt(high)) * 0.5;
    const double h = 0.1 * f * (low - high);
    post.bezier(low, yLow, pre.slope, high, yHigh, post.slope, -h);
    post.above = false;
}

/// A spectrum with all that normalisation gives it.
struct Spectrum
{
    Values rawX;
    Values x; ///< shift taken off
    Values mu;
    Values smooth;
    double shift = 0.0;
    SuggestElm elm;
    Line pre;
    Line post;
    double midx = 0.0;
    double dMut = 0.0;
    bool outOfRange = false;
    bool noisy = false;
    Values preBase;
    Values doublePreBase;
    Values postBase;
    Values doublePostBase;

    int n() const { return static_cast<int>(x.size()); }
    double X(int i) const { return i < 0 || i >= n() ? 0.0 : x[static_cast<size_t>(i)]; }
    double M(double E) const { return (pre.at(E) + post.at(E)) * 0.5; }
    double S(int i) const { return interpolate(x, smooth, X(i) + shift); }

    int steepest() const;
    double findMidx() const;
    void normalize(int mode);
    void guard();
    double innerProduct(double byShift, const Spectrum& ref) const;
    double findBestShift(const Spectrum& ref, double range, double step, double minStep) const;
};

inline int Spectrum::steepest() const
{
    int start = 0;
    int end = n() - 1;
    if (n() <= 1)
        return 0;
    if (elm.use) {
        const double low = elm.edgeE + elm.preEnd + shift;
        const double high = elm.edgeE + elm.postStart + shift;
        const auto m = [&](int i) {
            return (rawX[static_cast<size_t>(i)] + rawX[static_cast<size_t>(i) + 1]) * 0.5;
        };
        if (m(0) > high)
            return 0;
        end = start = n() - 1;
        for (int i = n() - 2; i >= 1; --i) {
            if (m(i) > low)
                start = i;
            if (m(i) > high)
                end = i;
        }
        if (m(0) > low)
            start = 0;
    }
    int best = 0;
    double bestRise = 0.0;
    for (int i = start; i < end; ++i) {
        const double d = smooth[static_cast<size_t>(i) + 1] - smooth[static_cast<size_t>(i)];
        if (d > bestRise) {
            bestRise = d;
            best = i;
        }
    }
    return best;
}

inline double Spectrum::findMidx() const
{
    int best = 0;
    double bestRise = 0.0;
    for (int i = 1; i < n() - 1; ++i) {
        const double m = M(X(i));
        if (!(m > S(i - 1)) || !(S(i + 1) > m))
            continue;
        if (S(i + 1) - S(i - 1) > bestRise) {
            bestRise = S(i + 1) - S(i - 1);
            best = i;
        }
    }
    const double xm = X(best - 1);
    const double x0 = X(best);
    const double xp = X(best + 1);
    const double dm = M(xm) - S(best - 1);
    const double d0 = M(x0) - S(best);
    const double dp = M(xp) - S(best + 1);
    const double a = (x0 - xm) / (dm - d0) * dm + xm;
    const double b = (xp - x0) / (d0 - dp) * d0 + xm;
    const double c = (xp - xm) / (dm - dp) * dm + xm;
    return (a + b + c) / 3.0;
}

inline void Spectrum::normalize(int mode)
{
    smooth = smoothed(mu, 2);
    midx = X(steepest());
    pre.fit(x, mu, X(0), midx + (elm.use ? elm.preEnd : -10.0), mode);
    post.fit(x, mu, midx + (elm.use ? elm.postStart : 10.0), X(n() - 1), mode);
    const double gap = post.at(midx) - pre.at(midx);
    if (gap < 0) {
        pre.c0 += 0.55 * gap;
        post.c0 -= 0.55 * gap;
    }
    bendPre(pre, post);
    bendPost(post, pre);
    midx = findMidx();
    dMut = post.at(midx) - pre.at(midx);
    for (Values* v : {&preBase, &doublePreBase, &postBase, &doublePostBase})
        v->clear();
    for (size_t i = 0; i < x.size(); ++i) {
        const double l = pre.at(x[i]);
        const double u = post.at(x[i]);
        preBase.push_back((mu[i] - u) / dMut + 1);
        doublePreBase.push_back((mu[i] - l) / (u - l));
        postBase.push_back((mu[i] - u) / dMut);
        doublePostBase.push_back((mu[i] - u) / (u - l));
    }
    guard();
}

inline void Spectrum::guard()
{
    outOfRange = noisy = false;
    if (!elm.use)
        return;
    const bool tooNoisy = pre.rms * elm.thJump > dMut && post.rms * elm.thJump > dMut;
    outOfRange = midx < elm.edgeE + elm.preEnd || midx > elm.edgeE + elm.postStart;
    noisy = tooNoisy;
    if (outOfRange || noisy) {
        midx = elm.edgeE;
        dMut = 0.0;
    }
}

inline double Spectrum::innerProduct(double byShift, const Spectrum& ref) const
{
    double lowest = 1e300;
    double highest = -1e300;
    for (const double e : ref.rawX) {
        lowest = e < lowest ? e : lowest;
        highest = e > highest ? e : highest;
    }
    double tt = 0.0;
    double rr = 0.0;
    double tr = 0.0;
    for (size_t i = 0; i < rawX.size(); ++i) {
        const double e = rawX[i] - byShift;
        if (e < lowest || e > highest)
            continue;
        const double t = doublePreBase[i];
        const double r = interpolate(ref.x, ref.doublePreBase, e);
        tt += t * t;
        rr += r * r;
        tr += t * r;
    }
    return tt > 0 && rr > 0 ? tr / std::sqrt(tt * rr) : 0.0;
}

inline double Spectrum::findBestShift(const Spectrum& ref, double range, double step,
                                      double minStep) const
{
    const double c = midx - ref.midx;
    double best = -1e300;
    double bestShift = 0.0;
    while (step >= minStep) {
        double d = -range;
        while (d <= range) {
            const double v = innerProduct(c + d, ref);
            if (v > best) {
                best = v;
                bestShift = c + d;
            }
            d += step;
        }
        step *= 0.1;
        range *= 0.1;
    }
    return bestShift;
}
} // namespace plain
