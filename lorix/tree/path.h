// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/tree/priorityqueue.h>
#include <lorix/tree/treeids.h>

#include <QHash>
#include <QLinkedList>
#include <QSharedPointer>

namespace lorix {

class PathExpander;

/// A partial association of the nodes of two trees, and what it has cost so
/// far. Made step by step:
///
///     PathExpander expander(&tree1, &tree2, &matrix);
///     const QSharedPointer<Path> start(new Path(&expander));
///     const QList<QSharedPointer<Path>> best = Dijkstra<Path>::findPaths(start, 1);
///
/// A path is complete when every node of tree 1 has a partner or is known to
/// have none.
class LORIX_EXPORT Path
{
public:
    /// The path on which nothing is associated but the two virtual parents of
    /// the top nodes. `expander` is not owned and must outlive the path.
    explicit Path(PathExpander* expander);

    /// Whether the path is complete.
    bool reachedGoal() const { return m_open1.isEmpty(); }

    /// The cost so far plus the least that the rest can cost.
    float getCosts() const;

    /// Associates `u` of tree 1 with `v` of tree 2, or with NULL_NODE. When that
    /// was the last open node of tree 1, the nodes left over in tree 2 are
    /// charged and recorded as having no partner.
    void associate(int u, int v);

    /// Pushes a copy of the path for each node that the first open node of tree 1
    /// can be associated with, in tree order, and one for no partner. Their
    /// priority is getCosts(), cut to a whole number. A complete path has none.
    void expand(PriorityQueue<QSharedPointer<Path>>& queue) const;

    /// True when the node's recorded partner is NULL_NODE, and when nothing is
    /// recorded; false when `tree` is neither 1 nor 2. The name reads the other
    /// way round, and callers rely on it.
    bool associated(int node, TreeId tree) const;

    /// The recorded partner; INVALID_NODE when nothing is recorded and when
    /// `tree` is neither 1 nor 2.
    int association(int node, TreeId tree) const;

    /// Whether the node hangs below another parent than its partner; see
    /// PathExpander::parentChanged(), which is asked for the node of tree 1.
    /// False when nothing is recorded and when `tree` is neither 1 nor 2.
    bool parentChanged(int node, TreeId tree) const;

    /// Writes the path to the debug stream.
    void printMe() const;

    PathExpander* expander() const { return m_expander; }

    /// The partner by node of tree 1, NULL_NODE for none; holds NODE_ABOVE_ROOT.
    const QHash<int, int>& assoc1to2() const { return m_assoc1to2; }

    /// The partner by node of tree 2. Under NULL_NODE it holds the last node of
    /// tree 1 that was associated with none.
    const QHash<int, int>& assoc2to1() const { return m_assoc2to1; }

    /// By node of tree 1: the penalty for a changed parent was left open.
    const QHash<int, bool>& parentCostsLater() const { return m_parentCostsLater; }

    /// The nodes of tree 1 that are not associated yet, in tree order.
    const QLinkedList<int>& open1() const { return m_open1; }

    /// The same of tree 2.
    const QLinkedList<int>& open2() const { return m_open2; }

    /// The cost so far.
    float costs() const { return m_costs; }

private:
    PathExpander* m_expander;
    QHash<int, int> m_assoc1to2;
    QHash<int, int> m_assoc2to1;
    QHash<int, bool> m_parentCostsLater;
    QLinkedList<int> m_open1;
    QLinkedList<int> m_open2;
    float m_costs = 0.0F;
};

/// A cost as a priority: cut to a whole number toward zero, which lets costs
/// that differ by less than one tie. Beyond the range of int it is the range's
/// end, and what is no number comes last.
LORIX_EXPORT int priorityOf(float costs);

} // namespace lorix
