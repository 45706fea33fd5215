#include "analysis/diagnostics/DarkCheck.h"

#include "image/PixelAccess.h"

#include <QThreadPool>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <type_traits>
#include <utility>

namespace {

constexpr int bandRows = 32;        ///< rows that a thread works on together
constexpr int mostBins = 1'000'000; ///< each thread counts on its own
constexpr int words = 1 << 16;      ///< values of a 16-bit pixel

/// Counts pixels by their value.
class Histogram
{
public:
    explicit Histogram(const DarkCheckSettings& settings)
        : max_(settings.histogramMax)
        , bins_(settings.bins)
        , counts_(std::size_t(settings.bins) + 1, 0)
        , byWord_(words, 0)
    {
    }

    void add(quint16 v) { ++byWord_[v]; }
    void add(double v) { add(v, 1); }
    void add(double v, quint64 pixels)
    {
        if (!std::isnan(v))
            counts_[binOf(v)] += pixels;
    }

    /// By bin; nothing may be added behind it.
    const std::vector<quint64>& counts()
    {
        for (int v = 0; v < words; ++v)
            add(double(v), std::exchange(byWord_[std::size_t(v)], 0));
        return counts_;
    }

private:
    std::size_t binOf(double v) const
    {
        const double at = v / max_ * bins_;
        return at > 0.0 ? std::size_t(std::min(at, double(bins_))) : 0;
    }

    const double max_;
    const int bins_;
    std::vector<quint64> counts_;
    std::vector<quint64> byWord_; ///< of 16-bit pixels, whose bins are found once a value
};

/// One thread's part of a check: band after band of rows, each through all images.
class BandCheck
{
public:
    BandCheck(const TiffStack& images, const DarkCheckSettings& settings)
        : images_(images)
        , threshold_(settings.threshold)
        , histogram_(settings)
        , lengths_(images.size(), 0)
    {
    }

    /// The pixels of rows first .. end-1 that stay dark, in image coordinates.
    QVector<QPoint> take(int first, int end, const std::atomic<bool>& stop)
    {
        QVector<QPoint> points;
        for (int i = 0; i < images_.size() && !stop; ++i) {
            const TiffData& image = *images_.at(i);
            const int last = std::min(end, image.height);
            if (i == 0)
                points = allPixels(image.width, first, last);
            const bool done = withPixelType(image, false, [&](auto* tag) {
                using T = std::remove_const_t<std::remove_pointer_t<decltype(tag)>>;
                for (int y = first; y < last; ++y)
                    countRow<T>(image, y);
                keepDark<T>(image, points);
                return true;
            });
            if (!done && last > first)
                histogram_.add(0.0, quint64(image.width) * quint64(last - first));
            lengths_[i] += points.size();
        }
        return points;
    }

    void addTo(DarkCheckResult& result)
    {
        const std::vector<quint64>& counts = histogram_.counts();
        std::transform(counts.begin(), counts.end(), result.counts.begin(), result.counts.begin(),
                       std::plus<>());
        std::transform(lengths_.begin(), lengths_.end(), result.lengths.begin(),
                       result.lengths.begin(), std::plus<>());
    }

private:
    static QVector<QPoint> allPixels(int width, int first, int end)
    {
        QVector<QPoint> points;
        points.reserve(width * std::max(end - first, 0));
        for (int y = first; y < end; ++y) {
            for (int x = 0; x < width; ++x)
                points.append(QPoint(x, y));
        }
        return points;
    }

    template<typename T>
    void countRow(const TiffData& image, int y)
    {
        const qint64 row = qint64(y) - image.shiftY;
        qint64 visible = 0;
        if (row >= 0 && row < image.height) {
            const qint64 begin = std::max<qint64>(0, -qint64(image.shiftX));
            const qint64 end = std::min<qint64>(image.width, image.width - qint64(image.shiftX));
            const T* const pixels = image.row<T>(int(row));
            for (qint64 c = begin; c < end; ++c) {
                if constexpr (std::is_same_v<T, quint16>)
                    histogram_.add(pixels[c]);
                else
                    histogram_.add(double(pixels[c]));
            }
            visible = std::max<qint64>(0, end - begin);
        }
        if (visible < image.width)
            histogram_.add(0.0, quint64(image.width - visible));
    }

