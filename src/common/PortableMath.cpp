#include "common/PortableMath.h"

#include <cmath>
#include <limits>

// The polynomials of the sine, the cosine and the arc sine are minimax forms that K. C. Ng derived
// with Remez' exchange. Where two numbers make one, the second holds what the first rounds off.

namespace portable {

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double halfPi = 1.57079632679489655800;
constexpr double halfPiRest = 6.12323399573676603587e-17;

/// An angle less a multiple of pi/2.
struct ReducedAngle
{
    double angle; ///< at most pi/4 in size, but for rounding
    double rest;
    int quarter; ///< the multiple, of which only the last two bits count
};

/// Sine up to pi/4. The term x^3 is kept apart, and added with the rest at the end.
double sineNearZero(double x, double rest)
{
    const double z = x * x;
    const double v = z * x;
    const double r = 8.33333333332248946124e-03 +
                     z * (-1.98412698298579493134e-04 +
                          z * (2.75573137070700676789e-06 +
                               z * (-2.50507602534068634195e-08 + z * 1.58969099521155010221e-10)));
    return x - ((z * (0.5 * rest - v * r) - rest) - v * -1.66666666666666324348e-01);
}

/// Cosine up to pi/4. What 1 - z/2 rounds off is added to the small terms.
double cosineNearZero(double x, double rest)
{
    const double z = x * x;
    const double r =
        z * (4.16666666666666019037e-02 +
             z * (-1.38888888888741095749e-03 +
                  z * (2.48015872894767294178e-05 +
                       z * (-2.75573143513906633035e-07 +
                            z * (2.08757232129817482790e-09 + z * -1.13596475577881948265e-11)))));
    const double halfSquare = 0.5 * z;
    const double w = 1.0 - halfSquare;
    return w + (((1.0 - w) - halfSquare) + (z * r - x * rest));
}

/// Largest multiple of pi/2 whose product with a part of 33 bits is exact.
constexpr double largestMultiple = 1 << 20;

/// After Cody and Waite: pi/2 in parts of 33, 33 and 53 bits. Products with the first two are
/// exact, and so is the first difference; what the second rounds off goes to the rest.
ReducedAngle reduced(double x)
{
    constexpr double part1 = 1.57079632673412561417;
    constexpr double part2 = 6.07710050630396597660e-11;
    constexpr double part3 = 2.02226624879595063154e-21;
    // Adding and taking off 3 * 2^51 rounds to a whole number.
    constexpr double rounder = 6755399441055744.0;
    const double n = (x * (1.0 / halfPi) + rounder) - rounder;
    const double a = x - n * part1;
    const double b = n * part2;
    const double difference = a - b;
    const double shadow = difference - a;
    const double lost = (a - (difference - shadow)) - (b + shadow);
    const double rest = lost - n * part3;
    const double angle = difference + rest;
    return {angle, (difference - angle) + rest, int(n)};
}

/// Remainder of a large angle by the double next to 2 pi, by exact long division. That double is
/// off by a share of 4e-17, and so is in effect the angle, less than half an ulp.
double withoutTurns(double x)
{
    constexpr double turn = halfPi * 4.0;
    double size = std::abs(x);
    double step = turn;
    while (step <= size * 0.5)
        step *= 2.0;
    for (; step >= turn; step *= 0.5) {
        if (size >= step)
            size -= step;
    }
    return x < 0.0 ? -size : size;
}

/// (asin(x) - x) / x at t = x^2, x up to 1/2.
double arcSineExcess(double t)
{
    const double p =
        t * (1.66666666666666657415e-01 +
             t * (-3.25565818622400915405e-01 +
                  t * (2.01212532134862925881e-01 +
                       t * (-4.00555345006794114027e-02 +
                            t * (7.91534994289814532176e-04 + t * 3.47933107596021167570e-05)))));
    const double q =
        1.0 + t * (-2.40339491173441421878 +
                   t * (2.02094576023350569471 +
                        t * (-6.88283971605453293030e-01 + t * 7.70381505559019352791e-02)));
    return p / q;
}

/// The upper half of the digits, so that its square is exact.
double upperDigits(double x)
{
    return fromBits(bitsOf(x) & 0xffffffff00000000);
}

/// asin(x) = pi/2 - 2 asin(s) with s^2 = t = (1 - x) / 2, for x from 1/2 to 1. Where asin(s) is
/// not small against pi/2, s goes on in two parts.
double arcSineNearOne(double x)
{
    const double t = (1.0 - x) * 0.5;
    const double s = std::sqrt(t);
    const double excess = arcSineExcess(t);
    if (x >= 0.975)
        return halfPi - (2.0 * (s + s * excess) - halfPiRest);
    const double upper = upperDigits(s);
    const double lower = (t - upper * upper) / (s + upper);
    const double small = 2.0 * s * excess - (halfPiRest - 2.0 * lower);
    return halfPi * 0.5 - (small - (halfPi * 0.5 - 2.0 * upper));
}

} // namespace

double logOfRare(double x)
{
    constexpr double twoTo54 = 18014398509481984.0;
    if (x == 0.0)
        return -std::numeric_limits<double>::infinity();
    if (x < 0.0)
        return notANumber;
    if (!std::isfinite(x))
        return x;
    return logOfCommon(x * twoTo54, -54);
}

double sin(double x)
{
    if (!std::isfinite(x))
        return notANumber;
    if (std::abs(x) <= halfPi * 0.5)
        return sineNearZero(x, 0.0);
    const bool far = std::abs(x) >= largestMultiple * halfPi;
    const ReducedAngle r = reduced(far ? withoutTurns(x) : x);
    const double size =
        r.quarter & 1 ? cosineNearZero(r.angle, r.rest) : sineNearZero(r.angle, r.rest);
    return r.quarter & 2 ? -size : size;
}

double asin(double x)
{
    const double size = std::abs(x);
    if (!(size <= 1.0))
        return notANumber;
    if (size < 0.5)
        return x + x * arcSineExcess(x * x);
    const double angle = arcSineNearOne(size);
    return x < 0.0 ? -angle : angle;
}

} // namespace portable
