#include "image/TiffData.h"

#include "common/Fault.h"
#include "common/LaneForms.h"
#include "common/SafeInt.h"
#include "common/TextItems.h"
#include "image/BlockLanes.h"
#include "image/ImageReaders.h"
#include "image/PixelAccess.h"
#include "image/PixelMemory.h"

#include <QFile>
#include <QFileInfo>
#include <QVarLengthArray>

#include <algorithm>
#include <limits>
#include <new>
#include <type_traits>

namespace {

constexpr int magicBytes = 15;

size_t pixelSize(int type)
{
    return type == TiffData::ImgLongs || type == TiffData::Floats ? 4 : 2;
}

/// Sums of integer pixels run in integers: they are exact, and so the same in any order.
template<typename T>
using SumOf = std::conditional_t<std::is_floating_point_v<T>, double, quint64>;

template<typename T>
SumOf<T> addColumns(SumOf<T> sum, const T* row, PixelRange columns)
{
    for (int c = columns.first; c <= columns.last; ++c)
        sum += row[c];
    return sum;
}

template<typename T>
double sumOver(const TiffData& image, PixelRange columns, PixelRange rows)
{
    SumOf<T> sum = 0;
    for (int y = rows.first; y <= rows.last; ++y)
        sum = addColumns(sum, image.row<T>(y), columns);
    return static_cast<double>(sum);
}

/// Sums the columns over the rows first, with several columns at a time, and then the columns of
/// each block. For integer pixels, whose sums are exact in any order.
template<typename T>
void sumBlocksByColumns(const TiffData& image, int x, int step, int count, PixelRange rows, int hw,
                        double* sums)
{
    using ColumnSum = std::conditional_t<sizeof(T) == 2, quint32, quint64>;
    const int first = pixelRange(x, hw, image.shiftX, image.width).first;
    const int last = pixelRange(x + (count - 1) * step, hw, image.shiftX, image.width).last;
    // A local count, so that the compiler sees that adding does not change it.
    const int n = std::max(0, last - first + 1);
    QVarLengthArray<ColumnSum, 1024> columns(n);
    ColumnSum* const column = columns.data();
    std::fill(column, column + n, ColumnSum(0));
    for (int y = rows.first; y <= rows.last; ++y) {
        const T* const row = image.row<T>(y) + first;
        if constexpr (std::is_same_v<T, quint16>) {
            LANE_FORM(addWords)(row, n, column);
        } else {
            for (int c = 0; c < n; ++c)
                column[c] += row[c];
        }
    }
    for (int k = 0; k < count; ++k) {
        const PixelRange block = pixelRange(x + k * step, hw, image.shiftX, image.width);
        quint64 sum = 0;
        for (int c = block.first; c <= block.last; ++c)
            sum += column[c - first];
        sums[k] = static_cast<double>(sum);
    }
}

/// Rows whose 16-bit pixels can be summed in 32 bits.
constexpr int mostSummedRows = 1 << 16;

/// Block sums along one row of positions; columns of blocks that hang over the edge are cut.
template<typename T>
void sumBlocks(const TiffData& image, int x, int step, int count, PixelRange rows, int hw,
               double* sums)
{
    if (hw == 0 && rows.first == rows.last) {
        const T* row = image.row<T>(rows.first);
        const qint64 first = qint64(x) - image.shiftX;
        if (step == 1 && first >= 0 && first + count <= image.width) {
            const T* const pixels = row + first;
            if constexpr (std::is_same_v<T, quint16>) {
                LANE_FORM(countsOfWords)(pixels, count, sums);
            } else {
                for (int k = 0; k < count; ++k)
                    sums[k] = static_cast<double>(pixels[k]);
            }
            return;
        }
        for (int k = 0; k < count; ++k) {
            const int column = x + k * step - image.shiftX;
            sums[k] = column >= 0 && column < image.width ? static_cast<double>(row[column]) : 0.0;
        }
        return;
    }
    if constexpr (std::is_integral_v<T>) {
        const bool closeTogether = qint64(step) <= 2 * (2 * qAbs(qint64(hw)) + 1);
        if (closeTogether && rows.last - rows.first < mostSummedRows) {
            sumBlocksByColumns<T>(image, x, step, count, rows, hw, sums);
            return;
        }
    }
    for (int k = 0; k < count; ++k)
        sums[k] = sumOver<T>(image, pixelRange(x + k * step, hw, image.shiftX, image.width), rows);
}

} // namespace

