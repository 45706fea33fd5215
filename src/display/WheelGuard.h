#pragma once

class QWidget;

/// Keeps the wheel from changing the combo boxes, spin boxes and sliders within a panel by
/// accident: one without the focus leaves it to the scroll area round it, and the wheel gives none
/// of them the focus. Widgets that come later are not guarded.
void guardWheel(QWidget* panel);
