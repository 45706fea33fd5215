#pragma once

// What sources of lane forms are written with. LANE_WIDTH is the number of lanes of a vector,
// LANE_SET the namespace of the instruction set; the build gives both. All names have internal
// linkage: each set has its own.

#include <cstdint>

namespace {

/// Doubles, masks (all bits 1 or 0) and words of neighbouring lanes. Loaded from and stored to any
/// place in an array.
typedef double V __attribute__((vector_size(8 * LANE_WIDTH), aligned(8), may_alias));
typedef std::int64_t M __attribute__((vector_size(8 * LANE_WIDTH), aligned(8), may_alias));
typedef std::uint64_t U __attribute__((vector_size(8 * LANE_WIDTH), aligned(8), may_alias));

constexpr int width = LANE_WIDTH;

inline V load(const double* from)
{
    return *reinterpret_cast<const V*>(from);
}

inline void store(double* to, V v)
{
    *reinterpret_cast<V*>(to) = v;
}

inline V all(double d)
{
    return V{} + d;
}

/// table[index] of each lane; indices are whole numbers.
inline V gathered(const double* table, V index)
{
    V v{};
    for (int c = 0; c < width; ++c)
        v[c] = table[int(index[c])];
    return v;
}

/// v where the mask is, else +0.0: adding that changes no sum that began with +0.0.
inline V only(M mask, V v)
{
    return (V)((M)v & mask);
}

/// Marks of lanes in memory: not 0 where the mask is.
inline void storeMarks(M mask, unsigned char* marks)
{
    for (int c = 0; c < width; ++c)
        marks[c] = static_cast<unsigned char>(mask[c] != 0);
}

inline M maskOf(const unsigned char* marks)
{
    M mask{};
    for (int c = 0; c < width; ++c)
        mask[c] = marks[c] != 0 ? -1 : 0;
    return mask;
}

inline V absolute(V v)
{
    return (V)((U)v & 0x7fffffffffffffffU);
}

inline bool any(M mask)
{
    std::int64_t bits = 0;
    for (int c = 0; c < width; ++c)
        bits |= mask[c];
    return bits != 0;
}

inline double greatestOf(V v)
{
    double greatest = v[0];
    for (int c = 1; c < width; ++c)
        greatest = v[c] > greatest ? v[c] : greatest;
    return greatest;
}

inline double leastOf(V v)
{
    double least = v[0];
    for (int c = 1; c < width; ++c)
        least = v[c] < least ? v[c] : least;
    return least;
}

} // namespace
