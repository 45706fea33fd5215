#pragma once

#include <QMap>
#include <QPointF>
#include <QString>
#include <QVector>

/// The road from image files to weights in its plainest form, written for the tests alone: it
/// shares no line with the program or with what wrote the files.
namespace plain {
using Curve = QVector<QPointF>;

/// Reads a reference spectrum of either layout.
Curve readReference(const QString& fname);

/// (mu - pre) / (post - pre), with straight lines over all points 10 eV and more beside the
/// steepest rise of the curve, and the gap of the lines there.
Curve normalised(const Curve& curve, double* edgeStep = nullptr);

/// The normalised references of an experiment's folder.
QVector<Curve> references(const QString& folder);

/// Weights of the references in the least-squares sense; all curves normalised.
QVector<double> weights(const Curve& sample, const QVector<Curve>& references);

/// Energy by which a curve lies above a standard in the least-squares sense, within 2 eV; both
/// normalised.
double shiftOf(const Curve& curve, const Curve& standard);

/// Weights ("ratio") and weights times edge step ("dmut") of a reference, a value each block; the
/// same without regard to the energy shift ("raw"), and that shift ("shift", 0).
using Maps = QMap<QPair<QString, int>, QVector<double>>;

/// Analyses the TIFF images of an experiment in squares of `side` pixels, which divides their size.
/// The dark level is the mean over the square of `darkSize` pixels in the first corner.
Maps analyse(const QString& folder, double firstEnergy, double energyStep, int darkSize, int side);
} // namespace plain
