#include "spectrum/VictLine.h"

#include "common/Constants.h"
#include "spectrum/CentredColumns.h"
#include "spectrum/SmallSystem.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cmath>

namespace {
/// Hands the points from `from` on to `take`, up to the first at or above `to`: the fitted range.
template<class Take>
void takeRange(const Spectrum& s, double from, double to, Take take)
{
    const double shift = s.shift();
    const QPointF* const end = s.points.constData() + s.size();
    for (const QPointF* p = s.points.constData(); p != end; ++p) {
        const double E = p->x() - shift;
        if (E >= to)
            break;
        if (E >= from)
            take(E, p->y());
    }
}

using Values = QVarLengthArray<double, 512>;

struct Residual
{
    double squares = 0.0;
    int points = 0;
};

/// Residual of the values, by energy and index, over the points whose energies are inside.
template<class Value, class Inside>
Residual residualOf(const Spectrum& s, Value value, Inside inside)
{
    Residual sum;
    const double shift = s.shift();
    const QPointF* const p = s.points.constData();
    const int n = s.size();
    for (int i = 0; i < n; ++i) {
        const double E = p[i].x() - shift;
        if (inside(E)) {
            const double r = p[i].y() - value(E, i);
            sum.squares += r * r;
            ++sum.points;
        }
    }
    return sum;
}

double victoreenOf(double c0, double c1, double c2, double lambda)
{
    return c0 + (c1 + c2 * lambda) * (lambda * lambda * lambda);
}
} // namespace

Wavelengths wavelengthsOf(const Spectrum& s)
{
    Wavelengths lambdas(s.size());
    double* const out = lambdas.data();
    const QPointF* const p = s.points.constData();
    const double shift = s.shift();
    for (int i = 0; i < s.size(); ++i)
        out[i] = hcEvAngstrom / (p[i].x() - shift);
    return lambdas;
}

bool VictLine::fit(const Spectrum& s, double sE, double eE, int fitMode)
{
    return fit(s, fitMode == Victoreen ? wavelengthsOf(s) : Wavelengths(), sE, eE, fitMode);
}

bool VictLine::fit(const Spectrum& s, const Wavelengths& lambdas, double sE, double eE, int fitMode)
{
    mode = fitMode;
    startE = sE;
    endE = eE;
    ok = isStraight() ? fitStraight(s) : fitVictoreen(s, lambdas);
    return ok;
}

bool VictLine::fitStraight(const Spectrum& s)
{
    if (s.size() < 3)
        return false;
    const bool solved = solveStraight(s);
    const Residual residual = residualOf(
        s, [k0 = c0, k1 = slope](double E, int) { return k0 + k1 * E; },
        [from = startE, to = endE](double E) { return from <= E && E < to; });
    setRms(residual.squares, residual.points);
    return solved;
}

bool VictLine::solveStraight(const Spectrum& s)
{
    int n = 0;
    double sumE = 0.0;
    double sumMu = 0.0;
    double sumEE = 0.0;
    double sumEMu = 0.0;
    takeRange(s, startE, endE, [&](double E, double mu) {
        ++n;
        sumE += E;
        sumMu += mu;
        sumEE += E * E;
        sumEMu += E * mu;
    });
    if (n < 2) {
        slope = 0.0;
        c0 = sumMu; // that of the only point, or nothing
        return false;
    }
    std::array<double, 2> x;
    if (solveSmall<2>({{{sumEE, sumE}, {sumE, double(n)}}}, {sumEMu, sumMu}, x) !=
        SolveStep::Solved)
        return false;
    slope = x[0];
    c0 = x[1];
    return true;
}

bool VictLine::fitVictoreen(const Spectrum& s, const Wavelengths& lambdas)
{
    if (s.size() < 4)
        return false;
    const bool solved = solveVictoreen(s);
    // Unlike the straight line's, this residual takes in a point exactly at the end: deliberate.
    const Residual residual = residualOf(
        s,
        [k0 = c0, k1 = c1, k2 = c2, lambda = lambdas.constData()](double, int i) {
            return victoreenOf(k0, k1, k2, lambda[i]);
        },
        [from = startE, to = endE](double E) { return from <= E && E <= to; });
    setRms(residual.squares, residual.points);
    return solved;
}

