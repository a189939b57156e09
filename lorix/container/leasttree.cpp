// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/leasttree.h>

#include <algorithm>
#include <limits>

namespace lorix {

// The root stands at 1, the children of node i at 2i and 2i + 1, and the
// numbers in the second half, filled up to a power of two.

LeastTree makeLeastTree(const std::vector<qint64>& numbers)
{
    std::size_t leaves = 1;
    while (leaves < numbers.size())
        leaves *= 2;
    LeastTree tree(2 * leaves, std::numeric_limits<qint64>::max());
    std::copy(numbers.begin(), numbers.end(), tree.begin() + static_cast<std::ptrdiff_t>(leaves));
    for (std::size_t node = leaves - 1; node > 0; --node)
        tree[node] = std::min(tree[2 * node], tree[2 * node + 1]);
    return tree;
}

qsizetype nextAtMost(const LeastTree& tree, qsizetype from, qint64 limit)
{
    const std::size_t leaves = tree.size() / 2;
    if (static_cast<std::size_t>(from) >= leaves)
        return -1;
    std::size_t node = leaves + static_cast<std::size_t>(from);
    while (tree[node] > limit) {
        while (node % 2 == 1 && node > 1)
            node /= 2;
        if (node == 1)
            return -1;
        ++node;
    }
    while (node < leaves) {
        node *= 2;
        if (tree[node] > limit)
            ++node;
    }
    return static_cast<qsizetype>(node - leaves);
}

} // namespace lorix
