#include "image/PixelMemory.h"

#include <mutex>
#include <new>

#include <sys/mman.h>

namespace {

constexpr size_t largePage = size_t(2) << 20;
/// Only the large pages that images reach into are taken, so what stays free at its end costs
/// little against the rest.
constexpr size_t chunkBytes = size_t(64) << 20;
/// Smaller images come from the heap: one alone would take a large page.
constexpr size_t fewestBytes = size_t(64) << 10;
/// Larger ones have a chunk each, exactly as long as they are.
constexpr size_t mostSharedBytes = chunkBytes / 8;
/// Images begin where a line of the processor's cache does.
constexpr size_t alignment = 64;
/// What is left out between images. Walks read the same place of many images one after the other;
/// were images as long as a power of two side by side, these would share a few sets of the cache.
constexpr size_t gapBytes = 9 * alignment;

size_t roundedUp(size_t bytes, size_t step)
{
    return (bytes + step - 1) / step * step;
}

/// Addresses from the system, of which a part that begins with a large page is used.
struct Range
{
    void* start = nullptr; ///< null for none
    size_t reserved = 0;
    uchar* bytes = nullptr;
};

Range newRange(size_t size)
{
    const size_t reserved = size + largePage;
    void* const start =
        mmap(nullptr, reserved, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (start == MAP_FAILED)
        return {};
    const auto address = reinterpret_cast<quintptr>(start);
    const Range range{start, reserved,
                      static_cast<uchar*>(start) + (roundedUp(address, largePage) - address)};
    // A wish: where it is refused, the pages are small.
    madvise(range.bytes, size, MADV_HUGEPAGE);
    return range;
}

/// Ranges of chunkBytes that are free, for the next stack: clearing a page costs as much as a
/// quarter of the reading. As many bytes at the most as the C library keeps.
class FreeRanges
{
public:
    Range take()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return kept_ > 0 ? ranges_[--kept_] : Range();
    }
    /// False when there are enough.
    bool keep(const Range& range)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (kept_ == most)
            return false;
        ranges_[kept_++] = range;
        return true;
    }

private:
    static constexpr int most = 4;
    std::mutex mutex_;
    Range ranges_[most];
    int kept_ = 0;
};

/// Never destroyed: images of static objects end after all others.
FreeRanges& freeRanges()
{
    static FreeRanges& ranges = *new FreeRanges;
    return ranges;
}

/// A range, and how much of it is given away.
class Chunk
{
public:
    /// Gives nothing when there was no memory.
    explicit Chunk(size_t size)
        : size_(roundedUp(size, alignment))
        , range_(size_ == chunkBytes ? freeRanges().take() : Range())
    {
        if (!range_.start)
            range_ = newRange(size_);
    }
    ~Chunk()
    {
        if (range_.start && !(size_ == chunkBytes && freeRanges().keep(range_)))
            munmap(range_.start, range_.reserved);
    }
    Q_DISABLE_COPY(Chunk)

    /// Null when the rest is too short.
    uchar* take(size_t count)
    {
        if (!range_.start || count > size_ - used_)
            return nullptr;
        uchar* const taken = range_.bytes + used_;
        used_ += qMin(roundedUp(count, alignment) + gapBytes, size_ - used_);
        return taken;
    }

private:
    size_t size_;
    size_t used_ = 0;
    Range range_;
};

/// The bytes keep their chunk.
std::shared_ptr<uchar[]> takeFrom(const std::shared_ptr<Chunk>& chunk, size_t bytes)
{
    uchar* const taken = chunk ? chunk->take(bytes) : nullptr;
    return taken ? std::shared_ptr<uchar[]>(chunk, taken) : nullptr;
}

} // namespace

std::shared_ptr<uchar[]> takePixelMemory(size_t bytes)
{
    if (bytes < fewestBytes)
        return std::shared_ptr<uchar[]>(new (std::nothrow) uchar[bytes]);
    if (bytes > mostSharedBytes)
        return takeFrom(std::make_shared<Chunk>(bytes), bytes);
    // Weak: images alone keep a chunk. Each thread fills its own, so there is no lock.
    thread_local std::weak_ptr<Chunk> filling;
    if (auto memory = takeFrom(filling.lock(), bytes))
        return memory;
    const auto fresh = std::make_shared<Chunk>(chunkBytes);
    filling = fresh;
    return takeFrom(fresh, bytes);
}
