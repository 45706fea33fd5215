#pragma once

#include "common/Mark.h"

#include <QPixmap>

class QPainter;
class QRectF;
class QWidget;

/// Paints a mark into a square; the colours of the quiet ones come from the pen's text colour.
/// `share` from 0 to 1 is that of a running one.
void paintMark(QPainter& painter, const QRectF& square, Mark mark, double share,
               const QColor& textColour);

/// The mark as a picture for a label of this widget, as high as its text.
QPixmap markPixmap(const QWidget& widget, Mark mark, double share = 0.0);

/// What a loud mark tints its ground with; texts on it are black. Invalid for a quiet mark.
QColor markTint(Mark mark);
