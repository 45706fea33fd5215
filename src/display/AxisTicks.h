#pragma once

#include <QFontMetrics>
#include <QString>
#include <QVector>

/// The ticks of an axis with their numbers, measured in a font. Numbers are written anew only when
/// the ticks are others: an axis that follows the mouse keeps most of them.
class AxisTicks
{
public:
    struct Tick
    {
        double value;
        QString label;
        int width; ///< of the label [pixels]
    };

    /// Divides a range; one that can't be divided has no ticks.
    void setRange(double min, double max, const QFontMetrics& metrics);
    /// Forgets what was measured, for another font.
    void clear();

    const QVector<Tick>& ticks() const { return ticks_; }
    /// Width of the widest label [pixels].
    int widest() const { return widest_; }

    /// Every how many ticks a label has room that takes `labelSize` of the axis, where ticks are
    /// `tickDistance` apart [pixels]: 1, 2, 5, 10 and so on.
    static int stride(double tickDistance, double labelSize);
    /// The tick is one of every `stride` ones, counted from 0 so that its number is round.
    bool isLabelled(int i, int stride) const;

private:
    double step_ = 0.0;
    double first_ = 0.0; ///< the first tick as a multiple of the step
    QVector<Tick> ticks_;
    int widest_ = 0;
};
