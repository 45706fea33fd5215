#include "maps/Analyzed2DRes.h"

#include "common/ColorScale.h"
#include "common/Constants.h"

#include <QDebug>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

std::size_t pixelCount(const AnalyzeCond& ac)
{
    if (ac.width < 1 || ac.height < 1)
        return 0;
    return static_cast<std::size_t>(ac.width) * static_cast<std::size_t>(ac.height);
}

} // namespace

Analyzed2DRes::Analyzed2DRes(const QString& mapName, QObject* parent)
    : QObject(parent)
    , name(mapName)
    , fixedMin(runningMinStart)
    , fixedMax(runningMaxStart)
    , imgFormat(ColorScale::Grey)
{
    resetRanges();
}

Analyzed2DRes::~Analyzed2DRes() = default;

void Analyzed2DRes::resetRanges()
{
    procMin = 0.0;
    procMax = 1.0;
    min = runningMinStart;
    max = runningMaxStart;
}

void Analyzed2DRes::forgetProcessed()
{
    procData_ = LazyField();
    useProc_ = false;
}

void Analyzed2DRes::freeBuffers()
{
    dropPicture();
    forgetProcessed();
    data_ = LazyField();
    writtenFrom_ = writtenTo_ = 0;
    // Assigning an empty list would keep the memory.
    std::vector<uchar>().swap(marks_);
    withoutEdge_ = 0;
    faint_.reset();
}

void Analyzed2DRes::dropPicture()
{
    isStale_ = false;
    image_.reset();
    std::vector<uchar>().swap(imageBytes_);
}

void Analyzed2DRes::clear()
{
    stepper = AnalyzeCond();
    resetRanges();
    freeBuffers();
    automatic_.reset();
    imgValid = false;
    hasValues_ = false;
}

void Analyzed2DRes::setNo(int newNo)
{
    no = newNo;
}

void Analyzed2DRes::prepare(const AnalyzeCond& ac)
{
    stepper = ac;
    resetRanges();
    dropPicture();
    forgetProcessed();
    imgValid = false;
    hasValues_ = false;
    automatic_.reset();
    data_.reset(pixelCount(stepper), writtenFrom_, writtenTo_);
    writtenFrom_ = data_.size();
    writtenTo_ = 0;
    marks_.clear();
    withoutEdge_ = 0;
    faint_.reset();
}

void Analyzed2DRes::copySettings(const Analyzed2DRes& other)
{
    no = other.no;
    name = other.name;
    stepper = other.stepper;
    imgValid = other.imgValid;
    imgFormat = other.imgFormat;
    savedSamples = other.savedSamples;
    wrappedSamples = other.wrappedSamples;
    min = other.min;
    max = other.max;
    minX = other.minX;
    minY = other.minY;
    maxX = other.maxX;
    maxY = other.maxY;
    fixedMin = other.fixedMin;
    fixedMax = other.fixedMax;
    fixedScale = other.fixedScale;
    procMin = other.procMin;
    procMax = other.procMax;
    deglitchFactor = other.deglitchFactor;
    deglitchRange = other.deglitchRange;
    deglitch2Limit = other.deglitch2Limit;
    display_ = other.display_;
    automatic_.reset();
}

void Analyzed2DRes::copyFrom(const Analyzed2DRes* other)
{
    if (other == nullptr || other == this)
        return;
    copySettings(*other);
    freeBuffers();
    hasValues_ = false;
    if (!other->imgValid)
        return;
    data_ = other->data_;
    writtenFrom_ = other->writtenFrom_;
    writtenTo_ = other->writtenTo_;
    marks_ = other->marks_;
    withoutEdge_.reset();
    hasValues_ = other->hasValues_;
    procData_ = other->procData_;
    useProc_ = other->useProc_;
    if (other->isStale_)
        paint();
    else
        imageBytes_ = other->imageBytes_;
    // Only as many bytes as the pixels have: where rows are padded the last ones stay black until
    // the next genImg(), on purpose.
    const std::size_t copied =
        std::min(pixelCount(stepper) * std::size_t(bytesPerPixel(imgFormat)), imageBytes_.size());
    std::fill(imageBytes_.begin() + std::ptrdiff_t(copied), imageBytes_.end(), uchar(0));
    wrapImage();
}

bool Analyzed2DRes::contains(int x, int y) const
{
    return x >= 0 && y >= 0 && x < stepper.width && y < stepper.height;
}

double Analyzed2DRes::sample(const LazyField& field, int x, int y) const
{
    if (field.empty() || !contains(x, y))
        return 0.0;
    const auto row = static_cast<std::size_t>(y) * static_cast<std::size_t>(stepper.width);
    return field[row + static_cast<std::size_t>(x)];
}

double Analyzed2DRes::valueAt(int x, int y) const
{
    return sample(data_, x, y);
}

double Analyzed2DRes::shownValueAt(int x, int y) const
{
    return sample(shownField(), x, y);
}

