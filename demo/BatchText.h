#pragma once

#include "ImageWriters.h"
#include "Phantom.h"

#include <QString>

/// The batch text that loads, analyses and saves the experiment in `folder` (an absolute path), and
/// ends the program. The hard experiment is fitted twice: in blocks with straight lines, then at
/// single pixels with Victoreen lines.
QString batchText(const QString& folder, const Phantom& phantom, ImageFormat format);
