#pragma once

#include <QPointF>
#include <QSize>
#include <QString>
#include <QVector>

/// The road from image files to weights in its plainest form, written for the tests alone: it
/// shares no line with the program or with what wrote the files.
namespace plain {
using Curve = QVector<QPointF>;

/// Reads an image of the detector formats by its first bytes; an empty vector when it is none.
QVector<double> readImage(const QString& fname, QSize* size);

/// Reads a reference spectrum of either layout.
Curve readReference(const QString& fname);

/// (mu - pre) / (post - pre), with straight lines over all points 10 eV and more beside the
/// steepest rise of the curve, and the gap of the lines there.
Curve normalised(const Curve& curve, double* edgeStep = nullptr);

double valueAt(const Curve& curve, double energy);

/// Weights of the references in the least-squares sense; all curves normalised.
QVector<double> weights(const Curve& sample, const QVector<Curve>& references);

/// Maps of one walk: for each block and reference the weight, and the block's edge step.
struct Maps
{
    QVector<QVector<double>> ratio; ///< [reference][block]
    QVector<QVector<double>> dmut;
};

/// Analyses blocks side by side over the whole of an experiment's images. The dark level is the
/// mean over the square of `darkSize` pixels in the first corner.
Maps analyse(const QString& folder, const QString& suffix, double firstEnergy, double energyStep,
             int darkSize, int halfWidth, const QVector<Curve>& references);
} // namespace plain
