#pragma once

/// log(2^k (1 + f)) for f from sqrt(1/2) - 1 to sqrt(2) - 1, of numbers or of vectors of them: the
/// one sum behind all logarithms, so that they have the same bits.
///
/// With s = f / (2 + f), log(1 + f) = 2 artanh(s) = f - f^2 / 2 + s (f^2 / 2 + R(s^2)), where R is
/// the minimax polynomial that K. C. Ng derived with Remez' exchange, relative error 2^-58.45. It
/// is summed as its odd and even terms, which do not wait for each other. k log(2) is added in two
/// parts, of which the large one times k is exact (Cody and Waite, "Software Manual for the
/// Elementary Functions").
///
/// Always inline: sources of different instruction sets must not share a copy.
template<typename Real>
[[gnu::always_inline]] inline Real logOfParts(Real k, Real f)
{
    constexpr double log2Large = 6.93147180369123816490e-01;
    constexpr double log2Small = 1.90821492927058770002e-10;
    const Real s = f / (2.0 + f);
    const Real z = s * s;
    const Real w = z * z;
    const Real even = w * (3.999999999940941908e-01 +
                           w * (2.222219843214978396e-01 + w * 1.531383769920937332e-01));
    const Real odd = z * (6.666666666666735130e-01 +
                          w * (2.857142874366239149e-01 +
                               w * (1.818357216161805012e-01 + w * 1.479819860511658591e-01)));
    const Real halfSquare = 0.5 * f * f;
    const Real rest = s * (halfSquare + (even + odd)) + k * log2Small;
    return k * log2Large - ((halfSquare - rest) - f);
}
