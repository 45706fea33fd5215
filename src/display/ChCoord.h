#pragma once

/// The mapping between a plot's real values and the pixels of a widget: the whole area, the plot
/// window in it (which real values are mapped onto) and the real values at the window's ends. Any
/// pair of ends may be given in either order. An empty real range gives infinities; callers make
/// sure that there is none.
class ChCoord
{
public:
    double screenX0 = 0.0, screenX1 = 1.0, screenY0 = 0.0, screenY1 = 1.0; ///< area [pixels]
    double plotX0 = 0.0, plotX1 = 1.0, plotY0 = 0.0, plotY1 = 1.0;         ///< window [pixels]
    double realX0 = 0.0, realX1 = 1.0, realY0 = 0.0, realY1 = 1.0;         ///< real ends
    double outerEdgeFraction = 0.1; ///< edge strip of the whole area
    double plotEdgeFraction = 0.1;  ///< edge strip of the plot window
    /// Margins of the plot window as fractions of the area; the top one lies at the screenY0 side.
    double marginLeft = 0.1, marginRight = 0.05, marginBottom = 0.05, marginTop = 0.1;
    int labelDivY = 20; ///< size of the tick label box, see the spectrum view
    int labelDivX = 25;
    double labelFraction = 0.85;
    bool layoutFlag = true; ///< carried along; no rule reads it

    /// Sets the whole area and the plot window to one rectangle.
    void setScreenArea(double x0, double y0, double x1, double y1);
    void setPlotWindow(double x0, double y0, double x1, double y1);
    /// Makes the plot window from the area and the margins, each cut to whole pixels.
    void applyMargins();
    void setRealArea(double x0, double y0, double x1, double y1);
    void setRealX(double x0, double x1);
    void setRealY(double y0, double y1);

    double realToScreenX(double v) const { return realToScreenDX(v - realX0) + plotX0; }
    double realToScreenY(double v) const { return realToScreenDY(v - realY0) + plotY0; }
    double realToScreenDX(double v) const { return (plotX1 - plotX0) / (realX1 - realX0) * v; }
    double realToScreenDY(double v) const { return (plotY1 - plotY0) / (realY1 - realY0) * v; }
    double screenToRealX(double v) const { return screenToRealOffsetX(v) + realX0; }
    double screenToRealY(double v) const { return screenToRealOffsetY(v) + realY0; }
    double screenToRealOffsetX(double v) const { return screenToRealDX(v - plotX0); }
    double screenToRealOffsetY(double v) const { return screenToRealDY(v - plotY0); }
    double screenToRealDX(double v) const { return (realX1 - realX0) / (plotX1 - plotX0) * v; }
    double screenToRealDY(double v) const { return (realY1 - realY0) / (plotY1 - plotY0) * v; }
    double screenToRealClampedX(double v) const;
    double screenToRealClampedY(double v) const;

    /// True when the pixel lies in the edge strip of the plot window, or of the whole area.
    bool nearPlotEdgeX(double v) const;
    bool nearPlotEdgeY(double v) const;
    bool nearAreaEdgeX(double v) const;
    bool nearAreaEdgeY(double v) const;

    /// Smallest of 1, 2, 5 times a power of ten of baseStep that is wider than minPixels in x; at
    /// most 10^8 times the base.
    double tickStepFor(double baseStep, double minPixels) const;

    /// Step, first and last tick for a range with min below max.
    static void autoTicks(double min, double max, double& step, double& first, double& last);
};
