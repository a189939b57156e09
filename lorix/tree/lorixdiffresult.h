// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/tree/treeids.h>

#include <QHash>

namespace lorix {

/// One complete association of the nodes of two trees. A plain value.
struct LORIX_EXPORT LorixDiffResult
{
    QHash<int, int> assoc1to2;       ///< Partner by node of tree 1, or NULL_NODE.
    QHash<int, int> assoc2to1;       ///< Partner by node of tree 2, or NULL_NODE.
    QHash<int, bool> parentChanged1; ///< By node of tree 1: hangs below another parent.
    QHash<int, bool> parentChanged2; ///< By node of tree 2: likewise.

    /// The node's partner in the other tree; INVALID_NODE when nothing is
    /// recorded and when `tree` is neither 1 nor 2.
    int association(int node, TreeId tree) const;

    /// True when the node's partner is NULL_NODE, and when nothing is recorded;
    /// false when `tree` is neither 1 nor 2. The name reads the other way round,
    /// and callers rely on it.
    bool associated(int node, TreeId tree) const;

    /// Whether the node hangs below another parent than its partner; false when
    /// nothing is recorded and when `tree` is neither 1 nor 2. A node of tree 1
    /// without partner mostly counts as changed, one of tree 2 does not: ask
    /// associated() first.
    bool parentChanged(int node, TreeId tree) const;
};

} // namespace lorix