    template<typename T>
    void keepDark(const TiffData& image, QVector<QPoint>& points) const
    {
        const auto isBright = [&](const QPoint& p) {
            const qint64 column = qint64(p.x()) - image.shiftX;
            const qint64 row = qint64(p.y()) - image.shiftY;
            const bool inside =
                column >= 0 && column < image.width && row >= 0 && row < image.height;
            return (inside ? double(image.row<T>(int(row))[column]) : 0.0) > threshold_;
        };
        points.erase(std::remove_if(points.begin(), points.end(), isBright), points.end());
    }

    const TiffStack& images_;
    const double threshold_;
    Histogram histogram_;
    QVector<qint64> lengths_;
};

int greatestHeight(const TiffStack& images)
{
    int height = 0;
    for (const SharedImage& image : images)
        height = std::max(height, image->height);
    return height;
}

/// The bands of a stack, shared out to threads.
class Bands
{
public:
    Bands(const TiffStack& images, const DarkCheckSettings& settings, const std::atomic<bool>& stop)
        : images_(images)
        , settings_(settings)
        , stop_(stop)
        , points_(std::size_t((greatestHeight(images) + bandRows - 1) / bandRows))
    {
        result_.counts.assign(std::size_t(settings.bins) + 1, 0);
        result_.lengths.fill(0, images.size());
        result_.size = {images.first()->width, images.first()->height};
    }

    int count() const { return int(points_.size()); }

    /// Takes bands until there are none left.
    void work(const std::function<void(double percent)>& done)
    {
        BandCheck check(images_, settings_);
        for (int band = next_++; band < count() && !stop_; band = next_++) {
            points_[std::size_t(band)] = check.take(band * bandRows, (band + 1) * bandRows, stop_);
            const std::lock_guard<std::mutex> lock(mutex_);
            done(100.0 * ++finished_ / count());
        }
        const std::lock_guard<std::mutex> lock(mutex_);
        check.addTo(result_);
    }

    /// Once all threads are through.
    DarkCheckResult result()
    {
        const QPoint origin(images_.first()->x0, images_.first()->y0);
        for (const QVector<QPoint>& band : points_) {
            for (const QPoint& point : band)
                result_.points.append(point + origin);
        }
        return std::move(result_);
    }

private:
    const TiffStack& images_;
    const DarkCheckSettings& settings_;
    const std::atomic<bool>& stop_;
    std::vector<QVector<QPoint>> points_; ///< by band
    std::atomic<int> next_ = 0;
    std::mutex mutex_; ///< over all below
    int finished_ = 0;
    DarkCheckResult result_;
};

} // namespace

QString DarkCheckSettings::fault() const
{
    if (std::isnan(threshold))
        return QStringLiteral("the dark threshold (DarkTh) is no number");
    if (!(histogramMax > 0.0) || std::isinf(histogramMax))
        return QStringLiteral("Histg. Max. (HistgMax) is not a number above 0");
    if (bins <= 0 || bins > mostBins)
        return QStringLiteral("Bins (HistgBins) is not a whole number from 1 to %1").arg(mostBins);
    return {};
}

std::optional<DarkCheckResult> checkDark(const TiffStack& images, const DarkCheckSettings& settings,
                                         int threads, const std::atomic<bool>& stop,
                                         const std::function<void(double percent)>& done)
{
    Bands bands(images, settings, stop);
    QThreadPool pool;
    pool.setMaxThreadCount(std::max(threads, 1));
    for (int i = 0; i < std::min(pool.maxThreadCount(), bands.count()); ++i)
        pool.start([&] { bands.work(done); });
    pool.waitForDone();
    if (stop)
        return std::nullopt;
    return bands.result();
}
