// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/tree/path.h>

#include <optional>
#include <utility>
#include <vector>

namespace lorix {

/// Two trees, their matrix and a start path as plain arrays, for the searches.
///
/// Nodes are numbered by their place in nodeIds(); a parent's number is less
/// than its children's. Not part of the library's interface.
struct DenseTrees
{
    // In place of a node's number:
    static constexpr int root = -1;    ///< NODE_ABOVE_ROOT
    static constexpr int absent = -2;  ///< INVALID_NODE, or nothing recorded
    static constexpr int none = -3;    ///< NULL_NODE
    static constexpr int outside = -4; ///< A parent that is no node of the tree

    std::vector<int> ids1;
    std::vector<int> ids2;
    std::vector<int> parents1;
    std::vector<int> parents2;
    std::vector<float> costs; ///< Row by row: ids1.size() rows of ids2.size().
    float unmatched = 0.0F;
    float wrongParent = 0.0F;

    // The start path.
    std::vector<int> open1;        ///< In the order in which they get associated.
    std::vector<int> open2;        ///< In list order.
    std::vector<int> partners1;    ///< By node of tree 1: partner, `none` or `absent`.
    std::vector<int> partners2;    ///< By node of tree 2: partner or `absent`.
    std::vector<char> parentLater; ///< By node of tree 1.

    /// For each number i > 0 in use as an id in tree 1: the node with the id i,
    /// whose flag decides, and the node whose parent is looked at then.
    std::vector<std::pair<int, int>> flagAndNode;

    /// Nothing when the path or its trees are such that the arrays cannot hold
    /// them: negative ids, circles, associations of what is no node.
    static std::optional<DenseTrees> from(const Path& start);

    float cost(int u, int v) const { return costs[size_t(u) * ids2.size() + size_t(v)]; }
};

/// The associations of one partial path on DenseTrees.
struct DenseState
{
    explicit DenseState(const DenseTrees& problem);

    const DenseTrees& trees;
    std::vector<int> partners1;
    std::vector<int> partners2;
    std::vector<char> parentLater;

    /// Records the pair; `v` may be DenseTrees::none.
    void associate(int u, int v);

    /// Takes it back.
    void dissociate(int u, int v);

    /// What associating the pair adds, in the state before it is recorded.
    float costForAssociation(int u, int v) const;

    /// What costForAssociation() of any pair with `u` needs of u: the node that
    /// the partner's parent must be, or `none` when any will do.
    int expectedParent(int u) const;

    /// Whether the penalty applies to `v` under the answer of expectedParent().
    bool wrongParent(int expected, int v) const;

    /// Whether the penalty of `u` is left open when it is associated now.
    bool parentCostsLater(int u) const;

    /// The partner of u's nearest ancestor that is not without one; `root`
    /// above a top node, `absent` above any other.
    int ancestorsPartner(int u) const;

    /// What PathExpander::parentChanged() answers for `u` with this partner,
    /// once all its ancestors are associated.
    bool parentChanged(int u, int partner) const;

    /// The penalties left open until every node of tree 1 was associated.
    float missingParentCosts() const;

private:
    std::vector<int> allAncestorsPartners() const;
};

} // namespace lorix