bool VictLine::solveVictoreen(const Spectrum& s)
{
    Values energies(s.size());
    Values mus(s.size());
    int n = 0;
    takeRange(s, startE, endE, [&n, e = energies.data(), m = mus.data()](double E, double mu) {
        e[n] = E;
        m[n] = mu;
        ++n;
    });
    if (n < 3)
        return false;
    const CentredColumns columns(energies[0], energies[n - 1]);
    Values f1(n);
    Values f2(n);
    columns.fill(energies.constData(), n, f1.data(), f2.data());
    double sum1 = 0.0;
    double sum2 = 0.0;
    double sum11 = 0.0;
    double sum12 = 0.0;
    double sum22 = 0.0;
    double sumMu = 0.0;
    double sum1Mu = 0.0;
    double sum2Mu = 0.0;
    for (int i = 0; i < n; ++i) {
        const double x1 = f1[i];
        const double x2 = f2[i];
        const double mu = mus[i];
        sum1 += x1;
        sum2 += x2;
        sum11 += x1 * x1;
        sum12 += x1 * x2;
        sum22 += x2 * x2;
        sumMu += mu;
        sum1Mu += x1 * mu;
        sum2Mu += x2 * mu;
    }
    std::array<double, 3> a;
    if (solveSmall<3>({{{double(n), sum1, sum2}, {sum1, sum11, sum12}, {sum2, sum12, sum22}}},
                      {sumMu, sum1Mu, sum2Mu}, a) != SolveStep::Solved)
        return false;
    const double L = hcEvAngstrom / columns.middleE;
    const double A1 = a[1] * columns.scale1;
    const double A2 = a[2] * columns.scale2;
    c2 = A2 / (L * L * L * L);
    c1 = (A1 - 4.0 / 3.0 * A2) / (L * L * L);
    c0 = a[0] - A1 + A2 / 3.0;
    return true;
}

void VictLine::setRms(double sumOfSquares, int pointCount)
{
    count = pointCount;
    rms = pointCount == 0 ? 1.0 : std::sqrt(sumOfSquares / pointCount);
}

double VictLine::plainAt(double E) const
{
    return isStraight() ? c0 + slope * E : victoreenOf(c0, c1, c2, hcEvAngstrom / E);
}

double VictLine::cubicAt(double E) const
{
    return ((cubic[0] * E + cubic[1]) * E + cubic[2]) * E + cubic[3];
}

double VictLine::at(double E) const
{
    if (!isBentAt(E))
        return plainAt(E);
    return corrMode == 2 ? yAt(E) : cubicAt(E);
}

void VictLine::valuesAt(const double* energies, int n, double* values) const
{
    Wavelengths lambdas;
    if (!isStraight()) {
        lambdas.resize(n);
        for (int i = 0; i < n; ++i)
            lambdas[i] = hcEvAngstrom / energies[i];
    }
    valuesAt(energies, lambdas, n, values);
}

void VictLine::valuesAt(const double* energies, const Wavelengths& lambdas, int n,
                        double* values) const
{
    // Local copies tell the compiler that writing values does not change the coefficients.
    const double k0 = c0;
    const double k1 = isStraight() ? slope : c1;
    const double k2 = c2;
    if (isStraight()) {
        for (int i = 0; i < n; ++i)
            values[i] = k0 + k1 * energies[i];
    } else {
        const double* const lambda = lambdas.constData();
        for (int i = 0; i < n; ++i)
            values[i] = victoreenOf(k0, k1, k2, lambda[i]);
    }
    if (corrected)
        bendValues(energies, n, values);
}

void VictLine::bendValues(const double* energies, int n, double* values) const
{
    SpectrumCursor bend(*this);
    for (int i = 0; i < n; ++i) {
        if (isBentAt(energies[i]))
            values[i] = corrMode == 2 ? bend.yAt(energies[i]) : cubicAt(energies[i]);
    }
}

void VictLine::raise(double dy)
{
    c0 += dy;
    cubic[3] += dy;
}

bool VictLine::crossesWithin(const VictLine& other, double a, double b) const
{
    if (!isStraight() || !other.isStraight())
        return false;
    if (slope == other.slope)
        return c0 == other.c0;
    const double x = -(c0 - other.c0) / (slope - other.slope);
    return a <= x && x <= b;
}
