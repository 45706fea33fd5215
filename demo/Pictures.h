#pragma once

#include <QImage>
#include <QVector>

/// Planted and fitted field next to each other, one square a block, on a black-red-yellow-white
/// scale from 0 to 1. Fields are of columns*columns values, row after row; nan is drawn grey.
QImage sideBySide(const QVector<double>& planted, const QVector<double>& fitted, int columns);