TiffData::TiffData()
{
    forgetExtremes();
}

bool TiffData::readFile(const QString& name, const ErrPoints& list, const std::atomic<bool>* stop)
{
    errPs = list;
    QFile file(name);
    // Opening a pipe may never return, and the loader could not be stopped.
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly)) {
        fault(QStringLiteral("Can not open (1) ") + quoted(name));
        return false;
    }
    const QByteArray magic = file.read(magicBytes);
    file.close();
    if (magic.size() < magicBytes) {
        fault(QStringLiteral("Error on reading file (1) ") + quoted(name));
        return false;
    }
    fileName = name;
    if (magic.startsWith("II") || magic.startsWith("MM"))
        return readTiff(*this, name, stop) && (correctErrPoints(), true);
    if (magic.startsWith("IM"))
        return readImg(*this, name, stop) && (correctErrPoints(), true);
    // Bad pixels of these images are left as they are, on purpose.
    if (magic.startsWith("#BRNX-CTImg"))
        return readBrnx(*this, name, stop);
    fault(QStringLiteral("Not an image file ") + quoted(name));
    return false;
}

bool TiffData::allocate(int w, int h, PixelType type)
{
    clearRows();
    if (w < 1 || h < 1 || w > maxImageSide || h > maxImageSide)
        return false;
    const size_t bytes = size_t(w) * size_t(h) * pixelSize(type);
    pixels_ = takePixelMemory(bytes);
    if (!pixels_)
        return false;
    width = w;
    height = h;
    pixelType = type;
    forgetExtremes();
    return true;
}

void TiffData::clearRows()
{
    pixels_.reset();
    pixelType = NoPixels;
}

void TiffData::forgetExtremes()
{
    minVal = std::numeric_limits<double>::max();
    maxVal = std::numeric_limits<double>::min();
}

/// By the columns begin .. end-1 of the row.
void TiffData::noteExtremes(int y, int begin, int end)
{
    withPixelType(*this, 0, [&](auto* tag) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(tag)>>;
        using Limits = std::numeric_limits<T>;
        const T* values = row<T>(y);
        // Starts from no pixel: a nan would win every comparison that it does not take part in.
        T low = Limits::has_infinity ? Limits::infinity() : Limits::max();
        T high = Limits::has_infinity ? -Limits::infinity() : Limits::lowest();
        for (int x = begin; x < end; ++x) {
            low = values[x] < low ? values[x] : low;
            high = values[x] > high ? values[x] : high;
        }
        if (double(low) < minVal)
            minVal = double(low);
        if (double(high) > maxVal)
            maxVal = double(high);
        return 0;
    });
}

/// Takes the extremes anew, from all pixels but these, which lie in the image.
void TiffData::noteExtremesWithout(QVector<QPoint> pixels)
{
    std::sort(pixels.begin(), pixels.end(), [](const QPoint& a, const QPoint& b) {
        return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x();
    });
    forgetExtremes();
    auto left = pixels.cbegin();
    for (int y = 0; y < height; ++y) {
        int begin = 0;
        for (; left != pixels.cend() && left->y() == y; ++left) {
            noteExtremes(y, begin, left->x());
            begin = left->x() + 1;
        }
        noteExtremes(y, begin, width);
    }
}

double TiffData::pixel(int x, int y) const
{
    return blockSum(x, y, 0, 0);
}

double TiffData::blockSum(int x, int y, int hw, int vw) const
{
    return withPixelType(*this, 0.0, [&](auto* tag) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(tag)>>;
        return sumOver<T>(*this, pixelRange(x, hw, shiftX, width),
                          pixelRange(y, vw, shiftY, height));
    });
}

