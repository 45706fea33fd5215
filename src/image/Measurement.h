#pragma once

#include "image/TiffData.h"
#include "spectrum/XafsSpectrum.h"

#include <QPoint>
#include <QRectF>
#include <QSize>
#include <QVector>

// The measurement that the program works on: what was loaded, and nothing of any form. GUI thread;
// the images themselves are shared and const, so whoever copied a stack keeps it as it was.

/// One of the two stacks with its dark area.
struct ImageStack
{
    explicit ImageStack(const QString& stackName)
        : name(stackName)
    {
    }

    const QString name; ///< in log lines: "I1", "I0"
    TiffStack images;   ///< in loading order
    bool darkAreaOn = false;
    QRectF darkArea;         ///< [image pixels]
    QVector<double> darkAvg; ///< mean over the area per image, the dark image's taken off

    /// Gives each image its energy [eV]; images past the end of the list get 0.
    void setEnergies(const QVector<double>& energies);

    /// Moves each image by its shift [pixels]; images past the end of the list stay. Images that do
    /// not move are the same ones.
    void setShifts(const QVector<QPoint>& shifts);
    /// Shift of each image.
    QVector<QPoint> shifts() const;

    /// Adds the dark area's averages of the images that have none yet. The area is a place on the
    /// detector: images count there as they were read, whatever their shifts. The counts of the
    /// dark image times `darkFactor` are those of the stack's exposure; null for no dark image.
    /// Nothing without a dark area.
    void fillDarkAverages(const TiffData* dark, double darkFactor);
    /// The same anew for all images.
    void refillDarkAverages(const TiffData* dark, double darkFactor);

    /// All images have one exposure, compared exactly and by value.
    bool hasUniformExposure() const;
};

/// All data of the measurement.
struct Measurement
{
    ImageStack i1{QStringLiteral("I1")}; ///< through the sample
    ImageStack i0{QStringLiteral("I0")}; ///< without it
    QSize size = {-1, 0};                ///< of the images [pixels], and
    QPoint origin;            ///< their place on the detector, both from the first I1 image
    SharedImage dark;         ///< null for none
    XafsSpectrum totalI0ofI1; ///< replaces I0; empty for none
    XafsSpectrum totalI0ofI0; ///< kept, and used in no calculation

    /// Takes size and origin from the first I1 image, which there must be.
    void takeGeometry();
};