Analyzed2DRes::Scale Analyzed2DRes::fieldScale() const
{
    return useProc_ ? Scale{procMin, procMax} : Scale{min, max};
}

Analyzed2DRes::Scale Analyzed2DRes::scale() const
{
    if (fixedScale)
        return {fixedMin, fixedMax};
    if (display_.range.given)
        return *display_.range.given;
    return display_.range.rule == RangeRule::Own ? fieldScale() : automaticScale();
}

void Analyzed2DRes::setData(int ix, int iy, int xw, int yw, double t)
{
    // One infinite value as an extreme would leave a single colour to all the others.
    const bool finite = std::isfinite(t);
    if (finite && t > max) {
        max = t;
        maxX = ix;
        maxY = iy;
    }
    if (finite && min > t) {
        min = t;
        minX = ix;
        minY = iy;
    }
    if (data_.empty())
        return;
    noteWritten(iy, yw);
    stepper.fillBlockAt(data_.data(), ix, iy, xw, yw, t);
    if (marks_.empty())
        return;
    withoutEdge_.reset();
    stepper.fillBlockAt(marks_.data(), ix, iy, xw, yw, uchar(0));
}

/// Only rows that were written need to be cleared for the next walk.
void Analyzed2DRes::noteWritten(int y, int halfRows)
{
    hasValues_ = true;
    const qint64 reach = std::abs(qint64(halfRows));
    const qint64 top = std::clamp<qint64>(y - reach, 0, stepper.height);
    const qint64 bottom = std::clamp<qint64>(y + reach + 1, 0, stepper.height);
    writtenFrom_ = std::min(writtenFrom_, static_cast<std::size_t>(top * stepper.width));
    writtenTo_ = std::max(writtenTo_, static_cast<std::size_t>(bottom * stepper.width));
}

void Analyzed2DRes::leaveOut(int ix, int iy, int xw, int yw)
{
    if (data_.empty())
        return;
    noteWritten(iy, yw);
    stepper.fillBlockAt(data_.data(), ix, iy, xw, yw, 0.0);
    mark(ix, iy, xw, yw, LeftOut | WithoutEdge);
}

void Analyzed2DRes::markWithoutEdge(int ix, int iy, int xw, int yw)
{
    if (!data_.empty())
        mark(ix, iy, xw, yw, WithoutEdge);
}

void Analyzed2DRes::mark(int ix, int iy, int xw, int yw, int marks)
{
    withoutEdge_.reset();
    marks_.resize(data_.size());
    stepper.fillBlockAt(marks_.data(), ix, iy, xw, yw, static_cast<uchar>(marks));
}

uchar Analyzed2DRes::marksAt(int x, int y) const
{
    if (marks_.empty() || !contains(x, y))
        return 0;
    return marks_[std::size_t(y) * std::size_t(stepper.width) + std::size_t(x)];
}

bool Analyzed2DRes::isLeftOut(int x, int y) const
{
    return (marksAt(x, y) & LeftOut) != 0;
}

bool Analyzed2DRes::isWithoutEdge(int x, int y) const
{
    return (marksAt(x, y) & WithoutEdge) != 0;
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
    const bool hasPixels = pixelCount(stepper) > 0;
    const bool marksNoEdge = display_.marksNoEdge && !marks_.empty();
    // A colour of its own needs pixels of three bytes, in the grey ramp too.
    imgFormat = marksNoEdge ? int(ColorScale::Rgb) : currentColorScale().imageFormat;
    const int stride = hasPixels ? displayStride(imgFormat, stepper.width) : 0;
    const int rows = hasPixels ? stepper.height : 0;
    imageBytes_.assign(static_cast<std::size_t>(stride) * static_cast<std::size_t>(rows), 0);
    if (!shownField().empty() && !imageBytes_.empty())
        paintField(shownField().data(), stride);
    if (marksNoEdge && !imageBytes_.empty())
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

QImage* Analyzed2DRes::img()
{
    if (isStale_)
        paint();
    return image_.get();
}

void Analyzed2DRes::selectProcImg(bool f)
{
    useProc_ = f && !procData_.empty();
    if (f && !useProc_)
        qDebug() << "No deglitched values to show in map" << name;
    genImg();
}

void Analyzed2DRes::copyProc2Data()
{
    if (procData_.empty())
        return;
    data_ = procData_;
    writtenFrom_ = 0;
    writtenTo_ = data_.size();
    min = procMin;
    max = procMax;
}

void Analyzed2DRes::setFixedScale(bool f)
{
    fixedScale = f;
    genImg();
    const Scale s = scale();
    Q_EMIT scaleChanged(s.min, s.max);
}

void Analyzed2DRes::setScale(double newMin, double newMax)
{
    fixedMin = newMin;
    fixedMax = newMax;
    genImg();
    const Scale s = scale();
    Q_EMIT scaleChanged(s.min, s.max);
}