void TiffData::blockSums(int x, int step, int count, int y, int hw, int vw, double* sums) const
{
    const PixelRange rows = pixelRange(y, vw, shiftY, height);
    const bool done = withPixelType(*this, false, [&](auto* tag) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(tag)>>;
        sumBlocks<T>(*this, x, step, count, rows, hw, sums);
        return true;
    });
    if (!done)
        std::fill(sums, sums + count, 0.0);
}

void TiffData::prefetchBlocks(int x, int step, int count, int y, int hw, int vw) const
{
    constexpr size_t cacheLine = 64;
    const size_t size = pixelSize(pixelType);
    const PixelRange rows = pixelRange(y, vw, shiftY, height);
    const int first = pixelRange(x, hw, shiftX, width).first;
    const int last = pixelRange(x + (count - 1) * step, hw, shiftX, width).last;
    if (!pixels_ || last < first)
        return;
    for (int r = rows.first; r <= rows.last; ++r) {
        const uchar* const row = pixels_.get() + size_t(r) * size_t(width) * size;
        const uchar* const end = row + (size_t(last) + 1) * size;
        for (const uchar* p = row + size_t(first) * size; p < end; p += cacheLine)
            __builtin_prefetch(p);
        __builtin_prefetch(end - 1);
    }
}

double TiffData::areaMean(const QRectF& rect) const
{
    const int w = truncatedInt(rect.width());
    const int h = truncatedInt(rect.height());
    if (w < 0 || h < 0)
        return 0.0;
    const auto range = [](int start, int length, int shift, int size) {
        const qint64 first = qint64(start) - shift;
        return PixelRange{int(qBound<qint64>(0, first, size)),
                          int(qBound<qint64>(-1, first + length, size - 1))};
    };
    const PixelRange columns = range(truncatedInt(rect.x()), w, shiftX, width);
    const PixelRange rows = range(truncatedInt(rect.y()), h, shiftY, height);
    const double sum = withPixelType(*this, 0.0, [&](auto* tag) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(tag)>>;
        return sumOver<T>(*this, columns, rows);
    });
    return sum / ((double(w) + 1.0) * (double(h) + 1.0));
}

double TiffData::neighbourMean(int x, int y) const
{
    double sum = 0.0;
    int count = 0;
    for (int dx = -1; dx <= 1; ++dx) {
        for (int dy = -1; dy <= 1; ++dy) {
            const int column = x + dx - shiftX;
            const int rowNo = y + dy - shiftY;
            const bool inside = column >= 0 && column < width && rowNo >= 0 && rowNo < height;
            if ((dx == 0 && dy == 0) || !inside)
                continue;
            if (errPs.active && errPs.contains(x + dx + x0, y + dy + y0))
                continue;
            sum += pixel(x + dx, y + dy);
            ++count;
        }
    }
    return count > 0 ? sum / count : 0.0;
}

void TiffData::correctErrPoints()
{
    if (!errPs.active)
        return;
    QVector<QPoint> corrected;
    for (const QPoint& point : errPs.points()) {
        const qint64 x = qint64(point.x()) - x0;
        const qint64 y = qint64(point.y()) - y0;
        const qint64 column = x - shiftX;
        const qint64 rowNo = y - shiftY;
        if (column < 0 || column >= width || rowNo < 0 || rowNo >= height)
            continue;
        // A mean of pixels lies in the range of their type, so the cast is defined.
        const double mean = neighbourMean(int(x), int(y));
        withPixelType(*this, 0, [&](auto* tag) {
            using T = std::remove_const_t<std::remove_pointer_t<decltype(tag)>>;
            row<T>(int(rowNo))[column] = static_cast<T>(mean);
            return 0;
        });
        corrected.append(QPoint(int(column), int(rowNo)));
    }
    if (!corrected.isEmpty())
        noteExtremesWithout(corrected);
}

std::shared_ptr<TiffData> TiffData::withEnergy(double eV) const
{
    std::shared_ptr<TiffData> other(new TiffData(*this));
    other->energy = eV;
    return other;
}

std::shared_ptr<TiffData> TiffData::withShift(const QPoint& shift) const
{
    std::shared_ptr<TiffData> other(new TiffData(*this));
    other->shiftX = shift.x();
    other->shiftY = shift.y();
    return other;
}
