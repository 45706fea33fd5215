#pragma once

#include "analysis/lcf/LcfFit.h"
#include "spectrum/PlainHeld.h"

#include <algorithm>
#include <utility>

/// The linear combination fit step by step, everything anew for each spectrum and with bisecting
/// interpolation and its own elimination: what the prepared fit must equal to the last bit.
class PlainLcf
{
public:
    explicit PlainLcf(const LcfRequest& request)
        : request_(request)
    {
        for (int i = 0; i < request.rows.size(); ++i) {
            const XafsSpectrum& s = request.rows.at(i).spectrum;
            const bool inRange =
                std::any_of(s.points.begin(), s.points.end(), [&](const QPointF& p) {
                    const double E = p.x() - s.eShift;
                    return E >= request.rangeStart && E <= request.rangeEnd;
                });
            if (!request.rows.at(i).active || !inRange)
                continue;
            active_.append(i);
            curves_.append(s.doubleNormalizedPreBase);
            lo_ = std::max(lo_, s.points.first().x() - s.eShift);
            hi_ = std::min(hi_, s.points.last().x() - s.eShift);
        }
        start_ = std::max(request.rangeStart, lo_);
        end_ = std::min(request.rangeEnd, hi_);
        for (int j = 0; j < active_.size(); ++j) {
            const PlainHeld plain(row(j).spectrum, start_, end_);
            held_.append(request.holdGap && plain.state == HeldGap::Held);
            if (held_[j])
                hold(curves_[j], plain);
        }
    }

    LcfResult fit(const XafsSpectrum& s)
    {
        LcfResult r;
        r.analysed = !s.points.isEmpty() && request_.rows.size() > 1;
        if (!r.analysed)
            return r;
        r.outcome = s.outcome;
        r.fitted = fitsAll() || s.outcome == Outcome::Fitted;
        XafsSpectrum held = s;
        if (r.fitted && request_.holdGap) {
            const PlainHeld plain(s, start_, end_);
            r.gapHeld = plain.state == HeldGap::Held;
            hold(held.doubleNormalizedPreBase, plain);
            if (plain.state == HeldGap::Unsound) {
                r.fitted = fitsAll();
                r.outcome = isMlcf() ? r.outcome : Outcome::GapUnsound;
            }
        }
        if (!r.fitted) {
            r.ratios = r.dMuts = QVector<double>(request_.rows.size(), 0.0);
            return r;
        }
        r.activeRows = active_;
        r.ratios = solved(sums(held));
        if (isMlcf())
            share(r);
        for (int j = 0; j < r.ratios.size() && !isMlcf(); ++j)
            r.dMuts.append(r.ratios[j] * (s.dMut > 0.0 ? s.dMut : 0.0));
        r.zansa = residual(held, curve(s, r.ratios));
        return r;
    }

    Spectrum curve(const XafsSpectrum& s, const QVector<double>& fitted) const
    {
        Spectrum out;
        for (int i = 0; i < s.size(); ++i) {
            const double E = s.x(i) - s.eOffset;
            if (E < lo_ || E > hi_)
                continue;
            double v = 0.0;
            for (int j = 0; j < active_.size(); ++j)
                v += (request_.inWalk ? row(j).weight : fitted[j]) * valueAt(j, E);
            out.append(E, v);
        }
        return out;
    }

private:
    const LcfReferenceData& row(int j) const { return request_.rows.at(active_[j]); }

    bool isMlcf() const { return request_.method == LcfMethod::Mlcf; }
    bool fitsAll() const { return request_.method != LcfMethod::Lcf; }

    static void share(LcfResult& r)
    {
        r.ratios.remove(0, 2);
        double sum = 0.0;
        for (const double weight : qAsConst(r.ratios)) {
            sum += weight;
            r.dMuts.append(weight < 0.0 ? 0.0 : weight);
        }
        for (int j = 0; j < r.ratios.size(); ++j)
            r.ratios[j] = r.dMuts[j] / (sum > 0.0 ? sum : 0.0);
        if (!(sum > 0.0))
            r.outcome = Outcome::Undefined;
    }

