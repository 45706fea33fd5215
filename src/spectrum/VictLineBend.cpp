#include "spectrum/SmallSystem.h"
#include "spectrum/VictLine.h"

#include <QDebug>

// The bends of a background line. Extrapolated lines that converge would cross, and a normalised
// value next to the crossing would be anything. So the steeper pre-edge line is bent above its
// range towards the post-edge line, or the steeper post-edge line below its range towards the
// pre-edge line; at most one of the two applies. Lines are read without their bends here: one left
// over from an earlier fit must not leak into the new one.

namespace {
BezierTable makeBezierWeights()
{
    BezierTable table;
    double t = 0.0;
    for (BezierWeights& w : table) {
        const double u = 1 - t;
        w = {u * u * u, 3 * (u * u) * t, 3 * u * (t * t), t * t * t};
        t += 0.01;
    }
    return table;
}
} // namespace

const BezierTable& bezierWeights()
{
    static const BezierTable weights = makeBezierWeights();
    return weights;
}

void VictLine::genCorrectedInPost(const VictLine& other)
{
    corrected = false;
    if (!isStraight() || other.slope >= slope)
        return;
    if (corrMode == 2)
        bendBezierAbove(other);
    else
        bendCubicAbove(other);
}

void VictLine::genCorrectedInPre(const VictLine& other)
{
    corrected = false;
    if (!isStraight() || other.slope >= slope)
        return;
    if (corrMode == 2)
        bendBezierBelow(other);
    else
        bendCubicBelow(other);
}

void VictLine::bendBezierAbove(const VictLine& other)
{
    const double from = endE;
    const double to = other.endE;
    if (from == to)
        return;
    const double yFrom = slope * from + c0;
    const double gap = other.plainAt(from) - yFrom;
    // Half the way to the crossing in units of the bend's span: above 1 the lines meet beyond twice
    // the span, where nothing is read.
    const double f = (-gap / (other.slope - slope)) / (to - from) * 0.5;
    if (f > 1.0)
        return;
    const double h = 0.1 * f * (to - from);
    const double yTo = other.plainAt(to) - f * (gap * 0.5);
    controlPoints = {QPointF(from, yFrom), QPointF(from + h, yFrom + slope * h),
                     QPointF(to - h, yTo - other.slope * h), QPointF(to, yTo)};
    sampleBezier();
    corrected = true;
    correctedAbove = true;
}

void VictLine::bendBezierBelow(const VictLine& other)
{
    const double low = other.startE;
    const double high = startE;
    if (low == high)
        return;
    const double yOther = other.plainAt(low);
    const double gap = yOther - (slope * low + c0);
    const double f = (gap / (slope - other.slope) + low - high) / (low - high) * 0.5;
    if (f > 1.0)
        return;
    const double yHigh = slope * high + c0;
    const double h = 0.1 * f * (low - high);
    const double yLow = yOther + f * (yHigh - other.plainAt(high)) * 0.5;
    controlPoints = {QPointF(low, yLow), QPointF(low - h, yLow - other.slope * h),
                     QPointF(high + h, yHigh + slope * h), QPointF(high, yHigh)};
    sampleBezier();
    corrected = true;
    correctedAbove = false;
}

/// Appends the samples of the curve. Those of an earlier bend stay before them: deliberate. The
/// parameter's end is not sampled, so that the last stretch is extrapolated.
void VictLine::sampleBezier()
{
    const QPointF p0 = controlPoints.at(0);
    const QPointF p1 = controlPoints.at(1);
    const QPointF p2 = controlPoints.at(2);
    const QPointF p3 = controlPoints.at(3);
    const int first = size();
    points.resize(first + bezierSamples);
    QPointF* out = points.data() + first;
    for (const BezierWeights& w : bezierWeights()) {
        *out++ = QPointF(w[0] * p0.x() + w[1] * p1.x() + w[2] * p2.x() + w[3] * p3.x(),
                         w[0] * p0.y() + w[1] * p1.y() + w[2] * p2.y() + w[3] * p3.y());
    }
    extendBounds(first);
}

void VictLine::bendCubicAbove(const VictLine& other)
{
    const double from = endE;
    const double to = other.endE;
    const double yFrom = slope * from + c0;
    const double otherFrom = other.plainAt(from);
    const double otherTo = other.plainAt(to);
    const double gap = otherFrom - yFrom;
    const double crossing = from - gap / (other.slope - slope);
    double yTo = (otherTo - otherFrom + (slope * to + c0) + yFrom) * 0.5;
    double slopeTo = other.slope;
    if (crossing < to) {
        const double f = (crossing - from) / (to - from);
        yTo = otherTo - gap * f;
        slopeTo = other.slope * (1 - f) + slope * f;
    }
    if (solveCubic(QPointF(from, yFrom), slope, QPointF(to, yTo), slopeTo)) {
        corrected = true;
        correctedAbove = true;
    }
}

void VictLine::bendCubicBelow(const VictLine& other)
{
    const double high = startE;
    const double yHigh = plainAt(high);
    const double gap = yHigh - other.plainAt(high);
    double low = other.startE;
    double yLow = (other.plainAt(low) + plainAt(low) + yHigh - other.plainAt(high)) * 0.5;
    if (high - gap / (slope - other.slope) > low) {
        low = high + 2 * (low - high);
        yLow = other.plainAt(low);
    }
    if (solveCubic(QPointF(low, yLow), other.slope, QPointF(high, yHigh), slope)) {
        corrected = true;
        correctedAbove = false;
    }
}

/// Finds the cubic through two points with given slopes. A failure is logged under the name of the
/// pre-edge line's bend for both lines.
bool VictLine::solveCubic(QPointF first, double firstSlope, QPointF second, double secondSlope)
{
    const double a = first.x();
    const double b = second.x();
    const SolveStep step = solveSmall<4>({{{3 * a * a, 2 * a, 1, 0},
                                           {3 * b * b, 2 * b, 1, 0},
                                           {a * a * a, a * a, a, 1},
                                           {b * b * b, b * b, b, 1}}},
                                         {firstSlope, secondSlope, first.y(), second.y()}, cubic);
    switch (step) {
    case SolveStep::Solved:
        return true;
    case SolveStep::MakeLU:
        qDebug() << "make  LU (2) false in VictLine genCorrectedInPost";
        return false;
    case SolveStep::SolveLV:
        qDebug() << "solve LV (2) false in VictLine genCorrectedInPost";
        return false;
    case SolveStep::SolveUV:
        qDebug() << "solve UV (2) false in VictLine genCorrectedInPost";
        return false;
    }
    return false;
}
