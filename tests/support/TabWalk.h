#pragma once

#include <QSet>
#include <QWidget>

/// Pairs of a form's widgets that Tab visits against the reading order: the second stands above the
/// first, or left of it in the same line. The form is to be shown and laid out.
inline QStringList tabsBackwards(const QWidget& form)
{
    constexpr int sameLine = 8; // [pixels]
    QStringList wrong;
    const QWidget* last = nullptr;
    QSet<const QWidget*> seen;
    for (const QWidget* w = form.nextInFocusChain(); w != &form && !seen.contains(w);
         w = w->nextInFocusChain()) {
        seen.insert(w);
        if (!(w->focusPolicy() & Qt::TabFocus) || !w->isVisible() || !form.isAncestorOf(w))
            continue;
        if (last) {
            const QPoint step =
                w->mapTo(&form, w->rect().center()) - last->mapTo(&form, last->rect().center());
            if (step.y() < -sameLine || (step.y() <= sameLine && step.x() <= 0))
                wrong.append(last->objectName() + " -> " + w->objectName());
        }
        last = w;
    }
    return wrong;
}
