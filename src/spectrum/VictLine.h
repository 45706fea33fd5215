#pragma once

#include "spectrum/EdgeLanes.h"
#include "spectrum/Spectrum.h"

#include <QVarLengthArray>

#include <array>

/// Wavelengths [angstrom] at the points of a spectrum, which the Victoreen form is made of. Both
/// lines of a spectrum share them; straight lines need none.
using Wavelengths = QVarLengthArray<double, 512>;
Wavelengths wavelengthsOf(const Spectrum& s);

/// Weights of the four control points of a Bezier bend, at each step of the curve's parameter.
using BezierWeights = std::array<double, 4>;
using BezierTable = std::array<BezierWeights, bezierSamples>;
const BezierTable& bezierWeights();

/// One background line of a spectrum: a least-squares fit of the Victoreen form
/// y = c0 + c1 lambda^3 + c2 lambda^4 (lambda = hc / E) or of a straight line y = c0 + slope E,
/// with a bend that keeps a pre-edge and a post-edge line from crossing outside their ranges.
/// The inherited points hold the sampled bend, never measured data, and are emptied by no
/// operation of this class: a second bend adds its samples behind those of the first, on purpose.
class VictLine : public Spectrum
{
public:
    enum Mode
    {
        Victoreen = 0,
        Straight = 1
    };

    bool ok = false; ///< the last fit succeeded
    int mode = Straight;
    double c0 = 0.0; ///< constant of either form
    double c1 = 0.0; ///< of lambda^3
    double c2 = 0.0; ///< of lambda^4
    double slope = 0.0;
    double rms = 0.0;    ///< root mean square residual over the fitted range, 1.0 for no points
    int count = 0;       ///< points behind rms
    double startE = 0.0; ///< fitted range [eV]
    double endE = 0.0;
    int corrMode = 2;               ///< 2 Bezier bend, any other value cubic bend
    bool corrected = false;         ///< a bend exists
    bool correctedAbove = true;     ///< it applies above endE, else below startE
    std::array<double, 4> cubic{};  ///< a, b, c, d of y = a E^3 + b E^2 + c E + d
    QVector<QPointF> controlPoints; ///< the four Bezier control points

    /// Fits the line to the points of s with sE <= x < eE; non-zero mode means straight. False when
    /// the spectrum has too few points (three straight, four Victoreen; nothing is changed but mode
    /// and range) or the system is singular (the earlier coefficients stay). Stored in ok.
    bool fit(const Spectrum& s, double sE, double eE, int fitMode);
    /// The same with wavelengthsOf(s) at hand.
    bool fit(const Spectrum& s, const Wavelengths& lambdas, double sE, double eE, int fitMode);

    /// The line without its bend at energy E [eV].
    double plainAt(double E) const;

    /// The line at energy E [eV], with the bend where it applies.
    double at(double E) const;

    /// at() of n energies [eV] at once, the quick way through a whole curve; same values to the
    /// last bit.
    void valuesAt(const double* energies, int n, double* values) const;
    /// The same with the wavelengths at these energies at hand.
    void valuesAt(const double* energies, const Wavelengths& lambdas, int n, double* values) const;

    /// Raises both forms of the line, the plain one and the cubic bend, by dy.
    void raise(double dy);

    /// Bends this pre-edge line above its range towards the post-edge line `other`, when `other`
    /// is less steep and the lines would cross. Only a straight line is bent.
    void genCorrectedInPost(const VictLine& other);

    /// Bends this post-edge line below its range towards the pre-edge line `other`.
    void genCorrectedInPre(const VictLine& other);

    /// True when two straight lines meet within [a, b]; false unless both are straight.
    bool crossesWithin(const VictLine& other, double a, double b) const;

private:
    bool isStraight() const { return mode != Victoreen; }
    bool isBentAt(double E) const { return corrected && (correctedAbove ? E > endE : E < startE); }
    double cubicAt(double E) const;
    bool fitStraight(const Spectrum& s);
    bool fitVictoreen(const Spectrum& s, const Wavelengths& lambdas);
    bool solveStraight(const Spectrum& s);
    bool solveVictoreen(const Spectrum& s);
    void bendValues(const double* energies, int n, double* values) const;
    void setRms(double sumOfSquares, int pointCount);
    void bendBezierAbove(const VictLine& other);
    void bendBezierBelow(const VictLine& other);
    void bendCubicAbove(const VictLine& other);
    void bendCubicBelow(const VictLine& other);
    void sampleBezier();
    bool solveCubic(QPointF first, double firstSlope, QPointF second, double secondSlope);
};
