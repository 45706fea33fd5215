#pragma once

#include "analysis/LcfFit.h"

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
        for (int i = 0; i < request.rows.size(); ++i)
            if (request.rows.at(i).active)
                active_.push_back(i);
    }

    LcfResult fit(const XafsSpectrum& s)
    {
        LcfResult r;
        if (s.points.isEmpty() || request_.rows.size() < 2)
            return r;
        r.analysed = true;
        if (s.dMut <= 0.0) {
            r.ratios = r.dMuts = QVector<double>(request_.rows.size(), 0.0);
            return r;
        }
        r.fitted = true;
        findRanges();
        accumulate(s);
        const std::vector<double> weights = solved();
        for (std::size_t j = 0; j < active_.size(); ++j) {
            r.activeRows.append(active_[j]);
            r.ratios.append(weights[j]);
            r.dMuts.append(weights[j] * s.dMut);
        }
        r.zansa = residual(s, curve(s, weights));
        return r;
    }

    Spectrum curve(const XafsSpectrum& s, const std::vector<double>& fitted) const
    {
        Spectrum out;
        for (int i = 0; i < s.size(); ++i) {
            const double E = s.x(i) - s.eOffset;
            if (E < lo_ || E > hi_)
                continue;
            double v = 0.0;
            for (std::size_t j = 0; j < active_.size(); ++j)
                v += (request_.inWalk ? row(j).weight : fitted[j]) * valueAt(j, E);
            out.append(E, v);
        }
        return out;
    }

private:
    const LcfReferenceData& row(std::size_t j) const { return request_.rows.at(active_[j]); }

    double valueAt(std::size_t j, double E) const
    {
        const Spectrum& c = row(j).spectrum.doubleNormalizedPreBase;
        return c.yAt(E + row(j).spectrum.eShift + (c.isShifted ? c.eShift : 0.0));
    }

    void findRanges()
    {
        start_ = request_.rangeStart;
        end_ = request_.rangeEnd;
        lo_ = 0.0;
        hi_ = 1e300;
        for (std::size_t j = 0; j < active_.size(); ++j) {
            const QVector<QPointF>& p = row(j).spectrum.points;
            const double first = p.first().x() - row(j).spectrum.eShift;
            const double last = p.last().x() - row(j).spectrum.eShift;
            start_ = std::max(start_, first);
            end_ = std::min(end_, last);
            lo_ = std::max(lo_, first);
            hi_ = std::min(hi_, last);
        }
    }

    void accumulate(const XafsSpectrum& s)
    {
        const std::size_t n = active_.size();
        a_.assign(n, std::vector<double>(n, 0.0));
        b_.assign(n, 0.0);
        for (int i = 0; i < s.size(); ++i) {
            const double E = s.x(i) - s.eOffset;
            if (E < start_ || E > end_)
                continue;
            const double y = s.doubleNormalizedPreBase.y(i);
            std::vector<double> v;
            for (std::size_t j = 0; j < n; ++j)
                v.push_back(valueAt(j, E));
            for (std::size_t k = 0; k < n; ++k) {
                for (std::size_t l = 0; l < n; ++l)
                    a_[k][l] += v[k] * v[l];
                b_[k] += v[k] * y;
            }
        }
    }

    /// Gauss with row pivoting by exchange of rows; a column without pivot is passed over.
    std::vector<double> solved() const
    {
        auto a = a_;
        auto b = b_;
        const std::size_t n = b.size();
        for (std::size_t k = 0; k < n; ++k) {
            std::size_t best = k;
            for (std::size_t i = k; i < n; ++i)
                if (std::fabs(a[i][k]) > std::fabs(a[best][k]))
                    best = i;
            std::swap(a[k], a[best]);
            std::swap(b[k], b[best]);
            for (std::size_t i = k + 1; i < n && a[k][k] != 0.0; ++i) {
                const double factor = a[i][k] / a[k][k];
                for (std::size_t j = k + 1; j < n; ++j)
                    a[i][j] -= a[k][j] * factor;
                b[i] -= b[k] * factor;
            }
        }
        for (std::size_t k = n; k-- > 0;) {
            if (a[k][k] == 0.0)
                continue;
            b[k] /= a[k][k];
            for (std::size_t i = 0; i < k; ++i)
                b[i] -= b[k] * a[i][k];
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
            const double y = c.y(i);
            const double f = fitted.yAt(e);
            sum += y == 0.0 ? 1.0 : ((f - y) / y) * ((f - y) / y);
            ++m;
        }
        return (m > 0 ? sum / m : 0.0) / s.size();
    }

    const LcfRequest& request_;
    std::vector<int> active_;
    std::vector<std::vector<double>> a_;
    std::vector<double> b_;
    double start_ = 0.0, end_ = 0.0, lo_ = 0.0, hi_ = 0.0;
};
