#include "display/ChCoord.h"

#include "common/SafeInt.h"

#include <algorithm>
#include <cmath>

namespace {

bool nearEdge(double v, double end0, double end1, double fraction)
{
    const double strip = std::abs(end1 - end0) * fraction;
    return v < std::min(end0, end1) + strip || v > std::max(end0, end1) - strip;
}

double clampedBetween(double v, double end0, double end1)
{
    return std::min(std::max(v, std::min(end0, end1)), std::max(end0, end1));
}

} // namespace

void ChCoord::setScreenArea(double x0, double y0, double x1, double y1)
{
    screenX0 = x0;
    screenY0 = y0;
    screenX1 = x1;
    screenY1 = y1;
    setPlotWindow(x0, y0, x1, y1);
}

void ChCoord::setPlotWindow(double x0, double y0, double x1, double y1)
{
    plotX0 = x0;
    plotY0 = y0;
    plotX1 = x1;
    plotY1 = y1;
}

void ChCoord::applyMargins()
{
    const double w = screenX1 - screenX0;
    const double h = screenY1 - screenY0;
    plotX0 = screenX0 + std::trunc(w * marginLeft);
    plotX1 = screenX1 - std::trunc(w * marginRight);
    plotY0 = screenY0 + std::trunc(h * marginTop);
    plotY1 = screenY1 - std::trunc(h * marginBottom);
}

void ChCoord::setRealArea(double x0, double y0, double x1, double y1)
{
    setRealX(x0, x1);
    setRealY(y0, y1);
}

void ChCoord::setRealX(double x0, double x1)
{
    realX0 = x0;
    realX1 = x1;
}

void ChCoord::setRealY(double y0, double y1)
{
    realY0 = y0;
    realY1 = y1;
}

double ChCoord::screenToRealClampedX(double v) const
{
    return clampedBetween(screenToRealX(v), realX0, realX1);
}

double ChCoord::screenToRealClampedY(double v) const
{
    return clampedBetween(screenToRealY(v), realY0, realY1);
}

bool ChCoord::nearPlotEdgeX(double v) const
{
    return nearEdge(v, plotX0, plotX1, plotEdgeFraction);
}

bool ChCoord::nearPlotEdgeY(double v) const
{
    return nearEdge(v, plotY0, plotY1, plotEdgeFraction);
}

bool ChCoord::nearAreaEdgeX(double v) const
{
    return nearEdge(v, screenX0, screenX1, outerEdgeFraction);
}

bool ChCoord::nearAreaEdgeY(double v) const
{
    return nearEdge(v, screenY0, screenY1, outerEdgeFraction);
}

double ChCoord::tickStepFor(double baseStep, double minPixels) const
{
    constexpr int rounds = 8;
    const double pixelsPerUnit = realToScreenDX(1.0);
    double step = baseStep;
    for (int i = 0; i < rounds; ++i) {
        for (const double multiple : {1.0, 2.0, 5.0}) {
            if (multiple * step * pixelsPerUnit > minPixels)
                return multiple * step;
        }
        step *= 10.0;
    }
    return step;
}

void ChCoord::autoTicks(double min, double max, double& step, double& first, double& last)
{
    // By the leading digit of the range, so that some five to ten ticks come out.
    static constexpr double factors[] = {1.0, 0.2, 0.2, 0.5, 0.5, 1.0, 1.0, 1.0, 2.0, 2.0};
    const double range = max - min;
    const double unit = std::pow(10.0, std::floor(std::log10(range)));
    const int digit = truncatedInt(range / unit);
    step = unit * (digit >= 1 && digit <= 9 ? factors[digit] : 1.0);
    first = std::ceil(min / step) * step;
    last = std::floor(max / step) * step;
}
