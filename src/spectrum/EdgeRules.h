#pragma once

/// Numbers of the rules of an edge, which the plain and the lane forms share.
namespace edgeRules {

/// Half width of the smoothing behind the search for the edge [points].
constexpr int smoothing = 2;

/// Share of their gap that each of two lines is moved by where they have passed each other at the
/// edge.
constexpr double apartShare = 0.55;

/// Shares of the edge step that the gap between two lines is set against. Below lowGap a curve is
/// continued, from the first gap below holdGap on.
///
/// Chosen on planted scans: a hold at 0.3 or 0.7 changes the noise of weights by 5 %, one at 0.1 by
/// 10 to 25 %, and a trigger of 0.2 also fires on straight lines.
constexpr double lowGap = 0.1;
constexpr double holdGap = 0.5;

} // namespace edgeRules
