#pragma once

/// What became of a position: fitted, or why not. Of several reasons the first in this order
/// counts. The numbers stand in saved outcome maps and never change.
enum class Outcome : unsigned char
{
    NotWalked,
    Fitted,
    NoPoints,      ///< outside the image
    NoPreEdge,     ///< the pre-edge line took no point or could not be solved
    NoPostEdge,    ///< the same of the post-edge line
    NoStep,        ///< the edge step is not above 0, or not finite
    OutsideWindow, ///< the mid point left the window of the suggested edge
    OutsideScan,   ///< the mid point left the energies of the scan
    TooNoisy,      ///< the step drowns in the noise of both lines
    GapUnsound,    ///< the lines come too close between their own ranges, at the edge
    Undefined,     ///< shares of which there is no sum
    OffImage       ///< fitted or not: the block reaches out of an image that was moved
};

constexpr int outcomeKinds = int(Outcome::OffImage) + 1;
