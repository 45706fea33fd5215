#pragma once

#include <QWidget>

// What all forms in the narrow docks need.

/// Lets the push buttons within a panel be as narrow as their texts; styles ask for far more, and a
/// dock has no room for it. Those whose form gives a minimum width keep it. To be called once the
/// texts stand.
void fitButtons(QWidget& panel);
