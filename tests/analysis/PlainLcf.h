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
        for (int j = 0; j < active_.size() && request.holdGap; ++j)
            hold(curves_[j], PlainHeld(row(j).spectrum, start_, end_));
    }

    LcfResult fit(const XafsSpectrum& s)
    {
        LcfResult r;
        r.analysed = !s.points.isEmpty() && request_.rows.size() > 1;
        if (r.analysed)
            r.outcome = s.outcome;
        if (r.analysed && !r.fitted())
            r.ratios = r.dMuts = QVector<double>(request_.rows.size(), 0.0);
        if (!r.fitted())
            return r;
        XafsSpectrum held = s;
        if (request_.holdGap) {
            const PlainHeld plain(s, start_, end_);
            r.gapHeld = plain.state == HeldGap::Held;
            hold(held.doubleNormalizedPreBase, plain);
            if (plain.state == HeldGap::Unsound) {
                r.outcome = Outcome::GapUnsound;
                r.ratios = r.dMuts = QVector<double>(request_.rows.size(), 0.0);
                return r;
            }
        }
        r.activeRows = active_;
        r.ratios = solved(sums(held));
        for (const double ratio : r.ratios)
            r.dMuts.append(ratio * s.dMut);
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

    static void hold(Spectrum& curve, const PlainHeld& plain)
    {
        for (int i = 0; i < curve.size() && plain.state == HeldGap::Held; ++i)
            curve.points[i].setY(plain.y[i]);
    }

    double valueAt(int j, double E) const
    {
        const Spectrum& c = curves_[j];
        return c.yAt(E + row(j).spectrum.eShift + (c.isShifted ? c.eShift : 0.0));
    }

    QVector<QVector<double>> sums(const XafsSpectrum& s) const
    {
        const int n = active_.size();
        QVector<QVector<double>> a(n, QVector<double>(n + 1, 0.0)); // last: the right side
        for (int i = 0; i < s.size(); ++i) {
            const double E = s.x(i) - s.eOffset;
            if (E < start_ || E > end_)
                continue;
            QVector<double> v;
            for (int j = 0; j < n; ++j)
                v.append(valueAt(j, E));
            v.append(s.doubleNormalizedPreBase.y(i));
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
    double start_ = 0.0, end_ = 0.0, lo_ = 0.0, hi_ = 1e300;
};
