#include "image/Measurement.h"

#include <algorithm>

void ImageStack::setEnergies(const QVector<double>& energies)
{
    for (int i = 0; i < images.size(); ++i)
        images[i] = images.at(i)->withEnergy(energies.value(i));
}

void ImageStack::setShifts(const QVector<QPoint>& shifts)
{
    const QVector<QPoint> now = this->shifts();
    for (int i = 0; i < std::min(images.size(), shifts.size()); ++i) {
        if (shifts.at(i) != now.at(i))
            images[i] = images.at(i)->withShift(shifts.at(i));
    }
}

QVector<QPoint> ImageStack::shifts() const
{
    QVector<QPoint> shifts;
    shifts.reserve(images.size());
    for (const SharedImage& image : images)
        shifts.append(QPoint(image->shiftX, image->shiftY));
    return shifts;
}

void ImageStack::fillDarkAverages(const TiffData* dark, double darkFactor)
{
    if (!darkAreaOn)
        return;
    const double darkLevel = dark ? dark->areaMean(darkArea) * darkFactor : 0.0;
    for (int i = darkAvg.size(); i < images.size(); ++i)
        darkAvg.append(images.at(i)->withShift(QPoint())->areaMean(darkArea) - darkLevel);
}

void ImageStack::refillDarkAverages(const TiffData* dark, double darkFactor)
{
    darkAvg.clear();
    fillDarkAverages(dark, darkFactor);
}

bool ImageStack::hasUniformExposure() const
{
    return std::all_of(images.begin(), images.end(), [this](const SharedImage& image) {
        return image->exposureMs == images.first()->exposureMs;
    });
}

void Measurement::takeGeometry()
{
    const TiffData& first = *i1.images.first();
    size = {first.width, first.height};
    origin = {first.x0, first.y0};
}
