#include "maps/Analyzed2DRes.h"

#include "common/ColorScale.h"
#include "common/Constants.h"

#include <QDebug>

#include <algorithm>
#include <cmath>
#include <cstdlib>

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
    data_.reset(stepper.pixels(), writtenFrom_, writtenTo_);
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
    classColours_ = other.classColours_;
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
        std::min(stepper.pixels() * std::size_t(bytesPerPixel(imgFormat)), imageBytes_.size());
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
