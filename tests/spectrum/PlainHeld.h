#pragma once

#include "spectrum/HeldGap.h"

#include <cmath>

/// The rule for lines that come too close, point by point, each value from the lines themselves:
/// what HeldGap must equal to the last bit.
struct PlainHeld
{
    HeldGap::State state = HeldGap::Sound;
    QVector<double> y;

    PlainHeld(const XafsSpectrum& s, double from, double to)
    {
        for (const QPointF& p : s.doubleNormalizedPreBase.points)
            y.append(p.y());
        if (s.outcome != Outcome::Fitted)
            return;
        const auto E = [&](int i) { return s.doubleNormalizedPreBase.x(i); };
        const auto gap = [&](int i) { return s.postAt(E(i)) - s.preAt(E(i)); };
        const int k = s.edgeIndex;
        const double step = std::max(s.dMut, gap(k));
        const auto inside = [&](int i) {
            return i == k || (s.pre.endE <= E(i) && E(i) <= s.post.startE);
        };
        for (int i = 0; i < y.size(); ++i) {
            const double e = E(i) - s.eOffset;
            if (e < from || e > to || gap(i) >= 0.1 * step)
                continue;
            state = inside(i) || state == HeldGap::Unsound ? HeldGap::Unsound : HeldGap::Held;
        }
        if (state != HeldGap::Held)
            return;
        bool held = false;
        for (int i = k + 1; i < y.size(); ++i) {
            held = held || (!inside(i) && !(gap(i) >= 0.5 * step));
            if (held)
                y[i] = (s.y(i) - s.postAt(E(i))) / step + 1.0;
        }
        held = false;
        for (int i = k - 1; i >= 0; --i) {
            held = held || (!inside(i) && !(gap(i) >= 0.5 * step));
            if (held)
                y[i] = (s.y(i) - s.preAt(E(i))) / step;
        }
    }
};
