// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/tree/treeids.h>

#include <QHash>
#include <QLinkedList>

namespace lorix {

class CostMatrix;
class WorkflowTree;

/// What the paths of one search have in common: the two trees, the matrix, and
/// the rules by which an association is priced.
///
/// The tables that the operations take are those of a Path: the partner by node
/// of tree 1, the partner by node of tree 2, and whether a node's parent penalty
/// was left open, by node of tree 1. A node that a table does not hold has not
/// been associated yet.
class LORIX_EXPORT PathExpander
{
public:
    /// None of the three is owned; all must stay as they are while the expander
    /// or a path made with it is in use.
    PathExpander(const WorkflowTree* tree1, const WorkflowTree* tree2, const CostMatrix* matrix);

    const WorkflowTree* tree1() const { return m_tree1; }
    const WorkflowTree* tree2() const { return m_tree2; }
    const CostMatrix* matrix() const { return m_matrix; }

    /// The nodes of a tree, parents before their children; none for a tree that
    /// is neither 1 nor 2.
    QLinkedList<int> nodeIds(TreeId tree) const;

    /// The price of associating `u` of tree 1 with `v` of tree 2, either of
    /// which may be NULL_NODE: the matrix's, plus the wrong-parent penalty when
    /// both parents have partners and these are not each other.
    float costForAssociation(int u, int v, const QHash<int, int>& assoc1to2,
                             const QHash<int, int>& assoc2to1) const;

    /// The price of `count` nodes without partner.
    float costForUnmatchedNodes(int count) const;

    /// Whether a parent of `u` or `v` has no partner, so that the penalty of
    /// this pair cannot be told yet.
    bool calcParentCostsLater(int u, int v, const QHash<int, int>& assoc1to2,
                              const QHash<int, int>& assoc2to1) const;

    /// The wrong-parent penalties that were left open. Asks `parentCostsLater`
    /// under each position in the list of associated tree-1 nodes
    /// (NODE_ABOVE_ROOT first, then ascending), and parentChanged() for the
    /// node at that position.
    float calcMissingParentCosts(const QHash<int, int>& assoc1to2, const QHash<int, int>& assoc2to1,
                                 const QHash<int, bool>& parentCostsLater) const;

    /// Whether the nearest ancestor of `u` that has a partner, and the nearest
    /// ancestor of u's partner that has one, are not each other's. False for a
    /// node that has not been associated; for one that is associated with
    /// NULL_NODE it is true below any ancestor that has a partner.
    bool parentChanged(int u, const QHash<int, int>& assoc1to2,
                       const QHash<int, int>& assoc2to1) const;

    /// The least that associating the remaining nodes can cost, parent penalties
    /// left aside.
    float heuristicCosts(const QLinkedList<int>& open1, const QLinkedList<int>& open2) const;

private:
    const WorkflowTree* m_tree1;
    const WorkflowTree* m_tree2;
    const CostMatrix* m_matrix;
};

} // namespace lorix
