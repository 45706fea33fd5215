#pragma once

// A lane form is a function whose source is compiled once for each instruction set (by
// morvenkite_lane_sources() of the build), each time in a namespace of its own. Its header declares
// all of them by DECLARE_LANE_FORM, and whoever calls one picks it by LANE_FORM of
// common/LaneForms.h. Such a source includes common/LaneVector.h and plain records alone, nothing
// of Qt or the standard library's templates: an inline function of theirs would be compiled for a
// set that the machine may not have, and the linker keeps only one copy.

#ifdef __x86_64__
#define DECLARE_LANE_FORM(name, ...)                                                               \
    namespace lanes {                                                                              \
    namespace sse2 {                                                                               \
    void name(__VA_ARGS__);                                                                        \
    }                                                                                              \
    namespace avx2 {                                                                               \
    void name(__VA_ARGS__);                                                                        \
    }                                                                                              \
    namespace avx512 {                                                                             \
    void name(__VA_ARGS__);                                                                        \
    }                                                                                              \
    }
#else
#define DECLARE_LANE_FORM(name, ...)                                                               \
    namespace lanes {                                                                              \
    namespace sse2 {                                                                               \
    void name(__VA_ARGS__);                                                                        \
    }                                                                                              \
    }
#endif

/// Lanes that are worked on together at most.
constexpr int mostLanes = 128;
/// Lanes of the widest set's vector.
constexpr int mostWidth = 8;
/// Distance of an energy's rows in arrays [energy][lane]. More than the most lanes, so that rows
/// don't fall on each other in the cache.
constexpr int laneStride = mostLanes + mostWidth;
