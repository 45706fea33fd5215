#pragma once

/// Shares of the edge step that the gap between two lines is set against. Below `low` a curve is
/// continued, from the first gap below `hold` on.
///
/// Chosen on planted scans: a hold at 0.3 or 0.7 changes the noise of weights by 5 %, one at 0.1 by
/// 10 to 25 %, and a trigger of 0.2 also fires on straight lines.
namespace gapShares {
constexpr double low = 0.1;
constexpr double hold = 0.5;
} // namespace gapShares