    static void hold(Spectrum& curve, const PlainHeld& plain)
    {
        for (int i = 0; i < curve.size() && plain.state == HeldGap::Held; ++i)
            curve.points[i].setY(plain.y[i]);
    }

    double valueAt(int j, double E) const { return at(curves_[j], j, E); }

    /// Whether a reference's lines are held or not, its curves differ by the step.
    double overPostAt(int j, double E) const
    {
        Spectrum c = row(j).spectrum.doubleNormalizedPostBase;
        for (int i = 0; held_[j] && i < c.size(); ++i)
            c.points[i].setY(curves_[j].points[i].y() - 1.0);
        return at(c, j, E);
    }

    double at(const Spectrum& c, int j, double E) const
    {
        return c.yAt(E + row(j).spectrum.eShift + (c.isShifted ? c.eShift : 0.0));
    }

    QVector<QVector<double>> sums(const XafsSpectrum& s) const
    {
        const int n = active_.size() + (isMlcf() ? 2 : 0);
        QVector<QVector<double>> a(n, QVector<double>(n + 1, 0.0)); // last: the right side
        for (int i = 0; i < s.size(); ++i) {
            const double E = s.x(i) - s.eOffset;
            if (E < start_ || E > end_)
                continue;
            QVector<double> v;
            if (isMlcf())
                v << 1.0 << E - (start_ + end_) * 0.5;
            for (int j = 0; j < active_.size(); ++j)
                v.append(isMlcf() ? overPostAt(j, E) : valueAt(j, E));
            v.append(isMlcf() ? s.y(i) : s.doubleNormalizedPreBase.y(i));
            for (int k = 0; k < n; ++k)
                for (int l = 0; l <= n; ++l)
                    a[k][l] += v[k] * v[l];
        }
        return a;
    }

    /// Gauss with row pivoting by exchange of rows; a column without pivot is passed over.
    static QVector<double> solved(QVector<QVector<double>> a)
    {
        const int n = a.size();
        for (int k = 0; k < n; ++k) {
            int best = k;
            for (int i = k; i < n; ++i)
                if (std::fabs(a[i][k]) > std::fabs(a[best][k]))
                    best = i;
            std::swap(a[k], a[best]);
            for (int i = k + 1; i < n && a[k][k] != 0.0; ++i) {
                const double factor = a[i][k] / a[k][k];
                for (int j = k + 1; j <= n; ++j)
                    a[i][j] -= a[k][j] * factor;
            }
        }
        QVector<double> b(n);
        for (int k = n; k-- > 0;) {
            b[k] = a[k][n] / (a[k][k] == 0.0 ? 1.0 : a[k][k]);
            for (int i = 0; i < k && a[k][k] != 0.0; ++i)
                a[i][n] -= b[k] * a[i][k];
        }
        return b;
    }

    double residual(const XafsSpectrum& s, const Spectrum& fitted) const
    {
        const Spectrum& c = s.doubleNormalizedPreBase;
        double sum = 0.0;
        int m = 0;
        for (int i = 1; i < c.size() - 1; ++i) {
            const double e = c.x(i);
            if (e < start_ || e > end_)
                continue;
            const double part = c.y(i) == 0.0 ? 1.0 : (fitted.yAt(e) - c.y(i)) / c.y(i);
            sum += part * part;
            ++m;
        }
        return (m > 0 ? sum / m : 0.0) / s.size();
    }

    const LcfRequest& request_;
    QVector<int> active_;
    QVector<Spectrum> curves_; ///< of the active rows, as they are read
    QVector<bool> held_;
    double start_ = 0.0, end_ = 0.0, lo_ = 0.0, hi_ = 1e300;
};
