// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

#include <vector>

namespace lorix {

/// A list of numbers as a tree in which every node holds the least number below
/// it, so that looking for small ones skips the others.
using LeastTree = std::vector<qint64>;

/// The tree of `numbers`, which are below the largest of their type.
LeastTree makeLeastTree(const std::vector<qint64>& numbers);

/// The index of the first number at or behind index `from` that is not above
/// `limit`; -1 when there is none. Takes time logarithmic in the count.
qsizetype nextAtMost(const LeastTree& tree, qsizetype from, qint64 limit);

} // namespace lorix
