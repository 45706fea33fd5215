#include "maps/Analyzed2DRes.h"

#include "common/ColorScale.h"
#include "common/Constants.h"
#include "common/SaveFile.h"

#include <QDebug>
#include <QLocale>
#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace {

std::size_t pixelCount(const AnalyzeCond& ac)
{
    if (ac.width < 1 || ac.height < 1)
        return 0;
    return static_cast<std::size_t>(ac.width) * static_cast<std::size_t>(ac.height);
}

/// The low 16 bits of the value cut to an integer; values out of the scale wrap on purpose.
quint16 wrappedTo16(double v)
{
    constexpr double int64End = 9223372036854775808.0;
    if (std::fabs(v) < int64End)
        return static_cast<quint16>(static_cast<qint64>(v));
    if (!std::isfinite(v))
        return 0;
    return static_cast<quint16>(static_cast<qint64>(std::fmod(v, 65536.0)));
}

double clampedTo(const Analyzed2DRes::Scale& s, double v)
{
    if (v < s.min)
        return s.min;
    if (v > s.max)
        return s.max;
    return v;
}

quint16 scaledTo16(double v, const Analyzed2DRes::Scale& s)
{
    return wrappedTo16((v - s.min) / (s.max - s.min) * 65535.0);
}

QString shortest(double v)
{
    return QString::number(v, 'g', QLocale::FloatingPointShortest);
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

/// The memory stays for the next filter run.
void Analyzed2DRes::forgetProcessed()
{
    procData_.clear();
    useProc_ = false;
}

void Analyzed2DRes::freeBuffers()
{
    dropPicture();
    forgetProcessed();
    // Assigning an empty list would keep the memory.
    std::vector<double>().swap(data_);
    std::vector<uchar>().swap(leftOut_);
    std::vector<double>().swap(procData_);
}

void Analyzed2DRes::dropPicture()
{
    image_.reset();
    std::vector<uchar>().swap(imageBytes_);
}

void Analyzed2DRes::clear()
{
    stepper = AnalyzeCond();
    resetRanges();
    freeBuffers();
    imgValid = false;
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
    // A second walk over the same images finds its memory here.
    data_.assign(pixelCount(stepper), 0.0);
    leftOut_.clear();
}

void Analyzed2DRes::copySettings(const Analyzed2DRes& other)
{
    no = other.no;
    name = other.name;
    stepper = other.stepper;
    imgValid = other.imgValid;
    imgFormat = other.imgFormat;
    savedSamples = other.savedSamples;
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
}

void Analyzed2DRes::copyFrom(const Analyzed2DRes* other)
{
    if (other == nullptr || other == this)
        return;
    copySettings(*other);
    freeBuffers();
    if (!other->imgValid)
        return;
    data_ = other->data_;
    leftOut_ = other->leftOut_;
    procData_ = other->procData_;
    useProc_ = other->useProc_;
    // Only as many bytes as the map has pixels: where rows are padded the last ones stay black
    // until the next genImg(), on purpose.
    imageBytes_.assign(other->imageBytes_.size(), 0);
    const std::size_t copied = std::min(pixelCount(stepper), imageBytes_.size());
    std::copy_n(other->imageBytes_.begin(), copied, imageBytes_.begin());
    wrapImage();
}

bool Analyzed2DRes::contains(int x, int y) const
{
    return x >= 0 && y >= 0 && x < stepper.width && y < stepper.height;
}

double Analyzed2DRes::sample(const std::vector<double>& field, int x, int y) const
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
    return fixedScale ? Scale{fixedMin, fixedMax} : fieldScale();
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
    if (!data_.empty())
        stepper.fillBlockAt(data_.data(), ix, iy, xw, yw, t);
    if (!leftOut_.empty())
        stepper.fillBlockAt(leftOut_.data(), ix, iy, xw, yw, uchar(0));
}

void Analyzed2DRes::leaveOut(int ix, int iy, int xw, int yw)
{
    if (data_.empty())
        return;
    leftOut_.resize(data_.size());
    stepper.fillBlockAt(data_.data(), ix, iy, xw, yw, 0.0);
    stepper.fillBlockAt(leftOut_.data(), ix, iy, xw, yw, uchar(1));
}

