// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/tree/lorixdiffresult.h>

namespace lorix {

/// An association found in a short time, and how far from the cheapest it may
/// be: that costs no more than `costs` and no less than `lowerBound`.
struct QuickMatch
{
    LorixDiffResult result;
    float costs = 0.0F;
    float lowerBound = 0.0F;

    /// Whether there is certainly no cheaper association.
    bool isBest() const { return costs <= lowerBound; }
};

} // namespace lorix
