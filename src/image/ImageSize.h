#pragma once

#include <QSize>
#include <QString>

/// Size [pixels] of the image in a file, from its header alone: cheap, and silent. Invalid for what
/// TiffData::readFile() would refuse by its header.
QSize imageSize(const QString& name);
