// SPDX-License-Identifier: BSD-3-Clause
#pragma once

namespace lorix {

/// Numbers that stand where a node id is expected without being one.
constexpr int NODE_ABOVE_ROOT = -1; ///< The virtual parent of a top node.
constexpr int INVALID_NODE = -2;    ///< No such node, or nothing recorded.
constexpr int NULL_NODE = -3;       ///< Partner of a node that has no partner.

/// Selects one of the two trees of a comparison: 1 or 2. A plain number, so
/// that every other value can be asked for and answered as well.
using TreeId = int;

} // namespace lorix
