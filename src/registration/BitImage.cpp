#include "registration/BitImage.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int wordBits = 64;

/// Bits of the columns first .. end-1 that lie in word `word` of a row.
quint64 columnMask(qint64 first, qint64 end, int word)
{
    const qint64 start = qint64(word) * wordBits;
    const qint64 from = std::clamp<qint64>(first - start, 0, wordBits);
    const qint64 to = std::clamp<qint64>(end - start, from, wordBits);
    // A shift by the width of the word is none.
    const auto below = [](qint64 bits) {
        return bits == wordBits ? ~quint64(0) : (quint64(1) << bits) - 1;
    };
    return below(to) & ~below(from);
}

/// Bits that are set, by sums of ever wider fields: processors that count them by themselves are
/// not asked for.
quint64 countOf(quint64 word)
{
    word -= (word >> 1) & 0x5555555555555555ULL;
    word = (word & 0x3333333333333333ULL) + ((word >> 2) & 0x3333333333333333ULL);
    word = (word + (word >> 4)) & 0x0F0F0F0F0F0F0F0FULL;
    return (word * 0x0101010101010101ULL) >> 56;
}

} // namespace

double ProductSums::product() const
{
    const double squares = bb * rr;
    return squares > 0.0 ? br / std::sqrt(squares) : 0.0;
}

BitImage::BitImage(const ProcImage& image, double threshold)
    : width_(image.width)
    , height_(image.height)
    , wordsPerRow_((image.width + wordBits - 1) / wordBits)
    , words_(std::size_t(wordsPerRow_) * std::size_t(image.height), 0)
{
    const double* value = image.pixels.data();
    quint64* word = words_.data();
    for (int y = 0; y < height_; ++y, word += wordsPerRow_) {
        for (int k = 0; k < wordsPerRow_; ++k) {
            const int bits = std::min(wordBits, width_ - k * wordBits);
            quint64 filled = 0;
            for (int bit = 0; bit < bits; ++bit, ++value)
                filled |= quint64(threshold < *value) << bit;
            word[k] = filled;
        }
    }
}

/// The 64 pixels from a column on; 0 outside the row.
quint64 BitImage::bitsAt(const quint64* row, qint64 column) const
{
    const qint64 word = column >= 0 ? column / wordBits : -((-column + wordBits - 1) / wordBits);
    const int bit = int(column - word * wordBits);
    const auto at = [&](qint64 i) { return i >= 0 && i < wordsPerRow_ ? row[i] : quint64(0); };
    return bit == 0 ? at(word) : (at(word) >> bit) | (at(word + 1) << (wordBits - bit));
}

ProductSums BitImage::sumsWith(const BitImage& reference, const QPoint& shift) const
{
    const qint64 sx = shift.x();
    const qint64 sy = shift.y();
    const qint64 firstColumn = std::max<qint64>(0, sx);
    const qint64 endColumn = std::min<qint64>(width_, width_ + sx);
    const qint64 endRow = std::min<qint64>(height_, height_ + sy);
    std::vector<quint64> overlap;
    for (int k = 0; k < wordsPerRow_; ++k)
        overlap.push_back(columnMask(firstColumn, endColumn, k));
    quint64 bb = 0;
    quint64 rr = 0;
    quint64 br = 0;
    for (qint64 y = std::max<qint64>(0, sy); y < endRow; ++y) {
        const quint64* const there = reference.row(y);
        const quint64* const here = row(y - sy);
        for (int k = 0; k < wordsPerRow_; ++k) {
            const quint64 r = there[k] & overlap[std::size_t(k)];
            const quint64 b = bitsAt(here, qint64(k) * wordBits - sx) & overlap[std::size_t(k)];
            bb += countOf(b);
            rr += countOf(r);
            br += countOf(b & r);
        }
    }
    return {double(bb), double(rr), double(br)};
}
