#pragma once

#include <QMap>
#include <QPointF>
#include <QString>
#include <QVector>

/// The road from image files to weights in its plainest form, written for the tests alone: it
/// shares no line with the program or with what wrote the files.
namespace plain {
using Curve = QVector<QPointF>;

/// Reads a reference spectrum of either layout; its energies ascend in the result.
Curve readReference(const QString& fname);

/// Where the edge is looked for, and how far from it the lines begin [eV].
struct EdgeRange
{
    double from = 0.0;
    double to = 1e9;
    double gap = 10.0;
};

/// (mu - pre) / (post - pre), with straight lines over all points 10 eV (the gap) and more beside
/// the steepest rise of the curve, and the distance of the lines there.
Curve normalised(const Curve& curve, double* edgeStep = nullptr, const EdgeRange& range = {});

/// Weights ("ratio") and weights times edge step ("dmut") of a reference, a value each block; the
/// same without regard to the energy shift ("raw"), and that shift ("shift", 0).
using Maps = QMap<QPair<QString, int>, QVector<double>>;

/// Analyses the TIFF images of an easy experiment at these energies [eV] in squares of `side`
/// pixels, which divides their size. The dark level is the mean over the square of `darkSize`
/// pixels in the first corner.
Maps analyse(const QString& folder, const QVector<double>& energies, int darkSize, int side);
} // namespace plain
