#pragma once

#include "image/TiffData.h"
#include "spectrum/Spectrum.h"

/// An image of a stack, and what turns its counts into absorption. Dark levels play no part.
struct SectionSource
{
    const TiffData& image;
    const TiffStack* i0 = nullptr; ///< null: the section shows the plain sums
    bool fluorescence = false;
};

/// Section of the image along row y: for each column x from 0 to width - 1 the block of half widths
/// hw, vw [pixels] round (x, y), as its sum or, with I0, as absorption at the image's energy.
/// Points are (x, value).
Spectrum hCross(const SectionSource& source, int width, int y, int hw, int vw);

/// The same along column x, from row 0 to height - 1. Points are (height - y, value): the axis
/// runs upward from the lower end of the image.
Spectrum vCross(const SectionSource& source, int height, int x, int hw, int vw);
