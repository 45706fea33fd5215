#include "spectrum/VictLine.h"

#include "common/Constants.h"
#include "spectrum/SmallSystem.h"

#include <cmath>

namespace {
/// Sums over the fitted range of a straight line.
struct StraightSums
{
    int n = 0;
    double e = 0.0;
    double mu = 0.0;
    double ee = 0.0;
    double eMu = 0.0;

    void add(double E, double value)
    {
        ++n;
        e += E;
        mu += value;
        ee += E * E;
        eMu += E * value;
    }
};

/// Sums over the fitted range of the Victoreen form; l3 and l4 are powers of the wavelength.
struct VictoreenSums
{
    int n = 0;
    double l3 = 0.0;
    double l4 = 0.0;
    double l3l3 = 0.0;
    double l3l4 = 0.0;
    double l4l4 = 0.0;
    double mu = 0.0;
    double l3Mu = 0.0;
    double l4Mu = 0.0;

    void add(double E, double value)
    {
        const double lambda = hcEvAngstrom / E;
        const double cube = lambda * lambda * lambda;
        const double fourth = cube * lambda;
        ++n;
        l3 += cube;
        l4 += fourth;
        l3l3 += cube * cube;
        l3l4 += cube * fourth;
        l4l4 += fourth * fourth;
        mu += value;
        l3Mu += cube * value;
        l4Mu += fourth * value;
    }
};

/// Sums the points from `from` on, up to the first at or above `to`.
template<class Sums>
Sums sumRange(const Spectrum& s, double from, double to)
{
    Sums sums;
    const double shift = s.shift();
    const QPointF* const end = s.points.constData() + s.size();
    for (const QPointF* p = s.points.constData(); p != end; ++p) {
        const double E = p->x() - shift;
        if (E >= to)
            break;
        if (E >= from)
            sums.add(E, p->y());
    }
    return sums;
}

double victoreenAt(double c0, double c1, double c2, double E)
{
    const double lambda = hcEvAngstrom / E;
    return c0 + (c1 + c2 * lambda) * (lambda * lambda * lambda);
}
} // namespace

bool VictLine::fit(const Spectrum& s, double sE, double eE, int fitMode)
{
    mode = fitMode;
    startE = sE;
    endE = eE;
    ok = isStraight() ? fitStraight(s) : fitVictoreen(s);
    return ok;
}

bool VictLine::fitStraight(const Spectrum& s)
{
    if (s.size() < 3)
        return false;
    const auto sums = sumRange<StraightSums>(s, startE, endE);
    bool solved = false;
    if (sums.n < 2) {
        slope = 0.0;
        c0 = sums.mu; // that of the only point, or nothing
    } else {
        std::array<double, 2> x;
        solved = solveSmall<2>({{{sums.ee, sums.e}, {sums.e, double(sums.n)}}}, {sums.eMu, sums.mu},
                               x) == SolveStep::Solved;
        if (solved) {
            slope = x[0];
            c0 = x[1];
        }
    }
    double squares = 0.0;
    int used = 0;
    const double shift = s.shift();
    const QPointF* const end = s.points.constData() + s.size();
    for (const QPointF* p = s.points.constData(); p != end; ++p) {
        const double E = p->x() - shift;
        if (startE <= E && E < endE) {
            const double r = p->y() - (c0 + slope * E);
            squares += r * r;
            ++used;
        }
    }
    setRms(squares, used);
    return solved;
}

bool VictLine::fitVictoreen(const Spectrum& s)
{
    if (s.size() < 4)
        return false;
    const auto sums = sumRange<VictoreenSums>(s, startE, endE);
    std::array<double, 3> x;
    const bool solved = solveSmall<3>({{{double(sums.n), sums.l3, sums.l4},
                                        {sums.l3, sums.l3l3, sums.l3l4},
                                        {sums.l4, sums.l3l4, sums.l4l4}}},
                                      {sums.mu, sums.l3Mu, sums.l4Mu}, x) == SolveStep::Solved;
    if (solved) {
        c0 = x[0];
        c1 = x[1];
        c2 = x[2];
    }
    double squares = 0.0;
    int used = 0;
    const double shift = s.shift();
    const QPointF* const end = s.points.constData() + s.size();
    for (const QPointF* p = s.points.constData(); p != end; ++p) {
        const double E = p->x() - shift;
        // Unlike the straight line's, this residual takes in a point exactly at the end.
        // Deliberate.
        if (startE <= E && E <= endE) {
            const double r = p->y() - victoreenAt(c0, c1, c2, E);
            squares += r * r;
            ++used;
        }
    }
    setRms(squares, used);
    return solved;
}

void VictLine::setRms(double sumOfSquares, int pointCount)
{
    count = pointCount;
    rms = pointCount == 0 ? 1.0 : std::sqrt(sumOfSquares / pointCount);
}

double VictLine::plainAt(double E) const
{
    return isStraight() ? c0 + slope * E : victoreenAt(c0, c1, c2, E);
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
    // Local copies tell the compiler that writing values does not change the coefficients.
    const double k0 = c0;
    const double k1 = isStraight() ? slope : c1;
    const double k2 = c2;
    if (isStraight()) {
        for (int i = 0; i < n; ++i)
            values[i] = k0 + k1 * energies[i];
    } else {
        for (int i = 0; i < n; ++i)
            values[i] = victoreenAt(k0, k1, k2, energies[i]);
    }
    if (!corrected)
        return;
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
