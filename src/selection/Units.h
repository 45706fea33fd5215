#pragma once

#include "common/Crystals.h"

#include <QObject>

/// Holds the spacing of the monochromator crystal for conversions between energy and angle.
class Units : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    double d = defaultCrystalSpacing; ///< [angstrom]

public Q_SLOTS:
    void setD(double D) { d = D; }
};
