// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/lorixdiffresult.h>

namespace lorix {

int LorixDiffResult::association(int node, TreeId tree) const
{
    switch (tree) {
    case 1:
        return assoc1to2.value(node, INVALID_NODE);
    case 2:
        return assoc2to1.value(node, INVALID_NODE);
    default:
        return INVALID_NODE;
    }
}

bool LorixDiffResult::associated(int node, TreeId tree) const
{
    switch (tree) {
    case 1:
        return assoc1to2.value(node, NULL_NODE) == NULL_NODE;
    case 2:
        return assoc2to1.value(node, NULL_NODE) == NULL_NODE;
    default:
        return false;
    }
}

bool LorixDiffResult::parentChanged(int node, TreeId tree) const
{
    switch (tree) {
    case 1:
        return parentChanged1.value(node, false);
    case 2:
        return parentChanged2.value(node, false);
    default:
        return false;
    }
}

} // namespace lorix
