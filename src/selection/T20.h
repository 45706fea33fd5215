#pragma once

#include <QRectF>

/// The four numbers x, y, w, h of a rectangle [image pixels], as rows and dialogs pass them on.
using T20 = QRectF;
