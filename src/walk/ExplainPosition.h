#pragma once

#include "walk/WalkKernel.h"

#include <utility>

/// A kernel by the name of its analysis.
using NamedKernel = std::pair<QString, std::shared_ptr<WalkKernel>>;

/// All that a position's results come from, stage by stage, so that they can be checked by hand:
/// block, dark and I0, energy offset, both lines, edge, what each kernel makes of it, and a table
/// with a row for each I1 image: counts and the dark taken off them, absorption, lines and
/// normalised curve. All numbers are those of the plain forms, with the digits that read back the
/// same number. Lines but those of the table begin with '#'; the text is English.
///
/// The text of a position without images or outside them says so and ends there.
QString explainPosition(const WalkSource& source, int x, int y,
                        const std::vector<NamedKernel>& kernels);