bool Analyzed2DRes::isLeftOut(int x, int y) const
{
    if (leftOut_.empty() || !contains(x, y))
        return false;
    return leftOut_[std::size_t(y) * std::size_t(stepper.width) + std::size_t(x)] != 0;
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
    image_.reset();
    const bool hasPixels = pixelCount(stepper) > 0;
    const int stride = hasPixels ? displayStride(imgFormat, stepper.width) : 0;
    const int rows = hasPixels ? stepper.height : 0;
    imageBytes_.assign(static_cast<std::size_t>(stride) * static_cast<std::size_t>(rows), 0);
    if (!shownField().empty() && !imageBytes_.empty())
        paintField(shownField().data(), stride);
    wrapImage();
    imgValid = true;
}

void Analyzed2DRes::paintField(const double* v, int stride)
{
    const Scale s = scale();
    const double span = s.max - s.min;
    // The map's own format decides the pixel's size, so that no row can outgrow the buffer.
    ColorScale colours = currentColorScale();
    colours.imageFormat = imgFormat;
    uchar* line = imageBytes_.data();
    for (int y = 0; y < stepper.height; ++y, line += stride) {
        uchar* out = line;
        for (const double* const end = v + stepper.width; v != end; ++v)
            out = colours.mapValue((*v - s.min) / span, out);
    }
}

QImage* Analyzed2DRes::img() const
{
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

quint16* Analyzed2DRes::tiffDataForSave(bool fixedScaleGiven, double scaleMin, double scaleMax,
                                        bool asAnalyzed)
{
    const std::vector<double>& field = shownField();
    const qint64 positions = qint64(stepper.columns()) * stepper.rows();
    if (field.empty())
        return nullptr;
    if (asAnalyzed && positions > maxPositions) {
        qDebug() << "Too many positions to save in map" << name;
        return nullptr;
    }
    const Scale s = fixedScaleGiven ? Scale{scaleMin, scaleMax} : fieldScale();
    if (asAnalyzed)
        return positionsTo16(field, s, static_cast<std::size_t>(positions));
    auto* const out = new quint16[field.size()];
    std::transform(field.begin(), field.end(), out, [&s](double v) { return scaledTo16(v, s); });
    savedSamples = static_cast<int>(field.size());
    return out;
}

quint16* Analyzed2DRes::positionsTo16(const std::vector<double>& field, const Scale& s,
                                      std::size_t positions)
{
    // An area that reaches past the image can hold more positions than the image has pixels.
    auto* const out = new quint16[std::max(field.size(), positions)];
    AnalyzeCond walk = stepper;
    walk.start();
    int count = 0;
    do {
        const double v = sample(field, walk.cx, walk.cy);
        out[count++] = std::isfinite(v) ? scaledTo16(clampedTo(s, v), s) : quint16(0);
    } while (walk.next());
    savedSamples = count;
    return out;
}

bool Analyzed2DRes::saveAsText(const QFileInfo& fi, bool /*asAnalyzed*/, bool useComma,
                               bool asXYZ) const
{
    QSaveFile file(fi.filePath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        qDebug() << "Can't open" << fi.filePath();
        return false;
    }
    if (qint64(stepper.columns()) * stepper.rows() > maxPositions) {
        qDebug() << "Too many positions to save in map" << name;
        return false;
    }
    QTextStream out(&file);
    const QChar separator = QLatin1Char(useComma ? ',' : ' ');
    if (asXYZ)
        writePoints(out, separator);
    else
        writeRows(out, separator);
    out.flush();
    if (out.status() == QTextStream::Ok && commitWritten(file))
        return true;
    qDebug() << "Can't write" << fi.filePath();
    return false;
}

void Analyzed2DRes::writePoints(QTextStream& out, QChar separator) const
{
    AnalyzeCond walk = stepper;
    walk.start();
    do {
        out << walk.cx << separator << walk.cy << separator << shortest(valueAt(walk.cx, walk.cy))
            << '\n';
    } while (walk.next());
}

void Analyzed2DRes::writeRows(QTextStream& out, QChar separator) const
{
    AnalyzeCond walk = stepper;
    walk.start();
    do {
        // Each row opens with its line end, the first one too, so the file begins with an empty
        // line. Deliberate.
        out << (walk.newLine ? QLatin1Char('\n') : separator)
            << shortest(valueAt(walk.cx, walk.cy));
    } while (walk.next());
    out << '\n';
}
