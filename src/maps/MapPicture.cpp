// The picture of a map.
#include "common/ColorScale.h"
#include "maps/Analyzed2DRes.h"

#include <algorithm>
#include <array>

void Analyzed2DRes::dropPicture()
{
    isStale_ = false;
    image_.reset();
    std::vector<uchar>().swap(imageBytes_);
}

void Analyzed2DRes::wrapImage()
{
    const int bytes = bytesPerPixel(imgFormat);
    if (bytes == 0 || imageBytes_.empty()) {
        image_ = std::make_unique<QImage>();
        return;
    }
    image_ = std::make_unique<QImage>(imageBytes_.data(), stepper.width, stepper.height,
                                      displayStride(imgFormat, stepper.width),
                                      static_cast<QImage::Format>(imgFormat));
}

void Analyzed2DRes::genImg()
{
    isStale_ = true;
    imgValid = true;
    automatic_.reset();
}

void Analyzed2DRes::paint()
{
    isStale_ = false;
    image_.reset();
    const bool hasPixels = stepper.pixels() > 0;
    const bool marksNoEdge = display_.marksNoEdge && !marks_.empty();
    const bool isClasses = !classColours_.empty();
    // A colour of its own needs pixels of three bytes, in the grey ramp too.
    imgFormat = marksNoEdge || isClasses ? int(ColorScale::Rgb) : currentColorScale().imageFormat;
    const int stride = hasPixels ? displayStride(imgFormat, stepper.width) : 0;
    const int rows = hasPixels ? stepper.height : 0;
    imageBytes_.assign(static_cast<std::size_t>(stride) * static_cast<std::size_t>(rows), 0);
    if (shownField().empty() || imageBytes_.empty()) {
        wrapImage();
        return;
    }
    if (isClasses)
        paintClasses(stride);
    else
        paintField(shownField().data(), stride);
    if (marksNoEdge)
        paintMarks(stride);
    wrapImage();
}

void Analyzed2DRes::paintField(const double* v, int stride)
{
    const Scale s = scale();
    const double span = s.max - s.min;
    // The picture's own format decides the pixel's size, so that no row can outgrow the buffer.
    ColorScale colours = currentColorScale();
    colours.imageFormat = imgFormat;
    uchar* line = imageBytes_.data();
    for (int y = 0; y < stepper.height; ++y, line += stride) {
        uchar* out = line;
        for (const double* const end = v + stepper.width; v != end; ++v)
            out = colours.mapValue((*v - s.min) / span, out);
    }
}

/// Over a picture of three bytes a pixel.
void Analyzed2DRes::paintMarks(int stride)
{
    const uchar* mark = marks_.data();
    uchar* line = imageBytes_.data();
    for (int y = 0; y < stepper.height; ++y, line += stride) {
        for (int x = 0; x < stepper.width; ++x, ++mark) {
            if ((*mark & WithoutEdge) != 0)
                std::copy(noEdgeColour.begin(), noEdgeColour.end(), line + 3 * x);
        }
    }
}

/// The same of a picture whose values are classes.
void Analyzed2DRes::paintClasses(int stride)
{
    const auto classes = double(classColours_.size());
    const double* v = shownField().data();
    uchar* line = imageBytes_.data();
    for (int y = 0; y < stepper.height; ++y, line += stride) {
        uchar* out = line;
        for (const double* const end = v + stepper.width; v != end; ++v, out += 3) {
            const bool isClass = *v >= 0.0 && *v < classes;
            const QRgb c = isClass ? classColours_[std::size_t(*v)] : 0;
            const std::array<uchar, 3> bytes = {uchar(qRed(c)), uchar(qGreen(c)), uchar(qBlue(c))};
            const std::array<uchar, 3>& pixel = isClass ? bytes : noEdgeColour;
            std::copy(pixel.begin(), pixel.end(), out);
        }
    }
}

QImage* Analyzed2DRes::img()
{
    if (isStale_)
        paint();
    return image_.get();
}

void Analyzed2DRes::setClassColours(const std::vector<QRgb>& colours)
{
    classColours_ = colours;
    if (imgValid)
        genImg();
}
