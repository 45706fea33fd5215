#pragma once

class QPainter;
class QString;
class QWidget;

/// Paints a plot that has nothing to show: no paper, but the panel's ground in a thin frame, and a
/// sentence in its middle that says what is missing.
void paintEmptyPlot(QPainter* p, const QWidget& area, const QString& sentence);
